#pragma once
// The choice lists of the attribute information dialog: one text file per field, with A and
// B material files for 部材, 材質 and 仕様.
#include <optional>
#include <vector>

#include "base/Text.hpp"
#include "site/Folders.hpp"

namespace tq {

// "A" or "1" without regard to case selects the A material files; anything else the B ones.
bool SelectsAMaterial(TextView abText);

struct ChoiceFolders {
  Text choiceFolder;       // "%s\\Addin\\標準図" of the system folder
  Text stdDataFolder;      // "Custom", "標準図ﾃﾞｰﾀ" as it stands
  Text attributeIdTable;   // the standard parts folder's "属性IDパラメータ.csv"
};
// Read through ReadHostSetting; a key that cannot be read leaves its path empty.
ChoiceFolders FindChoiceFolders(const Folders& folders);

struct ChoiceFile {
  int comboId;
  const char16_t* field;
  const char16_t* aFile;  // the file name, or its A material variant
  const char16_t* bFile;  // nullptr when the same file serves both
};
// A材別途 (1102), 部材 (1103), 材質 (1107), 仕様 (1111), 数量 (1108), 呼称 (1109), 備考 (1110).
const std::vector<ChoiceFile>& ChoiceFiles();

// The entries one text file gives its combo: its lines in file order (blank lines kept), or
// a single " " when it has none; nothing when it cannot be opened (the combo keeps what it has).
std::optional<std::vector<Text>> ComboEntriesFromFile(TextView path, const CodePage& systemCodePage);
Text ChoiceFilePath(const ChoiceFolders& folders, const ChoiceFile& file, TextView abText);

}  // namespace tq
