#pragma once
// CCollectInfJob: "標準図拾い確認", every takeoff row in one list; the member and the six codes
// of a row can be changed, "登録" writes the rows back as information records, and
// "ﾌｧｲﾙ 出力" hands them to the file output.
#include <functional>

#include "dialog/Dialog.hpp"
#include "ports/Editor.hpp"
#include "res/resource.h"
#include "takeoff/TakeoffJob.hpp"

namespace tq {

inline constexpr char16_t kNoInformation[] = u"情報が設定されていません。";
inline constexpr char16_t kDiscardEdits[] = u"編集内容を破棄します。よろしいですか。";

// What "ﾌｧｲﾙ 出力" does with the rows (copied back from the list first). The file output sits
// above the takeoff, so the add-in hands it in.
using FileOutputAction = std::function<void(const TakeoffData& data, const ReferenceTables& tables)>;

// The member file of a row: index-aligned material, specification, CI-NET code, member key.
struct MemberTable {
  ColumnLists columns{ConfigTable(), 4};
  const std::vector<Text>& materials() const { return columns.column(0); }
  const std::vector<Text>& specifications() const { return columns.column(1); }
  const std::vector<Text>& codes() const { return columns.column(2); }
  const std::vector<Text>& keys() const { return columns.column(3); }
};

// "%s\\%s.csv" of the file key in the add-in data folder; when it cannot be read, a key of at
// least 14 characters names, through the second reading of the member-name table, a file to
// read instead. The substitute is tried once: when it cannot be read either, the table is empty.
MemberTable LoadMemberTable(const ReferenceTables& tables, TextView fileKey, const CodePage& systemCodePage);

class CCollectInfJob : public dialog::Dialog {
 public:
  CCollectInfJob(dialog::DialogServices services, Drawing& drawing, Editor& editor, const Folders& folders,
                 std::vector<ObjectId> sheets, FileOutputAction fileOutput);

  // The item whose values the member and code controls show; -1 when none.
  int currentItem() const { return current_; }

 protected:
  bool OnInitDialog() override;
  void OnCommand(int id, Notification code) override;
  void OnNotify(int id, Notification code) override;
  void OnOK() override;
  void OnCancel() override;

 private:
  void MakeColumns();
  void FillCodeCombos();
  void FillMemberCombo();
  void ShowCurrentValues();
  void ChangeCode(int id, const Text& text, bool typed);
  void ChangeMember(const Text& member, bool typed);
  void SetCurrent(int column, TextView text);
  std::vector<TakeoffItem> ListItems();
  // The row shown by a list item, in the copy-back's pairing of items and rows.
  const CTakeoffRow* RowOfItem(int item) const;

  Drawing& drawing_;
  Editor& editor_;
  const Folders& folders_;
  std::vector<ObjectId> sheets_;
  FileOutputAction fileOutput_;
  std::optional<TakeoffJob> job_;
  MemberTable members_;
  int current_ = -1;
};

}  // namespace tq
