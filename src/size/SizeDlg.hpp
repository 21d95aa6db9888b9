#pragma once
// CSizeDlg: the modeless dialog "サイズ設定" of one standard drawing. It shows up to six rows of
// its size table (symbol, number, up to twelve sizes, unit count), filled from the table drawn
// in the frame and the drawing's workbook; "登録" writes the rows into the workbook and makes
// the standard drawing's information records from the parts rows the workbook computes.
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "dialog/Dialog.hpp"
#include "drawing/FrameGrid.hpp"
#include "site/Folders.hpp"
#include "site/SymbolSizeData.hpp"
#include "size/SizeImport.hpp"
#include "size/SizeRegistration.hpp"
#include "size/SizeRowControls.hpp"
#include "size/SizeTable.hpp"

namespace tq {

inline constexpr char16_t kNoSheetNameMessage[] = u"ｼｰﾄ名が取得出来ません.";
inline constexpr char16_t kSizeCaptionSuffix[] = u" - サイズ設定";
inline constexpr char16_t kNoSymbolAndBadValue[] =
    u"記号が入力されていない行があります.\nサイズまたは台数で不正な値があります.\nそのまま登録しますか?";
inline constexpr char16_t kNoSymbol[] = u"記号が入力されていない行があります.\nそのまま登録しますか?";
inline constexpr char16_t kBadValue[] = u"サイズまたは台数で不正な値があります.\nそのまま登録しますか?";
inline constexpr char16_t kRecordWriteFailed[] = u"ｻｲｽﾞ情報が設定できません。";
inline constexpr char16_t kRegistrationDone[] = u"登録が完了しました。";

// True for an empty text and for a plain decimal number (sign, digits, one point).
bool IsValidSizeNumber(TextView text);

class CSizeDlg : public dialog::Dialog {
 public:
  // `sizeDialogSlot` is the add-in's `SizeDialogPtr`, which holds this dialog while it is open
  // and which the cancel handler clears.
  CSizeDlg(const DrawingContext& context, ObjectId sheetText, FramePolygon frame, const Folders& folders,
           dialog::DialogServices services, std::unique_ptr<dialog::Dialog>& sizeDialogSlot);

  // The initialisation proper after the window is created: false when the dialog must not
  // be shown (no sheet name, no workbook).
  bool Initialise();

 protected:
  bool OnInitDialog() override;
  void OnCommand(int id, Notification code) override;
  void OnCancel() override;

 private:
  bool ImportWorkbook();
  void DisableUnusedSizes();
  void LayOutRows();
  void FillSizeCombos();
  void ReadDrawnTable();
  std::optional<DrawnSizeTable> LocateDrawnTable();

  // A row's texts from the symbol to the count, as the row operations move them.
  using RowTexts = std::array<Text, kRowPositions - kSymbolPosition>;

  Text RowText(int row, int position) const;
  void SetRowText(int row, int position, TextView text);
  RowTexts TextsOfRow(int row) const;
  void SetRowTexts(int row, const RowTexts& texts);
  void ClearRow(int row);
  void SetRowDefaults(int row);
  int CurrentRow() const;
  void MakeCurrent(int row);
  void OnRowChecked(int row);

  void OnAddRow();
  void OnDeleteRow();
  void OnMoveRow(int step);
  void OnNoteSettings();
  void OnRegister();

  SizeRowValues RowValues(int row) const;
  std::vector<SizeRowValues> AllRowValues() const;
  bool ConfirmRows();
  Status WriteRecord(int number, const std::vector<Text>& lines);
  bool FillDrawnTable(const std::vector<SizeRowValues>& rows);

  DrawingContext context_;
  ObjectId sheetText_;
  FramePolygon frame_;
  const Folders& folders_;
  std::unique_ptr<dialog::Dialog>& slot_;

  int rowCount_ = 1;  // the rows shown, from 1 to kSizeRows
  Text baseName_, workbookPath_, definitionPath_;
  SizeImportResult import_;  // empty until an import succeeds
  SymbolSizeData choices_;
  SizeTextSettings text_;
};

}  // namespace tq
