// SPDX-License-Identifier: MIT
// The one place that lets the functions of Files.h delete an item, or put another one in its place.
#pragma once

#include <string>

namespace ViewConst {

/// False for what ReasonToStay keeps on every machine, for this installer, what lies in it or holds it, and
/// for what was given to Keep and the folders that hold it. True where nothing stands.
bool MayGo(const std::string& path);

/// The same for an item that goes once this run has ended: the installer may be it, or lie in it.
bool MayGoWithInstaller(const std::string& path);

/// For the rest of this run.
void Keep(const std::string& path);

}  // namespace ViewConst
