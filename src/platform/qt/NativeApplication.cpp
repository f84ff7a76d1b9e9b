// SPDX-License-Identifier: MIT
#include "platform/qt/NativeApplication.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <cstdio>
#include <exception>

#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/qt/NativeKeyboard.h"

namespace {

/// Where there is no memory left for a window, on the error output.
void TellOf(const std::exception& error) noexcept {
  constexpr const char* kWords = "An unexpected error occurred: ";
  try {
    MessageBox(std::string(kWords) + error.what());
  } catch (const std::exception&) {
    std::fprintf(stderr, "%s%s\n", kWords, error.what());
  }
}

}  // namespace

NativeApplication::NativeApplication(int& argc, char** argv) : QApplication(argc, argv) {
  setQuitOnLastWindowClosed(false);
}

/// A key held down answers one question, not the next ones too.
bool NativeApplication::IsHeldKey(const QObject* receiver, const QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  if (!key->isAutoRepeat()) return false;
  if (key->key() == Qt::Key_Space) return qobject_cast<const QAbstractButton*>(receiver) != nullptr;
  return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Escape;
}

bool NativeApplication::notify(QObject* receiver, QEvent* event) {
  FollowKeys(*event);
  if (IsHeldKey(receiver, event)) return true;
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    TellOf(error);
    Application::Quit(0);
    return false;
  }
}
