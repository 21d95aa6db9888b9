#include "output/FileOutDlg.hpp"

#include <functional>
#include <iterator>

namespace tq {

namespace {
constexpr int kKindRadios[] = {IDC_KIND_TAKEOFF, IDC_KIND_AGGREGATE, IDC_KIND_CINET};
constexpr int kSeparatorRadios[] = {IDC_SEPARATOR_COMMA, IDC_SEPARATOR_PIPE, IDC_SEPARATOR_TAB};

// Checks the radio of `value` in its group; a value outside the group checks none.
template <size_t N>
void CheckOne(const int (&radios)[N], int value, const std::function<void(int, bool)>& check) {
  for (size_t i = 0; i < N; ++i) check(radios[i], static_cast<int>(i) == value);
}
}  // namespace

CFileOutDlg::CFileOutDlg(dialog::DialogServices services, const Folders& folders)
    : dialog::Dialog(IDD_FILEOUT, services), folders_(folders) {}

void CFileOutDlg::CheckKind() {
  CheckOne(kKindRadios, static_cast<int>(choices_.outputKind), [this](int id, bool on) { CheckItem(id, on); });
}

void CFileOutDlg::CheckSeparator() {
  CheckOne(kSeparatorRadios, static_cast<int>(choices_.separatorKind), [this](int id, bool on) { CheckItem(id, on); });
}

void CFileOutDlg::FillCategories(const std::vector<Text>& categories) {
  dialog::ComboBox combo = Combo(IDC_CATEGORY);
  combo.ResetContent();
  if (categories.empty()) combo.AddString(u"");
  for (const Text& category : categories) combo.AddString(category);
}

bool CFileOutDlg::OnInitDialog() {
  std::vector<Text> categories = ReadOutputCategories(CategoriesFile(folders_), folders_.codePage());
  if (std::optional<FileOutputChoices> last = ReadLastValues(LastValuesFile(folders_), folders_.codePage())) {
    lastValuesFlag_ = 1;
    choices_ = *last;
    CheckKind();
    CheckSeparator();
    FillCategories(categories);
    // The remembered category stays the output category even when it is no longer listed:
    // only a choice of the user changes it.
    int found = choices_.category.empty() ? -1 : Combo(IDC_CATEGORY).FindStringExact(0, choices_.category);
    Combo(IDC_CATEGORY).SetCurSel(found < 0 ? 0 : found);
    return true;
  }
  lastValuesFlag_ = kDefaultsUsed;
  choices_ = {OutputKind::List, SeparatorKind::Tab, categories.empty() ? Text() : categories.front()};
  CheckKind();
  CheckSeparator();
  FillCategories(categories);
  Combo(IDC_CATEGORY).SetCurSel(0);
  return true;
}

void CFileOutDlg::OnCommand(int id, Notification code) {
  if (id == IDC_CATEGORY && code == Notification::SelChange) {
    dialog::ComboBox combo = Combo(IDC_CATEGORY);
    choices_.category = combo.GetLBText(combo.GetCurSel());
    return;
  }
  if (code == Notification::Clicked) {
    for (size_t i = 0; i < std::size(kKindRadios); ++i)
      if (id == kKindRadios[i]) {
        choices_.outputKind = static_cast<OutputKind>(i);
        CheckKind();
        CheckSeparator();
        return;
      }
    for (size_t i = 0; i < std::size(kSeparatorRadios); ++i)
      if (id == kSeparatorRadios[i]) {
        choices_.separatorKind = static_cast<SeparatorKind>(i);
        CheckSeparator();
        CheckKind();
        return;
      }
  }
  dialog::Dialog::OnCommand(id, code);
}

void CFileOutDlg::OnOK() {
  // The last values are a convenience: a file that cannot be written does not stop the output.
  (void)WriteLastValues(LastValuesFile(folders_), choices_, folders_.codePage());
  EndDialog(kIdOk);
}

}  // namespace tq
