#pragma once
// The folders and data files of an installation, all found from the host ini file.
#include <optional>

#include "base/Encoding.hpp"
#include "base/Text.hpp"
#include "ports/HostServices.hpp"

namespace tq {

// The data folder holds the workbooks: without it the workflows and the size dialogs stop with this.
inline constexpr char16_t kNoDataFolderMessage[] = u"Excelﾌｧｲﾙのﾊﾟｽが設定されていません.";

// A value of the host ini, as the suite's environment reader gives it: nothing when the key
// cannot be read.
std::optional<Text> ReadHostSetting(TextView iniPath, TextView section, TextView key, const CodePage& systemCodePage);

// The installation: its folders and the system code page its hand-written files are read in.
// Every folder is derived afresh at each call: settings written meanwhile take effect.
class Folders {
 public:
  Folders(const HostServices& host, const CodePage& systemCodePage) : host_(host), codePage_(systemCodePage) {}

  const HostServices& host() const { return host_; }
  const CodePage& codePage() const { return codePage_; }

  // Section "Custom", key "標準図ﾃﾞｰﾀ"; empty when not set.
  Text StdDataFolder() const;
  // Section "環境設定", key "ｼｽﾃﾑ"; nothing when it cannot be read.
  std::optional<Text> SystemFolder() const;
  // The same key through the host export; empty when the export is missing.
  Text HostSystemFolder() const;
  // "%s\\Addin\\標準図" of the system folder.
  std::optional<Text> AddinDataFolder() const;
  // Section "環境設定", key "標準部品".
  std::optional<Text> StdPartsFolder() const;

  // A file of the standard-drawing data folder; empty when that folder is not set.
  Text StdDataFile(TextView name) const;
  // "標準図設定.ini" in the standard-drawing data folder.
  Text SettingsFile() const { return StdDataFile(u"標準図設定.ini"); }
  Text SymbolSizeDataFile() const { return StdDataFile(u"記号サイズデータ.dat"); }
  // A file of the add-in data folder; empty when the system folder cannot be read.
  Text AddinDataFile(TextView name) const;
  // A file of the standard parts folder; empty when that folder cannot be read.
  Text StdPartsFile(TextView name) const;
  // "\\拾い\\" and a name after the host system folder.
  Text TakeoffTableFile(TextView name) const;

 private:
  Text Resolve(TextView folder) const;
  const HostServices& host_;
  const CodePage& codePage_;
};

}  // namespace tq
