// SPDX-License-Identifier: MIT
// The toolkit's application object.
#pragma once

#include <QApplication>

class NativeApplication : public QApplication {
  Q_OBJECT

 public:
  NativeApplication(int& argc, char** argv);
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  static bool IsHeldKey(const QObject* receiver, const QEvent* event);
};
