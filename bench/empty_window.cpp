// SPDX-License-Identifier: MIT
// The least that a program with a window can do: the measure for the installer's start and memory.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  window.setFixedSize(396, 238);
  window.show();
  return QApplication::exec();
}
