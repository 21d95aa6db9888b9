#pragma once
// CSetupDlg: the small modal dialog "ｻｲｽﾞ表の設定" in which the character height, the character
// width and the row spacing of the size tables are set, shown in drawing units and stored in
// hundredths in "標準図設定.ini".
#include "dialog/Dialog.hpp"
#include "site/Settings.hpp"

namespace tq {

inline constexpr char16_t kSetupInputWrong[] = u"入力値が間違っています。";
inline constexpr char16_t kSetupHeightOverSpacing[] = u"文字高さが行間隔より大きいです。";

class CSetupDlg : public dialog::Dialog {
 public:
  CSetupDlg(const Folders& folders, dialog::DialogServices services);

  // The values confirmed with OK, in hundredths of the units shown.
  SizeTableValues values() const { return {height_, width_, spacing_}; }

 protected:
  bool OnInitDialog() override;
  void OnOK() override;

 private:
  const Folders& folders_;
  StdSettings settings_;
  double height_ = 0, width_ = 0, spacing_ = 0;  // hundredths
};

// What the edits show without a data folder: the integers 3, 2 and 5 read as the bit patterns
// of doubles, the tiny numbers the dialog has always shown there.
Text FormatIntegerBitsAsReal(long long value);

}  // namespace tq
