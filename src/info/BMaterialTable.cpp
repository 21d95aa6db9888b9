#include "info/BMaterialTable.hpp"

#include <algorithm>

namespace tq {

Text BMaterialTable::CodeFor(TextView member, TextView material) const {
  const auto& members = columns_.column(BSettingsColumn::kMemberName);
  const auto& materials = columns_.column(BSettingsColumn::kMaterial);
  const auto& codes = columns_.column(BSettingsColumn::kMaterialCode);
  size_t rows = std::min(members.size(), materials.size());
  for (size_t i = 0; i < rows; ++i) {
    if (!EqualNoCase(members[i], member) || !EqualNoCase(materials[i], material) || i >= codes.size()) continue;
    return codes[i].empty() ? Text(kUnknownCode) : codes[i];
  }
  return kUnknownCode;
}

}  // namespace tq
