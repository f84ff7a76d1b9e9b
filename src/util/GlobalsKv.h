// SPDX-License-Identifier: MIT
// Helpers and values that the whole process shares.
#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>

#include "platform/FolderItem.h"

namespace GlobalsKv {

/// One line feed, from KvAppInit on.
extern std::string gLineBreak;

class Random {
 public:
  Random() : fEngine(std::random_device{}()) {}
  /// Both bounds included.
  std::int64_t InRange(std::int64_t low, std::int64_t high) {
    return std::uniform_int_distribution<std::int64_t>(low, high)(fEngine);
  }

 private:
  std::mt19937_64 fEngine;
};

/// Created by KvAppInit.
extern std::optional<Random> gRandom;

/// True for the whole session once the application has opened: where the bundle runs from is then
/// the window's affair.
extern bool gIgnoreTranslocationError;

/// A pending message: 0 none, 999 the text of gErrorString, any other a number of the table.
extern int gConflictType;
extern std::string gErrorString;

/// Sets the shared values up, once, before anything else of the program runs.
void KvAppInit();

/// The message of that number, or empty.
std::string MyGetString(int number);

/// The one way from a path to an item. None for an empty or relative path; the item need not exist.
std::optional<FolderItem> MyGetFolderItem(const std::string& path);

}  // namespace GlobalsKv
