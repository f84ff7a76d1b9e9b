// SPDX-License-Identifier: MIT
// What the cleanup deletes, as the record numbers it.
#pragma once

#include <array>
#include <cstdint>

enum CleanupMode : std::int64_t {
  kCleanNothing,
  kCleanBundle,
  kCleanFolder,
  kCleanAskingBundle,
  kCleanAskingFolder
};

/// By number, as a description names them.
inline constexpr std::array kCleanupModes = {"none", "deleteInstaller", "deleteFolder", "askDeleteInstaller",
                                             "askDeleteFolder"};
