// SPDX-License-Identifier: MIT
#include "support/TestPackage.h"

std::string TestPackage::Join(std::map<int, std::string> fields, int count, const std::string& separator) {
  std::string record;
  for (int n = 1; n <= count; ++n) record += (n > 1 ? separator : "") + fields[n];
  return record;
}

std::string ScrambledByHand(std::string bytes) {
  for (std::size_t i = 1; i < bytes.size(); i += 2) bytes[i] = static_cast<char>(bytes[i] + 1);
  return bytes;
}

std::string UnscrambledByHand(std::string bytes) {
  for (std::size_t i = 1; i < bytes.size(); i += 2) bytes[i] = static_cast<char>(bytes[i] - 1);
  return bytes;
}

void TestPackage::Write(const TemporaryTree& tree, const std::string& bundle) const {
  const std::string resources = bundle + "/Contents/Resources/";
  tree.Write(bundle + "/Contents/MacOS/TessarineStub", "program", 0755);
  tree.Write(resources + "Data", ScrambledByHand(DataRecord()));
  tree.Write(resources + "TextData", TextDataRecord());
  if (!payload.empty()) tree.Write(resources + "Data2", ScrambledByHand(payload));
}
