// SPDX-License-Identifier: MIT
// Waiting while nothing of what the user does begins anything.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <functional>
#include <utility>

/// While it lives, what the user does is dropped, by whatever device. Where the pointer is is still followed.
class InputDropped : public QObject {
 public:
  InputDropped() { qApp->installEventFilter(this); }
  ~InputDropped() override { qApp->removeEventFilter(this); }
  InputDropped(const InputDropped&) = delete;
  InputDropped& operator=(const InputDropped&) = delete;

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::InputMethod:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
      case QEvent::TouchCancel:
      case QEvent::TabletPress:
      case QEvent::TabletMove:
      case QEvent::TabletRelease:
      case QEvent::Gesture:
      case QEvent::GestureOverride:
      case QEvent::NativeGesture:
        return true;
      case QEvent::Close:
      case QEvent::DragEnter:
      case QEvent::DragMove:
      case QEvent::Drop:
        event->ignore();
        return true;
      default:
        return false;
    }
  }
};

/// The same for as long as `isEarly` says so.
class EarlyInputDropped : public InputDropped {
 public:
  explicit EarlyInputDropped(std::function<bool()> isEarly) : fIsEarly(std::move(isEarly)) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    return fIsEarly() && InputDropped::eventFilter(watched, event);
  }

 private:
  std::function<bool()> fIsEarly;
};
