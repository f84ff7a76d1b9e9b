// SPDX-License-Identifier: MIT
// The hidden folder in which a run builds everything before it shows any of it.
#pragma once

#include <array>

#include "archive/Result.h"
#include "base/Descriptor.h"
#include "base/LockedFolder.h"

namespace archive {

/// Deletes what killed runs left in `folder`: staging folders of this user whose lock nobody holds.
void RemoveLeftovers(int folder);

/// A folder of this run's own inside of the target folder, so that items get to their place by a rename.
/// A lock on it says that its run is alive. It is gone with all its content when the object is.
class Staging {
 public:
  static Result<Staging> Make(int folder);
  Staging(Staging&&) = default;
  Staging& operator=(Staging&&) = delete;
  ~Staging();

  int Get() const { return fMade.lock.Get(); }

 private:
  /// Kept back, so that cleaning up never lacks a descriptor.
  using Reserve = std::array<Descriptor, 3>;
  static Result<Reserve> KeepBack(int folder);
  Staging(int folder, LockedFolder made, Reserve reserve);

  int fFolder;
  LockedFolder fMade;
  Reserve fReserve;
};

}  // namespace archive
