#pragma once
// The one QApplication of a test program, made on first use, offscreen, with the workbench's
// font substitutions.
#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <functional>

#include "qt/Fonts.hpp"

namespace tq::test {

inline QApplication& QtApp() {
  static QApplication* app = [] {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "workbench_test";
    static char* argv[] = {name, nullptr};
    auto* a = new QApplication(argc, argv);
    tq::qt::InstallFontSubstitutions();
    return a;
  }();
  return *app;
}

// Runs the event loop until `signal` of `sender` comes, or the time is up; false then.
inline bool WaitForSignal(QObject* sender, const char* signal, int timeoutMs = 20000) {
  QEventLoop loop;
  bool came = false;
  QObject::connect(sender, signal, &loop, SLOT(quit()));
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, &loop, [&] { loop.exit(1); });
  timer.start(timeoutMs);
  came = loop.exec() == 0;
  return came;
}

// Runs `action` once `ready` holds, looking again every 10 ms for up to 20 s: for acting on a
// box or dialog that a call about to be made will open.
inline void WhenReady(std::function<bool()> ready, std::function<void()> action, int triesLeft = 2000) {
  QTimer::singleShot(10, [ready = std::move(ready), action = std::move(action), triesLeft]() mutable {
    if (ready()) action();
    else if (triesLeft > 0) WhenReady(std::move(ready), std::move(action), triesLeft - 1);
  });
}

}  // namespace tq::test
