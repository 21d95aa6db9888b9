#pragma once
// The size workbook on LibreOffice Calc, through an engine handed in.
#include <memory>

#include "calc/CalcEngine.hpp"
#include "ports/Workbook.hpp"

namespace tq::calc {

class CalcWorkbook final : public Workbook {
 public:
  explicit CalcWorkbook(CalcEngine& engine);
  ~CalcWorkbook() override;

  Status Init() override;
  Status Open(TextView path) override;
  Status OpenSheet(int index) override;
  Result<int> GetRowCount() override;
  Result<std::vector<Text>> GetRowData2(int firstColumn, int row, int flags) override;
  Result<Text> GetData(TextView cell) override;
  Status PutData(TextView cell, TextView value) override;
  Result<bool> GetRightBorder(TextView cell) override;
  void CloseSheet() override;
  void Quit() override;

 private:
  struct Document;  // the open document and sheet, UNO side
  CalcEngine& engine_;
  std::unique_ptr<Document> document_;
};

}  // namespace tq::calc
