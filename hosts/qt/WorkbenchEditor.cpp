#include "qt/WorkbenchEditor.hpp"

#include <QApplication>
#include <QEventLoop>
#include <QPointer>

#include "qt/MainWindow.hpp"

namespace tq::qt {

void WorkbenchEditor::ActivateDrawingWindow() {
  if (DrawingTab* tab = window_.currentTab()) tab->view().setFocus();
}

PickResult WorkbenchEditor::GetPoint(TextView prompt) {
  DrawingTab* tab = window_.currentTab();
  CommandPanel& panel = window_.panel();
  QString text = QString::fromStdU16String(Text(prompt));
  if (script_) script_->Prompted(prompt);
  panel.Print(text);
  if (!tab || !tab->ready()) {
    panel.Print(QStringLiteral("\n"));
    return {PickStatus::Cancel, {}};
  }
  PickResult result;
  bool answered = false;
  QEventLoop loop;
  QPointer<DrawingTab> alive(tab);
  DrawingView& view = tab->view();
  auto picked = QObject::connect(&view, &DrawingView::pointPicked, &loop, [&](double x, double y) {
    result = {PickStatus::Normal, {x, y, 0}};
    answered = true;
    loop.quit();
  });
  auto cancelled = QObject::connect(&view, &DrawingView::pickCancelled, &loop, [&] {
    result = {PickStatus::Cancel, {}};
    answered = true;
    loop.quit();
  });
  auto typed = QObject::connect(&panel, &CommandPanel::entered, &loop, [&](const QString& answer) {
    QStringList parts = answer.split(QLatin1Char(','));
    bool okX = false, okY = false;
    double x = parts.size() == 2 ? parts[0].trimmed().toDouble(&okX) : 0;
    double y = parts.size() == 2 ? parts[1].trimmed().toDouble(&okY) : 0;
    result = okX && okY ? PickResult{PickStatus::Normal, {x, y, 0}} : PickResult{PickStatus::Other, {}};
    answered = true;
    loop.quit();
  });
  auto closed = QObject::connect(tab, &QObject::destroyed, &loop, [&] {
    result = {PickStatus::Cancel, {}};
    answered = true;
    loop.quit();
  });
  panel.SetPrompt(text.trimmed());
  window_.SetPickActive(true);
  view.BeginPick();
  // A script's lines are clicks and keys on the same view: they answer through the same
  // signals, without a loop of their own.
  if (script_) script_->ServePick(view, [&] { return answered; });
  else loop.exec();
  for (const auto& c : {picked, cancelled, typed, closed}) QObject::disconnect(c);
  window_.SetPickActive(false);
  panel.SetPrompt({});
  if (alive) view.EndPick();
  if (result.status == PickStatus::Normal)
    panel.Print(QStringLiteral(" %1,%2\n").arg(result.point.x, 0, 'f', 4).arg(result.point.y, 0, 'f', 4));
  else
    panel.Print(result.status == PickStatus::Cancel ? QStringLiteral(" *Cancel*\n") : QStringLiteral("\n"));
  return result;
}

void WorkbenchEditor::Print(TextView text) {
  if (script_) script_->Printed(text);
  window_.panel().Print(QString::fromStdU16String(Text(text)));
}

void WorkbenchEditor::UpdateDisplay() {
  DrawingTab* tab = window_.currentTab();
  if (!tab || !tab->ready()) return;
  if (Status shown = tab->Refresh(); !shown)
    window_.panel().Print(QString::fromStdString(shown.error().Describe()) + QLatin1Char('\n'));
}

void WorkbenchEditor::BeginWaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
void WorkbenchEditor::EndWaitCursor() { QApplication::restoreOverrideCursor(); }

}  // namespace tq::qt
