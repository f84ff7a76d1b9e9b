// SPDX-License-Identifier: MIT
// The application's menu bar, which every window of this program's own answers to: all but message boxes and
// the folder dialog.
#pragma once

#include "platform/Menu.h"

const MenuBar& MenuBar1();
