#include "qt/MainWindow.hpp"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QVBoxLayout>

#include "qt/WorkbenchAddIn.hpp"

namespace tq::qt {

namespace {
constexpr int kRecentCount = 8;
const QString kRecentKey = QStringLiteral("recentFiles");
QSettings Store() { return QSettings(QSettings::IniFormat, QSettings::UserScope, "TQTStdInfo", "workbench"); }
std::filesystem::path ToPath(const QString& file) { return std::filesystem::path(file.toStdU16String()); }
QString ToQString(const std::filesystem::path& path) { return QString::fromStdU16String(path.u16string()); }
bool IsDxf(const QString& file) { return file.endsWith(QStringLiteral(".dxf"), Qt::CaseInsensitive); }
}  // namespace

MainWindow::MainWindow(Text hostIni, CodePage systemCodePage, QWidget* parent)
    : QMainWindow(parent), codePage_(std::move(systemCodePage)), host_(std::move(hostIni), codePage_), editor_(*this), tabs_(new QTabWidget(this)),
      panel_(new CommandPanel(this)), coordinates_(new QLabel(this)), progress_(new QProgressBar(this)) {
  setWindowTitle(QStringLiteral("TQTStdInfo workbench"));
  setAcceptDrops(true);
  tabs_->setTabsClosable(true);
  tabs_->setDocumentMode(true);
  connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) { CloseTab(index); });
  auto* central = new QWidget(this);
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(tabs_, 1);
  layout->addWidget(panel_);
  setCentralWidget(central);
  coordinates_->setMinimumWidth(260);
  progress_->setRange(0, 100);
  progress_->setMaximumWidth(200);
  progress_->hide();
  statusBar()->addWidget(coordinates_);
  statusBar()->addPermanentWidget(progress_);
  connect(panel_, &CommandPanel::entered, this, [this](const QString& text) {
    if (!pickActive_) RunCommand(text);
  });
  BuildMenus();
  resize(kInitialSize);
}

MainWindow::~MainWindow() = default;

WorkbenchAddIn& MainWindow::addIn() {
  if (!addIn_) addIn_ = std::make_unique<WorkbenchAddIn>(*this);
  return *addIn_;
}

void MainWindow::SetPickActive(bool active) {
  pickActive_ = active;
  if (addIn_) addIn_->PromptWaiting(active);
}

void MainWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this, [this] {
    QStringList files = QFileDialog::getOpenFileNames(this, QStringLiteral("Open drawing"), {},
                                                      QStringLiteral("DXF drawings (*.dxf *.DXF)"));
    for (const QString& f : files) OpenDrawing(ToPath(f));
  });
  file->addAction(QStringLiteral("&Save"), QKeySequence::Save, this, [this] {
    if (DrawingTab* tab = currentTab()) SaveTab(*tab);
  });
  file->addAction(QStringLiteral("Save &As..."), QKeySequence::SaveAs, this, [this] {
    if (DrawingTab* tab = currentTab()) SaveTabAs(*tab);
  });
  recentMenu_ = file->addMenu(QStringLiteral("&Recent Files"));
  connect(recentMenu_, &QMenu::aboutToShow, this, &MainWindow::FillRecentMenu);
  file->addAction(QStringLiteral("&Close"), QKeySequence::Close, this, [this] {
    if (tabs_->currentIndex() >= 0) CloseTab(tabs_->currentIndex());
  });
  file->addSeparator();
  file->addAction(QStringLiteral("E&xit"), QKeySequence::Quit, this, &QWidget::close);
  QMenu* viewMenu = menuBar()->addMenu(QStringLiteral("&View"));
  viewMenu->addAction(QStringLiteral("Zoom &Extents"), this, [this] { RunCommand(QStringLiteral("ZOOM E")); });
  viewMenu->addAction(QStringLiteral("Zoom &Window"), this, [this] { RunCommand(QStringLiteral("ZOOM W")); });
}

DrawingTab* MainWindow::tab(int index) const { return qobject_cast<DrawingTab*>(tabs_->widget(index)); }
DrawingTab* MainWindow::currentTab() const { return tab(tabs_->currentIndex()); }

DrawingTab* MainWindow::OpenDrawing(const std::filesystem::path& path) {
  std::error_code ec;
  std::filesystem::path full = std::filesystem::absolute(path, ec);
  for (int i = 0; i < tabs_->count(); ++i)
    if (tab(i)->path() == full) {
      tabs_->setCurrentIndex(i);
      return tab(i);
    }
  auto* tab = new DrawingTab(full, tabs_, dxf::ReadOptions{codePage_.name()});
  int index = tabs_->addTab(tab, tab->title());
  tabs_->setTabToolTip(index, ToQString(full));
  tabs_->setCurrentIndex(index);
  panel_->Print(QStringLiteral("Opening %1\n").arg(ToQString(full)));
  progress_->setValue(0);
  progress_->show();
  connect(tab, &DrawingTab::progress, progress_, &QProgressBar::setValue);
  connect(tab, &DrawingTab::loaded, this, [this, tab] {
    progress_->hide();
    QString skipped = tab->SkippedSummary();
    if (!skipped.isEmpty()) panel_->Print(skipped + QLatin1Char('\n'));
    RememberRecent(tab->path());
    emit drawingLoaded(tab);
  });
  connect(tab, &DrawingTab::failed, this, [this, tab](const QString& message) {
    progress_->hide();
    QString text = QStringLiteral("%1 cannot be opened: %2").arg(ToQString(tab->path()), message);
    panel_->Print(text + QLatin1Char('\n'));
    tabs_->removeTab(tabs_->indexOf(tab));
    tab->deleteLater();
    emit drawingFailed(text);
    if (!quiet_) QMessageBox::warning(this, windowTitle(), text);
  });
  connect(&tab->view(), &DrawingView::cursorMoved, this, [this](double x, double y) {
    coordinates_->setText(QStringLiteral("%1, %2").arg(x, 0, 'f', 3).arg(y, 0, 'f', 3));
  });
  tab->Load();
  return tab;
}

