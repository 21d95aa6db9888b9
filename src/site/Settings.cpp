#include "site/Settings.hpp"

#include "base/Format.hpp"
#include "base/Numbers.hpp"
#include "base/Profile.hpp"
#include "ports/Drawing.hpp"

namespace tq {

namespace {
constexpr SettingKey kAllKeys[] = {
    kSheetNumberLayerKey, kBasePointLayerKey, kChangeColourKey, kFrameOriginXKey, kFrameOriginYKey,
    kFrameRowsKey,        kFrameColumnsKey,   kFrameHeightKey,  kFrameWidthKey,   kCharHeightKey,
    kCharWidthKey,        kRowSpacingKey,     kSizeHeaderRowKey, kQuantityCellKey, kRegisterToOriginKey,
};
}  // namespace

std::span<const SettingKey> AllSettingKeys() { return kAllKeys; }

SettingValue StdSettings::Read(const SettingKey& key) const {
  Text file = folders_.SettingsFile();
  Text value = file.empty() ? Text() : ReadProfileString(key.section, key.key, u"", file, folders_.codePage());
  if (value.empty()) return {key.defaultValue, true};
  return {value, false};
}

int StdSettings::ReadInt(const SettingKey& key) const { return ToInt(Read(key).text); }

double StdSettings::ReadReal(const SettingKey& key) const { return ToReal(Read(key).text); }

Status StdSettings::Write(const SettingKey& key, TextView value) const {
  Text file = folders_.SettingsFile();
  if (file.empty()) return MakeError(ErrorCode::NotFound, u"the standard drawing data folder is not set (標準図ﾃﾞｰﾀ)");
  return WriteProfileString(key.section, key.key, value, file, folders_.codePage());
}

std::optional<LayerSettings> StdSettings::LoadLayerSettings() const {
  if (folders_.StdDataFolder().empty()) return std::nullopt;
  return LayerSettings{ReadText(kSheetNumberLayerKey), ReadText(kBasePointLayerKey)};
}

FrameGridValues StdSettings::ReadFrameGrid() const {
  FrameGridValues grid;
  if (folders_.StdDataFolder().empty()) {
    grid.dataFolderMissing = true;
    return grid;
  }
  grid.originX = ReadReal(kFrameOriginXKey);
  grid.originY = ReadReal(kFrameOriginYKey);
  grid.rows = ReadInt(kFrameRowsKey);
  grid.columns = ReadInt(kFrameColumnsKey);
  grid.height = ReadReal(kFrameHeightKey);
  grid.width = ReadReal(kFrameWidthKey);
  return grid;
}

int StdSettings::ReadChangeColour() const {
  if (folders_.StdDataFolder().empty()) return kDefaultChangeColour;
  return ReadInt(kChangeColourKey);
}

SizeTableValues StdSettings::ReadSizeTable() const {
  return {ReadReal(kCharHeightKey), ReadReal(kCharWidthKey), ReadReal(kRowSpacingKey)};
}

Status StdSettings::WriteSizeTable(const SizeTableValues& values) const {
  Status height = Write(kCharHeightKey, Format(u"%g", {values.charHeight}));
  Status width = Write(kCharWidthKey, Format(u"%g", {values.charWidth}));
  Status spacing = Write(kRowSpacingKey, Format(u"%g", {values.rowSpacing}));
  for (Status* s : {&height, &width, &spacing})
    if (!*s) return *s;
  return {};
}

WorkbookValues StdSettings::ReadWorkbook() const {
  return {ReadInt(kSizeHeaderRowKey), ReadText(kQuantityCellKey)};
}

}  // namespace tq
