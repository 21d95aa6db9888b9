#include "size/SizeDlg.hpp"

#include <algorithm>

#include "dialog/DialogUnits.hpp"
#include "info/StdInfRecord.hpp"
#include "size/SetupDlg.hpp"
#include "size/SizeRowControls.hpp"
#include "size/WorkbookSearch.hpp"

namespace tq {

namespace {

// The status-bar progress of the host for the workbook steps.
class UiProgress final : public Progress {
 public:
  explicit UiProgress(Ui& ui) : ui_(ui) {}
  ~UiProgress() override { ui_.EndProgress(); }
  void Begin(TextView caption, int range) override { ui_.BeginProgress(caption, range); }
  void SetPosition(int position) override { ui_.SetProgress(position); }

 private:
  Ui& ui_;
};

// The layout's distances are pixels; the template's positions dialog units. The dialog font
// ("ＭＳ Ｐゴシック", 9 points) is 12 pixels high on the screens the dialog was laid out for.
constexpr dialog::DialogBaseUnits kTemplateFontUnits{6, 12};
constexpr int kButtonGapPixels = 16;
constexpr int kBelowButtonsPixels = 44;

int PixelsToDialogY(int pixels) { return dialog::MulDiv(pixels, 8, kTemplateFontUnits.charHeight); }

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// The stored values are hundredths of the drawing unit and give the width as a length; the
// table is written with the width as a factor of the height.
SizeTextSettings TextSettingsOf(const SizeTableValues& values) {
  return {values.charHeight, values.charHeight > 0 ? values.charWidth / values.charHeight : 1.0, values.rowSpacing};
}

}  // namespace

bool IsValidSizeNumber(TextView text) {
  size_t i = 0;
  if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ++i;
  bool digits = false, point = false;
  for (; i < text.size(); ++i) {
    if (IsDigit(text[i])) digits = true;
    else if (text[i] == u'.' && !point) point = true;
    else return false;
  }
  return text.empty() || digits;
}

CSizeDlg::CSizeDlg(const DrawingContext& context, ObjectId sheetText, FramePolygon frame, const Folders& folders,
                   dialog::DialogServices services, std::unique_ptr<dialog::Dialog>& sizeDialogSlot)
    : dialog::Dialog(IDD_SIZE, services),
      context_(context),
      sheetText_(sheetText),
      frame_(std::move(frame)),
      folders_(folders),
      slot_(sizeDialogSlot) {}

bool CSizeDlg::OnInitDialog() {
  text_ = TextSettingsOf(context_.settings.ReadSizeTable());
  return true;
}

bool CSizeDlg::Initialise() {
  Text sheet;
  if (!ReadSheetName(context_.drawing, sheetText_, sheet)) {
    MessageBox(kNoSheetNameMessage, MessageIcon::Stop);
    return false;
  }
  window().SetCaption(sheet + kSizeCaptionSuffix);
  WorkbookSearch found = FindSizeWorkbook(folders_, sheet);
  switch (found.result) {
    case WorkbookSearchResult::Found: break;
    case WorkbookSearchResult::NotFound: MessageBox(kWorkbookNotFoundMessage, MessageIcon::Stop); return false;
    case WorkbookSearchResult::NoDataFolder: MessageBox(kNoDataFolderMessage, MessageIcon::Stop); return false;
  }
  baseName_ = found.baseName;
  workbookPath_ = baseName_ + u".xls";
  definitionPath_ = baseName_ + u".def";
  // Without the workbook's layout the dialog still opens, for editing only.
  if (!ImportWorkbook()) return true;
  DisableUnusedSizes();
  LayOutRows();
  FillSizeCombos();
  ReadDrawnTable();
  window().SetFocus(IDC_ROW1_SYMBOL);
  return true;
}

bool CSizeDlg::ImportWorkbook() {
  Workbook* workbook = folders_.host().SizeWorkbook();
  if (!workbook) {
    MessageBox(kWorkbookInitFailed, MessageIcon::Stop);
    return false;
  }
  UiProgress progress(ui());
  Result<SizeImportResult> imported =
      ImportSizeWorkbook(*workbook, workbookPath_, context_.settings.ReadWorkbook(), progress);
  if (!imported) {
    MessageBox(imported.error().message, MessageIcon::Stop);
    return false;
  }
  import_ = std::move(*imported);
  for (size_t i = 0; i < import_.sizeCaptions.size() && i < kSizeHeadings.size(); ++i)
    SetDlgItemText(kSizeHeadings[i], import_.sizeCaptions[i]);
  for (const Text& warning : import_.warnings) MessageBox(warning, MessageIcon::Stop);
  return true;
}

void CSizeDlg::DisableUnusedSizes() {
  for (const RowControls& row : kRowControls)
    for (int k = import_.sizeCount; k < kSizeCombos; ++k) EnableItem(row[kFirstSizePosition + k], false);
}

void CSizeDlg::LayOutRows() {
  for (int r = 0; r < kSizeRows; ++r) {
    bool rowShown = r < rowCount_;
    for (int p = 0; p < kRowPositions; ++p) {
      bool isSize = p >= kFirstSizePosition && p < kCountPosition;
      bool shown = rowShown && (!isSize || p - kFirstSizePosition < import_.sizeCount);
      ShowItem(kRowControls[r][p], shown);
    }
  }
  const dialog::ControlTemplate* check = dialogTemplate().Find(kRowControls[rowCount_ - 1][kCheckPosition]);
  int checkBottom = window().ControlPosition(check->id).second + check->cy;
  int buttonsTop = checkBottom + PixelsToDialogY(kButtonGapPixels);
  int buttonsBottom = buttonsTop;
  for (int id : kSizeDialogButtons) {
    window().MoveControl(id, window().ControlPosition(id).first, buttonsTop);
    if (const dialog::ControlTemplate* button = dialogTemplate().Find(id))
      buttonsBottom = std::max(buttonsBottom, buttonsTop + button->cy);
  }
  window().SetClientHeight(dialog::DialogYToPixels(buttonsBottom, kTemplateFontUnits) + kBelowButtonsPixels);
}

void CSizeDlg::FillSizeCombos() {
  choices_ = LoadSymbolSizeData(folders_.SymbolSizeDataFile(), folders_.codePage());
  for (const RowControls& row : kRowControls)
    for (int p = kSymbolPosition; p < kRowPositions; ++p) {
      SizeSection section = p == kSymbolPosition   ? SizeSection::Symbols
                            : p == kNumberPosition ? SizeSection::Numbers
                            : p == kCountPosition  ? SizeSection::Counts
                                                   : SizeSection::Sizes;
      dialog::ComboBox combo = Combo(row[p]);
      for (const Text& entry : choices_.list(section)) combo.AddString(entry);
      if (choices_.defaultIndex(section) >= 0) combo.SetCurSel(choices_.defaultIndex(section));
    }
}

// The table drawn in the frame, or nothing once the user is told why it cannot be found.
std::optional<DrawnSizeTable> CSizeDlg::LocateDrawnTable() {
  Result<DrawnSizeTable> table = LocateSizeTable(context_, frame_, text_.rowSpacing);
  if (!table) {
    MessageBox(table.error().message, MessageIcon::Stop);
    return std::nullopt;
  }
  return std::move(*table);
}

void CSizeDlg::ReadDrawnTable() {
  std::optional<DrawnSizeTable> table = LocateDrawnTable();
  if (!table) return;
  std::vector<SizeRowValues> rows = ReadSizeTableRows(context_, *table, import_);
  if (rows.empty()) return;
  rowCount_ = std::clamp(static_cast<int>(rows.size()), 1, kSizeRows);
  for (int r = 0; r < rowCount_; ++r) {
    const SizeRowValues& values = rows[static_cast<size_t>(r)];
    SetRowText(r, kSymbolPosition, values.symbol);
    SetRowText(r, kNumberPosition, values.number);
    for (size_t k = 0; k < values.sizes.size() && k < kSizeCombos; ++k)
      SetRowText(r, kFirstSizePosition + static_cast<int>(k), values.sizes[k]);
    SetRowText(r, kCountPosition, values.count);
  }
  LayOutRows();
}

// ---- Rows ----

Text CSizeDlg::RowText(int row, int position) const { return GetDlgItemText(kRowControls[row][position]); }

// An entry of the list is selected; any other text stands in the edit part alone.
void CSizeDlg::SetRowText(int row, int position, TextView text) {
  int id = kRowControls[row][position];
  dialog::ComboBox combo = Combo(id);
  for (int i = 0, n = combo.GetCount(); i < n; ++i)
    if (combo.GetLBText(i) == text) {
      combo.SetCurSel(i);
      return;
    }
  combo.SetCurSel(-1);
  combo.SetWindowText(text);
}

CSizeDlg::RowTexts CSizeDlg::TextsOfRow(int row) const {
  RowTexts texts;
  for (int p = kSymbolPosition; p < kRowPositions; ++p) texts[p - kSymbolPosition] = RowText(row, p);
  return texts;
}

void CSizeDlg::SetRowTexts(int row, const RowTexts& texts) {
  for (int p = kSymbolPosition; p < kRowPositions; ++p) SetRowText(row, p, texts[p - kSymbolPosition]);
}

void CSizeDlg::ClearRow(int row) {
  SetRowTexts(row, {});
  CheckItem(kRowControls[row][kCheckPosition], false);
}

void CSizeDlg::SetRowDefaults(int row) {
  auto apply = [&](int position, SizeSection section) {
    int index = choices_.defaultIndex(section);
    if (index >= 0) Combo(kRowControls[row][position]).SetCurSel(index);
  };
  apply(kSymbolPosition, SizeSection::Symbols);
  apply(kNumberPosition, SizeSection::Numbers);
  for (int k = 0; k < kSizeCombos; ++k) apply(kFirstSizePosition + k, SizeSection::Sizes);
  apply(kCountPosition, SizeSection::Counts);
}

int CSizeDlg::CurrentRow() const {
  for (int r = 0; r < rowCount_; ++r)
    if (IsChecked(kRowControls[r][kCheckPosition])) return r;
  return -1;
}

void CSizeDlg::MakeCurrent(int row) {
  for (int r = 0; r < kSizeRows; ++r) CheckItem(kRowControls[r][kCheckPosition], r == row);
}

void CSizeDlg::OnRowChecked(int row) {
  if (IsChecked(kRowControls[row][kCheckPosition])) MakeCurrent(row);
}

void CSizeDlg::OnAddRow() {
  if (rowCount_ >= kSizeRows) return;
  ++rowCount_;
  int row = rowCount_ - 1;
  ClearRow(row);
  LayOutRows();
  SetRowDefaults(row);
  window().SetFocus(kRowControls[row][kSymbolPosition]);
}

void CSizeDlg::OnDeleteRow() {
  if (rowCount_ == 1) {
    ClearRow(0);
    MakeCurrent(0);
    return;
  }
  int current = CurrentRow();
  if (current < 0) return;
  for (int r = current; r + 1 < rowCount_; ++r) SetRowTexts(r, TextsOfRow(r + 1));
  bool wasLast = current == rowCount_ - 1;
  ClearRow(rowCount_ - 1);
  --rowCount_;
  LayOutRows();
  if (wasLast) MakeCurrent(rowCount_ - 1);
}

void CSizeDlg::OnMoveRow(int step) {
  int current = CurrentRow();
  int other = current + step;
  if (current < 0 || other < 0 || other >= rowCount_) return;
  RowTexts mine = TextsOfRow(current);
  SetRowTexts(current, TextsOfRow(other));
  SetRowTexts(other, mine);
  MakeCurrent(other);
}

void CSizeDlg::OnNoteSettings() {
  CSetupDlg setup(folders_, services());
  if (setup.DoModal() != kIdOk) return;
  text_ = TextSettingsOf(setup.values());
}

// ---- Registration ----

SizeRowValues CSizeDlg::RowValues(int row) const {
  SizeRowValues values{RowText(row, kSymbolPosition), RowText(row, kNumberPosition), {}, RowText(row, kCountPosition)};
  for (int k = 0; k < import_.sizeCount && k < kSizeCombos; ++k) values.sizes.push_back(RowText(row, kFirstSizePosition + k));
  return values;
}

std::vector<SizeRowValues> CSizeDlg::AllRowValues() const {
  std::vector<SizeRowValues> rows;
  for (int r = 0; r < rowCount_; ++r) rows.push_back(RowValues(r));
  return rows;
}

bool CSizeDlg::ConfirmRows() {
  bool noSymbol = false, badValue = false;
  for (const SizeRowValues& row : AllRowValues()) {
    noSymbol = noSymbol || row.symbol.empty();
    badValue = badValue || !IsValidSizeNumber(row.count);
    for (const Text& size : row.sizes) badValue = badValue || !IsValidSizeNumber(size);
  }
  if (!noSymbol && !badValue) return true;
  TextView question = noSymbol && badValue ? kNoSymbolAndBadValue : noSymbol ? kNoSymbol : kBadValue;
  return MessageBox(question, MessageIcon::None, MessageButtons::YesNo) == MessageAnswer::Yes;
}

Status CSizeDlg::WriteRecord(int number, const std::vector<Text>& lines) {
  auto lock = context_.drawing.LockForWrite();
  return WriteInfoRecordLines(context_.drawing, sheetText_, number, lines);
}

bool CSizeDlg::FillDrawnTable(const std::vector<SizeRowValues>& rows) {
  std::optional<DrawnSizeTable> table = LocateDrawnTable();
  if (!table) return false;
  TableLineProperties line = ReferenceLineProperties(context_.drawing, *table);
  if (!WriteSizeTableTexts(context_, *table, import_, rows, text_, line)) {
    MessageBox(kTableTextsFailed, MessageIcon::Stop);
    return false;
  }
  if (!RedrawSizeTableLines(context_, *table, rowCount_, text_, line)) {
    MessageBox(kTableLinesFailed, MessageIcon::Stop);
    return false;
  }
  return true;
}

void CSizeDlg::OnRegister() {
  context_.editor.BeginWaitCursor();
  struct WaitCursor {
    Editor& editor;
    ~WaitCursor() { editor.EndWaitCursor(); }
  } wait{context_.editor};
  if (!ConfirmRows()) return;
  Workbook* workbook = folders_.host().SizeWorkbook();
  if (!workbook) {
    MessageBox(kWorkbookInitFailed, MessageIcon::Stop);
    return;
  }
  std::vector<SizeRowValues> rows = AllRowValues();
  int next = 1;
  Status registered = [&] {
    UiProgress progress(ui());
    return RegisterSizeRows(
        *workbook, workbookPath_, import_, context_.settings.ReadWorkbook(), rows, progress,
        [&](int, std::vector<Text> lines) {
          if (!WriteRecord(next, lines)) MessageBox(kRecordWriteFailed, MessageIcon::Stop);
          ++next;
          return Status();
        },
        [&] {
          auto lock = context_.drawing.LockForWrite();
          RemoveInfoRecords(context_.drawing, sheetText_);
        });
  }();
  if (!registered) {
    MessageBox(registered.error().message, MessageIcon::Stop);
    return;
  }
  if (FillDrawnTable(rows)) MessageBox(kRegistrationDone, MessageIcon::Information);
}

// ---- Commands ----

void CSizeDlg::OnCommand(int id, Notification code) {
  if (code == Notification::Clicked) {
    for (int r = 0; r < kSizeRows; ++r)
      if (id == kRowControls[r][kCheckPosition]) return OnRowChecked(r);
    switch (id) {
      case IDC_ADD_ROW: OnAddRow(); return;
      case IDC_DELETE_ROW: OnDeleteRow(); return;
      case IDC_ROW_UP: OnMoveRow(-1); return;
      case IDC_ROW_DOWN: OnMoveRow(1); return;
      case IDC_NOTE_SETTINGS: OnNoteSettings(); return;
      case IDC_REGISTER_SIZES: OnRegister(); return;
      default: break;
    }
  }
  dialog::Dialog::OnCommand(id, code);
}

// The add-in forgets the dialog first; the dialog itself goes when this handler returns.
void CSizeDlg::OnCancel() {
  std::unique_ptr<dialog::Dialog> self;
  if (slot_.get() == this) self = std::move(slot_);
  dialog::Dialog::OnCancel();
}

}  // namespace tq
