// SPDX-License-Identifier: MIT
#include "platform/Menu.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>

#include "platform/Application.h"
#include "platform/qt/NativeWindow.h"

namespace {

const char* SlotOf(MenuCommand command) {
  switch (command) {
    case MenuCommand::Undo:
      return "undo";
    case MenuCommand::Cut:
      return "cut";
    case MenuCommand::Copy:
      return "copy";
    case MenuCommand::Paste:
      return "paste";
    case MenuCommand::SelectAll:
      return "selectAll";
    default:
      return nullptr;
  }
}

void CarryOut(MenuCommand command) {
  if (command == MenuCommand::Quit) {
    Application::Quit(0);
    return;
  }
  QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr) return;
  if (command == MenuCommand::Clear) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
    QApplication::sendEvent(focus, &press);
  } else if (focus->metaObject()->indexOfSlot(QByteArray(SlotOf(command)) + "()") >= 0) {
    QMetaObject::invokeMethod(focus, SlotOf(command));
  }
}

}  // namespace

void AttachMenuBar(Window& window, const MenuBar& menus) {
  NativeWindow& native = window.Native();
  auto bar = std::make_unique<QMenu>();
  for (const Menu& menu : menus) {
    QMenu* drop = bar->addMenu(QString::fromStdString(menu.text));
    drop->setObjectName(QString::fromStdString(menu.name));
    for (const MenuEntry& entry : menu.entries) {
      if (entry.command == MenuCommand::Separator) {
        drop->addSeparator()->setObjectName(QString::fromStdString(entry.name));
        continue;
      }
      QAction* action = drop->addAction(QString::fromStdString(entry.text));
      action->setObjectName(QString::fromStdString(entry.name));
      action->setShortcut(QString::fromStdString(entry.shortcut).replace("Cmd", "Ctrl"));
      QObject::connect(action, &QAction::triggered, action, [command = entry.command] { CarryOut(command); });
      native.addAction(action);  // so that the shortcut works while the menu is closed
    }
  }
  native.SetContextMenu(std::move(bar));
}
