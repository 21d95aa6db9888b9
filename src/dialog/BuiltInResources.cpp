#include <stdexcept>

#include "dialog/DialogTemplate.hpp"
#include "dialog/EmbeddedResources.hpp"

namespace tq::dialog {
namespace {

Text Decode(std::span<const unsigned char> bytes) {
  return FromUtf8(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

ResourceScript ParseEmbedded() {
  Result<ResourceScript> parsed = ParseResourceScript(Decode(EmbeddedScript()), Decode(EmbeddedResourceHeader()));
  // The script is part of the program and its tests read it: a failure here is a bug.
  if (!parsed) throw std::logic_error("TQTStdInfo.rc: " + parsed.error().Describe());
  return std::move(*parsed);
}

}  // namespace

const ResourceScript& BuiltInResources() {
  static const ResourceScript resources = ParseEmbedded();
  return resources;
}

}  // namespace tq::dialog
