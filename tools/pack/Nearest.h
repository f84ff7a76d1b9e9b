// SPDX-License-Identifier: MIT
// What somebody may have meant.
#pragma once

#include <string>
#include <vector>

namespace pack {

/// "; did you mean `agreement`?" for a word that is nearly one of `known`, in any case; empty for any other.
std::string DidYouMean(const std::string& word, const std::vector<std::string>& known);

}  // namespace pack
