// SPDX-License-Identifier: MIT
#include "platform/Keyboard.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include "platform/qt/NativeKeyboard.h"

namespace {
bool gF1Down = false;
}

void FollowKeys(const QEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride:  // all that is sent of a press that a shortcut takes
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
      const auto& key = static_cast<const QKeyEvent&>(event);
      // A key that repeats itself goes up and down in name only.
      if (key.key() == Qt::Key_F1 && !key.isAutoRepeat()) gF1Down = event.type() != QEvent::KeyRelease;
      break;
    }
    case QEvent::ApplicationStateChange:
      if (static_cast<const QApplicationStateChangeEvent&>(event).applicationState() != Qt::ApplicationActive)
        gF1Down = false;
      break;
    default:
      break;
  }
}

bool Keyboard::AsyncKeyDown(int keyCode) {
  return keyCode == kF1 && gF1Down;
}