bool MainWindow::SaveTab(DrawingTab& tab) {
  Status saved = tab.Save();
  if (!saved) {
    QMessageBox::warning(this, windowTitle(), QString::fromStdString(saved.error().Describe()));
    return false;
  }
  panel_->Print(QStringLiteral("Saved %1\n").arg(ToQString(tab.path())));
  UpdateTitles();
  return true;
}

bool MainWindow::SaveTabAs(DrawingTab& tab) {
  QString file = QFileDialog::getSaveFileName(this, QStringLiteral("Save drawing as"), ToQString(tab.path()),
                                              QStringLiteral("DXF drawings (*.dxf)"));
  if (file.isEmpty()) return false;
  if (!IsDxf(file)) file += QStringLiteral(".dxf");
  Status saved = tab.Save(ToPath(file));
  if (!saved) {
    QMessageBox::warning(this, windowTitle(), QString::fromStdString(saved.error().Describe()));
    return false;
  }
  panel_->Print(QStringLiteral("Saved %1\n").arg(file));
  RememberRecent(tab.path());
  UpdateTitles();
  return true;
}

bool MainWindow::CloseTab(int index) {
  DrawingTab* t = tab(index);
  if (!t) return true;
  if (t->modified()) {
    auto answer = QMessageBox::question(
        this, windowTitle(), QStringLiteral("Save the changes to %1?").arg(ToQString(t->path().filename())),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Cancel) return false;
    if (answer == QMessageBox::Yes && !SaveTab(*t)) return false;
  }
  if (addIn_) addIn_->documents().Closing(*t);
  tabs_->removeTab(index);
  delete t;
  return true;
}

void MainWindow::RunCommand(const QString& typed) {
  QString command = typed.trimmed().toUpper();
  if (command.isEmpty()) return;
  DrawingTab* tab = currentTab();
  if (command == QStringLiteral("TQ_STD_INF")) {
    if (!tab || !tab->ready()) {
      panel_->Print(QStringLiteral("Open a drawing first.\n"));
    } else {
      if (runner_) runner_(*tab, editor_, host_);
      else addIn().RunCommand();
      if (tab->drawing() && tab->drawing()->document().modified()) {
        tab->MarkChanged();
        editor_.UpdateDisplay();
      }
      UpdateTitles();
    }
    return;
  }
  QStringList words = command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  bool zoom = words[0] == QStringLiteral("ZOOM") || words[0] == QStringLiteral("Z");
  QString option = zoom && words.size() > 1 ? words[1] : QString();
  bool extents = command == QStringLiteral("ZE") || (zoom && (option == "E" || option == "EXTENTS"));
  bool window = command == QStringLiteral("ZW") || (zoom && (option == "W" || option == "WINDOW"));
  if (!extents && !window) {
    panel_->Print(QStringLiteral("Unknown command \"%1\". Commands: TQ_STD_INF, ZOOM E, ZOOM W.\n").arg(typed.trimmed()));
    return;
  }
  if (!tab || !tab->ready()) {
    panel_->Print(QStringLiteral("Open a drawing first.\n"));
    return;
  }
  if (extents) tab->view().ZoomExtents();
  else ZoomWindow(*tab);
}

void MainWindow::ZoomWindow(DrawingTab& tab) {
  PickResult first = editor_.GetPoint(u"First corner: ");
  if (first.status != PickStatus::Normal) return;
  PickResult second = editor_.GetPoint(u"Other corner: ");
  if (second.status != PickStatus::Normal) return;
  tab.view().ZoomWindow({first.point.x, first.point.y}, {second.point.x, second.point.y});
}

void MainWindow::UpdateTitles() {
  for (int i = 0; i < tabs_->count(); ++i) tabs_->setTabText(i, tab(i)->title());
}

QStringList MainWindow::recentFiles() const { return Store().value(kRecentKey).toStringList(); }

void MainWindow::RememberRecent(const std::filesystem::path& path) {
  QSettings store = Store();
  QStringList files = store.value(kRecentKey).toStringList();
  files.removeAll(ToQString(path));
  files.prepend(ToQString(path));
  while (files.size() > kRecentCount) files.removeLast();
  store.setValue(kRecentKey, files);
}

void MainWindow::FillRecentMenu() {
  recentMenu_->clear();
  for (const QString& file : recentFiles())
    recentMenu_->addAction(file, this, [this, file] { OpenDrawing(ToPath(file)); });
  if (recentMenu_->isEmpty()) recentMenu_->addAction(QStringLiteral("(none)"))->setEnabled(false);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  while (tabs_->count() > 0)
    if (!CloseTab(tabs_->count() - 1)) {
      event->ignore();
      return;
    }
  event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile() && IsDxf(url.toLocalFile())) {
      event->acceptProposedAction();
      return;
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile() && IsDxf(url.toLocalFile())) OpenDrawing(ToPath(url.toLocalFile()));
  event->acceptProposedAction();
}

}  // namespace tq::qt
