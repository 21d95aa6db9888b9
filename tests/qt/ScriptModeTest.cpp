// tqstd-workbench --script: the same transcript and the same files as tqstd script, the exit
// status and save rules, and the screenshots.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <map>
#include <regex>

#include "base/os/Os.hpp"
#include "qt/MainWindow.hpp"
#include "support/OfficeProcesses.hpp"
#include "support/RunCommand.hpp"
#include "support/ScriptRun.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::filesystem::path kScripts = U8Path(TQ_SOURCE_DIR) / "examples" / "scripts";

// A folder holding a copy of the example installation, made afresh for each run, so that two
// runs see the same files at the same paths (the transcript names paths).
struct Workplace {
  TempDir dir{"設備現場-"};
  std::filesystem::path site = dir / "site";
  std::filesystem::path drawing = site / "drawings" / u8"設備標準図.dxf";

  void Reset() const {
    for (const auto& entry : std::filesystem::directory_iterator(dir.path())) std::filesystem::remove_all(entry.path());
    std::filesystem::copy(U8Path(TQ_EXAMPLE_SITE), site, std::filesystem::copy_options::recursive);
  }
  // Every file under the folder and its bytes.
  std::map<std::string, std::string> Files() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir.path()))
      if (entry.is_regular_file()) {
        std::u8string name = std::filesystem::relative(entry.path(), dir.path()).u8string();
        files[std::string(name.begin(), name.end())] = ReadFileBytes(entry.path()).value_or("<unreadable>");
      }
    return files;
  }
  std::string Drawing() const { return ReadFileBytes(drawing).value_or("<missing>"); }
  bool HasBackup() const { return std::filesystem::exists(drawing.string() + ".bak"); }
  std::string Cd() const { return "cd " + Quoted(dir.path()) + " && "; }
};

// Both programs are given the drawing by a relative path, as a user types it.
const std::string kDrawing = " 'site/drawings/設備標準図.dxf'";

RunResult Tqstd(const Workplace& w, const std::filesystem::path& script, const std::string& more = "") {
  return RunCommand(w.Cd() + TQSTD_PATH + " --ini site/Velum.ini script" + kDrawing + " " + Quoted(script) + more + " 2>/dev/null");
}

RunResult Workbench(const Workplace& w, const std::filesystem::path& script, const std::string& more = "") {
  // A wait nothing serves would hang: the run is ended after two minutes.
  return RunCommand(w.Cd() + "QT_QPA_PLATFORM=offscreen timeout 120 " + TQ_WORKBENCH_PATH + " --ini site/Velum.ini" + kDrawing + " --script " +
                    Quoted(script) + more + " 2>/dev/null");
}

// "" when the transcripts agree; else the first line where they part.
std::string FirstDifference(const std::string& headless, const std::string& workbench) {
  std::vector<std::string> a = Lines(headless), b = Lines(workbench);
  for (size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
    std::string x = i < a.size() ? a[i] : "<end>", y = i < b.size() ? b[i] : "<end>";
    if (x != y) return "event " + std::to_string(i + 1) + "\n tqstd script: " + x + "\n workbench:    " + y;
  }
  return headless == workbench ? "" : "the same events, different bytes";
}

std::vector<std::filesystem::path> ExampleScripts() {
  std::vector<std::filesystem::path> scripts;
  for (const auto& entry : std::filesystem::directory_iterator(kScripts))
    if (entry.path().extension() == ".txt") scripts.push_back(entry.path());
  std::sort(scripts.begin(), scripts.end());
  return scripts;
}

// An example script that changes the drawing: it registers information.
const std::filesystem::path kChanging = kScripts / u8"情報確認.txt";

// The example script with a line added at its end that the command line cannot take.
std::filesystem::path WithBadLastLine(const TempDir& dir) {
  dir.Write("bad.txt", ReadFileBytes(kChanging).value() + "\npoint 1000 1000\n");
  return dir / "bad.txt";
}

}  // namespace

TEST(TranscriptParity, EveryExampleScriptGivesTheSameTranscriptAndFilesInBothHosts) {
  std::vector<std::filesystem::path> scripts = ExampleScripts();
  ASSERT_GE(scripts.size(), 4u);
  Workplace w;
  for (const std::filesystem::path& script : scripts) {
    SCOPED_TRACE(Quoted(script));
    w.Reset();
    RunResult headless = Tqstd(w, script);
    std::map<std::string, std::string> headlessFiles = w.Files();
    w.Reset();
    RunResult workbench = Workbench(w, script);
    EXPECT_EQ(headless.status, 0) << headless.out;
    EXPECT_EQ(workbench.status, headless.status);
    EXPECT_GT(Lines(headless.out).size(), 4u);
    EXPECT_EQ(FirstDifference(headless.out, workbench.out), "");
    EXPECT_TRUE(w.Files() == headlessFiles) << "the files the two runs left differ";
  }
}

