#include "output/FileOutput.hpp"

#include "base/Encoding.hpp"
#include "base/Format.hpp"
#include "base/Numbers.hpp"
#include "base/Paths.hpp"
#include "base/TextFiles.hpp"
#include "output/EncodedWriter.hpp"
#include "output/UnmappableCharacters.hpp"

namespace tq {

Text LastValuesFile(const Folders& folders) { return folders.AddinDataFile(u"ファイル出力前回値.dat"); }
Text CategoriesFile(const Folders& folders) { return folders.AddinDataFile(u"出力区分.txt"); }
Text OutputFormatFile(const Folders& folders) { return folders.AddinDataFile(u"標準図用出力フォーマット.csv"); }

namespace {
// The lines of the last-values file.
enum LastValuesLine : size_t { kKindLine, kSeparatorLine, kCategoryLine };
}  // namespace

std::optional<FileOutputChoices> ReadLastValues(TextView path, const CodePage& systemCodePage) {
  if (path.empty()) return std::nullopt;
  std::optional<std::vector<Text>> lines = ReadTextLines(ToFsPath(path), systemCodePage);
  if (!lines) return std::nullopt;
  FileOutputChoices choices;
  auto line = [&](LastValuesLine n) { return n < lines->size() ? std::optional<Text>((*lines)[n]) : std::nullopt; };
  if (auto kind = line(kKindLine)) choices.outputKind = static_cast<OutputKind>(ToInt(*kind));
  if (auto separator = line(kSeparatorLine)) choices.separatorKind = static_cast<SeparatorKind>(ToInt(*separator));
  choices.category = line(kCategoryLine).value_or(Text());
  return choices;
}

Status WriteLastValues(TextView path, const FileOutputChoices& choices, const CodePage& systemCodePage) {
  if (path.empty()) return MakeError(ErrorCode::NotFound, u"the system folder is not set (ｼｽﾃﾑ)");
  Text text = Format(u"%d\r\n%d\r\n%s\r\n", {static_cast<int>(choices.outputKind),
                                              static_cast<int>(choices.separatorKind), choices.category});
  return WriteFileBytes(ToFsPath(path), systemCodePage.Encode(text));
}

std::vector<Text> ReadOutputCategories(TextView path, const CodePage& systemCodePage) {
  if (path.empty()) return {};
  return ReadTextLines(ToFsPath(path), systemCodePage).value_or(std::vector<Text>());
}

FileOutputChoices InitialChoices(const Folders& folders) {
  if (std::optional<FileOutputChoices> last = ReadLastValues(LastValuesFile(folders), folders.codePage())) return *last;
  std::vector<Text> categories = ReadOutputCategories(CategoriesFile(folders), folders.codePage());
  return {OutputKind::List, SeparatorKind::Tab, categories.empty() ? Text() : categories.front()};
}

Text DefaultOutputName(TextView documentFileName, OutputKind outputKind) {
  Text name(documentFileName);
  size_t dot = name.rfind(u'.');
  if (dot != Text::npos && dot >= 1) name.erase(dot, 4);
  if (outputKind == OutputKind::Cinet) name += u"_CI-NETコード";
  return name;
}

Result<OutputResult> OutputTakeoff(const TakeoffData& data, const ReferenceTables& tables, const Folders& folders,
                                   const FileOutputChoices& choices, TextView documentFileName, OutputLineList& lines,
                                   const OutputHooks& hooks) {
  OutputFormat format = LoadOutputFormat(ToFsPath(OutputFormatFile(folders)), folders.codePage());
  OutputBuilder builder(format, tables);
  if (choices.outputKind == OutputKind::List || choices.outputKind == OutputKind::Aggregate) {
    Result<OutputLineList> built = builder.BuildWithOrigins(data, choices.outputKind == OutputKind::Aggregate,
                                                            choices.separatorKind, choices.category);
    if (!built) return built.error();
    lines = std::move(*built);
  }
  OutputResult result;
  if (lines.lines.empty()) return result;
  std::optional<std::filesystem::path> path = hooks.choosePath(DefaultOutputName(documentFileName, choices.outputKind));
  if (!path) {
    result.outcome = OutputResult::Outcome::NoFileChosen;
    return result;
  }
  if (hooks.warn)
    for (const Text& warning : UnmappableWarnings(lines, folders.codePage(), hooks.sheetName)) hooks.warn(warning);
  if (Status written = WriteOutputFile(*path, lines.lines, folders.codePage()); !written) return written.error();
  result.outcome = OutputResult::Outcome::Written;
  result.path = *path;
  return result;
}

}  // namespace tq
