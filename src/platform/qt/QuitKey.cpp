// SPDX-License-Identifier: MIT
#include "platform/qt/QuitKey.h"

#include <QKeyEvent>

#include "platform/Application.h"

bool QuitsBy(const QKeyEvent& event) {
  const bool quits = event.key() == Qt::Key_Q && event.modifiers() == Qt::ControlModifier;
  if (quits) Application::Quit(0);
  return quits;
}
