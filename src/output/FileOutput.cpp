#include "output/FileOutput.hpp"

#include "base/Encoding.hpp"
#include "base/Format.hpp"
#include "base/Numbers.hpp"
#include "base/Paths.hpp"
#include "base/TextFiles.hpp"
#include "output/EncodedWriter.hpp"

namespace tq {

std::optional<FileOutputChoices> ReadLastValues(TextView path) {
  if (path.empty()) return std::nullopt;
  std::optional<std::vector<Text>> lines = ReadTextLines(ToFsPath(path));
  if (!lines) return std::nullopt;
  FileOutputChoices choices;
  if (lines->size() > 0) choices.outputKind = _wtoi((*lines)[0]);
  if (lines->size() > 1) choices.separatorKind = _wtoi((*lines)[1]);
  choices.category = lines->size() > 2 ? (*lines)[2] : Text();
  return choices;
}

bool WriteLastValues(TextView path, const FileOutputChoices& choices) {
  if (path.empty()) return false;
  try {
    Text text = Format(u"%d\r\n%d\r\n%s\r\n", {choices.outputKind, choices.separatorKind, choices.category});
    WriteFileBytes(ToFsPath(path), EncodeCodePage(text, SystemCodePage()));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

std::vector<Text> ReadOutputCategories(TextView path) {
  if (path.empty()) return {};
  return ReadTextLines(ToFsPath(path)).value_or(std::vector<Text>());
}

FileOutputChoices InitialChoices(const Folders& folders) {
  if (std::optional<FileOutputChoices> last = ReadLastValues(folders.AddinDataFile(u"ファイル出力前回値.dat"))) return *last;
  std::vector<Text> categories = ReadOutputCategories(folders.AddinDataFile(u"出力区分.txt"));
  return {0, 2, categories.empty() ? Text() : categories.front()};
}

Text DefaultOutputName(TextView documentFileName, int outputKind) {
  Text name(documentFileName);
  size_t dot = name.rfind(u'.');
  if (dot != Text::npos && dot >= 1) name.erase(dot, 4);
  if (outputKind == 2) name += u"_CI-NETコード";
  return name;
}

OutputResult OutputTakeoff(const TakeoffData& data, const ReferenceTables& tables, const Folders& folders,
                           const FileOutputChoices& choices, TextView documentFileName, std::vector<Text>& lines,
                           const std::function<std::optional<std::filesystem::path>(TextView)>& choosePath) {
  OutputFormat format = LoadOutputFormat(ToFsPath(folders.AddinDataFile(u"標準図用出力フォーマット.csv")));
  OutputBuilder builder(format, tables);
  if (choices.outputKind == 0 || choices.outputKind == 1)
    lines = builder.Build(data, choices.outputKind == 1, choices.separatorKind, choices.category);
  OutputResult result;
  if (lines.empty()) {
    result.reason = u"nothing to output";
    return result;
  }
  std::optional<std::filesystem::path> path = choosePath(DefaultOutputName(documentFileName, choices.outputKind));
  if (!path) {
    result.reason = u"no file chosen";
    return result;
  }
  result.path = *path;
  result.written = WriteOutputFile(*path, lines);
  if (!result.written) result.reason = u"the file could not be written";
  return result;
}

}  // namespace tq
