#pragma once
// The size setting dialog's control table: six rows of sixteen controls each (check box,
// symbol, number, twelve sizes, count). Every operation on rows goes through it; row 2's
// numbering is irregular in the template and is kept.
#include <array>

#include "ports/DialogWindow.hpp"
#include "res/resource.h"

namespace tq {

inline constexpr int kSizeRows = 6;
inline constexpr int kRowPositions = 16;
// Positions within a row, from 0.
inline constexpr int kCheckPosition = 0;
inline constexpr int kSymbolPosition = 1;
inline constexpr int kNumberPosition = 2;
inline constexpr int kFirstSizePosition = 3;
inline constexpr int kCountPosition = 15;
inline constexpr int kSizeCombos = 12;

using RowControls = std::array<int, kRowPositions>;

inline constexpr std::array<RowControls, kSizeRows> kRowControls{{
    {IDC_ROW1_CHECK, IDC_ROW1_SYMBOL, IDC_ROW1_NUMBER, IDC_ROW1_SIZE1, IDC_ROW1_SIZE2, IDC_ROW1_SIZE3, IDC_ROW1_SIZE4,
     IDC_ROW1_SIZE5, IDC_ROW1_SIZE6, IDC_ROW1_SIZE7, IDC_ROW1_SIZE8, IDC_ROW1_SIZE9, IDC_ROW1_SIZE10, IDC_ROW1_SIZE11,
     IDC_ROW1_SIZE12, IDC_ROW1_COUNT},
    {IDC_ROW2_CHECK, IDC_ROW2_SYMBOL, IDC_ROW2_NUMBER, IDC_ROW2_SIZE1, IDC_ROW2_SIZE2, IDC_ROW2_SIZE3, IDC_ROW2_SIZE4,
     IDC_ROW2_SIZE5, IDC_ROW2_SIZE6, IDC_ROW2_SIZE7, IDC_ROW2_SIZE8, IDC_ROW2_SIZE9, IDC_ROW2_SIZE10, IDC_ROW2_SIZE11,
     IDC_ROW2_SIZE12, IDC_ROW2_COUNT},
    {IDC_ROW3_CHECK, IDC_ROW3_SYMBOL, IDC_ROW3_NUMBER, IDC_ROW3_SIZE1, IDC_ROW3_SIZE2, IDC_ROW3_SIZE3, IDC_ROW3_SIZE4,
     IDC_ROW3_SIZE5, IDC_ROW3_SIZE6, IDC_ROW3_SIZE7, IDC_ROW3_SIZE8, IDC_ROW3_SIZE9, IDC_ROW3_SIZE10, IDC_ROW3_SIZE11,
     IDC_ROW3_SIZE12, IDC_ROW3_COUNT},
    {IDC_ROW4_CHECK, IDC_ROW4_SYMBOL, IDC_ROW4_NUMBER, IDC_ROW4_SIZE1, IDC_ROW4_SIZE2, IDC_ROW4_SIZE3, IDC_ROW4_SIZE4,
     IDC_ROW4_SIZE5, IDC_ROW4_SIZE6, IDC_ROW4_SIZE7, IDC_ROW4_SIZE8, IDC_ROW4_SIZE9, IDC_ROW4_SIZE10, IDC_ROW4_SIZE11,
     IDC_ROW4_SIZE12, IDC_ROW4_COUNT},
    {IDC_ROW5_CHECK, IDC_ROW5_SYMBOL, IDC_ROW5_NUMBER, IDC_ROW5_SIZE1, IDC_ROW5_SIZE2, IDC_ROW5_SIZE3, IDC_ROW5_SIZE4,
     IDC_ROW5_SIZE5, IDC_ROW5_SIZE6, IDC_ROW5_SIZE7, IDC_ROW5_SIZE8, IDC_ROW5_SIZE9, IDC_ROW5_SIZE10, IDC_ROW5_SIZE11,
     IDC_ROW5_SIZE12, IDC_ROW5_COUNT},
    {IDC_ROW6_CHECK, IDC_ROW6_SYMBOL, IDC_ROW6_NUMBER, IDC_ROW6_SIZE1, IDC_ROW6_SIZE2, IDC_ROW6_SIZE3, IDC_ROW6_SIZE4,
     IDC_ROW6_SIZE5, IDC_ROW6_SIZE6, IDC_ROW6_SIZE7, IDC_ROW6_SIZE8, IDC_ROW6_SIZE9, IDC_ROW6_SIZE10, IDC_ROW6_SIZE11,
     IDC_ROW6_SIZE12, IDC_ROW6_COUNT},
}};

// The size headings "①" … "⑫", which the import captions with the workbook's headers.
inline constexpr std::array<int, kSizeCombos> kSizeHeadings{IDC_SIZE_HEAD1, IDC_SIZE_HEAD2,  IDC_SIZE_HEAD3,
                                                            IDC_SIZE_HEAD4, IDC_SIZE_HEAD5,  IDC_SIZE_HEAD6,
                                                            IDC_SIZE_HEAD7, IDC_SIZE_HEAD8,  IDC_SIZE_HEAD9,
                                                            IDC_SIZE_HEAD10, IDC_SIZE_HEAD11, IDC_SIZE_HEAD12};

// The buttons under the rows, moved as the rows are shown and hidden.
inline constexpr std::array<int, 7> kSizeDialogButtons{IDC_ADD_ROW, IDC_DELETE_ROW, IDC_ROW_UP, IDC_ROW_DOWN,
                                                       IDC_NOTE_SETTINGS, IDC_REGISTER_SIZES, kIdCancel};

}  // namespace tq