TEST(WorkbenchScript, ALineThatDoesNotFitEndsWithStatus1AndNothingSaved) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  RunResult run = Workbench(w, WithBadLastLine(w.dir));
  EXPECT_EQ(run.status, 1) << run.out;
  std::vector<std::string> events = Lines(run.out);
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(events.back().rfind("{\"event\":\"error\",", 0), 0u) << events.back();
  EXPECT_NE(events.back().find("'point' does not fit: the command line waits"), std::string::npos) << events.back();
  EXPECT_EQ(w.Drawing(), before);
  EXPECT_FALSE(w.HasBackup());
}

TEST(WorkbenchScript, ALineThatDoesNotFitAModalDialogStopsTheRunThereAsInTqstd) {
  // The drawing is changed (登録) before the takeoff check opens again and meets a bad line.
  TempDir scripts;
  scripts.Write("modal.txt", ReadFileBytes(kScripts / u8"拾い確認_集計と登録.txt").value() + "click 200:203\nanswer OK\nclick 2000:4242\n");
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  RunResult headless = Tqstd(w, scripts / "modal.txt");
  w.Reset();
  RunResult workbench = Workbench(w, scripts / "modal.txt");
  EXPECT_EQ(workbench.status, 1) << workbench.out;
  EXPECT_EQ(Lines(workbench.out).back(), "{\"event\":\"error\",\"line\":26,\"text\":\"the dialog 2000 has no control 4242\"}");
  EXPECT_EQ(FirstDifference(headless.out, workbench.out), "");
  EXPECT_EQ(w.Drawing(), before);
  EXPECT_FALSE(w.HasBackup());
}

TEST(WorkbenchScript, AChangedDrawingIsSavedWithItsBackup) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  RunResult run = Workbench(w, kChanging);
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_NE(w.Drawing(), before);
  EXPECT_TRUE(w.HasBackup());
  EXPECT_EQ(Lines(run.out).back(), "{\"event\":\"saved\",\"path\":\"" + ToUtf8(FromFsPath(w.drawing)) + "\"}");
}

TEST(WorkbenchScript, NoSaveWritesNothing) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  RunResult run = Workbench(w, kChanging, " --no-save");
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_EQ(w.Drawing(), before);
  EXPECT_FALSE(w.HasBackup());
  EXPECT_EQ(run.out.find("\"event\":\"saved\""), std::string::npos);
}

TEST(WorkbenchScript, OutputTakesTheChangedDrawingAndLeavesTheOriginal) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  RunResult run = Workbench(w, kChanging, " -o out.dxf");
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_EQ(w.Drawing(), before);
  EXPECT_FALSE(w.HasBackup());
  std::string written = w.dir.Read("out.dxf");
  EXPECT_NE(written, "<missing>");
  EXPECT_NE(written, before);
  EXPECT_EQ(Lines(run.out).back(), "{\"event\":\"saved\",\"path\":\"out.dxf\"}");
}

TEST(WorkbenchScript, AScriptThatChangesNothingWritesNothing) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  RunResult run = Workbench(w, kScripts / u8"拾い確認.txt");
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_GT(Lines(run.out).size(), 3u);
  EXPECT_EQ(w.Drawing(), before);
  EXPECT_FALSE(w.HasBackup());
}

TEST(WorkbenchScript, ScreenshotsAreOnePngPerDialogMessageboxAndDumpEventAtTheWindowSize) {
  Workplace w;
  w.Reset();
  RunResult run = Workbench(w, kScripts / u8"拾い確認_集計と登録.txt", " --screenshots shots");
  ASSERT_EQ(run.status, 0) << run.out;
  std::vector<std::string> kinds;
  std::regex event("^\\{\"event\":\"(dialog|messagebox|dump)\"");
  for (const std::string& line : Lines(run.out))
    if (std::smatch m; std::regex_search(line, m, event)) kinds.push_back(m[1]);
  ASSERT_GE(kinds.size(), 5u);
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(w.dir / "shots")) files.push_back(entry.path().filename().string());
  std::sort(files.begin(), files.end());
  ASSERT_EQ(files.size(), kinds.size());
  for (size_t i = 0; i < files.size(); ++i) {
    char expected[64];
    std::snprintf(expected, sizeof expected, "%03zu-%s.png", i + 1, kinds[i].c_str());
    EXPECT_EQ(files[i], expected);
    QImage image;
    ASSERT_TRUE(image.load(QString::fromStdString((w.dir / "shots" / files[i]).string()), "PNG")) << files[i];
    EXPECT_EQ(image.size(), qt::MainWindow::kInitialSize) << files[i];
  }
}

