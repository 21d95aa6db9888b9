#pragma once
// What a host shows besides dialogs: message boxes, the save-file dialog, status-bar progress.
#include <optional>
#include <vector>

#include "base/Text.hpp"

namespace tq {

enum class MessageIcon { None, Stop, Warning, Information, Question };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
// The answers as the platform numbers them (IDOK … IDNO).
enum class MessageAnswer : int { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

struct MessageBoxRequest {
  Text text;
  MessageIcon icon = MessageIcon::None;
  MessageButtons buttons = MessageButtons::Ok;
  int defaultButton = 0;  // the index of the default among the box's buttons, from 0
};

// The save-file dialog: the name proposed, the extension added to a name without one, the
// filter in the platform's "text|pattern|…||" form; overwriting an existing file is asked.
struct SaveFileRequest {
  Text defaultName;
  Text extension;
  Text filter;
  bool overwritePrompt = true;
};

class Ui {
 public:
  virtual ~Ui() = default;
  virtual MessageAnswer ShowMessage(const MessageBoxRequest& box) = 0;
  // The path chosen; nothing when the user cancels.
  virtual std::optional<Text> AskSaveFile(const SaveFileRequest& request) = 0;
  // Status-bar progress: a text and a range, then positions, then the end.
  virtual void BeginProgress(TextView text, int range) = 0;
  virtual void SetProgress(int position) = 0;
  virtual void EndProgress() = 0;
};

// The buttons of a box, in the order the platform shows them.
inline std::vector<MessageAnswer> ButtonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok: return {MessageAnswer::Ok};
    case MessageButtons::OkCancel: return {MessageAnswer::Ok, MessageAnswer::Cancel};
    case MessageButtons::YesNo: return {MessageAnswer::Yes, MessageAnswer::No};
    case MessageButtons::YesNoCancel: return {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel};
    case MessageButtons::RetryCancel: return {MessageAnswer::Retry, MessageAnswer::Cancel};
  }
  return {MessageAnswer::Ok};
}

}  // namespace tq
