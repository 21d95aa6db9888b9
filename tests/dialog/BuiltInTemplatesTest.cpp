// The six dialogs of the built-in resource script, checked against what the system's dialogs
// rely on: ids, kinds, captions, visibility, sizes and font.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "dialog/DialogTemplate.hpp"
#include "res/resource.h"

namespace tq::dialog {
namespace {

using K = ControlKind;

const DialogTemplate& Dialog(int id) {
  const DialogTemplate* d = BuiltInResources().FindDialog(id);
  if (!d) throw std::runtime_error("no dialog " + std::to_string(id));
  return *d;
}

// The control has this kind and caption and is shown.
testing::AssertionResult Has(const DialogTemplate& d, int id, ControlKind kind, TextView caption) {
  const ControlTemplate* c = d.Find(id);
  if (!c) return testing::AssertionFailure() << "dialog " << d.id << " has no control " << id;
  if (c->kind != kind) return testing::AssertionFailure() << "control " << id << " has kind " << int(c->kind);
  if (c->caption != caption) return testing::AssertionFailure() << "control " << id << " has caption " << ToUtf8(c->caption);
  if (!c->visible()) return testing::AssertionFailure() << "control " << id << " is hidden";
  return testing::AssertionSuccess();
}

struct Rect {
  int x, y, cx, cy;
};
Rect RectOf(const ControlTemplate& c) { return {c.x, c.y, c.cx, c.cy}; }
bool Inside(Rect inner, Rect outer) {
  return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.cx <= outer.x + outer.cx &&
         inner.y + inner.cy <= outer.y + outer.cy;
}

// The first control of this kind and caption (for labels with id -1).
const ControlTemplate* WithCaption(const DialogTemplate& d, ControlKind kind, TextView caption) {
  for (const ControlTemplate& c : d.controls)
    if (c.kind == kind && c.caption == caption) return &c;
  return nullptr;
}

// A label stands above its field, or on the field's line to its left.
bool Labels(const ControlTemplate& label, const ControlTemplate& field) {
  bool above = label.x == field.x && label.y + label.cy <= field.y && field.y - label.y <= 12;
  bool left = label.x + label.cx <= field.x && field.x - (label.x + label.cx) <= 6 && label.y >= field.y &&
              label.y < field.y + 12;
  return above || left;
}

constexpr uint32_t kDialogStyle = 0x80C800C8;  // DS_SETFONT|DS_MODALFRAME|DS_FIXEDSYS|WS_POPUP|WS_CAPTION|WS_SYSMENU

TEST(BuiltInTemplates, AllSixDialogsWithTheirFontAndFrame) {
  const ResourceScript& r = BuiltInResources();
  ASSERT_EQ(r.dialogs.size(), 6u);
  for (int id : {200, 201, 202, 1000, 2000, 3000}) {
    const DialogTemplate& d = Dialog(id);
    EXPECT_EQ(d.fontName, u"ＭＳ Ｐゴシック") << id;
    EXPECT_EQ(d.fontSize, 9) << id;
    EXPECT_EQ(d.style, kDialogStyle) << id;
  }
  EXPECT_EQ(Dialog(200).symbol, u"IDD_MAIN");
  EXPECT_EQ(Dialog(201).symbol, u"IDD_SIZE");
  EXPECT_EQ(Dialog(202).symbol, u"IDD_SETUP");
  EXPECT_EQ(Dialog(1000).symbol, u"IDD_ATTRINF");
  EXPECT_EQ(Dialog(2000).symbol, u"IDD_COLLECTINF");
  EXPECT_EQ(Dialog(3000).symbol, u"IDD_FILEOUT");
}

TEST(BuiltInTemplates, EveryControlLiesInsideItsDialog) {
  for (const DialogTemplate& d : BuiltInResources().dialogs) {
    for (const ControlTemplate& c : d.controls) {
      int cy = c.kind == K::Combo ? 12 : c.cy;  // a combo's height is its dropped-down list
      EXPECT_TRUE(Inside({c.x, c.y, c.cx, cy}, {0, 0, d.cx, d.cy})) << d.id << " control " << c.id << " " << ToUtf8(c.caption);
      EXPECT_GT(c.cx, 0);
      EXPECT_GT(c.cy, 0);
    }
  }
}

TEST(BuiltInTemplates, MainDialog) {
  const DialogTemplate& d = Dialog(200);
  EXPECT_EQ(d.caption, u"標準図積算");
  EXPECT_EQ(d.cx, 131);
  EXPECT_EQ(d.cy, 123);
  struct Expected {
    int id;
    ControlKind kind;
    TextView caption;
    bool visible;
  };
  const Expected order[] = {
      {1, K::Button, u"OK", false},         {-1, K::Group, u"参照シート名", true}, {200, K::Edit, u"", true},
      {-1, K::Group, u"情報設定", true},    {201, K::Button, u"設定", true},       {202, K::Button, u"情報確認", true},
      {-1, K::Group, u"情報確認", true},    {203, K::Button, u"拾い確認", true},   {388, K::Button, u"色を戻す", false},
  };
  ASSERT_EQ(d.controls.size(), std::size(order));
  for (size_t i = 0; i < std::size(order); ++i) {
    const ControlTemplate& c = d.controls[i];
    EXPECT_EQ(c.id, order[i].id) << i;
    EXPECT_EQ(c.kind, order[i].kind) << i;
    EXPECT_EQ(c.caption, order[i].caption) << i;
    EXPECT_EQ(c.visible(), order[i].visible) << i;
  }
  EXPECT_TRUE(d.Find(1)->isDefaultButton());
  EXPECT_FALSE(d.Find(201)->isDefaultButton());
  const ControlTemplate& sheet = *d.Find(200);
  EXPECT_TRUE(sheet.style & style::kEditReadOnly);
  EXPECT_TRUE(sheet.style & style::kEditAutoHScroll);
  // Each group box frames its controls.
  EXPECT_TRUE(Inside(RectOf(sheet), RectOf(d.controls[1])));
  EXPECT_TRUE(Inside(RectOf(*d.Find(201)), RectOf(d.controls[3])));
  EXPECT_TRUE(Inside(RectOf(*d.Find(202)), RectOf(d.controls[3])));
  EXPECT_TRUE(Inside(RectOf(*d.Find(203)), RectOf(d.controls[6])));
  EXPECT_TRUE(Inside(RectOf(*d.Find(388)), RectOf(d.controls[6])));
}

TEST(BuiltInTemplates, SizeTableSettingsDialog) {
  const DialogTemplate& d = Dialog(202);
  EXPECT_EQ(d.caption, u"ｻｲｽﾞ表の設定");
  EXPECT_EQ(d.cx, 95);
  EXPECT_EQ(d.cy, 109);
  EXPECT_TRUE(Has(d, 387, K::Edit, u""));
  EXPECT_TRUE(Has(d, 388, K::Edit, u""));
  EXPECT_TRUE(Has(d, 389, K::Edit, u""));
  EXPECT_TRUE(Has(d, 1, K::Button, u"OK"));
  EXPECT_TRUE(d.Find(1)->isDefaultButton());
  EXPECT_TRUE(Has(d, 2, K::Button, u"ｷｬﾝｾﾙ"));
  EXPECT_FALSE(d.Find(2)->isDefaultButton());

  const ControlTemplate* size = WithCaption(d, K::Group, u"文字サイズ");
  const ControlTemplate* table = WithCaption(d, K::Group, u"表");
  ASSERT_TRUE(size && table);
  struct Field {
    TextView label;
    int edit;
    const ControlTemplate* group;
  };
  for (Field f : {Field{u"高さ", 387, size}, Field{u"幅", 388, size}, Field{u"行間隔", 389, table}}) {
    const ControlTemplate* label = WithCaption(d, K::Static, f.label);
    ASSERT_NE(label, nullptr) << ToUtf8(f.label);
    EXPECT_TRUE(Labels(*label, *d.Find(f.edit))) << ToUtf8(f.label);
    EXPECT_TRUE(Inside(RectOf(*label), RectOf(*f.group))) << ToUtf8(f.label);
    EXPECT_TRUE(Inside(RectOf(*d.Find(f.edit)), RectOf(*f.group))) << ToUtf8(f.label);
  }
}

TEST(BuiltInTemplates, FileOutputDialog) {
  const DialogTemplate& d = Dialog(3000);
  EXPECT_EQ(d.caption, u"ﾌｧｲﾙ出力");
  EXPECT_EQ(d.cx, 187);
  EXPECT_EQ(d.cy, 109);
  EXPECT_TRUE(Has(d, 3003, K::Group, u"CI-NETｺｰﾄﾞ"));
  EXPECT_TRUE(Has(d, 3100, K::Radio, u"拾い"));
  EXPECT_TRUE(Has(d, 3101, K::Radio, u"集計"));
  const ControlTemplate* cinet = d.Find(3102);
  ASSERT_NE(cinet, nullptr);
  EXPECT_EQ(cinet->kind, K::Radio);
  EXPECT_EQ(cinet->caption, u"CI-NETｺｰﾄﾞ");
  EXPECT_FALSE(cinet->visible());
  EXPECT_TRUE(Has(d, 3001, K::Static, u"出力区分"));
  EXPECT_TRUE(Has(d, 3200, K::Combo, u""));
  EXPECT_EQ(d.Find(3200)->style & style::kComboTypeMask, style::kComboDropDownList);
  EXPECT_TRUE(Has(d, 3002, K::Static, u"区切り記号"));
  EXPECT_TRUE(Has(d, 3303, K::Radio, u"ｶﾝﾏ"));
  EXPECT_TRUE(Has(d, 3304, K::Radio, u"ﾊﾟｲﾌﾟﾗｲﾝ"));
  EXPECT_TRUE(Has(d, 3305, K::Radio, u"ﾀﾌﾞ"));
  for (int id : {3100, 3101, 3102, 3303, 3304, 3305}) {
    EXPECT_FALSE(d.Find(id)->isAutomatic()) << id;
    EXPECT_TRUE(Inside(RectOf(*d.Find(id)), RectOf(*d.Find(3003)))) << id;
  }
  // Each radio group starts a new group, so that arrow keys stay within it.
  EXPECT_TRUE(d.Find(3100)->style & style::kGroup);
  EXPECT_TRUE(d.Find(3303)->style & style::kGroup);
  EXPECT_FALSE(d.Find(3304)->style & style::kGroup);
  EXPECT_TRUE(Has(d, 1, K::Button, u"出力"));
  EXPECT_TRUE(d.Find(1)->isDefaultButton());
  EXPECT_TRUE(Has(d, 2, K::Button, u"ｷｬﾝｾﾙ"));
  EXPECT_FALSE(d.Find(2)->isDefaultButton());
}

// The control table of the size dialog, row by row: check box, symbol, number, sizes 1 to 12,
// count. Row 2 is numbered irregularly.
constexpr std::array<std::array<int, 16>, 6> kSizeTable = {{
    {386, 395, 396, 397, 410, 411, 412, 413, 414, 415, 416, 417, 418, 419, 420, 421},
    {387, 398, 399, 400, 401, 402, 403, 404, 405, 406, 407, 408, 409, 422, 423, 424},
    {388, 425, 426, 427, 428, 429, 430, 431, 432, 433, 434, 435, 436, 437, 438, 439},
    {389, 440, 441, 442, 443, 444, 445, 446, 447, 448, 449, 450, 451, 452, 453, 454},
    {390, 455, 456, 457, 458, 459, 460, 461, 462, 463, 464, 465, 466, 467, 468, 469},
    {391, 470, 471, 472, 473, 474, 475, 476, 477, 478, 479, 480, 481, 482, 483, 484},
}};

TEST(BuiltInTemplates, SizeDialogControlTableInRowOrder) {
  const DialogTemplate& d = Dialog(201);
  EXPECT_EQ(d.caption, u"サイズ設定");
  std::vector<int> table;
  for (const ControlTemplate& c : d.controls)
    if (c.kind == K::Check || c.kind == K::Combo) table.push_back(c.id);
  std::vector<int> expected;
  for (const auto& row : kSizeTable) expected.insert(expected.end(), row.begin(), row.end());
  EXPECT_EQ(table, expected);

  for (size_t r = 0; r < kSizeTable.size(); ++r) {
    const ControlTemplate& check = *d.Find(kSizeTable[r][0]);
    EXPECT_EQ(check.kind, K::Check);
    EXPECT_TRUE(check.isAutomatic()) << "a click checks the box itself";
    for (size_t k = 1; k < 16; ++k) {
      const ControlTemplate& combo = *d.Find(kSizeTable[r][k]);
      EXPECT_EQ(combo.kind, K::Combo);
      EXPECT_TRUE(combo.comboTakesText()) << combo.id;
      EXPECT_TRUE(combo.visible()) << combo.id;
      // Columns line up with the row above; rows go down the dialog.
      if (r > 0) {
        const ControlTemplate& above = *d.Find(kSizeTable[r - 1][k]);
        EXPECT_EQ(combo.x, above.x) << combo.id;
        EXPECT_GE(combo.y, above.y + 12) << combo.id;
      }
      const ControlTemplate& left = *d.Find(kSizeTable[r][k - 1]);
      EXPECT_GE(combo.x, left.x + left.cx) << combo.id;
    }
  }
}

TEST(BuiltInTemplates, SizeDialogHeadingsAndButtons) {
  const DialogTemplate& d = Dialog(201);
  const int heads[] = {326, 327, 328, 329, 378, 379, 380, 381, 382, 383, 384, 385};
  const TextView captions[] = {u"①", u"②", u"③", u"④", u"⑤", u"⑥", u"⑦", u"⑧", u"⑨", u"⑩", u"⑪", u"⑫"};
  std::vector<int> order;
  for (const ControlTemplate& c : d.controls)
    if (c.kind == K::Static && c.id != -1) order.push_back(c.id);
  EXPECT_EQ(order, std::vector<int>(std::begin(heads), std::end(heads)));
  for (size_t k = 0; k < 12; ++k) {
    EXPECT_TRUE(Has(d, heads[k], K::Static, captions[k]));
    EXPECT_EQ(d.Find(heads[k])->x, d.Find(kSizeTable[0][3 + k])->x) << "heading over its size column";
  }
  for (TextView head : {u"記号", u"番号", u"台数"}) EXPECT_NE(WithCaption(d, K::Static, head), nullptr) << ToUtf8(head);
  EXPECT_EQ(WithCaption(d, K::Static, u"記号")->x, d.Find(395)->x);
  EXPECT_EQ(WithCaption(d, K::Static, u"番号")->x, d.Find(396)->x);
  EXPECT_EQ(WithCaption(d, K::Static, u"台数")->x, d.Find(421)->x);

  EXPECT_TRUE(Has(d, 324, K::Button, u"行追加"));
  EXPECT_TRUE(Has(d, 325, K::Button, u"行削除"));
  EXPECT_TRUE(Has(d, 392, K::Button, u"↑"));
  EXPECT_TRUE(Has(d, 393, K::Button, u"↓"));
  EXPECT_TRUE(Has(d, 201, K::Button, u"注記設定"));
  EXPECT_TRUE(Has(d, 322, K::Button, u"登録"));
  EXPECT_TRUE(Has(d, 2, K::Button, u"ｷｬﾝｾﾙ"));
  const ControlTemplate& lastCheck = *d.Find(391);
  for (int id : {324, 325, 392, 393, 201, 322, 2})
    EXPECT_GT(d.Find(id)->y, lastCheck.y + lastCheck.cy) << "buttons under the sixth row: " << id;
}

TEST(BuiltInTemplates, AttributeDialog) {
  const DialogTemplate& d = Dialog(1000);
  EXPECT_EQ(d.caption, u"属性情報の確認・編集");
  const ControlTemplate* grid = d.Find(1001);
  ASSERT_NE(grid, nullptr);
  EXPECT_EQ(grid->kind, K::List);
  EXPECT_EQ(grid->windowClass, u"SysListView32");
  EXPECT_TRUE(grid->style & style::kListReport);
  EXPECT_TRUE(grid->style & style::kListShowSelAlways);
  EXPECT_FALSE(grid->style & style::kListOwnerDrawFixed);
  EXPECT_GE(grid->cx, 480) << "room for the 17 columns (750 pixels wide together)";

  struct Field {
    int label;
    TextView caption;
    int field;
    ControlKind kind;
  };
  const Field fields[] = {
      {IDC_LABEL_RECORD_SYMBOL, u"記号", 1100, K::Combo}, {IDC_LABEL_WORK_ITEM, u"工事項目", 1101, K::Combo},
      {IDC_LABEL_AB_CLASS, u"A材/別途", 1102, K::Combo},  {IDC_LABEL_DRAWING_SYMBOL, u"図記号", 1202, K::Edit},
      {IDC_LABEL_MEMBER, u"部材", 1103, K::Combo},        {IDC_LABEL_DIM1, u"寸法１", 1104, K::Combo},
      {IDC_LABEL_DIM2, u"寸法2", 1105, K::Combo},         {IDC_LABEL_DIM3, u"寸法3", 1106, K::Combo},
      {IDC_LABEL_MATERIAL, u"材質", 1107, K::Combo},      {IDC_LABEL_SPECIFICATION, u"仕様", 1111, K::Combo},
      {IDC_LABEL_QUANTITY, u"数量", 1108, K::Combo},      {IDC_LABEL_DESIGNATION, u"呼称", 1109, K::Combo},
      {IDC_LABEL_REMARKS, u"備考", 1110, K::Combo},
  };
  for (const Field& f : fields) {
    EXPECT_TRUE(Has(d, f.label, K::Static, f.caption));
    EXPECT_TRUE(Has(d, f.field, f.kind, u""));
    EXPECT_GE(f.label, 1500) << "labels have ids of their own";
    EXPECT_TRUE(Labels(*d.Find(f.label), *d.Find(f.field))) << ToUtf8(f.caption);
  }
  for (auto [dim, suffix] : {std::pair{1104, 1212}, std::pair{1105, 1213}, std::pair{1106, 1214}}) {
    EXPECT_TRUE(Has(d, suffix, K::Edit, u""));
    EXPECT_EQ(d.Find(suffix)->y, d.Find(dim)->y) << "the text after a dimension sits beside it";
    EXPECT_GT(d.Find(suffix)->x, d.Find(dim)->x);
  }
  EXPECT_FALSE(d.Find(1100)->comboTakesText()) << "記号 chooses among the records";
  for (int id : {1101, 1102, 1103, 1104, 1105, 1106, 1107, 1108, 1109, 1110, 1111})
    EXPECT_TRUE(d.Find(id)->comboTakesText()) << id;
  EXPECT_TRUE(d.Find(1101)->style & style::kComboSort) << "工事項目 sorts its choices";

  EXPECT_TRUE(Has(d, 1300, K::Button, u"編集"));
  EXPECT_TRUE(Has(d, 1301, K::Button, u"追加"));
  EXPECT_TRUE(Has(d, 1302, K::Button, u"削除"));
  EXPECT_TRUE(Has(d, 1303, K::Button, u"↑"));
  EXPECT_TRUE(Has(d, 1304, K::Button, u"↓"));
  EXPECT_TRUE(Has(d, 1305, K::Button, u"戻る"));
  EXPECT_TRUE(Has(d, 1400, K::Radio, u"上へ"));
  EXPECT_TRUE(Has(d, 1401, K::Radio, u"下へ"));
  EXPECT_FALSE(d.Find(1400)->isAutomatic());
  EXPECT_FALSE(d.Find(1401)->isAutomatic());
  EXPECT_TRUE(Has(d, 1, K::Button, u"登録"));
  EXPECT_TRUE(d.Find(1)->isDefaultButton());
  EXPECT_TRUE(Has(d, 2, K::Button, u"ｷｬﾝｾﾙ"));
}

TEST(BuiltInTemplates, TakeoffCheckDialog) {
  const DialogTemplate& d = Dialog(2000);
  EXPECT_EQ(d.caption, u"標準図拾い確認");
  const ControlTemplate* list = d.Find(389);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->kind, K::List);
  EXPECT_TRUE(list->style & style::kListReport);
  EXPECT_TRUE(list->style & style::kListShowSelAlways);
  EXPECT_FALSE(list->style & style::kListOwnerDrawFixed);
  EXPECT_GE(list->cx, 580) << "23 columns";
  EXPECT_GE(list->cy, 180);

