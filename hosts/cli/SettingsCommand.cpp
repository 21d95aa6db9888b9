#include "cli/SettingsCommand.hpp"

#include <filesystem>

#include "base/Paths.hpp"
#include "site/Settings.hpp"

namespace tq::cli {

namespace {

void PrintPath(std::ostream& out, TextView name, TextView path) {
  bool exists = !path.empty() && std::filesystem::exists(ToFsPath(path));
  Text shown = path.empty() ? Text(u"(not set)") : FromFsPath(ToFsPath(path));
  PrintLine(out, Text(name) + u" = " + shown + (path.empty() || exists ? u"" : u" (missing)"));
}

Text OrNotSet(const std::optional<Text>& value) { return value ? *value : Text(); }

}  // namespace

int RunSettings(const Context& context) {
  std::ostream& out = *context.out;
  const Folders& f = *context.folders;
  PrintPath(out, u"HostIniFile", f.host().HostIniFile());
  PrintPath(out, u"StdDataFolder", f.StdDataFolder());
  PrintPath(out, u"system folder", OrNotSet(f.SystemFolder()));
  PrintPath(out, u"host system folder", f.HostSystemFolder());
  PrintPath(out, u"add-in data folder", OrNotSet(f.AddinDataFolder()));
  PrintPath(out, u"standard parts folder", OrNotSet(f.StdPartsFolder()));
  for (TextView name : {u"標準図設定.ini", u"記号サイズデータ.dat"}) PrintPath(out, name, f.StdDataFile(name));
  for (TextView name : {u"出力区分.txt", u"ファイル出力前回値.dat", u"標準図用B材設定.csv",
                        u"標準図用部材名ＣＩＮＥＴコード.csv", u"標準図用出力フォーマット.csv",
                        u"標準図用B材用途当込み.csv"})
    PrintPath(out, name, f.AddinDataFile(name));
  PrintPath(out, u"属性IDパラメータ.csv", f.StdPartsFile(u"属性IDパラメータ.csv"));
  std::optional<Text> system = f.SystemFolder();
  PrintPath(out, u"工事区分コードテーブル.csv",
            system ? JoinPath(JoinPath(*system, u"拾い"), u"工事区分コードテーブル.csv") : Text());
  for (TextView name : {u"CI-NETコード.csv", u"配管用CI-NETコード.csv", u"配線用CI-NETコード.csv",
                        u"丸ダクト板厚テーブル.csv", u"工事区分コードテーブル.csv"})
    PrintPath(out, Text(u"拾い\\") + Text(name), f.TakeoffTableFile(name));
  StdSettings settings(f);
  for (const SettingKey& key : AllSettingKeys()) {
    SettingValue value = settings.Read(key);
    PrintLine(out, u"[" + Text(key.section) + u"] " + key.key + u" = " + value.text +
                       (value.isDefault ? u" (default)" : u""));
  }
  return 0;
}

}  // namespace tq::cli
