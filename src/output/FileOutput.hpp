#pragma once
// The file output: its remembered choices, the output categories, the default file name,
// and OutputTakeoff.
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "output/OutputLines.hpp"
#include "site/Folders.hpp"

namespace tq {

// The kind's number as the last-values file stores it; another number selects no kind.
enum class OutputKind : int { List = 0, Aggregate = 1, Cinet = 2 };

struct FileOutputChoices {
  OutputKind outputKind = OutputKind::List;  // "拾い", "集計", "CI-NETｺｰﾄﾞ"
  SeparatorKind separatorKind = SeparatorKind::Tab;
  Text category;  // the "出力区分" text
};

// The files of the file output, in the add-in data folder; empty when the system folder
// cannot be read.
Text LastValuesFile(const Folders& folders);   // "ファイル出力前回値.dat"
Text CategoriesFile(const Folders& folders);   // "出力区分.txt"
Text OutputFormatFile(const Folders& folders);  // "標準図用出力フォーマット.csv"

// "ファイル出力前回値.dat": kind, separator, category; nothing when it cannot be read, the
// values read so far when it is short.
std::optional<FileOutputChoices> ReadLastValues(TextView path, const CodePage& systemCodePage);
// Written as "%d\n%d\n%s\n" in the system code page.
Status WriteLastValues(TextView path, const FileOutputChoices& choices, const CodePage& systemCodePage);
// "出力区分.txt": one category a line, blank lines kept; empty when missing.
std::vector<Text> ReadOutputCategories(TextView path, const CodePage& systemCodePage);
// What the file output dialog starts with: the remembered values, else "拾い", tab and the
// first category.
FileOutputChoices InitialChoices(const Folders& folders);

// The drawing's file name without its extension: from the last "." (when it stands after
// the first character) exactly four characters are removed; "_CI-NETコード" for the CI-NET kind.
Text DefaultOutputName(TextView documentFileName, OutputKind outputKind);

struct OutputResult {
  enum class Outcome { Written, NothingToOutput, NoFileChosen };
  Outcome outcome = Outcome::NothingToOutput;
  std::filesystem::path path;  // the file written
};

// What OutputTakeoff asks of its caller.
struct OutputHooks {
  // The path to write for the default name; nothing when the user chose none.
  std::function<std::optional<std::filesystem::path>(TextView defaultName)> choosePath;
  // The name of the sheet whose sheet-number text this is, for the warnings.
  std::function<Text(ObjectId sheetText)> sheetName;
  // One "\nWARNING:…" line for each character that would be written as "?".
  std::function<void(TextView warning)> warn;
};

// OutputTakeoff: reads the format, builds the list or the aggregate into `lines` (the CI-NET
// kind builds nothing and writes what `lines` holds), and writes them to the path
// `choosePath` gives for the default name (nothing when it gives none), after warning of
// every character the system code page cannot hold. An error when the format cannot make an
// aggregate or the file cannot be written.
Result<OutputResult> OutputTakeoff(const TakeoffData& data, const ReferenceTables& tables, const Folders& folders,
                                   const FileOutputChoices& choices, TextView documentFileName, OutputLineList& lines,
                                   const OutputHooks& hooks);

}  // namespace tq
