#include "common/Transcript.hpp"

#include <algorithm>
#include <string>

#include "common/Json.hpp"

namespace tq {

namespace {

// One JSON object, its fields in the order they are added.
class JsonObject {
 public:
  explicit JsonObject(const char* event) { text_ = "{\"event\":" + JsonString(FromUtf8(event)); }
  JsonObject& Add(const char* name, const std::string& rawValue) {
    text_ += ",\"";
    text_ += name;
    text_ += "\":";
    text_ += rawValue;
    return *this;
  }
  JsonObject& Text(const char* name, TextView value) { return Add(name, JsonString(value)); }
  JsonObject& Int(const char* name, long long value) { return Add(name, std::to_string(value)); }
  JsonObject& Bool(const char* name, bool value) { return Add(name, value ? "true" : "false"); }
  std::string Close() const { return text_ + "}"; }

 private:
  std::string text_;
};

const char* IconName(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Stop: return "stop";
    case MessageIcon::Warning: return "warning";
    case MessageIcon::Information: return "information";
    case MessageIcon::Question: return "question";
    case MessageIcon::None: break;
  }
  return "none";
}

const char* ButtonsName(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok: return "ok";
    case MessageButtons::OkCancel: return "okcancel";
    case MessageButtons::YesNo: return "yesno";
    case MessageButtons::YesNoCancel: return "yesnocancel";
    case MessageButtons::RetryCancel: return "retrycancel";
  }
  return "ok";
}

const char* AlignName(ColumnAlign align) {
  switch (align) {
    case ColumnAlign::Right: return "right";
    case ColumnAlign::Center: return "center";
    case ColumnAlign::Left: break;
  }
  return "left";
}

std::string TextArray(const std::vector<Text>& texts) {
  std::string out = "[";
  for (size_t i = 0; i < texts.size(); ++i) out += (i ? "," : "") + JsonString(texts[i]);
  return out + "]";
}

std::string ControlJson(const DumpedControl& c) {
  std::string text = "{\"id\":" + std::to_string(c.id) + ",\"kind\":" + JsonString(FromUtf8(KindName(c.kind))) +
                     ",\"text\":" + JsonString(c.text) + ",\"enabled\":" + (c.enabled ? "true" : "false") +
                     ",\"visible\":" + (c.visible ? "true" : "false");
  if (c.checked) text += std::string(",\"checked\":") + (*c.checked ? "true" : "false");
  if (c.items) text += ",\"items\":" + TextArray(*c.items);
  if (c.selected) text += ",\"selected\":" + std::to_string(*c.selected);
  if (c.columns) {
    text += ",\"columns\":[";
    for (size_t i = 0; i < c.columns->size(); ++i) {
      const ListColumn& col = (*c.columns)[i];
      text += std::string(i ? "," : "") + "{\"text\":" + JsonString(col.text) + ",\"width\":" + std::to_string(col.width) +
              ",\"align\":\"" + AlignName(col.align) + "\"}";
    }
    text += "]";
  }
  if (c.rows) {
    text += ",\"items\":[";
    for (size_t i = 0; i < c.rows->size(); ++i) text += (i ? "," : "") + TextArray((*c.rows)[i]);
    text += "]";
  }
  if (c.selection) {
    text += ",\"selected\":[";
    for (size_t i = 0; i < c.selection->size(); ++i) text += (i ? "," : "") + std::to_string((*c.selection)[i]);
    text += "]";
  }
  return text + "}";
}

}  // namespace

const char* KindName(dialog::ControlKind kind) {
  switch (kind) {
    case dialog::ControlKind::Button: return "button";
    case dialog::ControlKind::Check: return "check";
    case dialog::ControlKind::Radio: return "radio";
    case dialog::ControlKind::Edit: return "edit";
    case dialog::ControlKind::Static: return "static";
    case dialog::ControlKind::Group: return "group";
    case dialog::ControlKind::Combo: return "combo";
    case dialog::ControlKind::List: return "list";
  }
  return "static";
}

const char* AnswerName(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::Ok: return "OK";
    case MessageAnswer::Cancel: return "Cancel";
    case MessageAnswer::Yes: return "Yes";
    case MessageAnswer::No: return "No";
    case MessageAnswer::Retry: return "Retry";
  }
  return "OK";
}

