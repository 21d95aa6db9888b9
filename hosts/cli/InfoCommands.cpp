#include "cli/InfoCommands.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>

#include "base/Numbers.hpp"
#include "base/Paths.hpp"
#include "cli/DrawingSession.hpp"
#include "common/Json.hpp"
#include "drawing/EntityScan.hpp"
#include "info/AttributeIdTable.hpp"
#include "info/ChoiceLists.hpp"
#include "info/StdInfRecord.hpp"
#include "site/SymbolSizeData.hpp"

namespace tq::cli {

namespace {

// The sheet-number text the options name; nothing (after the main dialog's message) when a
// point finds none.
std::optional<ObjectId> FindSheet(DrawingSession& session, const InfoOptions& options) {
  int given = !options.sheet.empty() + !options.at.empty() + !options.handle.empty();
  if (given != 1) throw CLI::ValidationError("give exactly one of --sheet, --at, --handle");
  if (!options.handle.empty()) {
    ObjectId id = session.drawing().FindHandle(FromUtf8(options.handle));
    if (id.isNull() || !session.drawing().TextData(id)) throw UserError("no text has the handle " + options.handle);
    return id;
  }
  if (!options.at.empty()) {
    size_t comma = options.at.find(',');
    if (comma == std::string::npos) throw UserError("--at wants X,Y, not " + options.at);
    Text x = FromUtf8(options.at.substr(0, comma)), y = FromUtf8(options.at.substr(comma + 1));
    FramePolygon polygon;
    if (!LocateFrame(session.context(), {ToReal(x), ToReal(y), 0}, polygon)) {
      session.editor().Print(u"\nError:標準図枠の範囲外です。\n");
      return std::nullopt;
    }
    ObjectId id;
    if (!FindSheetNumberText(session.context(), polygon, id)) {
      session.editor().Print(u"\nｼｰﾄ番号が取得出来ません。\n");
      return std::nullopt;
    }
    return id;
  }
  return session.SheetsNamed(options.sheet).front();
}

void PrintJson(std::ostream& out, DrawingSession& session, ObjectId id, const StdInfRecords& records) {
  out << "{\"handle\": " << JsonString(session.drawing().Handle(id)) << ", \"sheet\": " << JsonString(session.SheetName(id))
      << ", \"records\": [";
  for (size_t r = 0; r < records.size(); ++r) {
    XDataLines raw = session.drawing().ReadXData(id, InfoRecordName(static_cast<int>(r) + 1)).value_or(XDataLines{});
    out << (r ? ", " : "") << "[";
    for (size_t l = 0; l < records[r].size(); ++l) {
      out << (l ? ", " : "") << "{\"line\": " << JsonString(l < raw.size() ? raw[l] : Text()) << ", \"members\": [";
      const auto& members = records[r][l].members;
      for (size_t m = 0; m < members.size(); ++m) out << (m ? ", " : "") << JsonString(members[m]);
      out << "]}";
    }
    out << "]";
  }
  out << "]}\n";
}

void PrintPlain(std::ostream& out, const StdInfRecords& records) {
  for (size_t r = 0; r < records.size(); ++r) {
    out << ToUtf8(InfoRecordName(static_cast<int>(r) + 1)) << '\n';
    for (size_t l = 0; l < records[r].size(); ++l) {
      out << l;
      for (size_t p = 0; p < kLinePositionCount; ++p) out << '\t' << ToUtf8(records[r][l].member(MemberAtPosition(PositionAt(p))));
      out << '\n';
    }
  }
}

}  // namespace

int RunInfo(const Context& context, const std::string& drawing, const InfoOptions& options) {
  DrawingSession session(context, drawing);
  std::optional<ObjectId> id = FindSheet(session, options);
  if (!id) return 0;
  ChoiceFolders folders = FindChoiceFolders(*context.folders);
  std::vector<Text> keys = AttributeIdTable::Load(ToFsPath(folders.attributeIdTable), *context.codePage).AllValues();
  StdInfRecords records = ReadInfoRecords(session.drawing(), *id, keys);
  if (records.empty()) {
    *context.out << ToUtf8(u"情報が設定されていません。") << '\n';
    return 1;
  }
  if (options.json) PrintJson(*context.out, session, *id, records);
  else PrintPlain(*context.out, records);
  return 0;
}

namespace {
void PrintList(std::ostream& out, const std::string& title, const std::optional<std::vector<Text>>& entries, const std::string& note) {
  if (!entries) {
    out << title << ": (no file: the combo keeps what it has)" << note << '\n';
    return;
  }
  out << title << ": " << entries->size() << " entries" << note << '\n';
  for (const Text& e : *entries) out << "  " << (e.empty() ? std::string("\"\"") : e == u" " ? std::string("\" \"") : ToUtf8(e)) << '\n';
}
}  // namespace

int RunChoices(const Context& context, const std::string& ab) {
  if (!ab.empty() && ab != "A" && ab != "B") throw CLI::ValidationError("--ab takes A or B");
  Text abText = ab == "B" ? u"" : u"A";
  // The choice lists are all in the add-in data folder under the system folder.
  if (Status system = context.folders->CheckSystemFolder(); !system) throw UserError(system.error().Describe());
  std::ostream& out = *context.out;
  ChoiceFolders folders = FindChoiceFolders(*context.folders);
  out << "choice folder: " << ToUtf8(folders.choiceFolder) << "\nA/B files: " << (SelectsAMaterial(abText) ? "A" : "B") << '\n';
  AttributeIdTable attributes = AttributeIdTable::Load(ToFsPath(folders.attributeIdTable), *context.codePage);
  std::vector<Text> items = attributes.Group(u"S501").column(AttributeColumn::kValue);
  std::sort(items.begin(), items.end());
  PrintList(out, "工事項目 (1101)", items, " (sorted)");
  for (const ChoiceFile& file : ChoiceFiles())
    PrintList(out, ToUtf8(file.field) + " (" + std::to_string(file.comboId) + ")",
              ComboEntriesFromFile(ChoiceFilePath(folders, file, abText), *context.codePage), "");
  SymbolSizeData sizes = LoadSymbolSizeData(context.folders->SymbolSizeDataFile(), *context.codePage, SizeSection::Counts);
  PrintList(out, "寸法1, 寸法2, 寸法3 (1104, 1105, 1106)", sizes.list(SizeSection::Sizes), "");
  return 0;
}

}  // namespace tq::cli
