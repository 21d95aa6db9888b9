#pragma once
// A dialog as its resource script describes it: the one source of its controls for every
// host. Positions and sizes are in dialog units, as the script gives them.
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq::dialog {

// The kinds a person tells apart (and the transcript's "kind" names).
enum class ControlKind { Button, Check, Radio, Edit, Static, Group, Combo, List };

// The window style bits the hosts act on, with their Windows values.
namespace style {
inline constexpr uint32_t kVisible = 0x10000000;   // WS_VISIBLE
inline constexpr uint32_t kDisabled = 0x08000000;  // WS_DISABLED
inline constexpr uint32_t kTabStop = 0x00010000;   // WS_TABSTOP
inline constexpr uint32_t kGroup = 0x00020000;     // WS_GROUP
inline constexpr uint32_t kVScroll = 0x00200000;   // WS_VSCROLL
inline constexpr uint32_t kBorder = 0x00800000;    // WS_BORDER
// Buttons (the low four bits are the button type).
inline constexpr uint32_t kButtonTypeMask = 0x0000000F;
inline constexpr uint32_t kPushButton = 0x0;       // BS_PUSHBUTTON
inline constexpr uint32_t kDefPushButton = 0x1;    // BS_DEFPUSHBUTTON
inline constexpr uint32_t kCheckBox = 0x2;         // BS_CHECKBOX
inline constexpr uint32_t kAutoCheckBox = 0x3;     // BS_AUTOCHECKBOX
inline constexpr uint32_t kRadioButton = 0x4;      // BS_RADIOBUTTON
inline constexpr uint32_t kGroupBox = 0x7;         // BS_GROUPBOX
inline constexpr uint32_t kAutoRadioButton = 0x9;  // BS_AUTORADIOBUTTON
// Edits.
inline constexpr uint32_t kEditRight = 0x0002;        // ES_RIGHT
inline constexpr uint32_t kEditAutoHScroll = 0x0080;  // ES_AUTOHSCROLL
inline constexpr uint32_t kEditReadOnly = 0x0800;     // ES_READONLY
// Combo boxes (the low two bits are the combo type).
inline constexpr uint32_t kComboTypeMask = 0x0003;
inline constexpr uint32_t kComboSimple = 0x0001;    // CBS_SIMPLE
inline constexpr uint32_t kComboDropDown = 0x0002;  // CBS_DROPDOWN: an edit part the user types in
inline constexpr uint32_t kComboDropDownList = 0x0003;  // CBS_DROPDOWNLIST: choose only
inline constexpr uint32_t kComboSort = 0x0100;      // CBS_SORT
// Statics.
inline constexpr uint32_t kStaticCenter = 0x0001;  // SS_CENTER
inline constexpr uint32_t kStaticRight = 0x0002;   // SS_RIGHT
// List views.
inline constexpr uint32_t kListReport = 0x0001;          // LVS_REPORT
inline constexpr uint32_t kListSingleSel = 0x0004;       // LVS_SINGLESEL
inline constexpr uint32_t kListShowSelAlways = 0x0008;   // LVS_SHOWSELALWAYS
inline constexpr uint32_t kListOwnerDrawFixed = 0x0400;  // LVS_OWNERDRAWFIXED
}  // namespace style

struct ControlTemplate {
  int id = -1;             // -1 for a control no code addresses
  Text symbol;             // the resource.h name ("IDC_…", "IDOK"); empty for -1 or a bare number
  ControlKind kind = ControlKind::Static;
  Text windowClass;        // "BUTTON", "EDIT", "STATIC", "COMBOBOX", "SysListView32"
  uint32_t style = 0;      // the full style, WS_VISIBLE and WS_CHILD included as the script implies
  uint32_t exStyle = 0;
  Text caption;
  int x = 0, y = 0, cx = 0, cy = 0;  // dialog units

  bool visible() const { return (style & style::kVisible) != 0; }
  bool enabled() const { return (style & style::kDisabled) == 0; }
  bool isDefaultButton() const {
    return kind == ControlKind::Button && (style & style::kButtonTypeMask) == style::kDefPushButton;
  }
  // An automatic check box or radio button toggles itself; a plain one is checked by its dialog.
  bool isAutomatic() const {
    uint32_t t = style & style::kButtonTypeMask;
    return t == style::kAutoCheckBox || t == style::kAutoRadioButton;
  }
  // A combo with an edit part (CBS_DROPDOWN or CBS_SIMPLE) takes typed text.
  bool comboTakesText() const {
    return kind == ControlKind::Combo && (style & style::kComboTypeMask) != style::kComboDropDownList;
  }
};

struct DialogTemplate {
  int id = 0;
  Text symbol;  // "IDD_…"
  Text caption;
  Text fontName;  // "ＭＳ Ｐゴシック"
  int fontSize = 9;
  int x = 0, y = 0, cx = 0, cy = 0;  // dialog units
  uint32_t style = 0, exStyle = 0;
  std::vector<ControlTemplate> controls;  // in template order

  // The first control with this id; nothing for -1 or an id the template lacks.
  const ControlTemplate* Find(int controlId) const;
};

// Everything the resource script holds: the dialogs and the string table.
struct ResourceScript {
  std::vector<DialogTemplate> dialogs;
  std::map<int, Text> strings;

  const DialogTemplate* FindDialog(int dialogId) const;
};

// Reads the resource script and its resource.h: the symbols of resource.h give the ids.
// Fails with the line and the reason for anything it cannot read.
Result<ResourceScript> ParseResourceScript(TextView script, TextView resourceHeader);

// The resource script compiled into the program: parsed once per call site that asks (callers
// keep what they need); the build embeds src/res/TQTStdInfo.rc and src/res/resource.h.
const ResourceScript& BuiltInResources();

}  // namespace tq::dialog
