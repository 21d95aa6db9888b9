#pragma once
// The screen after every `dialog`, `messagebox` and `dump` event of a script run, one PNG
// each, numbered in order with the event's kind in the name: "001-dialog.png". The picture is
// the main window with the dialogs and boxes open over it, at the main window's size.
#include <QImage>
#include <QWidget>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.hpp"

namespace tq::qt {

class Screenshots {
 public:
  Screenshots(QWidget& window, std::filesystem::path folder) : window_(window), folder_(std::move(folder)) {}

  // The transcript's observer. The screen shows what an event did only once the host has
  // acted on it, so the picture of an event is taken just before the next one, or at Flush.
  void BeforeEvent(std::string_view kind);
  // Takes the pictures still owed.
  void Flush();
  // The first file that could not be written; fine when none.
  const Status& status() const { return status_; }
  int taken() const { return count_; }

 private:
  void Take(const std::string& kind);

  QWidget& window_;
  std::filesystem::path folder_;
  std::vector<std::string> owed_;
  int count_ = 0;
  Status status_;
};

// The main window with the other visible top-level windows painted where they stand over it,
// the modal ones last; a window that does not stand wholly inside it is painted in its middle.
QImage WindowPicture(QWidget& window);

}  // namespace tq::qt
