#include "qt/WorkbenchAddIn.hpp"

#include <QStatusBar>

#include "qt/MainWindow.hpp"

namespace tq::qt {

WorkbenchAddIn::WorkbenchAddIn(MainWindow& window)
    : folders_(window.host(), window.systemCodePage()),
      dialogs_(&window),
      ui_(&window, window.statusBar()),
      documents_(window),
      addIn_(std::make_unique<TqAddIn>(folders_, documents_, dialog::DialogServices{dialogs_, ui_})) {
  dialogs_.SetAnchor([&window] {
    DrawingTab* tab = window.currentTab();
    QWidget* area = tab ? static_cast<QWidget*>(&tab->view()) : window.centralWidget();
    return area->mapToGlobal(QPoint(0, 0));
  });
}

// The dialogs go before the documents and the folders they use.
WorkbenchAddIn::~WorkbenchAddIn() {
  dialogs_.Quiet();
  addIn_.reset();
}

void WorkbenchAddIn::PromptWaiting(bool waiting) {
  for (QtDialogWindow* window : dialogs_.windows())
    if (!window->modal()) window->widget().setEnabled(!waiting);
}

}  // namespace tq::qt
