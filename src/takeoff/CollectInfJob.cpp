#include "info/LineFields.hpp"
#include "takeoff/CollectInfJob.hpp"

#include "base/Lookup.hpp"
#include "base/Paths.hpp"
#include "base/TextFiles.hpp"
#include "info/BMaterialTable.hpp"
#include "takeoff/CodeExpansion.hpp"

namespace tq {

namespace {

// List columns of the item the controls show.
constexpr int kAbColumn = 3, kMemberColumn = 5, kMaterialColumn = 12, kSpecificationColumn = 13, kCinetColumn = 17;
constexpr int kQuantityColumn = 14, kDesignationColumn = 15;
constexpr int kDimensionColumns[] = {6, 8, 10};
// Combos 2301 to 2305 show list columns 18 to 22, filled from these attribute groups.
constexpr int kCodeCombos[] = {IDC_USE_CODE, IDC_WORK_CODE, IDC_SUPPLY_CLASS, IDC_NIGHT_CLASS, IDC_LINING_CLASS};
constexpr const char16_t* kCodeGroups[] = {u"SC01", u"SC03", u"SC04", u"SC05", u"SC06"};
constexpr int kFirstCodeColumn = 18;
// The member-name key of a substitute member file is this long.
constexpr size_t kMemberFileKeyLength = 14;

std::optional<ConfigTable> ReadTable(TextView folder, TextView name, const CodePage& codePage) {
  if (folder.empty()) return std::nullopt;
  return ReadConfigFile(ToFsPath(JoinPath(folder, name)), codePage);
}

}  // namespace

MemberTable LoadMemberTable(const ReferenceTables& tables, TextView fileKey, const CodePage& systemCodePage) {
  MemberTable table;
  std::optional<ConfigTable> rows = ReadTable(tables.stdDrawingFolder, Text(fileKey) + u".csv", systemCodePage);
  if (!rows && fileKey.size() >= kMemberFileKeyLength) {
    const ColumnLists& files = tables.memberCinetFiles;
    Text substitute = TableLookup(fileKey.substr(0, kMemberFileKeyLength), files.column(0), files.column(2));
    if (!substitute.empty()) rows = ReadTable(tables.stdDrawingFolder, substitute, systemCodePage);
  }
  if (rows) table.columns = ColumnLists(*rows, 4);
  return table;
}

CCollectInfJob::CCollectInfJob(dialog::DialogServices services, Drawing& drawing, Editor& editor, const Folders& folders,
                               std::vector<ObjectId> sheets, FileOutputAction fileOutput)
    : dialog::Dialog(IDD_COLLECTINF, services),
      drawing_(drawing),
      editor_(editor),
      folders_(folders),
      sheets_(std::move(sheets)),
      fileOutput_(std::move(fileOutput)) {}

void CCollectInfJob::MakeColumns() {
  dialog::ListView list = List(IDC_TAKEOFF_LIST);
  list.SetColumns({{u"", 300, ColumnAlign::Left}});
  list.SetExtendedStyle(true, true);
  int width = list.ClientWidth();
  std::vector<ListColumn> columns;
  for (size_t c = 0; c < kTakeoffColumns; ++c) {
    bool narrow = c == kQuantityColumn || c == kDesignationColumn;
    columns.push_back({TakeoffColumnHeaders()[c], width / (narrow ? 26 : 15), ColumnAlign::Left});
  }
  list.SetColumns(columns);
}

bool CCollectInfJob::OnInitDialog() {
  MakeColumns();
  job_ = TakeoffJob::Open(drawing_, folders_, sheets_);
  if (!job_) {
    MessageBox(kNoInformation, MessageIcon::Stop);
    EndDialog(0);
    return true;
  }
  dialog::ListView list = List(IDC_TAKEOFF_LIST);
  list.DeleteAllItems();
  for (size_t i = 0; i < job_->items.size(); ++i)
    list.InsertItem(static_cast<int>(i), std::vector<Text>(job_->items[i].begin(), job_->items[i].end()));
  list.SelectOnly(0);
  current_ = list.GetItemCount() > 0 ? 0 : -1;
  FillMemberCombo();
  FillCodeCombos();
  ShowCurrentValues();
  window().SetFocus(IDC_TAKEOFF_LIST);
  return true;
}

void CCollectInfJob::FillCodeCombos() {
  for (size_t k = 0; k < std::size(kCodeCombos); ++k) {
    dialog::ComboBox combo = Combo(kCodeCombos[k]);
    combo.ResetContent();
    const std::vector<Text>& choices = job_->tables.Group(kCodeGroups[k]).column(2);
    if (choices.empty()) combo.AddString(u"");
    for (const Text& choice : choices) combo.AddString(choice);
  }
}

const CTakeoffRow* CCollectInfJob::RowOfItem(int item) const {
  if (item < 0) return nullptr;
  size_t left = static_cast<size_t>(item);
  for (const TakeoffEntity& entity : job_->data)
    for (auto record = entity.rbegin(); record != entity.rend(); ++record) {
      size_t shown = record->size() > 2 ? record->size() - 2 : 0;
      if (left < shown) return &(*record)[left + 2];
      left -= shown;
    }
  return nullptr;
}

void CCollectInfJob::FillMemberCombo() {
  dialog::ComboBox combo = Combo(IDC_TAKEOFF_MEMBER);
  combo.ResetContent();
  members_ = MemberTable();
  dialog::ListView list = List(IDC_TAKEOFF_LIST);
  if (current_ < 0 || !list.GetItemText(current_, kAbColumn).empty()) {
    combo.AddString(u"");
    return;
  }
  const CTakeoffRow* row = RowOfItem(current_);
  Text key = row && !row->field(LinePosition::kBMaterialKey).empty() ? row->field(LinePosition::kBMaterialKey) : list.GetItemText(current_, kMemberColumn);
  members_ = LoadMemberTable(job_->tables, key, folders_.codePage());
  if (members_.keys().empty()) combo.AddString(u"");
  for (const Text& member : members_.keys()) combo.AddString(member);
}

void CCollectInfJob::ShowCurrentValues() {
  dialog::ListView list = List(IDC_TAKEOFF_LIST);
  if (list.GetItemCount() == 0 || current_ < 0) return;
  SetDlgItemText(IDC_CINET_CODE, list.GetItemText(current_, kCinetColumn));
  for (size_t k = 0; k < std::size(kCodeCombos); ++k)
    Combo(kCodeCombos[k]).SetWindowText(list.GetItemText(current_, kFirstCodeColumn + static_cast<int>(k)));
  Combo(IDC_TAKEOFF_MEMBER).SetWindowText(list.GetItemText(current_, kMemberColumn));
}

void CCollectInfJob::OnNotify(int id, Notification code) {
  if (id != IDC_TAKEOFF_LIST || (code != Notification::ListClick && code != Notification::ListItemChanged)) return;
  current_ = List(IDC_TAKEOFF_LIST).GetFirstSelected();
  if (current_ < 0) return;
  FillMemberCombo();
  ShowCurrentValues();
}

void CCollectInfJob::SetCurrent(int column, TextView text) {
  if (current_ >= 0) List(IDC_TAKEOFF_LIST).SetItemText(current_, column, text);
}

void CCollectInfJob::ChangeMember(const Text& member, bool typed) {
  SetCurrent(kMemberColumn, member);
  dialog::ListView list = List(IDC_TAKEOFF_LIST);
  ExpansionVariant variant = DialogVariant(list.GetItemText(current_, kDimensionColumns[0]),
                                           list.GetItemText(current_, kDimensionColumns[1]),
                                           list.GetItemText(current_, kDimensionColumns[2]));
  std::optional<size_t> found;
  for (size_t i = 0; i < members_.keys().size() && !found; ++i)
    if (EqualNoCase(members_.keys()[i], member)) found = i;
  Text code;
  if (found) {
    auto at = [&](const std::vector<Text>& column) { return *found < column.size() ? column[*found] : Text(); };
    if (Text material = at(members_.materials()); !material.empty()) SetCurrent(kMaterialColumn, material);
    if (Text specification = at(members_.specifications()); !specification.empty())
      SetCurrent(kSpecificationColumn, specification);
    SetCurrent(kCinetColumn, ExpandCode(at(members_.codes()), variant));
    // Here only an empty A/B column counts as B material, unlike the list's own defaults.
    if (list.GetItemText(current_, kAbColumn).empty()) {
      const ColumnLists& settings = job_->tables.bSettings;
      code = ExpandCode(TableLookup(member, settings.column(0), settings.column(5)), variant);
    }
  }
  if (typed && code.empty()) code = kUnknownCode;
  if (!found && !typed) return;
  SetCurrent(kCinetColumn, code);
  SetDlgItemText(IDC_CINET_CODE, code);
}

void CCollectInfJob::ChangeCode(int id, const Text& text, bool typed) {
  if (current_ < 0) return;
  if (id == IDC_TAKEOFF_MEMBER) {
    ChangeMember(text, typed);
    return;
  }
  SetCurrent(kFirstCodeColumn + (id - IDC_USE_CODE), text);
}

void CCollectInfJob::OnCommand(int id, Notification code) {
  current_ = List(IDC_TAKEOFF_LIST).GetFirstSelected();
  bool codeControl = id >= IDC_TAKEOFF_MEMBER && id <= IDC_LINING_CLASS;
  if (codeControl && code == Notification::SelChange) {
    dialog::ComboBox combo = Combo(id);
    ChangeCode(id, combo.GetLBText(combo.GetCurSel()), false);
    return;
  }
  if (codeControl && code == Notification::EditChange) {
    ChangeCode(id, Combo(id).GetWindowText(), true);
    return;
  }
  if (id == IDC_CINET_CODE) {
    SetCurrent(kCinetColumn, GetDlgItemText(IDC_CINET_CODE));
    return;
  }
  if (id == IDC_FILE_OUTPUT && code == Notification::Clicked && job_) {
    CopyBack(job_->data, ListItems(), job_->pairing);
    if (fileOutput_) fileOutput_(job_->data, job_->tables);
    return;
  }
  dialog::Dialog::OnCommand(id, code);
}

std::vector<TakeoffItem> CCollectInfJob::ListItems() {
  dialog::ListView list = List(IDC_TAKEOFF_LIST);
  std::vector<TakeoffItem> items(static_cast<size_t>(list.GetItemCount()));
  for (size_t i = 0; i < items.size(); ++i)
    for (size_t c = 0; c < kTakeoffColumns; ++c) items[i][c] = list.GetItemText(static_cast<int>(i), static_cast<int>(c));
  return items;
}

void CCollectInfJob::OnOK() {
  if (!job_) return EndDialog(kIdOk);
  CopyBack(job_->data, ListItems(), job_->pairing);
  // A record the drawing refuses is named on the command line; the others are written.
  if (Status registered = RegisterTakeoff(drawing_, job_->data, job_->pairing); !registered)
    editor_.Print(u"\nError:" + registered.error().message + u"\n");
  job_.reset();
  EndDialog(kIdOk);
}

void CCollectInfJob::OnCancel() {
  if (MessageBox(kDiscardEdits, MessageIcon::None, MessageButtons::OkCancel, 1) != MessageAnswer::Ok) return;
  job_.reset();
  EndDialog(kIdCancel);
}

}  // namespace tq
