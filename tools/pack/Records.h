// SPDX-License-Identifier: MIT
// The two records that an installer reads at its start.
#pragma once

#include <string>

#include "pack/Description.h"

namespace pack {

struct Records {
  std::string data;      ///< Mac Roman, scrambled
  std::string textData;  ///< UTF-8
};

/// Throws Refusal for a value that its record can't hold.
Records WriteRecords(const Description& description);

}  // namespace pack