std::vector<DumpedControl> DumpControls(const dialog::DialogTemplate& dialogTemplate, const DialogWindow& window,
                                        std::optional<int> onlyControl) {
  std::vector<DumpedControl> controls;
  for (const dialog::ControlTemplate& t : dialogTemplate.controls) {
    if (t.id == -1 || (onlyControl && t.id != *onlyControl)) continue;
    if (!onlyControl && &t != dialogTemplate.Find(t.id)) continue;  // an id repeated in one template is dumped once
    DumpedControl c;
    c.id = t.id;
    c.kind = t.kind;
    c.text = window.GetText(t.id);
    c.enabled = window.IsEnabled(t.id);
    c.visible = window.IsShown(t.id);
    switch (t.kind) {
      case dialog::ControlKind::Button:
      case dialog::ControlKind::Check:
      case dialog::ControlKind::Radio: c.checked = window.IsChecked(t.id); break;
      case dialog::ControlKind::Combo: {
        std::vector<Text> items;
        for (int i = 0, n = window.ComboCount(t.id); i < n; ++i) items.push_back(window.ComboItem(t.id, i));
        c.items = std::move(items);
        c.selected = window.ComboSelection(t.id);
        break;
      }
      case dialog::ControlKind::List: {
        c.columns = window.ListColumns(t.id);
        std::vector<std::vector<Text>> rows;
        int columns = static_cast<int>(c.columns->size());
        for (int i = 0, n = window.ListCount(t.id); i < n; ++i) {
          std::vector<Text> cells;
          for (int k = 0; k < std::max(columns, 1); ++k) cells.push_back(window.ListText(t.id, i, k));
          rows.push_back(std::move(cells));
        }
        c.rows = std::move(rows);
        c.selection = window.ListSelection(t.id);
        break;
      }
      default: break;
    }
    controls.push_back(std::move(c));
    if (onlyControl) break;
  }
  return controls;
}

void Transcript::Write(const char* kind, const std::string& event) {
  if (ended_) return;
  if (observer_) observer_(kind);
  out_ << event << '\n';
}

void Transcript::Input(int line, TextView text) {
  Write("input", JsonObject("input").Int("line", line).Text("text", text).Close());
}
void Transcript::Prompt(TextView text) { Write("prompt", JsonObject("prompt").Text("text", text).Close()); }
void Transcript::Print(TextView text) { Write("print", JsonObject("print").Text("text", text).Close()); }

void Transcript::MessageBox(const MessageBoxRequest& box) {
  std::vector<MessageAnswer> buttons = ButtonsOf(box.buttons);
  size_t d = box.defaultButton >= 0 && static_cast<size_t>(box.defaultButton) < buttons.size() ? static_cast<size_t>(box.defaultButton) : 0;
  Write("messagebox", JsonObject("messagebox")
            .Text("text", box.text)
            .Text("icon", FromUtf8(IconName(box.icon)))
            .Text("buttons", FromUtf8(ButtonsName(box.buttons)))
            .Text("default", FromUtf8(AnswerName(buttons[d])))
            .Close());
}

void Transcript::Dialog(int id, TextView caption, bool modal) {
  Write("dialog", JsonObject("dialog").Int("id", id).Text("caption", caption).Bool("modal", modal).Close());
}
void Transcript::EndDialog(int id, int result) {
  Write("enddialog", JsonObject("enddialog").Int("id", id).Int("result", result).Close());
}
void Transcript::SaveFile(const SaveFileRequest& r) {
  Write("savefile", JsonObject("savefile").Text("name", r.defaultName).Text("extension", r.extension).Text("filter", r.filter).Close());
}
void Transcript::ProgressStart(TextView text, int range) {
  Write("progress", JsonObject("progress").Text("text", text).Int("range", range).Close());
}
void Transcript::ProgressPosition(int position) {
  Write("progress", JsonObject("progress").Int("position", position).Close());
}
void Transcript::Dump(int dialogId, TextView caption, const std::vector<DumpedControl>& controls) {
  std::string list = "[";
  for (size_t i = 0; i < controls.size(); ++i) list += (i ? "," : "") + ControlJson(controls[i]);
  Write("dump", JsonObject("dump").Int("dialog", dialogId).Text("caption", caption).Add("controls", list + "]").Close());
}
void Transcript::Saved(TextView path) { Write("saved", JsonObject("saved").Text("path", path).Close()); }
void Transcript::Error(int line, TextView text) {
  Write("error", JsonObject("error").Int("line", line).Text("text", text).Close());
  ended_ = true;
}

}  // namespace tq
