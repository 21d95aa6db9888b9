#include "qt/DrawingTab.hpp"

#include <QMetaObject>
#include <QVBoxLayout>

#include "view/DisplayListBuilder.hpp"

namespace tq::qt {

struct DrawingTab::Outcome {
  std::unique_ptr<dxf::DxfDrawing> drawing;
  std::shared_ptr<const Scene> scene;
  QString error;
};

DrawingTab::DrawingTab(std::filesystem::path path, QWidget* parent, dxf::ReadOptions options)
    : QWidget(parent), path_(std::move(path)), options_(std::move(options)), view_(new DrawingView(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
}

DrawingTab::~DrawingTab() {
  cancel_ = true;
  if (worker_.joinable()) worker_.join();
}

QString DrawingTab::title() const {
  QString name = QString::fromStdU16String(path_.filename().u16string());
  return modified() ? name + QStringLiteral(" *") : name;
}

void DrawingTab::Load() {
  if (worker_.joinable()) return;
  if (Result<os::LockHandle> lock = os::AcquireDrawingLock(path_); lock) lock_ = std::move(lock).value();
  else lockError_ = lock.error();
  worker_ = std::thread([this, path = path_, options = options_] {
    auto outcome = std::make_shared<Outcome>();
    try {
      // Reading is about half of the work, building the other half.
      auto opened = dxf::DxfDrawing::Open(path, options);
      if (!opened) {
        outcome->error = QString::fromStdString(opened.error().Describe());
        QMetaObject::invokeMethod(this, [this, outcome] { Finish(outcome); }, Qt::QueuedConnection);
        return;
      }
      outcome->drawing = std::move(opened.value());
      QMetaObject::invokeMethod(this, [this] { emit progress(50); }, Qt::QueuedConnection);
      int last = 50;
      view::BuildOptions options;
      options.cancel = &cancel_;
      options.progress = [this, &last](double share) {
        int percent = 50 + static_cast<int>(share * 50);
        if (percent == last) return;
        last = percent;
        QMetaObject::invokeMethod(this, [this, percent] { emit progress(percent); }, Qt::QueuedConnection);
      };
      auto list = view::BuildDisplayList(outcome->drawing->document(), options);
      if (!list) outcome->error = QString::fromStdString(list.error().Describe());
      else outcome->scene = std::make_shared<Scene>(std::move(list.value()));
    } catch (const std::exception& e) {
      // Out of memory, or a programming error: it ends the load, not the program.
      outcome->error = QString::fromStdString(e.what());
    }
    if (cancel_) return;
    QMetaObject::invokeMethod(this, [this, outcome] { Finish(outcome); }, Qt::QueuedConnection);
  });
}

void DrawingTab::Finish(std::shared_ptr<Outcome> outcome) {
  if (worker_.joinable()) worker_.join();
  if (!outcome->error.isEmpty() || !outcome->scene) {
    emit failed(outcome->error);
    return;
  }
  drawing_ = std::move(outcome->drawing);
  scene_ = outcome->scene;
  view_->SetScene(scene_);
  emit progress(100);
  emit loaded();
}

Status DrawingTab::Refresh() {
  if (!drawing_) return MakeError(ErrorCode::Busy, "the drawing is still being read");
  auto list = view::BuildDisplayList(drawing_->document());
  if (!list) return list.error();
  scene_ = std::make_shared<Scene>(std::move(list.value()));
  view_->ReplaceScene(scene_);
  return Status();
}

QString DrawingTab::SkippedSummary() const {
  if (!scene_ || scene_->list.skipped.empty()) return {};
  QString text = QStringLiteral("Not drawn: %1 entities (").arg(scene_->list.SkippedCount());
  bool first = true;
  for (const view::SkippedKind& kind : scene_->list.skipped) {
    if (!first) text += QStringLiteral(", ");
    first = false;
    text += QStringLiteral("%1 %2").arg(QString::fromStdString(kind.type)).arg(kind.count);
  }
  return text + QStringLiteral(")");
}

Status DrawingTab::Save(const std::filesystem::path& path) {
  if (!drawing_) return MakeError(ErrorCode::Busy, "the drawing is still being read");
  bool inPlace = path.empty() || path == path_;
  if (inPlace && lockError_) {
    Error refused = *lockError_;
    refused.message += u"; it was not saved (save it under another name)";
    return refused;
  }
  // Another name: locked while it is written, and from then on the tab's file.
  os::LockHandle other;
  if (!inPlace) {
    Result<os::LockHandle> lock = os::AcquireDrawingLock(path);
    if (!lock) return lock.error();
    other = std::move(lock).value();
  }
  if (Status saved = drawing_->Save(inPlace ? path_ : path); !saved) return saved;
  savedSinceChange_ = true;
  if (!inPlace) {
    path_ = path;
    lock_ = std::move(other);
    lockError_.reset();
  }
  return Status();
}

}  // namespace tq::qt
