#pragma once
// CFileOutDlg: what to write (takeoff list, aggregate, CI-NET code), the output category and
// the separator; "出力" remembers them in the last-values file.
#include "dialog/Dialog.hpp"
#include "output/FileOutput.hpp"
#include "res/resource.h"

namespace tq {

class CFileOutDlg : public dialog::Dialog {
 public:
  // The last-values flag when the defaults of the first use were taken.
  static constexpr int kDefaultsUsed = 12345;

  CFileOutDlg(dialog::DialogServices services, const Folders& folders);

  // After "出力": the choices the output is to use.
  const FileOutputChoices& choices() const { return choices_; }
  // 1 when the last-values file was read, kDefaultsUsed when it was not.
  int lastValuesFlag() const { return lastValuesFlag_; }

 protected:
  bool OnInitDialog() override;
  void OnCommand(int id, Notification code) override;
  void OnOK() override;

 private:
  void FillCategories(const std::vector<Text>& categories);
  // The radio buttons are plain: the dialog checks both groups from its members.
  void CheckKind();
  void CheckSeparator();

  const Folders& folders_;
  FileOutputChoices choices_;
  int lastValuesFlag_ = 0;
};

}  // namespace tq
