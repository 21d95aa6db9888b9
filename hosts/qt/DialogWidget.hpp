#pragma once
// The top-level widget of a dialog: the close box and Esc ask the dialog to close (it decides,
// as the cancel button would), Enter presses the default button as Windows does.
#include <QDialog>

namespace tq::qt {

class QtDialogWindow;

class DialogWidget : public QDialog {
 public:
  DialogWidget(QtDialogWindow& window, QWidget* parent);
  // Esc: the dialog hears of it; it hides only when it ends itself.
  void reject() override;
  void accept() override {}

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QtDialogWindow& window_;
};

}  // namespace tq::qt
