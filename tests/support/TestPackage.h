// SPDX-License-Identifier: MIT
// Writes a bundle's package files byte by byte, with code of its own: what reads them has no part in it.
#pragma once

#include <map>
#include <string>

#include "support/TemporaryTree.h"

/// Every second byte, from the second, plus one.
std::string ScrambledByHand(std::string bytes);
std::string UnscrambledByHand(std::string bytes);

struct TestPackage {
  std::map<int, std::string> data;      // fields by number from 1
  std::map<int, std::string> textData;  // the same
  std::string payload = "archive";      // before scrambling; Data2 is missing when empty

  std::string DataRecord() const { return Join(data, 12, "$|~"); }
  std::string TextDataRecord() const { return Join(textData, 30, "|#|"); }
  /// Into the Resources folder of the bundle of that name; the bundle gets a program as well.
  void Write(const TemporaryTree& tree, const std::string& bundle) const;

 private:
  static std::string Join(std::map<int, std::string> fields, int count, const std::string& separator);
};
