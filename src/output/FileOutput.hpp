#pragma once
// The file output: its remembered choices, the output categories, the default file name,
// and OutputTakeoff.
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "output/OutputLines.hpp"
#include "shell/Folders.hpp"

namespace tq {

enum class OutputKind { List = 0, Aggregate = 1, Cinet = 2 };

struct FileOutputChoices {
  int outputKind = 0;     // 0 "拾い", 1 "集計", 2 "CI-NETｺｰﾄﾞ"
  int separatorKind = 2;  // 0 comma, 1 pipe, 2 tab
  Text category;          // the "出力区分" text
};

// "ファイル出力前回値.dat": kind, separator, category; nothing when it cannot be read, the
// values read so far when it is short.
std::optional<FileOutputChoices> ReadLastValues(TextView path);
// Written as "%d\n%d\n%s\n" in the system code page; false when it cannot be written.
bool WriteLastValues(TextView path, const FileOutputChoices& choices);
// "出力区分.txt": one category a line, blank lines kept; empty when missing.
std::vector<Text> ReadOutputCategories(TextView path);
// What the file output dialog starts with: the remembered values, else "拾い", tab and the
// first category.
FileOutputChoices InitialChoices(const Folders& folders);

// The drawing's file name without its extension: from the last "." (when it stands after
// the first character) exactly four characters are removed; "_CI-NETコード" for kind 2.
Text DefaultOutputName(TextView documentFileName, int outputKind);

struct OutputResult {
  bool written = false;
  std::filesystem::path path;
  Text reason;  // why nothing was written
};

// OutputTakeoff: reads the format, builds the list or the aggregate into `lines` (kind 2
// builds nothing and writes what `lines` holds), and writes them to the path `choosePath`
// gives for the default name (nothing when it gives none).
OutputResult OutputTakeoff(const TakeoffData& data, const ReferenceTables& tables, const Folders& folders,
                           const FileOutputChoices& choices, TextView documentFileName, std::vector<Text>& lines,
                           const std::function<std::optional<std::filesystem::path>(TextView)>& choosePath);

}  // namespace tq
