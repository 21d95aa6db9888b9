#include "takeoff/ReferenceTables.hpp"

#include "base/Paths.hpp"
#include "info/AttributeIdTable.hpp"

namespace tq {

namespace {
const char16_t* const kRowTables[] = {u"CI-NETコード.csv", u"配管用CI-NETコード.csv", u"配線用CI-NETコード.csv",
                                      u"丸ダクト板厚テーブル.csv", u"工事区分コードテーブル.csv"};

ColumnLists Columns(TextView path, size_t count, const CodePage& codePage) {
  return path.empty() ? ColumnLists(ConfigTable(), count) : ColumnLists::Load(ToFsPath(path), count, codePage);
}
}  // namespace

const ColumnLists& ReferenceTables::Group(TextView id) const {
  static const ColumnLists kEmpty(ConfigTable(), kAttributeColumns);
  for (const auto& [name, group] : attributeGroups)
    if (EqualNoCase(name, id)) return group;
  return kEmpty;
}

ReferenceTables LoadReferenceTables(const Folders& folders) {
  ReferenceTables t;
  std::optional<Text> system = folders.SystemFolder();
  std::optional<Text> addin = folders.AddinDataFolder();
  t.stdDrawingFolder = addin.value_or(Text());
  AttributeIdTable attributes = AttributeIdTable::Load(ToFsPath(folders.StdPartsFile(u"属性IDパラメータ.csv")), folders.codePage());
  for (const char16_t* id : kAttributeGroups) t.attributeGroups.emplace(id, attributes.Group(id));
  if (folders.host().ConfigData(u"環境設定", u"ｼｽﾃﾑ"))
    for (size_t i = 0; i < t.rowTables.size(); ++i) t.rowTables[i] = ReadConfigFile(ToFsPath(folders.TakeoffTableFile(kRowTables[i])), folders.codePage()).value_or(ConfigTable());
  auto addinFile = [&](const char16_t* name) { return addin ? JoinPath(*addin, name) : Text(); };
  const CodePage& cp = folders.codePage();
  t.memberCinet = Columns(addinFile(u"標準図用部材名ＣＩＮＥＴコード.csv"), kMemberCinetColumns, cp);
  t.outputFormat = Columns(addinFile(u"標準図用出力フォーマット.csv"), kOutputFormatColumns, cp);
  t.bSettings = Columns(addinFile(u"標準図用B材設定.csv"), kBSettingsColumns, cp);
  t.constructionCategory = Columns(system ? JoinPath(JoinPath(*system, u"拾い"), u"工事区分コードテーブル.csv") : Text(), kCategoryColumns, cp);
  t.memberCinetFiles = Columns(addinFile(u"標準図用部材名ＣＩＮＥＴコード.csv"), kMemberFileColumns, cp);
  t.bUse = Columns(addinFile(u"標準図用B材用途当込み.csv"), kBUseColumns, cp);
  return t;
}

}  // namespace tq
