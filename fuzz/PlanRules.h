// SPDX-License-Identifier: MIT
// What must hold for every plan that was accepted, checked by other means than the planning's own.
#pragma once

#include "archive/planning/Plan.h"

namespace fuzz {

/// Ends the process where a path, a link or a data range of the plan leaves its bounds.
void CheckPlan(const archive::Plan& plan, const archive::Source& source);

}  // namespace fuzz
