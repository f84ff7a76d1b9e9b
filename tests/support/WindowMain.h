// SPDX-License-Identifier: MIT
// The display connection that all cases of a test program with windows share.
#pragma once

#include "platform/Application.h"

Application& TestApplication();
