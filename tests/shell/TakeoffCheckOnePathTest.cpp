// "拾い確認" → "ﾌｧｲﾙ 出力" in tqstd script and tqstd takeoff: one path from the rows on.
#include <gtest/gtest.h>

#include <fstream>

#include "base/Fields.hpp"
#include "drawing/FrameGrid.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"
#include "info/LineFields.hpp"
#include "takeoff/TakeoffRows.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// Runs a script on the copy's drawing without saving it; the transcript.
RunResult RunDialogScript(const SiteCopy& copy, const std::string& script) {
  std::filesystem::path file = copy.dir / "script.txt";
  std::ofstream(file, std::ios::binary) << script;
  return RunTqstd(copy.Ini() + " script " + copy.Drawing() + " " + Quoted(file) + " --no-save");
}

// The script that writes the file output of `kindRadio` and `separatorRadio` to `path`.
std::string OutputScript(int kindRadio, int separatorRadio, const std::string& category, const std::filesystem::path& path) {
  std::string script = "command TQ_STD_INF\nclick 200:203\nanswer OK\nclick 2000:2200\n";
  script += "click 3000:" + std::to_string(kindRadio) + "\nclick 3000:" + std::to_string(separatorRadio) + "\n";
  if (!category.empty()) script += "select 3000:3200 \"" + category + "\"\n";
  return script + "click 3000:1\nsave \"" + path.string() + "\"\nanswer OK\nclose 2000\nanswer OK\n";
}

}  // namespace

TEST(TakeoffCheckOnePath, TheDialogAndTqstdTakeoffWriteIdenticalBytesForEveryKindAndSeparator) {
  struct Kind {
    const char* name;
    int radio;
  };
  struct Separator {
    const char* name;
    int radio;
  };
  for (Kind kind : {Kind{"list", 3100}, Kind{"aggregate", 3101}})
    for (Separator separator : {Separator{"comma", 3303}, Separator{"pipe", 3304}, Separator{"tab", 3305}})
      for (std::string category : {"全て", "A材", "B材"}) {
        SiteCopy copy;
        std::string what = std::string(kind.name) + " " + separator.name + " " + category;
        RunResult cli = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind " + kind.name + " --separator " +
                                 separator.name + " --category " + category + " -o " + Quoted(copy.dir / "cli.txt"));
        ASSERT_EQ(cli.status, 0) << what << "\n" << cli.out;
        RunResult dialog = RunDialogScript(copy, OutputScript(kind.radio, separator.radio, category, copy.dir / "dialog.txt"));
        ASSERT_EQ(dialog.status, 0) << what << "\n" << dialog.out;
        std::string bytes = copy.dir.Read("cli.txt");
        EXPECT_GT(bytes.size(), 100u) << what;
        EXPECT_EQ(copy.dir.Read("dialog.txt"), bytes) << what;
      }
}

TEST(TakeoffCheckOnePath, TheDialogShowsExactlyTheItemsTqstdTakeoffJsonPrints) {
  SiteCopy copy;
  RunResult json = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --json");
  ASSERT_EQ(json.status, 0) << json.out;
  RunResult dialog = RunDialogScript(copy, "command TQ_STD_INF\nclick 200:203\nanswer OK\ndump 2000:389\nclose 2000\nanswer OK\n");
  ASSERT_EQ(dialog.status, 0) << dialog.out;
  // The items of both, written alike: the command prints a blank after each comma and one
  // item a line.
  std::string items = json.out.substr(json.out.find("\"items\": ") + 9);
  items = items.substr(0, items.rfind(']') + 1);
  std::string compact;
  for (size_t i = 0; i < items.size(); ++i) {
    if (items.compare(i, 4, ",\n  ") == 0) compact += ',', i += 3;
    else if (items.compare(i, 3, "\n  ") == 0) i += 2;
    else if (items.compare(i, 4, "\", \"") == 0) compact += "\",\"", i += 3;
    else compact += items[i];
  }
  size_t at = dialog.out.find("\"items\":");
  ASSERT_NE(at, std::string::npos) << dialog.out;
  std::string shown = dialog.out.substr(at + 8, dialog.out.find(",\"selected\"", at) - at - 8);
  EXPECT_GT(shown.size(), 1000u);
  EXPECT_EQ(shown, compact);
}

