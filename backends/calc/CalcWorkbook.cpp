#include "calc/CalcWorkbook.hpp"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/CloseVetoException.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <osl/file.hxx>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>

#include "base/Paths.hpp"
#include "calc/UnoSession.hpp"
#include "ports/CellAddress.hpp"

namespace tq::calc {
namespace {

using namespace css;

Error Failure(WorkbookFailure failure, std::string_view message, ErrorCode code = ErrorCode::CannotRead) {
  return WorkbookError(code, failure, FromUtf8(message));
}

Error Refused(const uno::Exception& exception) {
  return WorkbookError(ErrorCode::CannotRead, WorkbookFailure::EngineRefused,
                       u"the spreadsheet engine refused: " + FromOUString(exception.Message));
}

beans::PropertyValue Property(const char* name, const uno::Any& value) {
  beans::PropertyValue property;
  property.Name = rtl::OUString::createFromAscii(name);
  property.Value = value;
  return property;
}

// A plain decimal number, as a person types one into a cell: sign, digits, point, exponent.
bool ReadsAsNumber(TextView text, double& value) {
  if (text.empty() || text.size() > 64) return false;
  std::string ascii;
  for (char16_t c : text) {
    if (!((c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+' || c == u'e' || c == u'E')) return false;
    ascii.push_back(char(c));
  }
  if (ascii.find_first_of("0123456789") == std::string::npos) return false;
  char* end = nullptr;
  value = std::strtod(ascii.c_str(), &end);
  return end == ascii.c_str() + ascii.size();
}

}  // namespace

struct CalcWorkbook::Document {
  uno::Reference<lang::XComponent> component;
  uno::Reference<sheet::XSpreadsheetDocument> spreadsheet;
  uno::Reference<sheet::XSpreadsheet> sheet;
  std::filesystem::path copy;  // the private copy the office opened
  int lastColumn = 0;  // of the used area, from 1
  bool dirty = false;  // cells written since the last recalculation

  // Formulas are recalculated after cells are written, before anything is read.
  void Recalculate() {
    if (!dirty) return;
    uno::Reference<sheet::XCalculatable>(spreadsheet, uno::UNO_QUERY_THROW)->calculateAll();
    dirty = false;
  }
};

CalcWorkbook::CalcWorkbook(CalcEngine& engine) : engine_(engine) {}

CalcWorkbook::~CalcWorkbook() { Quit(); }

// Runs one engine call: a dropped connection marks the engine lost (the next Init starts a new
// one), anything else the engine throws becomes the error of the call.
#define TQ_ENGINE_CALL(...)                                                                           \
  try {                                                                                                \
    __VA_ARGS__                                                                                        \
  } catch (const lang::DisposedException&) {                                                           \
    document_.reset();                                                                                 \
    engine_.Lost();                                                                                    \
    return Failure(WorkbookFailure::EngineLost, "the spreadsheet engine has gone away");              \
  } catch (const uno::Exception& exception) {                                                          \
    return Refused(exception);                                                                         \
  }

Status CalcWorkbook::Init() { return engine_.Start(); }

Status CalcWorkbook::Open(TextView path) {
  Quit();
  if (!engine_.session()) return Failure(WorkbookFailure::EngineLost, "the spreadsheet engine is not started");
  std::error_code error;
  std::filesystem::path file = std::filesystem::absolute(ToFsPath(path), error);
  if (error || !std::filesystem::is_regular_file(file, error))
    return Failure(WorkbookFailure::OpenFile, "no workbook at " + ToUtf8(path), ErrorCode::NotFound);
  // The office opens a private copy: no lock file appears beside the workbook, another
  // program may use it at the same time, and cells can be written without any risk of
  // storing them (the workbook itself is never written).
  std::filesystem::path copy = std::filesystem::path(engine_.ProfileFolder()) /
                              ("open-" + std::to_string(reinterpret_cast<uintptr_t>(this)) + file.extension().string());
  std::filesystem::copy_file(file, copy, std::filesystem::copy_options::overwrite_existing, error);
  if (error) return Failure(WorkbookFailure::OpenFile, "cannot read " + ToUtf8(path) + ": " + error.message());
  TQ_ENGINE_CALL({
    rtl::OUString url;
    if (osl::FileBase::getFileURLFromSystemPath(rtl::OUString::fromUtf8(copy.string().c_str()), url) != osl::FileBase::E_None)
      return Failure(WorkbookFailure::OpenFile, "no file address for " + ToUtf8(path));
    // Hidden, macros never run, links not updated.
    const beans::PropertyValue properties[] = {
        Property("Hidden", uno::Any(true)), Property("ReadOnly", uno::Any(false)),
        Property("MacroExecutionMode", uno::Any(document::MacroExecMode::NEVER_EXECUTE)),
        Property("UpdateDocMode", uno::Any(document::UpdateDocMode::NO_UPDATE))};
    uno::Sequence<beans::PropertyValue> arguments(properties, std::size(properties));
    uno::Reference<frame::XComponentLoader> loader(engine_.session()->desktop, uno::UNO_QUERY_THROW);
    auto document = std::make_unique<Document>();
    document->component = loader->loadComponentFromURL(url, "_blank", 0, arguments);
    document->spreadsheet.set(document->component, uno::UNO_QUERY);
    if (!document->spreadsheet.is()) {
      if (document->component.is()) document->component->dispose();
      return Failure(WorkbookFailure::OpenFile, "not a workbook: " + ToUtf8(path));
    }
    // Recalculation is this workbook's to ask for: once before the first read after writes,
    // rather than after every single write; and once before the first read at all, whatever
    // results the file kept.
    uno::Reference<sheet::XCalculatable>(document->spreadsheet, uno::UNO_QUERY_THROW)->enableAutomaticCalculation(false);
    document->dirty = true;
    document->copy = copy;
    document_ = std::move(document);
    return {};
  })
}

Status CalcWorkbook::OpenSheet(int index) {
  if (!document_) return Failure(WorkbookFailure::NoSheet, "no workbook is open");
  TQ_ENGINE_CALL({
    uno::Reference<container::XIndexAccess> sheets(document_->spreadsheet->getSheets(), uno::UNO_QUERY_THROW);
    if (index < 0 || index >= sheets->getCount())
      return Failure(WorkbookFailure::NoSheet, "the workbook has no sheet " + std::to_string(index), ErrorCode::NotFound);
    document_->sheet.set(sheets->getByIndex(index), uno::UNO_QUERY_THROW);
    uno::Reference<sheet::XSheetCellCursor> cursor = document_->sheet->createCursor();
    uno::Reference<sheet::XUsedAreaCursor>(cursor, uno::UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
    auto end = uno::Reference<sheet::XCellRangeAddressable>(cursor, uno::UNO_QUERY_THROW)->getRangeAddress();
    document_->lastColumn = end.EndColumn + 1;
    return {};
  })
}

Result<int> CalcWorkbook::GetRowCount() {
  if (!document_ || !document_->sheet.is()) return Failure(WorkbookFailure::NoSheet, "no sheet is open");
  TQ_ENGINE_CALL({
    document_->Recalculate();
    uno::Reference<sheet::XSheetCellCursor> cursor = document_->sheet->createCursor();
    uno::Reference<sheet::XUsedAreaCursor>(cursor, uno::UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
    auto end = uno::Reference<sheet::XCellRangeAddressable>(cursor, uno::UNO_QUERY_THROW)->getRangeAddress();
    document_->lastColumn = std::max(document_->lastColumn, int(end.EndColumn) + 1);
    return int(end.EndRow) + 1;
  })
}

Result<std::vector<Text>> CalcWorkbook::GetRowData2(int firstColumn, int row, int) {
  if (!document_ || !document_->sheet.is()) return Failure(WorkbookFailure::NoSheet, "no sheet is open");
  if (firstColumn < 1 || row < 1) return Failure(WorkbookFailure::OutOfRange, "no such row or column");
  std::vector<Text> texts;
  if (firstColumn > document_->lastColumn) return texts;
  TQ_ENGINE_CALL({
    document_->Recalculate();
    // One call for the whole row; only numbers need the cell's own shown text.
    uno::Reference<table::XCellRange> range = document_->sheet->getCellRangeByPosition(
        firstColumn - 1, row - 1, document_->lastColumn - 1, row - 1);
    uno::Sequence<uno::Sequence<uno::Any>> data =
        uno::Reference<sheet::XCellRangeData>(range, uno::UNO_QUERY_THROW)->getDataArray();
    const uno::Sequence<uno::Any>& cells = data[0];
    texts.reserve(size_t(cells.getLength()));
    for (sal_Int32 i = 0; i < cells.getLength(); ++i) {
      rtl::OUString text;
      if (!(cells[i] >>= text))
        text = uno::Reference<text::XTextRange>(range->getCellByPosition(i, 0), uno::UNO_QUERY_THROW)->getString();
      texts.push_back(FromOUString(text));
    }
    return texts;
  })
}

Result<Text> CalcWorkbook::GetData(TextView cell) {
  if (!document_ || !document_->sheet.is()) return Failure(WorkbookFailure::NoSheet, "no sheet is open");
  std::optional<CellAddress> address = SplitCell(cell);
  if (!address) return Failure(WorkbookFailure::BadAddress, "not a cell address: " + ToUtf8(cell), ErrorCode::InvalidValue);
  TQ_ENGINE_CALL({
    document_->Recalculate();
    uno::Reference<table::XCell> target =
        document_->sheet->getCellByPosition(GetColumnIndex(address->letters) - 1, address->row - 1);
    return FromOUString(uno::Reference<text::XTextRange>(target, uno::UNO_QUERY_THROW)->getString());
  })
}

Status CalcWorkbook::PutData(TextView cell, TextView value) {
  if (!document_ || !document_->sheet.is()) return Failure(WorkbookFailure::NoSheet, "no sheet is open");
  std::optional<CellAddress> address = SplitCell(cell);
  if (!address) return Failure(WorkbookFailure::BadAddress, "not a cell address: " + ToUtf8(cell), ErrorCode::InvalidValue);
  int column = GetColumnIndex(address->letters);
  TQ_ENGINE_CALL({
    uno::Reference<table::XCell> target = document_->sheet->getCellByPosition(column - 1, address->row - 1);
    double number = 0;
    if (value.empty()) {
      target->setFormula(rtl::OUString());  // an empty input empties the cell
    } else if (ReadsAsNumber(value, number)) {
      target->setValue(number);
    } else {
      uno::Reference<text::XTextRange>(target, uno::UNO_QUERY_THROW)->setString(ToOUString(value));
    }
    document_->dirty = true;
    if (!value.empty()) document_->lastColumn = std::max(document_->lastColumn, column);
    return {};
  })
}

Result<bool> CalcWorkbook::GetRightBorder(TextView cell) {
  if (!document_ || !document_->sheet.is()) return Failure(WorkbookFailure::NoSheet, "no sheet is open");
  std::optional<CellAddress> address = SplitCell(cell);
  if (!address) return Failure(WorkbookFailure::BadAddress, "not a cell address: " + ToUtf8(cell), ErrorCode::InvalidValue);
  TQ_ENGINE_CALL({
    uno::Reference<table::XCell> target =
        document_->sheet->getCellByPosition(GetColumnIndex(address->letters) - 1, address->row - 1);
    table::BorderLine2 line;
    uno::Reference<beans::XPropertySet>(target, uno::UNO_QUERY_THROW)->getPropertyValue("RightBorder2") >>= line;
    bool drawn = line.LineStyle != table::BorderLineStyle::NONE || line.OuterLineWidth > 0;
    return drawn && (line.LineWidth > 0 || line.OuterLineWidth > 0 || line.InnerLineWidth > 0);
  })
}

void CalcWorkbook::CloseSheet() {
  if (document_) document_->sheet.clear();
}

void CalcWorkbook::Quit() {
  if (!document_) return;
  try {
    uno::Reference<util::XCloseable> closeable(document_->component, uno::UNO_QUERY);
    if (closeable.is()) {
      closeable->close(true);
    } else {
      document_->component->dispose();
    }
  } catch (const util::CloseVetoException&) {
    // Closing with ownership handed over: the office closes it as soon as it may.
  } catch (const lang::DisposedException&) {
    engine_.Lost();
  } catch (const uno::Exception&) {
  }
  std::error_code error;
  std::filesystem::remove(document_->copy, error);
  document_.reset();
}

}  // namespace tq::calc
