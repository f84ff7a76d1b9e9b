// SPDX-License-Identifier: MIT
// The application's menu bar, which the main window and its dialogs answer to: all but the sized messages and
// questions, message boxes and the folder dialog.
#pragma once

#include "platform/Menu.h"

const MenuBar& MenuBar1();