TEST(TakeoffCheckOnePath, TqstdTakeoffWarnsOnStandardErrorAsTheDialogDoesOnTheCommandLine) {
  SiteCopy copy;
  std::filesystem::path path = copy.site / "drawings" / std::filesystem::path(std::u8string(u8"設備標準図.dxf"));
  Text sheetName;
  {
    auto drawing = dxf::DxfDrawing::Open(path).value();
    ObjectId sheet;
    for (ObjectId id : drawing->SelectAll({u"TEXT", u"5"}))
      if (drawing->ReadXData(id, u"TQ_STDINF01") && !drawing->ReadXData(id, u"TQ_STDINF02")) {
        sheet = id;
        break;
      }
    ASSERT_FALSE(sheet.isNull());
    XDataLines lines = *drawing->ReadXData(sheet, u"TQ_STDINF01");
    CTakeoffRow row = ParseTakeoffLine(lines[2], sheet);
    row.field(LinePosition::kMemberName) += u"한";
    lines[2] = JoinLine25(row.fields);
    ASSERT_EQ(drawing->WriteXData(sheet, u"TQ_STDINF01", lines), EditResult::Ok);
    ASSERT_TRUE(ReadSheetName(*drawing, sheet, sheetName));
    ASSERT_TRUE(drawing->Save(path));
  }
  std::string warning = "\nWARNING:sheet " + ToUtf8(sheetName) +
                        ", TQ_STDINF01 line 3: \"한\" (U+D55C) is not in the code page CP932 and is written as \"?\"";
  std::string cli = RunCommand(std::string(TQSTD_PATH) + " takeoff " + copy.Drawing() + copy.Ini() + " --kind list -o " +
                               Quoted(copy.dir / "a.txt") + " 2>&1 >/dev/null").out;
  EXPECT_NE(cli.find(warning), std::string::npos) << cli;
  RunResult dialog = RunDialogScript(copy, OutputScript(3100, 3305, "", copy.dir / "b.txt"));
  ASSERT_EQ(dialog.status, 0) << dialog.out;
  std::string event = R"({"event":"print","text":"\nWARNING:sheet )" + ToUtf8(sheetName) +
                      R"(, TQ_STDINF01 line 3: \"한\" (U+D55C) is not in the code page CP932 and is written as \"?\""})";
  EXPECT_NE(dialog.out.find(event), std::string::npos) << dialog.out;
  EXPECT_EQ(copy.dir.Read("a.txt"), copy.dir.Read("b.txt"));
}

TEST(TakeoffCheckOnePath, CancellingTheTakeoffCheckLeavesTheDrawingFileAsItWas) {
  SiteCopy copy;
  std::filesystem::path path = copy.site / "drawings" / std::filesystem::path(std::u8string(u8"設備標準図.dxf"));
  std::string before = *ReadFileBytes(path);
  std::filesystem::path file = copy.dir / "script.txt";
  std::ofstream(file, std::ios::binary)
      << "command TQ_STD_INF\nclick 200:203\nanswer OK\nselect 2000:2301 \"給水用\"\ntype 2000:2300 \"部材\"\nclose 2000\nanswer OK\n";
  RunResult run = RunTqstd(copy.Ini() + " script " + copy.Drawing() + " " + Quoted(file));
  ASSERT_EQ(run.status, 0) << run.out;
  EXPECT_NE(run.out.find(R"({"event":"enddialog","id":2000,"result":2})"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("\"saved\""), std::string::npos) << run.out;
  EXPECT_EQ(*ReadFileBytes(path), before);
  EXPECT_FALSE(std::filesystem::exists(copy.site / "drawings" / std::filesystem::path(std::u8string(u8"設備標準図.dxf.bak"))));
}
