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

struct XDataTotals {
  std::map<Text, size_t> entitiesByApplication;
  size_t entities = 0, strings = 0, largest = 0;
  uint32_t largestIndex = 0;
};

XDataTotals CountXData(const dxf::Document& doc) {
  XDataTotals totals;
  std::vector<dxf::Tag> tags;
  for (uint32_t i = 0; i < doc.records().size(); ++i) {
    // Only the extended data is read, of the entities that hold any.
    if (!doc.MayHaveXData(i)) continue;
    tags.clear();
    doc.XDataTagsInto(i, tags);
    bool any = false;
    for (const dxf::Tag& t : tags) {
      if (t.code == dxf::kXDataApplicationCode) any = true, ++totals.entitiesByApplication[doc.codec().Decode(dxf::TrimNumber(t.value))];
      if (t.code == dxf::kXDataStringCode) ++totals.strings;
    }
    if (!any) continue;
    ++totals.entities;
    size_t size = dxf::XDataSize(tags);
    if (size > totals.largest) totals.largest = size, totals.largestIndex = i;
  }
  return totals;
}

std::string Located(uint32_t line, const std::string& message) {
  return line ? "line " + std::to_string(line) + ": " + message : message;
}

std::string Handle(const dxf::EntityRecord& rec) { return dxf::FormatHandle(rec.handle); }

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

  std::map<std::string, size_t> modelTypes, otherTypes;
  for (const dxf::EntityRecord& rec : doc->records()) {
    if (rec.block < 0 && !rec.paperSpace) ++modelTypes[std::string(rec.type)];
    else ++otherTypes[std::string(rec.type)];
  }
  out << "model space entities:\n";
  for (const auto& [type, count] : modelTypes) out << "  " << type << " " << count << "\n";
  size_t other = 0;
  for (const auto& [type, count] : otherTypes) other += count;
  out << "entities in blocks and paper space: " << other << " (" << doc->blocks().size() << " block definitions)\n";

  out << "layers:\n";
  for (const dxf::TableEntry& layer : doc->layers())
    out << "  " << ToUtf8(layer.name) << ((layer.flags & dxf::kLayerFrozen) ? " frozen" : "")
        << ((layer.flags & dxf::kLayerLocked) ? " locked" : "") << "\n";

  XDataTotals xdata = CountXData(*doc);
  out << "registered applications:\n";
  for (const dxf::TableEntry& app : doc->appIds()) {
    auto used = xdata.entitiesByApplication.find(app.name);
    out << "  " << ToUtf8(app.name) << " (on " << (used == xdata.entitiesByApplication.end() ? 0 : used->second)
        << " entities)\n";
  }
  for (const auto& [name, count] : xdata.entitiesByApplication)
    if (!doc->FindAppId(name))
      problems.push_back({0, "application " + ToUtf8(name) + " is used on " + std::to_string(count) +
                                 " entities but not registered; AutoCAD refuses such a drawing"});
  out << "extended data: " << xdata.entities << " entities, " << xdata.strings << " strings";
  if (xdata.entities) {
    const dxf::EntityRecord& rec = doc->records()[xdata.largestIndex];
    out << "; largest on " << rec.type << " " << Handle(rec) << " (line " << rec.line << "): " << xdata.largest
        << " of " << dxf::kXDataLimit << " bytes";
  }
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
