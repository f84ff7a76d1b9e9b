// SPDX-License-Identifier: MIT
#include "support/TestPackage.h"

namespace {

std::string Join(const std::map<int, std::string>& fields, int count, const std::string& separator) {
  std::string record;
  for (int n = 1; n <= count; ++n) {
    const auto field = fields.find(n);
    record += (n > 1 ? separator : "") + (field == fields.end() ? "" : field->second);
  }
  return record;
}

}  // namespace

std::string ScrambledByHand(std::string bytes) {
  bool odd = false;
  for (char& byte : bytes) {
    if (odd) byte = byte == '\xFF' ? '\0' : static_cast<char>(byte + 1);
    odd = !odd;
  }
  return bytes;
}

std::string TestPackage::DataRecord() const {
  return Join(data, 12, "$|~");
}

std::string TestPackage::TextDataRecord() const {
  return Join(textData, 30, "|#|");
}

void TestPackage::Write(const TemporaryTree& tree, const std::string& bundle) const {
  const std::string resources = bundle + "/Contents/Resources/";
  tree.Write(bundle + "/Contents/MacOS/TessarineStub", "program", 0755);
  tree.Write(resources + "Data", ScrambledByHand(DataRecord()));
  tree.Write(resources + "TextData", TextDataRecord());
  if (!payload.empty()) tree.Write(resources + "Data2", ScrambledByHand(payload));
}
