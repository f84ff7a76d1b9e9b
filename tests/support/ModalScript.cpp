// SPDX-License-Identifier: MIT
// A step runs as an event of its own: a click that opens the next window doesn't return before that
// window has been answered, by another step.
#include "support/ModalScript.h"

#include <utility>

namespace {

constexpr const char* kAnswered = "answered";

/// Of a message box: its text; none of any other window.
std::optional<std::string> MessageOf(const QWidget& window) {
  if (window.objectName() != "MessageBox") return std::nullopt;
  QString text = window.findChild<QPlainTextEdit*>()->document()->toRawText();
  return text.replace(QChar(QChar::ParagraphSeparator), '\n').toStdString();
}

std::string NameOf(const QWidget& window) {
  return "\"" + MessageOf(window).value_or(window.windowTitle().toStdString()) + "\"";
}

bool Matches(const QWidget& window, const std::string& name) {
  const QString wanted = QString::fromStdString(name);
  return window.windowTitle() == wanted || window.objectName() == wanted ||
         window.findChild<QWidget*>(wanted) != nullptr;
}

QWidget* TopWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (qobject_cast<QDialog*>(window) != nullptr && window->isVisible()) return window;
  return nullptr;
}

}  // namespace

ModalScript::ModalScript() {
  qApp->installEventFilter(this);
  // A window that no answer closes, or a run that waits for nothing, is ended from outside.
  QObject::connect(&fPatience, &QTimer::timeout, this, [this] {
    const QWidget* window = TopWindow();
    if (window == nullptr) return;
    fProblems += "stuck: " + NameOf(*window) + "\n";
    Application::Quit(0);
  });
  fPatience.start(40'000);
}

std::string ModalScript::TakeProblems() {
  for (const Step& step : fSteps) fProblems += "never shown: " + step.window + " " + step.text + "\n";
  fSteps.clear();
  return std::exchange(fProblems, "");
}

bool ModalScript::eventFilter(QObject* watched, QEvent* event) {
  auto* window = qobject_cast<QDialog*>(watched);
  if (window == nullptr || (event->type() != QEvent::Show && event->type() != QEvent::Hide)) return false;
  window->setProperty(kAnswered, false);
  // A window that stays when the one above has gone is to be answered anew.
  if (event->type() == QEvent::Hide && window->isModal())
    for (QWidget* below : QApplication::topLevelWidgets()) below->setProperty(kAnswered, false);
  LookSoon();
  return false;
}

void ModalScript::Look() {
  QWidget* window = TopWindow();
  if (window == nullptr || window->property(kAnswered).toBool()) return;
  if (!window->windowHandle()->isExposed()) return LookSoon();  // nothing to be seen yet
  const bool expected = !fSteps.empty() && Matches(*window, fSteps.front().window);
  if (!window->isModal() && !expected) return;  // the main window waits for its turn
  window->setProperty(kAnswered, window->isModal());
  fPatience.start();
  if (!expected) {
    fProblems += "unexpected: " + NameOf(*window) + "\n";
    window->close();
    return;
  }
  const Step step = std::move(fSteps.front());
  fSteps.pop_front();
  Act(*window, step);
  LookSoon();
}

void ModalScript::Act(QWidget& window, const Step& step) {
  QCoreApplication::sendPostedEvents(&window);  // it puts its buttons in their places once it is shown
  if (fNote) fNote("shows " + NameOf(window));
  if (step.look) step.look(window);
  if (!step.text.empty() && MessageOf(window) != step.text)
    fProblems += "other text: " + NameOf(window) + "\n";
  if (fReading) fReading();
  if (!step.press.empty()) Press(window, step.press);
  if (!step.choose.empty()) {
    auto* path = window.findChild<QLineEdit*>("fileNameEdit");
    for (const QChar key : QString::fromStdString(step.choose))
      QTest::sendKeyEvent(QTest::Click, path, Qt::Key_unknown, key, Qt::NoModifier);
    QTest::keyClick(path, Qt::Key_Return);
  }
  if (step.key != 0)
    QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key(step.key));
  if (step.close) {
    QCloseEvent request;
    QCoreApplication::sendEvent(window.windowHandle(), &request);
  }
}

void ModalScript::Press(QWidget& window, const std::string& name) {
  auto* control = window.findChild<QWidget*>(QString::fromStdString(name));
  if (control != nullptr && !control->visibleRegion().isEmpty() && control->isEnabled()) {
    QTest::mouseClick(control, Qt::LeftButton);
    return;
  }
  fProblems += "can't press " + name + " in " + NameOf(window) + "\n";
  window.close();
}
