#include "qt/QtUi.hpp"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <filesystem>

#include "base/Paths.hpp"
#include "common/UiLines.hpp"

namespace tq::qt {

namespace {

QString ToQ(TextView text) { return QString::fromStdU16String(Text(text)); }

QMessageBox::StandardButton ToStandard(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::Ok: return QMessageBox::Ok;
    case MessageAnswer::Cancel: return QMessageBox::Cancel;
    case MessageAnswer::Retry: return QMessageBox::Retry;
    case MessageAnswer::Yes: return QMessageBox::Yes;
    case MessageAnswer::No: return QMessageBox::No;
  }
  return QMessageBox::Ok;
}

QMessageBox::Icon ToIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Stop: return QMessageBox::Critical;
    case MessageIcon::Warning: return QMessageBox::Warning;
    case MessageIcon::Information: return QMessageBox::Information;
    case MessageIcon::Question: return QMessageBox::Question;
    case MessageIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

QStringList NameFilters(TextView filter) {
  QStringList parts = ToQ(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    if (parts[i].isEmpty()) break;
    QString patterns = parts[i + 1];
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    // Qt reads the patterns from the last parentheses: the text keeps its own only when they match.
    QString text = parts[i];
    filters << (text.endsWith(QStringLiteral("(") + patterns + QStringLiteral(")")) ? text : text + QStringLiteral(" (") + patterns + QStringLiteral(")"));
  }
  return filters;
}

QtUi::QtUi(QWidget* parent, QStatusBar* statusBar) : parent_(parent) {
  if (!statusBar) return;
  progressText_ = new QLabel(statusBar);
  progress_ = new QProgressBar(statusBar);
  progress_->setMaximumWidth(200);
  statusBar->addPermanentWidget(progressText_);
  statusBar->addPermanentWidget(progress_);
  progressText_->hide();
  progress_->hide();
}

QtUi::~QtUi() = default;

MessageAnswer QtUi::ShowMessage(const MessageBoxRequest& request) {
  if (transcript_) transcript_->MessageBox(request);
  QMessageBox box(ToIcon(request.icon), QStringLiteral("TQTStdInfo"), ToQ(request.text), QMessageBox::NoButton, parent_);
  std::vector<MessageAnswer> answers = ButtonsOf(request.buttons);
  for (MessageAnswer answer : answers) box.addButton(ToStandard(answer));
  size_t chosen = request.defaultButton >= 0 && static_cast<size_t>(request.defaultButton) < answers.size()
                      ? static_cast<size_t>(request.defaultButton)
                      : 0;
  box.setDefaultButton(ToStandard(answers[chosen]));
  // Esc answers Cancel where the box has it, OK where OK is all it has; else nothing.
  for (MessageAnswer answer : answers)
    if (answer == MessageAnswer::Cancel || answers.size() == 1) box.setEscapeButton(ToStandard(answer));
  box_ = &box;
  boxButtons_ = request.buttons;
  if (waitObserver_) waitObserver_();
  box.exec();
  box_ = nullptr;
  for (MessageAnswer answer : answers)
    if (box.clickedButton() == box.button(ToStandard(answer))) return answer;
  return answers.size() == 1 ? answers.front() : MessageAnswer::Cancel;
}

std::optional<Text> QtUi::AskOnce(const SaveFileRequest& request) {
  QFileDialog dialog(parent_, QString(), QDir::currentPath());
  dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  QStringList filters = NameFilters(request.filter);
  if (!filters.isEmpty()) dialog.setNameFilters(filters);
  dialog.setDefaultSuffix(ToQ(request.extension));
  if (!request.defaultName.empty()) dialog.selectFile(ToQ(request.defaultName));
  save_ = &dialog;
  saveRequest_ = &request;
  if (waitObserver_) waitObserver_();
  int accepted = dialog.exec();
  save_ = nullptr;
  saveRequest_ = nullptr;
  if (accepted != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return CompleteSavePath(dialog.selectedFiles().front().toStdU16String(), request);
}

std::optional<Text> QtUi::AskSaveFile(const SaveFileRequest& request) {
  if (transcript_) transcript_->SaveFile(request);
  for (;;) {
    std::optional<Text> path = AskOnce(request);
    if (!path) return std::nullopt;
    if (!request.overwritePrompt || !std::filesystem::exists(ToFsPath(*path))) return path;
    MessageBoxRequest question{OverwriteQuestion(*path), MessageIcon::Warning, MessageButtons::YesNo, 1};
    if (ShowMessage(question) == MessageAnswer::Yes) return path;
    // No: the save-file dialog asks again.
  }
}

void QtUi::BeginProgress(TextView text, int range) {
  if (transcript_) transcript_->ProgressStart(text, range);
  if (!progress_) return;
  progressText_->setText(ToQ(text));
  progress_->setRange(0, std::max(range, 1));
  progress_->setValue(0);
  progressText_->show();
  progress_->show();
}

void QtUi::SetProgress(int position) {
  if (transcript_) transcript_->ProgressPosition(position);
  if (progress_) progress_->setValue(position);
}

void QtUi::EndProgress() {
  if (!progress_) return;
  progressText_->hide();
  progress_->hide();
}

std::optional<Text> QtUi::ApplyScriptLine(const ScriptLine& line, bool* handled) {
  *handled = box_ || save_;
  if (box_) {
    AnswerLine read = ReadAnswerLine(line, boxButtons_);
    if (read.refusal) return read.refusal;
    box_->button(ToStandard(*read.answer))->click();
    return std::nullopt;
  }
  if (save_) {
    SaveLine read = ReadSaveLine(line);
    if (read.refusal) return read.refusal;
    if (!read.path) {
      save_->reject();
      return std::nullopt;
    }
    // The name as typed in the dialog's own field, completed as the dialog completes it.
    save_->selectFile(ToQ(CompleteSavePath(*read.path, *saveRequest_)));
    static_cast<QDialog*>(save_.data())->accept();  // the dialog's own accept, as its Save button
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tq::qt
