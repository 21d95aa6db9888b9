#include "info/ChoiceLists.hpp"

#include "base/Paths.hpp"
#include "base/TextFiles.hpp"

namespace tq {

bool SelectsAMaterial(TextView abText) { return EqualNoCase(abText, u"A") || EqualNoCase(abText, u"1"); }

ChoiceFolders FindChoiceFolders(const Folders& folders) {
  ChoiceFolders result;
  if (std::optional<Text> folder = folders.AddinDataFolder()) result.choiceFolder = *folder;
  result.stdDataFolder = folders.StdDataFolder();
  result.attributeIdTable = folders.StdPartsFile(u"属性IDパラメータ.csv");
  return result;
}

const std::vector<ChoiceFile>& ChoiceFiles() {
  static const std::vector<ChoiceFile> files{
      {1102, u"A材/別途", u"A材別途.txt", nullptr}, {1103, u"部材", u"A材-部材.txt", u"B材-部材.txt"},
      {1107, u"材質", u"A材-材質.txt", u"B材-材質.txt"}, {1111, u"仕様", u"A材-仕様.txt", u"B材-仕様.txt"},
      {1108, u"数量", u"数量.txt", nullptr},           {1109, u"呼称", u"呼称.txt", nullptr},
      {1110, u"備考", u"備考.txt", nullptr}};
  return files;
}

Text ChoiceFilePath(const ChoiceFolders& folders, const ChoiceFile& file, TextView abText) {
  const char16_t* name = (!file.bFile || SelectsAMaterial(abText)) ? file.aFile : file.bFile;
  return folders.choiceFolder.empty() ? Text() : JoinPath(folders.choiceFolder, name);
}

std::optional<std::vector<Text>> ComboEntriesFromFile(TextView path, const CodePage& systemCodePage) {
  if (path.empty()) return std::nullopt;
  std::optional<std::vector<Text>> lines = ReadTextLines(ToFsPath(path), systemCodePage);
  if (!lines) return std::nullopt;
  if (lines->empty()) lines->push_back(u" ");
  return lines;
}

}  // namespace tq