  EXPECT_TRUE(Has(d, 2001, K::Static, u"CI-NETｺｰﾄﾞ"));
  EXPECT_TRUE(Has(d, 2100, K::Edit, u""));
  EXPECT_TRUE(Labels(*d.Find(2001), *d.Find(2100)));
  const std::pair<int, TextView> combos[] = {{2300, u"部材"},     {2301, u"用途ｺｰﾄﾞ"}, {2302, u"施工ｺｰﾄﾞ"},
                                             {2303, u"支給区分"}, {2304, u"夜間区分"}, {2305, u"内張区分"}};
  for (auto [id, caption] : combos) {
    EXPECT_TRUE(Has(d, id, K::Combo, u""));
    EXPECT_TRUE(d.Find(id)->comboTakesText()) << id;
    const ControlTemplate* label = WithCaption(d, K::Static, caption);
    ASSERT_NE(label, nullptr) << ToUtf8(caption);
    EXPECT_TRUE(Labels(*label, *d.Find(id))) << ToUtf8(caption);
  }
  EXPECT_TRUE(Has(d, 2200, K::Button, u"ﾌｧｲﾙ 出力"));
  EXPECT_TRUE(Has(d, 1, K::Button, u"登録"));
  EXPECT_TRUE(d.Find(1)->isDefaultButton());
  EXPECT_TRUE(Has(d, 2, K::Button, u"ｷｬﾝｾﾙ"));
  EXPECT_FALSE(d.Find(2200)->isDefaultButton());
}

TEST(BuiltInTemplates, StringTable) {
  const ResourceScript& r = BuiltInResources();
  ASSERT_EQ(r.strings.count(IDS_COMMAND_NAME), 1u);
  EXPECT_EQ(r.strings.at(IDS_COMMAND_NAME), u"TQ_STD_INF");
  EXPECT_EQ(r.strings.at(IDS_COMMAND_GROUP), u"TQ");
  EXPECT_EQ(r.strings.at(IDS_APP_DESCRIPTION), u"TQ Add In Application");
}

TEST(BuiltInTemplates, ResourceHeaderGivesTheIdsTheDialogsUse) {
  EXPECT_EQ(IDD_MAIN, 200);
  EXPECT_EQ(IDD_SIZE, 201);
  EXPECT_EQ(IDD_SETUP, 202);
  EXPECT_EQ(IDD_ATTRINF, 1000);
  EXPECT_EQ(IDD_COLLECTINF, 2000);
  EXPECT_EQ(IDD_FILEOUT, 3000);
  // Each control keeps the name resource.h gives it.
  EXPECT_EQ(Dialog(200).Find(200)->symbol, u"IDC_SHEET_NAME");
  EXPECT_EQ(Dialog(201).Find(387)->symbol, u"IDC_ROW2_CHECK");
  EXPECT_EQ(Dialog(202).Find(387)->symbol, u"IDC_CHAR_HEIGHT");
  EXPECT_EQ(Dialog(2000).Find(389)->symbol, u"IDC_TAKEOFF_LIST");
  EXPECT_EQ(Dialog(3000).Find(2)->symbol, u"IDCANCEL");
}

}  // namespace
}  // namespace tq::dialog
