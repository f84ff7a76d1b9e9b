// SPDX-License-Identifier: MIT
#include "platform/qt/NativeApplication.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <cstdio>
#include <exception>
#include <utility>

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

/// A key held down answers one question, not the next ones too. The X server repeats a key by a release and a
/// press of the same time; the toolkit takes the press for a new one if it comes a moment after its release.
bool NativeApplication::IsHeldKey(const QObject* receiver, const QEvent* event) {
  static std::pair<int, quint64> released;
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  const std::pair now(key->key(), key->timestamp());
  if (event->type() == QEvent::KeyRelease) {
    released = now;
    return false;
  }
  if (!key->isAutoRepeat() && (key->timestamp() == 0 || now != released)) return false;
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
