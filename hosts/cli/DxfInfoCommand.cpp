#include "cli/DxfInfoCommand.hpp"

#include <map>

#include "base/Encoding.hpp"
#include "base/Format.hpp"
#include "base/Paths.hpp"
#include "dxf/DxfDocument.hpp"
#include "dxf/GroupCodes.hpp"

namespace tq::cli {

namespace {

const char* ReleaseOf(const std::string& version) {
  const char* name = dxf::ReleaseName(version);
  return name ? name : "unknown release";
}

// The counts of the reading, by application name as the drawing's code page reads it.
std::map<Text, size_t> EntitiesByApplication(const dxf::XDataStats& xdata, const dxf::DxfCodec& codec) {
  std::map<Text, size_t> byName;
  for (const auto& [raw, count] : xdata.byApplication) byName[codec.Decode(raw)] += count;
  return byName;
}

std::string Located(uint32_t line, const std::string& message) {
  return line ? "line " + std::to_string(line) + ": " + message : message;
}

std::string CodePageOrigin(const dxf::Document& doc) {
  switch (doc.codec().source()) {
    case dxf::CodePageSource::Version: return "UTF-8 from AC1021 on; $DWGCODEPAGE " + (doc.dwgCodePage().empty() ? std::string("none") : doc.dwgCodePage());
    case dxf::CodePageSource::DwgCodePage: return "$DWGCODEPAGE " + doc.dwgCodePage();
    case dxf::CodePageSource::SystemNoName:
      return doc.dwgCodePage().empty() ? "the system code page; the file has no $DWGCODEPAGE"
                                       : "the system code page; $DWGCODEPAGE " + doc.dwgCodePage() + " names none";
    case dxf::CodePageSource::SystemUnknown: return "the system code page; $DWGCODEPAGE " + doc.dwgCodePage() + " is not known";
  }
  return {};
}

}  // namespace

int RunDxfInfo(const Context& context, const std::string& drawing) {
  std::ostream& out = *context.out;
  std::filesystem::path path(std::u8string(drawing.begin(), drawing.end()));
  std::optional<std::string> bytes = ReadFileBytes(path);
  if (!bytes) throw UserError("cannot read " + drawing);
  const dxf::ReadOptions options{context.codePage->name(), true};
  Result<dxf::Recovered> recovered = dxf::Document::Recover(std::move(*bytes), options);
  if (!recovered) throw UserError(drawing + ": " + recovered.error().Describe());
  std::unique_ptr<dxf::Document> doc = std::move(recovered->document);
  std::vector<dxf::Problem>& problems = recovered->problems;
  // The strict read stops at the first thing the recover read steps over: one reading tells both.
  std::string strict = problems.empty() ? "strict reading: no problem"
                                        : "strict reading fails: " + Located(problems.front().line, problems.front().message);
  std::vector<dxf::Problem> warnings;
  out << "file: " << drawing << " (" << doc->source().size() << " bytes, "
      << (doc->lineEnd() == "\r\n" ? "CR LF" : "LF") << " line ends)\n";
  out << "version: " << doc->version() << " (" << ReleaseOf(doc->version()) << ")\n";
  out << "encoding: " << doc->codec().encodingName() << " (" << CodePageOrigin(*doc) << ")\n";
  // An unknown $DWGCODEPAGE is among the checks' findings, with its line.
  if (!doc->codec().warning().empty() && doc->codec().source() != dxf::CodePageSource::SystemUnknown)
    problems.push_back({0, doc->codec().warning()});
  if (doc->hasHandles() && doc->fileHandSeed() <= doc->highestHandle())
    warnings.push_back({0, "$HANDSEED " + dxf::FormatHandle(doc->fileHandSeed()) + " is at or below handle " +
                               dxf::FormatHandle(doc->highestHandle()) + " in use; new handles are given above it"});

  // Counted as the file was read, while its bytes were at hand.
  std::map<std::string_view, size_t> modelTypes(recovered->entities.modelSpace.begin(), recovered->entities.modelSpace.end());
  size_t other = recovered->entities.other;
  out << "model space entities:\n";
  for (const auto& [type, count] : modelTypes) out << "  " << type << " " << count << "\n";
  out << "entities in blocks and paper space: " << other << " (" << doc->blocks().size() << " block definitions)\n";

  out << "layers:\n";
  for (const dxf::TableEntry& layer : doc->layers())
    out << "  " << ToUtf8(layer.name) << ((layer.flags & dxf::kLayerFrozen) ? " frozen" : "")
        << ((layer.flags & dxf::kLayerLocked) ? " locked" : "") << "\n";

  const dxf::XDataStats& xdata = recovered->xdata;
  std::map<Text, size_t> byApplication = EntitiesByApplication(xdata, doc->codec());
  out << "registered applications:\n";
  for (const dxf::TableEntry& app : doc->appIds()) {
    auto used = byApplication.find(app.name);
    out << "  " << ToUtf8(app.name) << " (on " << (used == byApplication.end() ? 0 : used->second) << " entities)\n";
  }
  for (const auto& [name, count] : byApplication)
    if (!doc->FindAppId(name))
      problems.push_back({0, "application " + ToUtf8(name) + " is used on " + std::to_string(count) +
                                 " entities but not registered; AutoCAD refuses such a drawing"});
  out << "extended data: " << xdata.entities << " entities, " << xdata.strings << " strings";
  if (xdata.entities)
    out << "; largest on " << xdata.largestType << " " << xdata.largestHandle << " (line " << xdata.largestLine
        << "): " << xdata.largest << " of " << dxf::kXDataLimit << " bytes";
  out << "\n" << strict << "\n";
  out << "problems found by the recover reading: " << problems.size() << "\n";
  for (const dxf::Problem& p : problems) out << "  " << Located(p.line, p.message) << "\n";
  const std::vector<dxf::Finding>& findings = recovered->findings;
  out << "errors found by the checks: " << findings.size() << "\n";
  for (const dxf::Finding& f : findings) out << "  " << Located(f.line, f.message) << "\n";
  if (!warnings.empty()) out << "warnings: " << warnings.size() << "\n";
  for (const dxf::Problem& w : warnings) out << "  " << Located(w.line, w.message) << "\n";
  return problems.empty() && findings.empty() ? 0 : kDxfInfoFoundErrors;
}

}  // namespace tq::cli
