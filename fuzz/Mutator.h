// SPDX-License-Identifier: MIT
// Changes archives as archives: blind changes seldom keep two names, a length and a checksum in step.
#pragma once

#include <string>

namespace fuzz {

/// Gives one entry another kind, another name or, as the target of a link, other data. Names are made of
/// components that lead somewhere and of the names of other entries.
void Twist(std::string& bytes, unsigned seed);

/// Makes the records agree again: puts into each pair of headers the place, name, lengths and checksum of
/// what lies behind the local one, and into the end record the directory's numbers. Extra fields, flags
/// and descriptors stay as they are.
void Mend(std::string& bytes);

/// Lets one entry state another length or checksum than it has, alike in both headers.
void Lie(std::string& bytes, unsigned seed);

}  // namespace fuzz
