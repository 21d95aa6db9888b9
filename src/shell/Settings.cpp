#include "shell/Settings.hpp"

#include "base/Format.hpp"
#include "base/Numbers.hpp"
#include "base/Profile.hpp"

namespace tq {

namespace {
constexpr SettingKey kAllKeys[] = {
    kSheetNumberLayerKey, kBasePointLayerKey, kChangeColourKey, kFrameOriginXKey, kFrameOriginYKey,
    kFrameRowsKey,        kFrameColumnsKey,   kFrameHeightKey,  kFrameWidthKey,   kCharHeightKey,
    kCharWidthKey,        kRowSpacingKey,     kSizeHeaderRowKey, kQuantityCellKey,
};
}  // namespace

std::span<const SettingKey> AllSettingKeys() { return kAllKeys; }

SettingValue StdSettings::Read(const SettingKey& key) const {
  Text file = folders_.SettingsFile();
  Text value = file.empty() ? Text() : GetPrivateProfileString(key.section, key.key, u"", file);
  if (value.empty()) return {key.defaultValue, true};
  return {value, false};
}

int StdSettings::ReadInt(const SettingKey& key) const { return _wtoi(Read(key).text); }

double StdSettings::ReadReal(const SettingKey& key) const { return ApiComn_atof(Read(key).text); }

bool StdSettings::Write(const SettingKey& key, TextView value) const {
  Text file = folders_.SettingsFile();
  return !file.empty() && WritePrivateProfileString(key.section, key.key, value, file);
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
  if (folders_.StdDataFolder().empty()) return 1;
  return ReadInt(kChangeColourKey);
}

SizeTableValues StdSettings::ReadSizeTable() const {
  return {ReadReal(kCharHeightKey), ReadReal(kCharWidthKey), ReadReal(kRowSpacingKey)};
}

bool StdSettings::WriteSizeTable(const SizeTableValues& values) const {
  bool ok = Write(kCharHeightKey, Format(u"%g", {values.charHeight}));
  ok = Write(kCharWidthKey, Format(u"%g", {values.charWidth})) && ok;
  return Write(kRowSpacingKey, Format(u"%g", {values.rowSpacing})) && ok;
}

WorkbookValues StdSettings::ReadWorkbook() const {
  return {ReadInt(kSizeHeaderRowKey), ReadText(kQuantityCellKey)};
}

}  // namespace tq
