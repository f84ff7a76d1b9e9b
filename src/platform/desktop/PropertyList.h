// SPDX-License-Identifier: MIT
// What a bundle's Info.plist says, as far as it's asked here.
#pragma once

#include <string>

/// The string of CFBundleExecutable in the text of an XML property list, or empty. A value that is
/// no plain file name counts as none.
std::string ExecutableNameOfPropertyList(const std::string& xml);
