// SPDX-License-Identifier: MIT
// The application's menu bar, which every window of ours answers to.
#pragma once

#include "platform/Menu.h"

const MenuBar& MenuBar1();
