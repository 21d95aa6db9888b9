#pragma once
// CAttrInfJob: the modal dialog "属性情報の確認・編集" in which the information rows of one
// standard drawing are checked and edited, one record at a time, and registered.
#include <map>
#include <vector>

#include "dialog/Dialog.hpp"
#include "info/AttributeIdTable.hpp"
#include "info/BMaterialTable.hpp"
#include "info/ChoiceLists.hpp"
#include "info/InfoRows.hpp"
#include "res/resource.h"
#include "site/Folders.hpp"
#include "site/SymbolSizeData.hpp"

namespace tq {

inline constexpr char16_t kNoInformationMessage[] = u"情報が設定されていません。";

class CAttrInfJob : public dialog::Dialog {
 public:
  CAttrInfJob(Drawing& drawing, ObjectId sheetText, const Folders& folders, dialog::DialogServices services);

  // Runs the dialog modally on the sheet-number text: 1 after "登録", 2 after a confirmed
  // cancel, 0 when the text carries no information.
  int Run() { return DoModal(); }

 protected:
  bool OnInitDialog() override;
  void OnCommand(int id, Notification code) override;
  void OnNotify(int id, Notification code) override;
  void OnOK() override;
  void OnCancel() override;

 private:
  void ReadTables();
  void ShowRecord(int index);
  void SelectGridRow(int row);
  int SelectedRow();
  CStdInfRecord& ShownRecord() { return records_[static_cast<size_t>(shown_)]; }

  void FillSymbolCombo();
  void FillWorkItemCombo();
  void FillDimensionCombos();
  void LoadChoiceLists();
  void RefillMaterialLists();
  void FillFromFile(const ChoiceFile& file);

  void ApplyModeState();
  void LoadFieldsFromRow(int row);
  Text FieldText(int cell) const;
  void SetFieldText(int cell, TextView text);
  void RememberFields();

  void OnEdit();
  void OnAdd();
  void OnDelete();
  void OnMove(int step);
  void OnBack();
  void OnRowSelected();
  void OnSelChange(int id);
  // Refuses a comma in a field; true when the field's text was put back.
  bool RefuseComma(int id);

  Drawing& drawing_;
  ObjectId sheetText_;
  const Folders& folders_;
  ChoiceFolders choiceFolders_;
  BMaterialTable bMaterial_;
  AttributeIdTable attributeIds_;
  std::vector<Text> attributeKeys_;
  SymbolSizeData sizes_;

  StdInfRecords records_;
  int countAtOpening_ = 0;
  int shown_ = 0;
  bool editMode_ = false;
  bool addMode_ = false;
  InsertSide insertSide_ = InsertSide::Above;
  int addStartCount_ = 0;
  int lastAdded_ = -1;
  std::map<int, Text> fieldTexts_;  // the last accepted text of every field, by control id
};

}  // namespace tq
