// SPDX-License-Identifier: MIT
// The ".hidden" list by which file managers pass over items of a folder.
#pragma once

#include <string>

/// Is `name` a line of the list in `folder`?
bool IsListedHidden(const std::string& folder, const std::string& name);

/// Adds `name` to the list or takes it off; a list that becomes empty goes. A name with a line break
/// can't be listed. Failures leave the list as it was.
void ListHidden(const std::string& folder, const std::string& name, bool hidden);
