#include "info/AttrInfJob.hpp"

#include <algorithm>

#include "base/Paths.hpp"

namespace tq {

using dialog::ComboBox;
using dialog::ListView;

namespace {

constexpr char16_t kSave[] = u"保存";
constexpr char16_t kEdit[] = u"編集";
constexpr char16_t kAdd[] = u"追加";
constexpr char16_t kWorkItemMissing[] = u"工事項目を入力して下さい。";
constexpr char16_t kSelectRowToDelete[] = u"削除する行を選択してください。";
constexpr char16_t kConfirmDelete[] = u"行を削除します。よろしいですか。";
constexpr char16_t kCannotMoveUp[] = u"上へのシフトはできません。";
constexpr char16_t kCannotMoveDown[] = u"下へのシフトはできません。";
constexpr char16_t kConfirmDiscard[] = u"編集内容を破棄します。よろしいですか。";
// Our decision: a line is stored as fields joined by "," with no quoting, so a comma in a
// field would split the line on the next reading and shift every later field. Typing one is
// refused and the field keeps its text.
constexpr char16_t kCommaRefused[] = u"「,」(カンマ) は入力できません。";
constexpr char16_t kBMaterialTable[] = u"標準図用B材設定.csv";
constexpr char16_t kWorkItemGroup[] = u"S501";
constexpr char16_t kPlaceholder[] = u" ";
constexpr int kCancelIsDefault = 1;  // the second button of an OK/Cancel box

// The field under grid cell `cell` (2 to 16), with its label.
struct Field {
  int cell;
  int id;
  int label;
  bool combo;
};
constexpr std::array<Field, 15> kFields{{
    {2, IDC_WORK_ITEM, IDC_LABEL_WORK_ITEM, true},
    {3, IDC_AB_CLASS, IDC_LABEL_AB_CLASS, true},
    {4, IDC_DRAWING_SYMBOL, IDC_LABEL_DRAWING_SYMBOL, false},
    {5, IDC_MEMBER, IDC_LABEL_MEMBER, true},
    {6, IDC_DIM1, IDC_LABEL_DIM1, true},
    {7, IDC_DIM1_SUFFIX, IDC_LABEL_DIM1, false},
    {8, IDC_DIM2, IDC_LABEL_DIM2, true},
    {9, IDC_DIM2_SUFFIX, IDC_LABEL_DIM2, false},
    {10, IDC_DIM3, IDC_LABEL_DIM3, true},
    {11, IDC_DIM3_SUFFIX, IDC_LABEL_DIM3, false},
    {12, IDC_MATERIAL, IDC_LABEL_MATERIAL, true},
    {13, IDC_SPECIFICATION, IDC_LABEL_SPECIFICATION, true},
    {14, IDC_QUANTITY, IDC_LABEL_QUANTITY, true},
    {15, IDC_DESIGNATION, IDC_LABEL_DESIGNATION, true},
    {16, IDC_REMARKS, IDC_LABEL_REMARKS, true},
}};

const Field* FieldOfCell(int cell) {
  for (const Field& f : kFields)
    if (f.cell == cell) return &f;
  return nullptr;
}

const Field* FieldOfId(int id) {
  for (const Field& f : kFields)
    if (f.id == id) return &f;
  return nullptr;
}

std::vector<ListColumn> GridColumns() {
  using A = ColumnAlign;
  return {{u"記号/台数", 50, A::Left}, {u"機器名称", 80, A::Left}, {u"工事項目", 80, A::Left},
          {u"A材/別途", 50, A::Center}, {u"図記号", 30, A::Center}, {u"部材", 100, A::Left},
          {u"寸法1", 30, A::Right},     {u" ", 30, A::Left},        {u"寸法2", 30, A::Right},
          {u"", 30, A::Left},           {u"寸法3", 30, A::Right},   {u"", 30, A::Left},
          {u"材質", 20, A::Left},       {u"仕様", 20, A::Left},     {u"数量", 20, A::Right},
          {u"呼称", 20, A::Left},       {u"備考", 100, A::Left}};
}

bool IsTyping(Notification code) { return code == Notification::EditChange || code == Notification::EditTextChange; }

}  // namespace

CAttrInfJob::CAttrInfJob(Drawing& drawing, ObjectId sheetText, const Folders& folders, dialog::DialogServices services)
    : dialog::Dialog(IDD_ATTRINF, services), drawing_(drawing), sheetText_(sheetText), folders_(folders) {}

bool CAttrInfJob::OnInitDialog() {
  ReadTables();
  ListView grid = List(IDC_ATTR_GRID);
  grid.SetExtendedStyle(true, true);
  grid.SetColumns(GridColumns());

  records_ = ReadInfoRecords(drawing_, sheetText_, attributeKeys_);
  countAtOpening_ = static_cast<int>(records_.size());
  if (records_.empty()) {
    MessageBox(kNoInformationMessage, MessageIcon::Stop);
    EndDialog(0);
    return true;
  }

  ShowRecord(0);
  SelectGridRow(0);
  FillSymbolCombo();
  FillWorkItemCombo();
  FillDimensionCombos();
  LoadChoiceLists();
  CheckItem(IDC_INSERT_ABOVE, true);
  insertSide_ = InsertSide::Above;
  ApplyModeState();
  RememberFields();
  return true;
}

void CAttrInfJob::ReadTables() {
  choiceFolders_ = FindChoiceFolders(folders_);
  const CodePage& codePage = folders_.codePage();
  if (!choiceFolders_.choiceFolder.empty())
    bMaterial_ = BMaterialTable::Load(ToFsPath(JoinPath(choiceFolders_.choiceFolder, kBMaterialTable)), codePage);
  if (!choiceFolders_.attributeIdTable.empty())
    attributeIds_ = AttributeIdTable::Load(ToFsPath(choiceFolders_.attributeIdTable), codePage);
  attributeKeys_ = attributeIds_.AllValues();
  // The attribute dialog reads entries above the first header as unit counts.
  sizes_ = LoadSymbolSizeData(folders_.SymbolSizeDataFile(), codePage, SizeSection::Counts);
}

// ---- the grid and the records

void CAttrInfJob::ShowRecord(int index) {
  shown_ = index;
  ListView grid = List(IDC_ATTR_GRID);
  grid.DeleteAllItems();
  const CStdInfRecord& record = ShownRecord();
  for (size_t line = kFirstGridLine; line < record.size(); ++line) {
    GridCells cells = CellsOfLine(record[line]);
    grid.InsertItem(grid.GetItemCount(), std::vector<Text>(cells.begin(), cells.end()));
  }
}

void CAttrInfJob::SelectGridRow(int row) { List(IDC_ATTR_GRID).SelectOnly(row); }

int CAttrInfJob::SelectedRow() { return List(IDC_ATTR_GRID).GetFirstSelected(); }

// ---- the combos

void CAttrInfJob::FillSymbolCombo() {
  ComboBox symbols = Combo(IDC_RECORD_SYMBOL);
  symbols.ResetContent();
  for (const CStdInfRecord& record : records_) {
    // A record shorter than three lines has no symbol to name it by.
    Text name = record.size() > kFirstGridLine ? record[kFirstGridLine].member(RowMember::kSymbolOrUnits) : Text();
    symbols.AddString(name.empty() ? Text(kPlaceholder) : name);
  }
  symbols.SetCurSel(0);
}

void CAttrInfJob::FillWorkItemCombo() {
  ComboBox workItems = Combo(IDC_WORK_ITEM);
  workItems.ResetContent();
  ColumnLists group = attributeIds_.Group(kWorkItemGroup);
  for (const Text& entry : group.column(2)) workItems.AddString(entry);
}

void CAttrInfJob::FillDimensionCombos() {
  const std::vector<Text>& sizes = sizes_.list(SizeSection::Sizes);
  int preset = sizes_.defaultIndex(SizeSection::Sizes);
  for (int id : {IDC_DIM1, IDC_DIM2, IDC_DIM3}) {
    ComboBox combo = Combo(id);
    combo.ResetContent();
    for (const Text& size : sizes) combo.AddString(size);
    if (preset >= 0) combo.SetCurSel(preset);
  }
}

void CAttrInfJob::FillFromFile(const ChoiceFile& file) {
  std::optional<std::vector<Text>> entries =
      ComboEntriesFromFile(ChoiceFilePath(choiceFolders_, file, GetDlgItemText(IDC_AB_CLASS)), folders_.codePage());
  if (!entries) return;  // a missing file leaves its combo as it is
  ComboBox combo = Combo(file.comboId);
  combo.ResetContent();
  for (const Text& entry : *entries) combo.AddString(entry);
  combo.SetCurSel(0);
}

void CAttrInfJob::LoadChoiceLists() {
  // "A材/別途" comes first: the material lists follow its new value.
  for (const ChoiceFile& file : ChoiceFiles()) FillFromFile(file);
}

void CAttrInfJob::RefillMaterialLists() {
  for (const ChoiceFile& file : ChoiceFiles())
    if (file.bFile) FillFromFile(file);
}

// ---- the fields and the buttons

void CAttrInfJob::ApplyModeState() {
  bool inMode = editMode_ || addMode_;
  EnableItem(IDC_LABEL_RECORD_SYMBOL, !inMode);
  EnableItem(IDC_RECORD_SYMBOL, !inMode);
  for (const Field& f : kFields) {
    EnableItem(f.id, inMode);
    EnableItem(f.label, inMode);
  }
  EnableItem(IDC_ATTR_EDIT, !addMode_);
  EnableItem(IDC_ATTR_ADD, !editMode_);
  for (int id : {IDC_ATTR_DELETE, IDC_ATTR_UP, IDC_ATTR_DOWN}) EnableItem(id, !inMode);
  EnableItem(IDC_ATTR_BACK, inMode);
  EnableItem(IDC_INSERT_ABOVE, addMode_);
  EnableItem(IDC_INSERT_BELOW, addMode_);
  EnableItem(kIdOk, !inMode);
  SetDlgItemText(IDC_ATTR_EDIT, editMode_ ? kSave : kEdit);
  SetDlgItemText(IDC_ATTR_ADD, addMode_ ? kSave : kAdd);
}

Text CAttrInfJob::FieldText(int cell) const {
  const Field* f = FieldOfCell(cell);
  return f ? GetDlgItemText(f->id) : Text();
}

void CAttrInfJob::SetFieldText(int cell, TextView text) {
  const Field* f = FieldOfCell(cell);
  if (!f) return;
  if (f->combo) {
    // Select the entry that shows exactly this text, if the list has one; the text stands either way.
    ComboBox combo = Combo(f->id);
    int entry = -1;
    for (int i = 0, n = combo.GetCount(); i < n && entry < 0; ++i)
      if (combo.GetLBText(i) == text) entry = i;
    combo.SetCurSel(entry);
  }
  SetDlgItemText(f->id, text);
}

void CAttrInfJob::LoadFieldsFromRow(int row) {
  ListView grid = List(IDC_ATTR_GRID);
  if (row < 0 || row >= grid.GetItemCount()) return;
  for (const Field& f : kFields) SetFieldText(f.cell, grid.GetItemText(row, f.cell));
  RememberFields();
}

void CAttrInfJob::RememberFields() {
  for (const Field& f : kFields) fieldTexts_[f.id] = GetDlgItemText(f.id);
}

bool CAttrInfJob::RefuseComma(int id) {
  const Field* f = FieldOfId(id);
  if (!f) return false;
  Text text = GetDlgItemText(id);
  if (text.find(u',') == Text::npos) {
    fieldTexts_[id] = text;
    return false;
  }
  MessageBox(kCommaRefused, MessageIcon::Stop);
  Text kept = fieldTexts_[id];
  if (f->combo) SetFieldText(f->cell, kept);
  else SetDlgItemText(id, kept);
  return true;
}

// ---- notifications

void CAttrInfJob::OnCommand(int id, Notification code) {
  if (IsTyping(code)) {
    RefuseComma(id);
    return;
  }
  if (code == Notification::SelChange) {
    OnSelChange(id);
    return;
  }
  if (code == Notification::Clicked) {
    switch (id) {
      case IDC_ATTR_EDIT: OnEdit(); return;
      case IDC_ATTR_ADD: OnAdd(); return;
      case IDC_ATTR_DELETE: OnDelete(); return;
      case IDC_ATTR_UP: OnMove(-1); return;
      case IDC_ATTR_DOWN: OnMove(+1); return;
      case IDC_ATTR_BACK: OnBack(); return;
      case IDC_INSERT_ABOVE:
      case IDC_INSERT_BELOW:
        insertSide_ = id == IDC_INSERT_ABOVE ? InsertSide::Above : InsertSide::Below;
        CheckItem(IDC_INSERT_ABOVE, insertSide_ == InsertSide::Above);
        CheckItem(IDC_INSERT_BELOW, insertSide_ == InsertSide::Below);
        return;
      default: break;
    }
  }
  dialog::Dialog::OnCommand(id, code);
}

void CAttrInfJob::OnNotify(int id, Notification code) {
  if (id == IDC_ATTR_GRID && (code == Notification::ListClick || code == Notification::ListItemChanged)) OnRowSelected();
}

void CAttrInfJob::OnSelChange(int id) {
  if (id == IDC_RECORD_SYMBOL) {
    int index = Combo(IDC_RECORD_SYMBOL).GetCurSel();
    if (index < 0 || index >= static_cast<int>(records_.size())) return;
    ShowRecord(index);
    SelectGridRow(0);
    return;
  }
  if (RefuseComma(id)) return;
  if (id == IDC_AB_CLASS) {
    RefillMaterialLists();
    RememberFields();
  } else if (id == IDC_MEMBER && GetDlgItemText(IDC_AB_CLASS).empty()) {
    int row = SelectedRow();
    if (row < 0 || row >= GridRowCount(ShownRecord())) return;
    ShownRecord()[static_cast<size_t>(row) + kFirstGridLine].member(RowMember::kMaterialCode) =
        bMaterial_.CodeFor(GetDlgItemText(IDC_MEMBER), GetDlgItemText(IDC_MATERIAL));
  }
}

void CAttrInfJob::OnRowSelected() {
  if (editMode_) LoadFieldsFromRow(SelectedRow());
}

// ---- the row operations

void CAttrInfJob::OnEdit() {
  ListView grid = List(IDC_ATTR_GRID);
  if (!editMode_) {
    if (SelectedRow() < 0) SelectGridRow(0);
    editMode_ = true;
    ApplyModeState();
    LoadFieldsFromRow(SelectedRow());
    return;
  }
  int row = SelectedRow();
  if (row >= 0) {
    for (const Field& f : kFields) grid.SetItemText(row, f.cell, GetDlgItemText(f.id));
    CStdInfRecord& record = ShownRecord();
    for (int r = 0; r <= row && r < GridRowCount(record); ++r) {
      GridCells cells;
      for (int k = 0; k < kGridColumnCount; ++k) cells[static_cast<size_t>(k)] = grid.GetItemText(r, k);
      WriteCellsToLine(cells, record[static_cast<size_t>(r) + kFirstGridLine]);
    }
  }
  editMode_ = false;
  ApplyModeState();
}

void CAttrInfJob::OnAdd() {
  ListView grid = List(IDC_ATTR_GRID);
  if (!addMode_) {
    addStartCount_ = grid.GetItemCount();
    lastAdded_ = -1;
    addMode_ = true;
    ApplyModeState();
    LoadChoiceLists();
    FillDimensionCombos();
    RememberFields();
    return;
  }
  Text workItem = GetDlgItemText(IDC_WORK_ITEM);
  if (workItem.empty() || workItem == kPlaceholder) {
    MessageBox(kWorkItemMissing, MessageIcon::Stop);
    return;
  }
  // The new row's "記号/台数" and "機器名称" stay empty: it continues the rows above it.
  std::vector<Text> cells(kGridColumnCount);
  for (const Field& f : kFields) cells[static_cast<size_t>(f.cell)] = GetDlgItemText(f.id);
  lastAdded_ = grid.GetItemCount();
  grid.InsertItem(lastAdded_, cells);
  addMode_ = false;

  int selected = SelectedRow();
  int placed = -1;
  for (int r = addStartCount_; r < grid.GetItemCount(); ++r) {
    GridCells added;
    for (int k = 0; k < kGridColumnCount; ++k) added[static_cast<size_t>(k)] = grid.GetItemText(r, k);
    placed = InsertLine(ShownRecord(), LineFromCells(added, static_cast<size_t>(r), attributeKeys_), selected, insertSide_);
  }
  ShowRecord(shown_);
  SelectGridRow(placed);
  ApplyModeState();
}

void CAttrInfJob::OnDelete() {
  int row = SelectedRow();
  if (row < 0) {
    MessageBox(kSelectRowToDelete, MessageIcon::Stop);
    return;
  }
  if (MessageBox(kConfirmDelete, MessageIcon::None, MessageButtons::OkCancel, kCancelIsDefault) != MessageAnswer::Ok)
    return;
  DeleteGridRow(ShownRecord(), row);
  ShowRecord(shown_);
  SelectGridRow(std::min(row, GridRowCount(ShownRecord()) - 1));
}

void CAttrInfJob::OnMove(int step) {
  int row = SelectedRow();
  if (row < 0) return;
  if (step < 0 && row == 0) {
    MessageBox(kCannotMoveUp, MessageIcon::Stop);
    return;
  }
  if (step > 0 && row + 1 >= GridRowCount(ShownRecord())) {
    MessageBox(kCannotMoveDown, MessageIcon::Stop);
    return;
  }
  SwapRowData(ShownRecord(), row, row + step);
  ShowRecord(shown_);
  SelectGridRow(row + step);
}

void CAttrInfJob::OnBack() {
  editMode_ = false;
  addMode_ = false;
  ApplyModeState();
}

// ---- closing

void CAttrInfJob::OnOK() {
  Status written = WriteInfoRecords(drawing_, sheetText_, records_, countAtOpening_);
  if (!written) {
    MessageBox(written.error().message, MessageIcon::Stop);
    return;
  }
  EndDialog(kIdOk);
}

void CAttrInfJob::OnCancel() {
  if (MessageBox(kConfirmDiscard, MessageIcon::None, MessageButtons::OkCancel, kCancelIsDefault) == MessageAnswer::Ok)
    EndDialog(kIdCancel);
}

}  // namespace tq
