// SPDX-License-Identifier: MIT
// Making, locking and removing staging folders.
#include "archive/writing/Staging.h"

#include <fcntl.h>
#include <unistd.h>

#include <string_view>
#include <vector>

#include "archive/planning/Plan.h"
#include "base/FolderNames.h"
#include "base/TreeDelete.h"

namespace archive {
namespace {

constexpr std::string_view kPrefix = ".ditto-";

}  // namespace

void RemoveLeftovers(int folder) {
  for (const std::string& name : NamesIn(folder).value_or(std::vector<std::string>())) {
    if (!IsStagingName(name)) continue;
    // What can't be removed is only in the way of whoever looks for hidden folders.
    if (LockedFolder::IfLeft(folder, name).lock) static_cast<void>(DeleteTreeIn(folder, name));
  }
}

Result<Staging::Reserve> Staging::KeepBack(int folder) {
  Reserve reserve;
  for (Descriptor& spare : reserve) {
    spare = Descriptor(fcntl(folder, F_DUPFD_CLOEXEC, 0));
    if (!spare) return FailedCall("prepare a folder to expand in");
  }
  return reserve;
}

Result<Staging> Staging::Make(int folder) {
  Result<Reserve> reserve = KeepBack(folder);
  if (!reserve.Ok()) return reserve.Failure();
  LockedFolder made = LockedFolder::Make(folder, std::string(kPrefix) + std::to_string(getpid()) + "-");
  if (!made.lock) return FailedCall("make a folder to expand in");
  return Staging(folder, std::move(made), std::move(*reserve));
}

Staging::Staging(int folder, LockedFolder made, Reserve reserve)
    : fFolder(folder), fMade(std::move(made)), fReserve(std::move(reserve)) {}

Staging::~Staging() {
  fReserve = {};
  if (fMade.lock) static_cast<void>(DeleteTreeIn(fFolder, fMade.name));  // a later run tries again
}

}  // namespace archive
