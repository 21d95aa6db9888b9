#pragma once
// The keys of "標準図設定.ini", each read anew at every use.
#include <optional>
#include <span>

#include "base/Text.hpp"
#include "site/Folders.hpp"

namespace tq {

enum class SettingType { Text, Integer, Real };

struct SettingKey {
  const char16_t* section;
  const char16_t* key;
  SettingType type;
  const char16_t* defaultValue;
};

inline constexpr SettingKey kSheetNumberLayerKey{u"標準図", u"標準図番号ﾚｲﾔ", SettingType::Text, u"5"};
inline constexpr SettingKey kBasePointLayerKey{u"標準図", u"配置基準点ﾚｲﾔ", SettingType::Text, u"4"};
// Its default is the text of kDefaultChangeColour.
inline constexpr SettingKey kChangeColourKey{u"標準図", u"変更色", SettingType::Integer, u"1"};
inline constexpr SettingKey kFrameOriginXKey{u"標準図", u"ﾌﾚｰﾑ原点X", SettingType::Real, u"0.0"};
inline constexpr SettingKey kFrameOriginYKey{u"標準図", u"ﾌﾚｰﾑ原点Y", SettingType::Real, u"0.0"};
inline constexpr SettingKey kFrameRowsKey{u"標準図", u"縦ﾌﾚｰﾑ数", SettingType::Integer, u"3"};
inline constexpr SettingKey kFrameColumnsKey{u"標準図", u"横ﾌﾚｰﾑ数", SettingType::Integer, u"3"};
inline constexpr SettingKey kFrameHeightKey{u"標準図", u"ﾌﾚｰﾑ高さ", SettingType::Real, u"19800.0"};
inline constexpr SettingKey kFrameWidthKey{u"標準図", u"ﾌﾚｰﾑ幅", SettingType::Real, u"28000.0"};
inline constexpr SettingKey kCharHeightKey{u"標準図", u"文字高さ", SettingType::Real, u"350"};
inline constexpr SettingKey kCharWidthKey{u"標準図", u"文字幅", SettingType::Real, u"280"};
inline constexpr SettingKey kRowSpacingKey{u"標準図", u"行間隔", SettingType::Real, u"500"};
inline constexpr SettingKey kSizeHeaderRowKey{u"EXCEL", u"サイズヘッダ行", SettingType::Integer, u"30"};
inline constexpr SettingKey kQuantityCellKey{u"EXCEL", u"数量計算セル", SettingType::Text, u"AZ"};
// Ours, not the original add-in's: 1 registers the takeoff rows back to the records they came
// from, where the original pairing moves the rows of a drawing of two or more records.
inline constexpr SettingKey kRegisterToOriginKey{u"TQTStdInfo", u"RegisterTakeoffToOrigin", SettingType::Integer, u"0"};

// Every key of the file, in the order they are listed to the user.
std::span<const SettingKey> AllSettingKeys();

struct SettingValue {
  Text text;               // the stored text, or the default when empty
  bool isDefault = false;  // the default applied
};

struct LayerSettings {
  Text sheetNumberLayer;  // `SheetNumberLayer`
  Text basePointLayer;    // `BasePointLayer`
};

struct FrameGridValues {
  bool dataFolderMissing = false;  // the defaults stand and the origin is not read
  double originX = 0.0, originY = 0.0;
  int rows = 3, columns = 3;
  double height = 19800.0, width = 28000.0;
};

struct SizeTableValues {
  double charHeight = 350, charWidth = 280, rowSpacing = 500;  // hundredths
};

struct WorkbookValues {
  int sizeHeaderRow = 30;
  Text quantityColumn = u"AZ";
};

// Reading rule: an empty value means the default; a value that does not parse gives 0.
class StdSettings {
 public:
  explicit StdSettings(const Folders& folders) : folders_(folders) {}

  SettingValue Read(const SettingKey& key) const;
  Text ReadText(const SettingKey& key) const { return Read(key).text; }
  int ReadInt(const SettingKey& key) const;
  double ReadReal(const SettingKey& key) const;
  // An error when there is no data folder or the file cannot be written.
  Status Write(const SettingKey& key, TextView value) const;

  // `LoadLayerSettings`: nothing when the data folder is not set.
  std::optional<LayerSettings> LoadLayerSettings() const;
  FrameGridValues ReadFrameGrid() const;
  // The marking colour: kDefaultChangeColour without a data folder or value.
  int ReadChangeColour() const;
  SizeTableValues ReadSizeTable() const;
  // Stores the three values (hundredths) with "%g"; the first failure, after trying all three.
  Status WriteSizeTable(const SizeTableValues& values) const;
  WorkbookValues ReadWorkbook() const;
  // kRegisterToOriginKey set to a number other than 0.
  bool ReadRegisterToOrigin() const { return ReadInt(kRegisterToOriginKey) != 0; }

 private:
  const Folders& folders_;
};

}  // namespace tq