TEST(TranscriptParity, EscapeAtAPointPromptAndALineThatDoesNotFitItAreTheSameInBothHosts) {
  TempDir scripts;
  scripts.Write("escape.txt", "command TQ_STD_INF\nclick 200:201\nescape\nclick 200:201\nanswer OK\n");
  Workplace w;
  w.Reset();
  RunResult headless = Tqstd(w, scripts / "escape.txt");
  w.Reset();
  RunResult workbench = Workbench(w, scripts / "escape.txt");
  EXPECT_EQ(headless.status, 1);
  EXPECT_EQ(workbench.status, 1);
  EXPECT_NE(headless.out.find("'answer' does not fit: a point prompt waits"), std::string::npos) << headless.out;
  EXPECT_EQ(FirstDifference(headless.out, workbench.out), "");
}

TEST(WorkbenchScript, AUsageErrorIsStatus2AndADrawingThatCannotBeReadIsStatus1) {
  Workplace w;
  w.Reset();
  std::string workbench = w.Cd() + "QT_QPA_PLATFORM=offscreen timeout 120 " + TQ_WORKBENCH_PATH + " --ini site/Velum.ini ";
  std::string script = Quoted(kScripts / u8"設定.txt");
  EXPECT_EQ(RunCommand(workbench + "--script " + script + " 2>/dev/null").status, 2);  // no drawing
  EXPECT_EQ(RunCommand(workbench + "site/drawings/設備標準図.dxf -o out.dxf 2>/dev/null").status, 2);  // -o without --script
  RunResult missing = RunCommand(workbench + "site/drawings/none.dxf --script " + script + " 2>&1");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.out.find("none.dxf cannot be opened"), std::string::npos) << missing.out;
}

TEST(WorkbenchScript, ALineThatDoesNotFitAfterTheOfficeStartedLeavesNoOfficeBehind) {
  // 設定 computes the size table's rows in its workbook: the office runs when the bad line comes.
  TempDir scripts, temporary;
  scripts.Write("bad.txt", ReadFileBytes(kScripts / u8"設定.txt").value() + "bogus\n");
  Workplace w;
  w.Reset();
  RunResult run = RunCommand(w.Cd() + "TMPDIR=" + Quoted(temporary.path()) + " QT_QPA_PLATFORM=offscreen timeout 120 " + TQ_WORKBENCH_PATH +
                             " --ini site/Velum.ini" + kDrawing + " --script " + Quoted(scripts / "bad.txt") + " 2>/dev/null");
  EXPECT_EQ(run.status, 1) << run.out;
  EXPECT_NE(run.out.find("'bogus' does not fit: the command line waits"), std::string::npos) << run.out;
  for (const auto& entry : std::filesystem::directory_iterator(temporary.path()))
    EXPECT_NE(entry.path().filename().string().rfind("tq-calc-", 0), 0u) << "an office profile is left: " << entry.path();
  EXPECT_TRUE(ProcessesNaming(temporary.path().string()).empty());
}

TEST(WorkbenchScript, AnotherWritersLockStopsTheRunBeforeItsFirstLineAndNamesTheHolder) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  // Another writer's lock: a live process of this host (this one, as the file tells it).
  os::LockOwner other = os::CurrentOwner();
  other.user = u"佐藤";
  ASSERT_TRUE(WriteFileBytes(os::LockFileOf(w.drawing), os::FormatLockFile(other)));
  RunResult run = RunCommand(w.Cd() + "QT_QPA_PLATFORM=offscreen timeout 120 " + TQ_WORKBENCH_PATH +
                             " --ini site/Velum.ini" + kDrawing + " --script " + Quoted(kChanging) + " 2>&1 >/dev/null");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("it is in use by 佐藤"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("nothing was changed"), std::string::npos) << run.out;
  EXPECT_EQ(w.Drawing(), before);
  EXPECT_FALSE(w.HasBackup());
}

TEST(WorkbenchScript, AnotherWritersLockOnTheOutputStopsTheRunBeforeItsFirstLine) {
  Workplace w;
  w.Reset();
  std::string before = w.Drawing();
  os::LockOwner other = os::CurrentOwner();
  other.user = u"佐藤";
  ASSERT_TRUE(WriteFileBytes(os::LockFileOf(w.dir / "out.dxf"), os::FormatLockFile(other)));
  RunResult run = RunCommand(w.Cd() + "QT_QPA_PLATFORM=offscreen timeout 120 " + TQ_WORKBENCH_PATH + " --ini site/Velum.ini" +
                             kDrawing + " --script " + Quoted(kChanging) + " -o out.dxf 2>&1 >/dev/null");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("it is in use by 佐藤"), std::string::npos) << run.out;
  EXPECT_EQ(w.dir.Read("out.dxf"), "<missing>");
  EXPECT_EQ(w.Drawing(), before);
}
