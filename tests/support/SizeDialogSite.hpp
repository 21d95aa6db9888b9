#pragma once
// The example installation with its drawing, and M-105's workbook held in memory: the size
// setting dialog opened on frame M-105 by a script through the headless host.
#include <string>

#include "site/Settings.hpp"
#include "support/ExampleSite.hpp"
#include "support/MemoryWorkbook.hpp"
#include "support/ScriptRun.hpp"

namespace tq::test {

// Opens the size setting dialog on M-105 (frame row 1, column 1 of the example drawing).
inline const std::string kOpenM105 = "command TQ_STD_INF\nclick 200:201\npoint 29000 20000\n";

inline std::string Box(const std::string& text, const std::string& icon, const std::string& buttons = "ok",
                       const std::string& preset = "OK") {
  return R"({"event":"messagebox","text":")" + text + R"(","icon":")" + icon + R"(","buttons":")" + buttons +
         R"(","default":")" + preset + R"("})";
}

// A parts block of two header rows and three parts rows whose per-unit quantities stand in
// column E, the quantity calculation column of the site, and the size header row 30:
// "記号", ①…③, "台数", bordered on the right up to ③.
inline void M105Sheet(MemoryWorkbook& book) {
  book.SetRow(1, 1, {u"番号", u"名称", u"工事項目", u"部材", u"数量"});
  book.SetRow(2, 1, {u"1", u"2", u"3", u"4", u"5"});
  book.SetRow(3, 1, {u"FCU", u"ファンコイル", u"冷温水", u"鋼管", u"2"});
  book.SetRow(4, 1, {u"", u"", u"冷温水", u"保温材", u"2"});
  book.SetRow(5, 1, {u"", u"", u"ドレン", u"塩ビ管", u"1"});
  book.SetRow(30, 1, {u"記号", u"①", u"②", u"③", u"台数"});
  for (const char16_t* cell : {u"A30", u"B30", u"C30", u"D30"}) book.SetBorder(cell);
}

struct SizeDialogSite {
  ExampleSite site;
  MemoryWorkbook book;
  StdSettings settings{site.folders};

  SizeDialogSite() {
    M105Sheet(book);
    site.host.workbook = &book;
    (void)settings.Write(kQuantityCellKey, u"E");
  }
  ScriptRun Run(const std::string& lines) { return RunScript(*site.drawing, site.folders, kOpenM105 + lines); }
};

}  // namespace tq::test
