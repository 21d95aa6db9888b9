#pragma once
// The workbench window: tabs of open drawings, the command panel, the status bar with the
// cursor's drawing coordinates and the progress of long work, and the File menu.
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QTabWidget>
#include <filesystem>
#include <functional>
#include <memory>

#include "common/StandaloneHostServices.hpp"
#include "qt/CommandPanel.hpp"
#include "qt/DrawingTab.hpp"
#include "qt/WorkbenchEditor.hpp"

class QMenu;

namespace tq::qt {

class WorkbenchAddIn;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // Runs "TQ_STD_INF" on the current drawing; attached by whoever provides the command.
  using CommandRunner = std::function<void(DrawingTab& tab, Editor& editor, HostServices& host)>;
  // (The system code page is the window's: systemCodePage().)
  static constexpr QSize kInitialSize{1280, 860};

  // `systemCodePage`: of the installation's text files, handed to what reads them.
  MainWindow(Text hostIni, CodePage systemCodePage, QWidget* parent = nullptr);
  ~MainWindow() override;

  // Opens a drawing in a new tab (or shows the tab that has it open).
  DrawingTab* OpenDrawing(const std::filesystem::path& path);
  // Closes a tab, asking first about unsaved changes; false when the user cancelled.
  bool CloseTab(int index);
  bool SaveTab(DrawingTab& tab);
  bool SaveTabAs(DrawingTab& tab);

  // Without a runner attached, "TQ_STD_INF" runs the add-in below.
  void SetCommandRunner(CommandRunner runner) { runner_ = std::move(runner); }
  // The add-in with the workbench's dialogs, boxes and documents, made on first use.
  WorkbenchAddIn& addIn();
  // A command as typed in the panel.
  void RunCommand(const QString& text);

  DrawingTab* currentTab() const;
  DrawingTab* tab(int index) const;
  int tabCount() const { return tabs_->count(); }
  CommandPanel& panel() { return *panel_; }
  WorkbenchEditor& editor() { return editor_; }
  HostServices& host() { return host_; }
  // The engine the size setting dialog works through; it outlives the window's use of it.
  void SetSizeWorkbook(Workbook* workbook) { host_.SetSizeWorkbook(workbook); }
  const CodePage& systemCodePage() const { return codePage_; }
  QStringList recentFiles() const;
  QLabel& coordinates() { return *coordinates_; }
  // A point prompt waits (or no longer): the panel and the dialogs leave the input to it.
  void SetPickActive(bool active);
  // No message boxes for failures (they go to the panel only): for unattended runs.
  void SetQuiet(bool quiet) { quiet_ = quiet; }

 signals:
  void drawingLoaded(DrawingTab* tab);
  void drawingFailed(QString message);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildMenus();
  void RememberRecent(const std::filesystem::path& path);
  void FillRecentMenu();
  void UpdateTitles();
  void ZoomWindow(DrawingTab& tab);

  CodePage codePage_;
  StandaloneHostServices host_;
  WorkbenchEditor editor_;
  QTabWidget* tabs_;
  CommandPanel* panel_;
  QLabel* coordinates_;
  QProgressBar* progress_;
  QMenu* recentMenu_ = nullptr;
  CommandRunner runner_;
  std::unique_ptr<WorkbenchAddIn> addIn_;
  bool pickActive_ = false;
  bool quiet_ = false;
};

}  // namespace tq::qt
