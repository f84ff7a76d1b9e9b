// SPDX-License-Identifier: MIT
#include "platform/WaitCursor.h"

#include <QCursor>
#include <QGuiApplication>

WaitCursor::WaitCursor() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor() {
  QGuiApplication::restoreOverrideCursor();
}
