// SPDX-License-Identifier: MIT
// What is left of an archive that has lost its end.
#pragma once

#include "archive/Result.h"
#include "archive/Source.h"

namespace archive {

/// The failure of a file without an end record. Where entries follow each other from its start, it names the
/// one in which they stop.
Status CutShort(const Source& source);

}  // namespace archive
