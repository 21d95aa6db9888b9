#pragma once
// One open drawing: its document, its display list and its canvas. The file is read and the
// display list built on a worker thread; the tab shows the drawing when both are done.
#include <QWidget>
#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>

#include "base/Result.hpp"
#include "base/os/Os.hpp"
#include "dxf/DxfDrawing.hpp"
#include "qt/DrawingView.hpp"

namespace tq::qt {

class DrawingTab : public QWidget {
  Q_OBJECT

 public:
  // `options`: how the file is read (the system code page of drawings without their own).
  explicit DrawingTab(std::filesystem::path path, QWidget* parent = nullptr, dxf::ReadOptions options = {});
  ~DrawingTab() override;

  // Starts reading the file; `loaded` or `failed` follows on the UI thread.
  void Load();
  bool ready() const { return drawing_ != nullptr; }

  const std::filesystem::path& path() const { return path_; }
  QString title() const;
  DrawingView& view() { return *view_; }
  // The drawing, once loaded; the command runner works on it.
  dxf::DxfDrawing* drawing() { return drawing_.get(); }
  // The document notes that it changed but not that it was saved since: the tab keeps that.
  bool modified() const { return drawing_ && drawing_->document().modified() && !savedSinceChange_; }
  // A command changed the drawing (after a save, too).
  void MarkChanged() { savedSinceChange_ = false; }
  // What the view could not draw, for the command panel: "" when it drew everything.
  QString SkippedSummary() const;

  // The drawing changed (a command marked frames): its display list is built again at once,
  // the view kept where it is.
  Status Refresh();

  // The atomic save with ".bak"; to the drawing's own file when `path` is empty. The drawing is
  // locked from before it is read until the tab closes, as CAD programs do: when another
  // process held it then, saving it in place is refused naming that holder (saving under
  // another name is not), for its changes would be lost. Another name is locked while it is
  // written.
  Status Save(const std::filesystem::path& path = {});
  // Why the drawing cannot be saved in place, when another process held it at opening.
  const std::optional<Error>& lockError() const { return lockError_; }

 signals:
  void progress(int percent);
  void loaded();
  void failed(QString message);

 private:
  struct Outcome;
  void Finish(std::shared_ptr<Outcome> outcome);

  std::filesystem::path path_;
  os::LockHandle lock_;
  std::optional<Error> lockError_;
  dxf::ReadOptions options_;
  DrawingView* view_;
  std::unique_ptr<dxf::DxfDrawing> drawing_;
  std::shared_ptr<const Scene> scene_;
  std::thread worker_;
  std::atomic<bool> cancel_{false};
  bool savedSinceChange_ = false;
};

}  // namespace tq::qt
