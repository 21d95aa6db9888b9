#pragma once
// A workbook that passes every call on and reads the quantity cells AZ3 to AZ7 as the import
// or the registration leaves them, just before the sheet is closed.
#include <map>

#include "ports/Workbook.hpp"

namespace tq::test {

class QuantitySpy : public Workbook {
 public:
  explicit QuantitySpy(Workbook& inner) : inner_(inner) {}
  std::map<Text, Text> atClose;
  Status Init() override { return inner_.Init(); }
  Status Open(TextView path) override { return inner_.Open(path); }
  Status OpenSheet(int index) override { return inner_.OpenSheet(index); }
  Result<int> GetRowCount() override { return inner_.GetRowCount(); }
  Result<std::vector<Text>> GetRowData2(int c, int r, int f) override { return inner_.GetRowData2(c, r, f); }
  Result<Text> GetData(TextView cell) override { return inner_.GetData(cell); }
  Status PutData(TextView cell, TextView value) override { return inner_.PutData(cell, value); }
  Result<bool> GetRightBorder(TextView cell) override { return inner_.GetRightBorder(cell); }
  void CloseSheet() override {
    for (const char16_t* cell : {u"AZ3", u"AZ4", u"AZ5", u"AZ6", u"AZ7"}) {
      Result<Text> value = inner_.GetData(cell);
      atClose[cell] = value.ok() ? *value : u"<unreadable>";
    }
    inner_.CloseSheet();
  }
  void Quit() override { inner_.Quit(); }

 private:
  Workbook& inner_;
};

}  // namespace tq::test
