#include "qt/CommandPanel.hpp"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tq::qt {

CommandPanel::CommandPanel(QWidget* parent)
    : QWidget(parent), history_(new QPlainTextEdit(this)), prompt_(new QLabel(kCommandPrompt, this)),
      input_(new QLineEdit(this)) {
  history_->setReadOnly(true);
  history_->setMaximumBlockCount(5000);
  history_->setFixedHeight(110);
  auto* line = new QHBoxLayout;
  line->addWidget(prompt_);
  line->addWidget(input_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(2);
  layout->addWidget(history_);
  layout->addLayout(line);
  connect(input_, &QLineEdit::returnPressed, this, [this] {
    QString text = input_->text();
    input_->clear();
    Print(prompt_->text() + QLatin1Char(' ') + text + QLatin1Char('\n'));
    emit entered(text);
  });
}

void CommandPanel::Print(const QString& text) {
  QTextCursor cursor = history_->textCursor();
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(text);
  history_->setTextCursor(cursor);
  history_->verticalScrollBar()->setValue(history_->verticalScrollBar()->maximum());
}

void CommandPanel::SetPrompt(const QString& prompt) { prompt_->setText(prompt.isEmpty() ? kCommandPrompt : prompt); }

}  // namespace tq::qt
