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

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // Runs "TQ_STD_INF" on the current drawing; attached by whoever provides the command.
  using CommandRunner = std::function<void(DrawingTab& tab, Editor& editor, HostServices& host)>;
  // (The system code page is the window's: systemCodePage().)
  static constexpr QSize kInitialSize{1280, 860};

  // `systemCodePage`: of the installation's text files, handed to what reads them.
  MainWindow(Text hostIni, CodePage systemCodePage, QWidget* parent = nullptr);

  // Opens a drawing in a new tab (or shows the tab that has it open).
  DrawingTab* OpenDrawing(const std::filesystem::path& path);
  // Closes a tab, asking first about unsaved changes; false when the user cancelled.
  bool CloseTab(int index);
  bool SaveTab(DrawingTab& tab);
  bool SaveTabAs(DrawingTab& tab);

  void SetCommandRunner(CommandRunner runner) { runner_ = std::move(runner); }
  // A command as typed in the panel.
  void RunCommand(const QString& text);

  DrawingTab* currentTab() const;
  DrawingTab* tab(int index) const;
  int tabCount() const { return tabs_->count(); }
  CommandPanel& panel() { return *panel_; }
  WorkbenchEditor& editor() { return editor_; }
  HostServices& host() { return host_; }
  const CodePage& systemCodePage() const { return codePage_; }
  QStringList recentFiles() const;
  QLabel& coordinates() { return *coordinates_; }
  void SetPickActive(bool active) { pickActive_ = active; }
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
  bool pickActive_ = false;
  bool quiet_ = false;
};

}  // namespace tq::qt
