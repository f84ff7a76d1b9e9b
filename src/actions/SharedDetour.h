// SPDX-License-Identifier: MIT
// The second copy of a bundle that the script put among the applications.
#pragma once

#include <string>

/// Of a destination below "/Applications" that has ".app" anywhere in it, in either case.
bool GoesThroughSharedFolder(const std::string& destination);

/// Writes the bundle a second time, by way of the folder that all users share (Machine::SharedFolder).
/// It stays where it is until the way there is safe: where that folder can't be made, or where other users
/// could exchange what lies in it, nothing happens.
void TakeThroughSharedFolder(const std::string& bundle);
