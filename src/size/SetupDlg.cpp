#include "size/SetupDlg.hpp"

#include <bit>
#include <cstdint>

#include "base/Format.hpp"
#include "base/Numbers.hpp"
#include "res/resource.h"

namespace tq {

Text FormatIntegerBitsAsReal(long long value) {
  return Format(u"%g", {std::bit_cast<double>(static_cast<std::int64_t>(value))});
}

CSetupDlg::CSetupDlg(const Folders& folders, dialog::DialogServices services)
    : dialog::Dialog(IDD_SETUP, services), folders_(folders), settings_(folders) {}

bool CSetupDlg::OnInitDialog() {
  if (folders_.StdDataFolder().empty()) {
    MessageBox(kNoDataFolderMessage, MessageIcon::Stop);
    SetDlgItemText(IDC_CHAR_HEIGHT, FormatIntegerBitsAsReal(3));
    SetDlgItemText(IDC_CHAR_WIDTH, FormatIntegerBitsAsReal(2));
    SetDlgItemText(IDC_ROW_SPACING, FormatIntegerBitsAsReal(5));
    return true;
  }
  SizeTableValues stored = settings_.ReadSizeTable();
  SetDlgItemText(IDC_CHAR_HEIGHT, Format(u"%g", {stored.charHeight / 100.0}));
  SetDlgItemText(IDC_CHAR_WIDTH, Format(u"%g", {stored.charWidth / 100.0}));
  SetDlgItemText(IDC_ROW_SPACING, Format(u"%g", {stored.rowSpacing / 100.0}));
  return true;
}

void CSetupDlg::OnOK() {
  double height = ToReal(GetDlgItemText(IDC_CHAR_HEIGHT)) * 100.0;
  double width = ToReal(GetDlgItemText(IDC_CHAR_WIDTH)) * 100.0;
  double spacing = ToReal(GetDlgItemText(IDC_ROW_SPACING)) * 100.0;
  if (height <= 0 || width <= 0 || spacing <= 0) {
    MessageBox(kSetupInputWrong, MessageIcon::Stop);
    return;
  }
  if (height > spacing) {
    MessageBox(kSetupHeightOverSpacing, MessageIcon::Stop);
    return;
  }
  height_ = height;
  width_ = width;
  spacing_ = spacing;
  SetDlgItemText(IDC_CHAR_HEIGHT, Format(u"%g", {height}));
  SetDlgItemText(IDC_CHAR_WIDTH, Format(u"%g", {width}));
  SetDlgItemText(IDC_ROW_SPACING, Format(u"%g", {spacing}));
  // Without a data folder there is nowhere to write, and nothing is said: the values still
  // take effect in the size dialog that asked.
  (void)settings_.WriteSizeTable({height, width, spacing});
  EndDialog(kIdOk);
}

}  // namespace tq
