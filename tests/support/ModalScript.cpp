// SPDX-License-Identifier: MIT
// A step runs as an event of its own: a click that opens the next window doesn't return before that
// window has been answered, by another step.
#include "support/ModalScript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/Application.h"

namespace {

constexpr int kPatience = 10'000;  // milliseconds without any progress

std::string NameOf(const QWidget& window) {
  const auto* box = qobject_cast<const QMessageBox*>(&window);
  return "\"" + (box != nullptr ? box->text() : window.windowTitle()).toStdString() + "\"";
}

bool Matches(const QWidget& window, const std::string& name) {
  const QString wanted = QString::fromStdString(name);
  return window.windowTitle() == wanted || window.objectName() == wanted ||
         window.findChild<QWidget*>(wanted) != nullptr;
}

}  // namespace

ModalScript::ModalScript() {
  qApp->installEventFilter(this);
  QObject::connect(&fWatch, &QTimer::timeout, this, &ModalScript::Watch);
  fWatch.start(200);
  fSinceProgress.start();
}

std::string ModalScript::TakeProblems() {
  for (const Step& step : fSteps) fProblems += "never shown: " + step.window + " " + step.text + "\n";
  fSteps.clear();
  return std::exchange(fProblems, "");
}

bool ModalScript::eventFilter(QObject* watched, QEvent* event) {
  auto* window = qobject_cast<QDialog*>(watched);
  if (window == nullptr) return false;
  if (event->type() == QEvent::Show) {
    fShown.push_back({window});
    LookSoon();
  } else if (event->type() == QEvent::Hide) {
    std::erase_if(fShown, [window](const Shown& shown) { return shown.window == window; });
    LookSoon();
  }
  return false;
}

void ModalScript::LookSoon() {
  QTimer::singleShot(0, this, &ModalScript::Look);
}

void ModalScript::Look() {
  std::erase_if(fShown, [](const Shown& shown) { return shown.window.isNull(); });
  if (fShown.empty() || fShown.back().answered) return;
  QWidget& window = *fShown.back().window;
  const bool expected = !fSteps.empty() && Matches(window, fSteps.front().window);
  if (!window.isModal() && !expected) return;  // the main window waits for its turn
  fShown.back().answered = window.isModal();
  fSinceProgress.restart();
  if (!expected) {
    fProblems += "unexpected: " + NameOf(window) + "\n";
    window.close();
    return;
  }
  const Step step = std::move(fSteps.front());
  fSteps.pop_front();
  Act(window, step);
  LookSoon();
}

/// A window that no answer closes, or a run that waits for nothing, is ended from outside.
void ModalScript::Watch() {
  if (fShown.empty() || fSinceProgress.elapsed() < kPatience) return;
  fSinceProgress.restart();
  fProblems += "stuck: " + (fShown.back().window ? NameOf(*fShown.back().window) : "?") + "\n";
  Application::Quit(0);
}

void ModalScript::Act(QWidget& window, const Step& step) {
  if (step.look) step.look(window);
  const auto* box = qobject_cast<QMessageBox*>(&window);
  if (!step.text.empty() && (box == nullptr || box->text().toStdString() != step.text))
    fProblems += "other text: " + NameOf(window) + "\n";
  if (!step.press.empty()) Press(window, step.press);
  if (!step.choose.empty()) Choose(window, step.choose);
  if (step.key != 0)
    QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key(step.key));
  if (step.close) {
    QCloseEvent request;
    QCoreApplication::sendEvent(window.windowHandle(), &request);
  }
}

void ModalScript::Press(QWidget& window, const std::string& name) {
  auto* control = window.findChild<QWidget*>(QString::fromStdString(name));
  if (control == nullptr || !control->isVisible() || !control->isEnabled()) {
    fProblems += "can't press " + name + " in " + NameOf(window) + "\n";
    window.close();
  } else {
    QTest::mouseClick(control, Qt::LeftButton);
  }
}

void ModalScript::Choose(QWidget& window, const std::string& folder) {
  auto* path = window.findChild<QLineEdit*>("fileNameEdit");
  const auto* buttons = window.findChild<QDialogButtonBox*>();
  if (path == nullptr || buttons == nullptr) {
    fProblems += "no folder dialog: " + NameOf(window) + "\n";
    window.close();
    return;
  }
  path->setText(QString::fromStdString(folder));
  QTest::mouseClick(buttons->button(QDialogButtonBox::Open), Qt::LeftButton);
  if (window.isVisible()) fProblems += "folder not taken: " + folder + "\n";
  if (window.isVisible()) window.close();
}
