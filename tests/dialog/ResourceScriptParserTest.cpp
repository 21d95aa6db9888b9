// The parser on small scripts: the styles rc gives each statement, symbols, strings and the
// errors, each naming its line.
#include <gtest/gtest.h>

#include <utility>

#include "dialog/DialogTemplate.hpp"

namespace tq::dialog {
namespace {

constexpr TextView kHeader = u"#pragma once\n#define IDD_T 100\n#define IDC_A 11\n#define IDC_B (IDC_A + 1)\n";

Text Script(TextView controls) {
  return Text(u"#include <windows.h>\n#include \"resource.h\"\n#pragma code_page(65001)\n"
              u"IDD_T DIALOGEX 0, 0, 100, 80\n"
              u"STYLE DS_SETFONT | WS_POPUP\nCAPTION \"t\"\nFONT 9, \"ＭＳ Ｐゴシック\", 0, 0, 0x80\nBEGIN\n") +
         Text(controls) + u"END\n";
}

// The one control of a one-control dialog.
ControlTemplate Only(TextView control) {
  Result<ResourceScript> r = ParseResourceScript(Script(control), kHeader);
  if (!r) {
    ADD_FAILURE() << r.error().Describe();
    return {};
  }
  EXPECT_EQ(r->dialogs.size(), 1u);
  EXPECT_EQ(r->dialogs[0].controls.size(), 1u);
  return r->dialogs[0].controls.at(0);
}

Error FailureOf(TextView script, TextView header = kHeader) {
  Result<ResourceScript> r = ParseResourceScript(script, header);
  EXPECT_FALSE(r.ok());
  return r ? Error{} : r.error();
}

// The styles below are what x86_64-w64-mingw32-windres writes for the same statements.
TEST(ResourceScriptParser, ShorthandStatementsGiveTheStylesRcImplies) {
  struct Case {
    TextView statement;
    uint32_t style;
    ControlKind kind;
    TextView windowClass;
  };
  const Case cases[] = {
      {u"PUSHBUTTON \"a\", 11, 1, 1, 1, 1\n", 0x50010000, ControlKind::Button, u"BUTTON"},
      {u"DEFPUSHBUTTON \"k\", 11, 1, 1, 1, 1\n", 0x50010001, ControlKind::Button, u"BUTTON"},
      {u"CHECKBOX \"g\", 11, 1, 1, 1, 1\n", 0x50010002, ControlKind::Check, u"BUTTON"},
      {u"AUTOCHECKBOX \"h\", 11, 1, 1, 1, 1\n", 0x50010003, ControlKind::Check, u"BUTTON"},
      {u"RADIOBUTTON \"i\", 11, 1, 1, 1, 1\n", 0x50010004, ControlKind::Radio, u"BUTTON"},
      {u"AUTORADIOBUTTON \"j\", 11, 1, 1, 1, 1\n", 0x50010009, ControlKind::Radio, u"BUTTON"},
      {u"GROUPBOX \"f\", 11, 1, 1, 1, 1\n", 0x50000007, ControlKind::Group, u"BUTTON"},
      {u"LTEXT \"d\", 11, 1, 1, 1, 1\n", 0x50020000, ControlKind::Static, u"STATIC"},
      {u"RTEXT \"l\", 11, 1, 1, 1, 1\n", 0x50020002, ControlKind::Static, u"STATIC"},
      {u"CTEXT \"m\", 11, 1, 1, 1, 1\n", 0x50020001, ControlKind::Static, u"STATIC"},
      {u"EDITTEXT 11, 1, 1, 1, 1\n", 0x50810000, ControlKind::Edit, u"EDIT"},
      {u"COMBOBOX 11, 1, 1, 1, 1\n", 0x50010001, ControlKind::Combo, u"COMBOBOX"},
  };
  for (const Case& c : cases) {
    ControlTemplate control = Only(c.statement);
    EXPECT_EQ(control.style, c.style) << ToUtf8(c.statement);
    EXPECT_EQ(control.kind, c.kind) << ToUtf8(c.statement);
    EXPECT_EQ(control.windowClass, c.windowClass) << ToUtf8(c.statement);
  }
}

// With a style written, each statement keeps only part of its own style: windres writes these
// for the statements given WS_DISABLED (0x08000000).
TEST(ResourceScriptParser, AWrittenStyleIsAddedToTheStatementsBaseStyle) {
  const std::pair<TextView, uint32_t> cases[] = {
      {u"PUSHBUTTON \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58010000},
      {u"DEFPUSHBUTTON \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58010001},
      {u"CHECKBOX \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58010002},
      {u"AUTOCHECKBOX \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58010003},
      {u"STATE3 \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000005},
      {u"AUTO3STATE \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000006},
      {u"RADIOBUTTON \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000004},
      {u"AUTORADIOBUTTON \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000009},
      {u"GROUPBOX \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000007},
      {u"LTEXT \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000000},
      {u"RTEXT \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000002},
      {u"CTEXT \"x\", 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000001},
      {u"EDITTEXT 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58810000},
      {u"COMBOBOX 11, 1, 1, 1, 1, WS_DISABLED\n", 0x58000000},
      {u"CONTROL \"x\", 11, \"Button\", WS_DISABLED, 1, 1, 1, 1\n", 0x58000000},
  };
  for (auto [statement, style] : cases) EXPECT_EQ(Only(statement).style, style) << ToUtf8(statement);
  EXPECT_EQ(Only(u"RADIOBUTTON \"x\", 11, 1, 1, 1, 1, WS_GROUP | WS_TABSTOP\n").style, 0x50030004u);
  EXPECT_EQ(Only(u"RADIOBUTTON \"x\", 11, 1, 1, 1, 1, NOT WS_TABSTOP | NOT WS_VISIBLE\n").style, 0x40000004u);
}

TEST(ResourceScriptParser, AWrittenStyleAddsToTheImpliedOneAndNotClears) {
  EXPECT_EQ(Only(u"EDITTEXT 11, 1, 1, 1, 1, ES_AUTOHSCROLL\n").style, 0x50810080u);
  EXPECT_EQ(Only(u"PUSHBUTTON \"b\", 11, 1, 1, 1, 1, NOT WS_TABSTOP\n").style, 0x50000000u);
  EXPECT_EQ(Only(u"PUSHBUTTON \"c\", 11, 1, 1, 1, 1, WS_DISABLED\n").style, 0x58010000u);
  EXPECT_EQ(Only(u"LTEXT \"e\", 11, 1, 1, 1, 1, NOT WS_GROUP\n").style, 0x50000000u);
  EXPECT_EQ(Only(u"PUSHBUTTON \"p\", 11, 1, 1, 1, 1, WS_GROUP\n").style, 0x50030000u);
  ControlTemplate hidden = Only(u"PUSHBUTTON \"h\", 11, 1, 1, 1, 1, NOT WS_VISIBLE\n");
  EXPECT_FALSE(hidden.visible());
  EXPECT_EQ(hidden.style, 0x40010000u);
  EXPECT_FALSE(Only(u"EDITTEXT 11, 1, 1, 1, 1, WS_DISABLED\n").enabled());
}

TEST(ResourceScriptParser, AComboBoxStyleReplacesItsImpliedOne) {
  ControlTemplate typed = Only(u"COMBOBOX 11, 1, 1, 1, 1, CBS_DROPDOWN\n");
  EXPECT_EQ(typed.style, 0x50000002u);
  EXPECT_TRUE(typed.comboTakesText());
  ControlTemplate closed = Only(u"COMBOBOX 11, 1, 1, 1, 100, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP\n");
  EXPECT_EQ(closed.style, 0x50210003u);
  EXPECT_FALSE(closed.comboTakesText());
  EXPECT_EQ(Only(u"COMBOBOX 11, 1, 1, 1, 1, WS_TABSTOP\n").style, 0x50010000u);
}

TEST(ResourceScriptParser, GenericControlTakesItsClassAndStyle) {
  ControlTemplate radio = Only(u"CONTROL \"n\", 11, \"Button\", BS_AUTORADIOBUTTON, 1, 2, 3, 4\n");
  EXPECT_EQ(radio.style, 0x50000009u);
  EXPECT_EQ(radio.kind, ControlKind::Radio);
  EXPECT_EQ(radio.windowClass, u"BUTTON");
  EXPECT_EQ(radio.caption, u"n");
  EXPECT_EQ(Only(u"CONTROL \"o\", 11, \"Button\", BS_PUSHBUTTON | NOT WS_VISIBLE, 1, 1, 1, 1\n").style, 0x40000000u);

  ControlTemplate list = Only(
      u"CONTROL \"\", 11, \"SysListView32\", LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP, 7, 8, 300, 200, WS_EX_CLIENTEDGE\n");
  EXPECT_EQ(list.kind, ControlKind::List);
  EXPECT_EQ(list.windowClass, u"SysListView32");
  EXPECT_EQ(list.style, 0x50810009u);
  EXPECT_EQ(list.exStyle, 0x200u);
  EXPECT_EQ(list.x, 7);
  EXPECT_EQ(list.y, 8);
  EXPECT_EQ(list.cx, 300);
  EXPECT_EQ(list.cy, 200);
}

TEST(ResourceScriptParser, ControlsKeepTheirSymbolsAndTheDialogItsHeader) {
  Result<ResourceScript> r = ParseResourceScript(
      Script(u"PUSHBUTTON \"a\", IDC_A, 1, 2, 3, 4\nPUSHBUTTON \"b\", IDC_B, 1, 1, 1, 1\n"
             u"LTEXT \"c\", IDC_STATIC, 1, 1, 1, 1\nLTEXT \"d\", 77, 1, 1, 1, 1\nDEFPUSHBUTTON \"OK\", IDOK, 1, 1, 1, 1\n"),
      kHeader);
  ASSERT_TRUE(r.ok()) << r.error().Describe();
  const DialogTemplate* d = r->FindDialog(100);
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(d->symbol, u"IDD_T");
  EXPECT_EQ(d->caption, u"t");
  EXPECT_EQ(d->fontName, u"ＭＳ Ｐゴシック");
  EXPECT_EQ(d->fontSize, 9);
  EXPECT_EQ(d->cx, 100);
  EXPECT_EQ(d->cy, 80);
  EXPECT_EQ(d->style, 0x80000040u);
  ASSERT_EQ(d->controls.size(), 5u);
  EXPECT_EQ(d->controls[0].symbol, u"IDC_A");
  EXPECT_EQ(d->controls[0].id, 11);
  EXPECT_EQ(d->controls[1].id, 12);  // (IDC_A + 1)
  EXPECT_EQ(d->controls[2].id, -1);
  EXPECT_EQ(d->controls[2].symbol, u"");
  EXPECT_EQ(d->controls[3].id, 77);
  EXPECT_EQ(d->controls[3].symbol, u"");
  EXPECT_EQ(d->controls[4].id, 1);
  EXPECT_EQ(d->controls[4].symbol, u"IDOK");
  EXPECT_TRUE(d->controls[4].isDefaultButton());
  EXPECT_EQ(r->FindDialog(101), nullptr);
}

TEST(ResourceScriptParser, FindGivesTheFirstControlWithTheIdAndNothingForMinusOne) {
  Result<ResourceScript> r = ParseResourceScript(
      Script(u"LTEXT \"x\", -1, 1, 1, 1, 1\nPUSHBUTTON \"first\", 11, 1, 1, 1, 1\nLTEXT \"second\", 11, 1, 1, 1, 1\n"),
      kHeader);
  ASSERT_TRUE(r.ok()) << r.error().Describe();
  const DialogTemplate& d = r->dialogs.at(0);
  ASSERT_NE(d.Find(11), nullptr);
  EXPECT_EQ(d.Find(11)->caption, u"first");
  EXPECT_EQ(d.Find(-1), nullptr);
  EXPECT_EQ(d.Find(12), nullptr);
}

TEST(ResourceScriptParser, StringsReadQuotesAndEscapes) {
  Result<ResourceScript> r = ParseResourceScript(
      u"STRINGTABLE\nBEGIN\n  IDC_A \"say \"\"hi\"\"\"\n  12, \"a\\tb\"\n  13 L\"標準図\"\nEND\n", kHeader);
  ASSERT_TRUE(r.ok()) << r.error().Describe();
  EXPECT_EQ(r->strings.at(11), u"say \"hi\"");
  EXPECT_EQ(r->strings.at(12), u"a\tb");
  EXPECT_EQ(r->strings.at(13), u"標準図");
}

TEST(ResourceScriptParser, CommentsAndBracesAreRead) {
  Result<ResourceScript> r = ParseResourceScript(
      u"// a dialog\n/* made\n   by hand */ IDD_T DIALOGEX 0, 0, 10, 10\nFONT 8, \"f\"\n{\n"
      u"  PUSHBUTTON \"a\", IDC_A, 1, 1, 1, 1 // the button\n}\n",
      kHeader);
  ASSERT_TRUE(r.ok()) << r.error().Describe();
  ASSERT_EQ(r->dialogs.size(), 1u);
  EXPECT_EQ(r->dialogs[0].controls.size(), 1u);
  EXPECT_EQ(r->dialogs[0].fontSize, 8);
  EXPECT_EQ(r->dialogs[0].fontName, u"f");
}

TEST(ResourceScriptParser, UnknownStyleNameFailsNamingTheLine) {
  Error e = FailureOf(Script(u"PUSHBUTTON \"a\", 11, 1, 1, 1, 1\nPUSHBUTTON \"b\", 12, 1, 1, 1, 1, BS_SHINY\n"));
  EXPECT_EQ(e.code, ErrorCode::Malformed);
  EXPECT_EQ(e.line, 10u);
  EXPECT_EQ(e.message, u"unknown style name BS_SHINY");
}

TEST(ResourceScriptParser, UnknownSymbolFailsNamingTheLine) {
  Error e = FailureOf(Script(u"PUSHBUTTON \"a\", IDC_NOWHERE, 1, 1, 1, 1\n"));
  EXPECT_EQ(e.line, 9u);
  EXPECT_EQ(e.message, u"unknown symbol IDC_NOWHERE");
  EXPECT_EQ(e.Describe(), "line 9: unknown symbol IDC_NOWHERE");
}

TEST(ResourceScriptParser, TruncatedDialogFailsNamingTheLine) {
  Text script = Script(u"PUSHBUTTON \"a\", 11, 1, 1, 1, 1\n");
  script.resize(script.size() - 4);  // no END
  Error e = FailureOf(script);
  EXPECT_EQ(e.line, 10u);
  EXPECT_EQ(e.message, u"the dialog IDD_T (line 4) ends before its END");

  Error cut = FailureOf(u"IDD_T DIALOGEX 0, 0, 10, 10\nBEGIN\n  PUSHBUTTON \"a\", 11, 1, 1");
  EXPECT_EQ(cut.line, 3u);
  EXPECT_EQ(cut.message, u"expected \",\"");
}

TEST(ResourceScriptParser, OtherFailuresNameTheirLines) {
  Error statement = FailureOf(Script(u"LISTBOX 11, 1, 1, 1, 1\n"));
  EXPECT_EQ(statement.code, ErrorCode::Unsupported);
  EXPECT_EQ(statement.line, 9u);
  EXPECT_EQ(statement.message, u"a control statement that is not read: LISTBOX");

  Error windowClass = FailureOf(Script(u"CONTROL \"\", 11, \"msctls_trackbar32\", 0, 1, 1, 1, 1\n"));
  EXPECT_EQ(windowClass.line, 9u);
  EXPECT_EQ(windowClass.message, u"a window class that is not read: msctls_trackbar32");

  Error string = FailureOf(Script(u"PUSHBUTTON \"a, 11, 1, 1, 1, 1\n"));
  EXPECT_EQ(string.line, 9u);
  EXPECT_EQ(string.message, u"a string that is not closed on its line");

  Error number = FailureOf(Script(u"PUSHBUTTON \"a\", 11, 1, 1, 1, 0x123456789012345678901234\n"));
  EXPECT_EQ(number.line, 9u);
  EXPECT_EQ(number.message, u"a number too large for 32 bits");
  EXPECT_EQ(FailureOf(Script(u"PUSHBUTTON \"a\", 11, 1, 1, 1, 99999999999999999999999\n")).message,
            u"a number too large for 32 bits");
  EXPECT_EQ(FailureOf(Script(u"PUSHBUTTON \"a\", 11, 1, 1, 1, 0x\n")).message, u"a hexadecimal number without digits");

  Error resource = FailureOf(u"\nIDD_T MENU\nBEGIN\nEND\n");
  EXPECT_EQ(resource.line, 2u);
  EXPECT_EQ(resource.message, u"a resource of type MENU is not read");
}

// A second dialog or string with an id already used could never be found.
TEST(ResourceScriptParser, RepeatedIdsFail) {
  Text twice = Script(u"") + u"\n100 DIALOGEX 0, 0, 10, 10\nBEGIN\nEND\n";
  Error dialog = FailureOf(twice);
  EXPECT_EQ(dialog.line, 11u);
  EXPECT_EQ(dialog.message, u"a second dialog with id 100");

  Error string = FailureOf(u"STRINGTABLE\nBEGIN\n  11 \"a\"\n  IDC_A \"b\"\nEND\n");
  EXPECT_EQ(string.line, 4u);
  EXPECT_EQ(string.message, u"a second string with id 11");
}

TEST(ResourceScriptParser, OnlyTheUtf8CodePageIsRead) {
  EXPECT_TRUE(ParseResourceScript(u"#pragma code_page( 65001 )\n", kHeader).ok());
  Error e = FailureOf(u"\n#pragma code_page(932)\n");
  EXPECT_EQ(e.line, 2u);
  EXPECT_EQ(e.code, ErrorCode::Unsupported);
}

TEST(ResourceScriptParser, HeaderFailuresNameTheHeaderLine) {
  Error e = FailureOf(Script(u""), u"#define IDC_A 11\nIDC_B 12\n");
  EXPECT_EQ(e.line, 2u);
  EXPECT_EQ(e.message, u"resource.h: a line that is not a #define: \"IDC_B\"");

  Error value = FailureOf(Script(u""), u"#define IDC_A 11\n\n#define IDC_B IDC_C\n");
  EXPECT_EQ(value.line, 3u);
  EXPECT_EQ(value.message, u"resource.h: unknown symbol IDC_C");
}

}  // namespace
}  // namespace tq::dialog
