#include "qt/DialogWidget.hpp"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

#include "qt/QtDialogWindow.hpp"

namespace tq::qt {

DialogWidget::DialogWidget(QtDialogWindow& window, QWidget* parent) : QDialog(parent), window_(window) {}

void DialogWidget::reject() { window_.CloseRequested(); }

void DialogWidget::keyPressEvent(QKeyEvent* event) {
  bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter || (event->modifiers() & ~Qt::KeypadModifier)) {
    QDialog::keyPressEvent(event);  // Esc reaches reject()
    return;
  }
  // A push button with the focus takes Enter itself, as on Windows; else the default button.
  if (auto* focused = qobject_cast<QPushButton*>(focusWidget()); focused && focused->isEnabled()) {
    focused->click();
    return;
  }
  window_.EnterPressed();
}

void DialogWidget::closeEvent(QCloseEvent* event) {
  event->ignore();
  window_.CloseRequested();
}

}  // namespace tq::qt
