#include "common/DialogLines.hpp"

#include <algorithm>
#include <string>

#include "common/Transcript.hpp"

namespace tq {

namespace {

Text Number(long long n) { return FromUtf8(std::to_string(n)); }
Text Address(int dialogId, int controlId) { return Number(dialogId) + u":" + Number(controlId); }
Text KindOf(const dialog::ControlTemplate& control) { return FromUtf8(KindName(control.kind)); }

std::optional<Text> Click(const ScriptLine& line, int dialogId, const dialog::ControlTemplate& t, DialogLineActions& actions) {
  if (line.args.size() != 1) return u"'click' takes one control: click D:ID";
  if (t.kind != dialog::ControlKind::Button && t.kind != dialog::ControlKind::Check && t.kind != dialog::ControlKind::Radio)
    return u"the control " + Address(dialogId, t.id) + u" is a " + KindOf(t) + u", which cannot be clicked";
  actions.Click(t);
  return std::nullopt;
}

std::optional<Text> SelectEntry(int dialogId, const dialog::ControlTemplate& t, const DialogWindow& window, TextView what,
                                DialogLineActions& actions) {
  int count = window.ComboCount(t.id);
  if (std::optional<long long> index = ParseWholeNumber(what)) {
    if (*index < 0 || *index >= count)
      return u"the combo " + Address(dialogId, t.id) + u" has no entry " + Number(*index) + u" (it has " + Number(count) + u")";
    actions.SelectEntry(t, static_cast<int>(*index));
    return std::nullopt;
  }
  for (int i = 0; i < count; ++i)
    if (window.ComboItem(t.id, i) == what) {
      actions.SelectEntry(t, i);
      return std::nullopt;
    }
  return u"the combo " + Address(dialogId, t.id) + u" has no entry \"" + Text(what) + u"\"";
}

std::optional<Text> SelectRow(int dialogId, const dialog::ControlTemplate& t, const DialogWindow& window, TextView what,
                              DialogLineActions& actions) {
  std::optional<long long> index = ParseWholeNumber(what);
  if (!index) return u"a list item is chosen by its index: select " + Address(dialogId, t.id) + u" INDEX";
  int count = window.ListCount(t.id);
  if (*index < 0 || *index >= count)
    return u"the list " + Address(dialogId, t.id) + u" has no item " + Number(*index) + u" (it has " + Number(count) + u")";
  actions.SelectRow(t, static_cast<int>(*index));
  return std::nullopt;
}

std::optional<Text> Type(int dialogId, const dialog::ControlTemplate& t, TextView text, DialogLineActions& actions) {
  if (t.kind == dialog::ControlKind::Edit) {
    if (t.style & dialog::style::kEditReadOnly) return u"the edit " + Address(dialogId, t.id) + u" is read-only";
    actions.Type(t, text);
    return std::nullopt;
  }
  if (t.comboTakesText()) {
    actions.Type(t, text);
    return std::nullopt;
  }
  return u"the control " + Address(dialogId, t.id) + u" takes no typing";
}

}  // namespace

bool IsDialogVerb(TextView verb) {
  static const TextView kVerbs[] = {u"click", u"select", u"type", u"close", u"dump"};
  return std::find(std::begin(kVerbs), std::end(kVerbs), verb) != std::end(kVerbs);
}

DialogLineAddress AddressOf(const ScriptLine& line) {
  if (line.args.empty()) return {std::nullopt, u"'" + line.verb + u"' needs a dialog or a control (D or D:ID)"};
  std::optional<ControlAddress> address = ParseControlAddress(line.args[0]);
  if (!address) return {std::nullopt, u"'" + line.args[0] + u"' is not a dialog or a control (D or D:ID)"};
  return {address, std::nullopt};
}

std::optional<Text> DialogAccessRefusal(const ScriptLine& line, int dialogId, bool open, bool modal,
                                        std::optional<int> owner) {
  if (!open) return u"the dialog " + Number(dialogId) + u" is not open";
  if (line.verb == u"dump") return std::nullopt;
  if (owner && dialogId != *owner)
    return u"the dialog " + Number(dialogId) + u" is behind the modal dialog " + Number(*owner);
  if (!owner && modal) return u"the dialog " + Number(dialogId) + u" is not waiting for input";
  return std::nullopt;
}

std::optional<Text> ApplyDialogLine(const ScriptLine& line, const ControlAddress& address,
                                    const dialog::DialogTemplate& dialogTemplate, const DialogWindow& window,
                                    DialogLineActions& actions) {
  int dialogId = dialogTemplate.id;
  const dialog::ControlTemplate* control = address.control ? dialogTemplate.Find(*address.control) : nullptr;
  auto noSuchControl = [&] { return u"the dialog " + Number(dialogId) + u" has no control " + Number(*address.control); };
  if (line.verb == u"dump") {
    if (address.control && !control) return noSuchControl();
    actions.Dump(address.control);
    return std::nullopt;
  }
  if (line.verb == u"close") {
    if (line.args.size() != 1 || address.control) return u"'close' takes a dialog: close D";
    actions.Close();
    return std::nullopt;
  }
  if (!address.control) return u"'" + line.verb + u"' needs a control: " + line.verb + u" D:ID";
  if (!control) return noSuchControl();
  if (!window.IsShown(control->id)) return u"the control " + Address(dialogId, control->id) + u" is hidden";
  if (!window.IsEnabled(control->id)) return u"the control " + Address(dialogId, control->id) + u" is disabled";
  if (line.verb == u"click") return Click(line, dialogId, *control, actions);
  if (line.args.size() != 2) return u"'" + line.verb + u"' takes a control and a value";
  if (line.verb == u"select") {
    if (control->kind == dialog::ControlKind::Combo) return SelectEntry(dialogId, *control, window, line.args[1], actions);
    if (control->kind == dialog::ControlKind::List) return SelectRow(dialogId, *control, window, line.args[1], actions);
    return u"the control " + Address(dialogId, control->id) + u" is a " + KindOf(*control) + u", which has nothing to select";
  }
  return Type(dialogId, *control, line.args[1], actions);
}

}  // namespace tq
