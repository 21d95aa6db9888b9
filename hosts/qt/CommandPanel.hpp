#pragma once
// The command line below the canvas: the history of what was printed and prompted, and an
// input line for commands and answers.
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>

namespace tq::qt {

class CommandPanel : public QWidget {
  Q_OBJECT

 public:
  static inline const QString kCommandPrompt = QStringLiteral("Command:");

  explicit CommandPanel(QWidget* parent = nullptr);

  // The text exactly as given, line ends included, at the end of the history.
  void Print(const QString& text);
  // The prompt beside the input line; the command prompt when empty.
  void SetPrompt(const QString& prompt);
  QString history() const { return history_->toPlainText(); }
  QLineEdit& input() { return *input_; }

 signals:
  void entered(QString text);

 private:
  QPlainTextEdit* history_;
  QLabel* prompt_;
  QLineEdit* input_;
};

}  // namespace tq::qt
