// SPDX-License-Identifier: MIT
// A menu bar as data. It isn't drawn in the window; its shortcuts work, and F10 or the secondary
// mouse button opens it.
#pragma once

#include <string>
#include <vector>

#include "platform/Window.h"

/// What an entry does; the toolkit carries it out on the control with the focus.
enum class MenuCommand { None, Separator, Quit, Undo, Cut, Copy, Paste, Clear, SelectAll };

struct MenuEntry {
  std::string name;
  std::string text;      // "&" marks the mnemonic
  std::string shortcut;  // "Cmd" is the control key here
  MenuCommand command = MenuCommand::None;
};

struct Menu {
  std::string name;
  std::string text;
  std::vector<MenuEntry> entries;
};

using MenuBar = std::vector<Menu>;

void AttachMenuBar(Window& window, const MenuBar& menus);
