// SPDX-License-Identifier: MIT
// A fresh folder with a small payload and a make-believe runtime, in which packages are made.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "pack/Bundle.h"
#include "pack/Description.h"
#include "pack/Refusal.h"
#include "support/TemporaryTree.h"

namespace pack {

using nlohmann::json;

class Workshop : public ::testing::Test, public TemporaryTree {
 protected:
  using List = std::set<std::string>;

  Workshop() {
    Folder("out");
    Write("runtime/TessarineStub", "the runtime", 0755);
    Write("runtime/ditto", "the expander");
    Write("runtime/TessarineClipboard", "the keeper");
    Write("runtime/TessarineNetwork.so", "the network");
    Write("payload/Read Me.txt", "Hello.\n");
  }

  // The least that a description says, with `more` merged in; a null in `more` takes a key away.
  static json Describe(const json& more = json::object()) {
    json description = {{"targetFolder", "Lamp"}, {"payload", {{"folder", "payload"}}}, {"timeStamp", "T"}};
    description.merge_patch(more);
    return description;
  }

  // Makes out/Setup.app of that. The sentences of the refusal without their places, empty if there was none.
  std::string Pack(const json& more = json::object()) const {
    return PackFile(Write("description.json", Describe(more).dump()));
  }
  std::string PackFile(const std::string& description) const {
    try {
      MakeBundle(ReadDescription(description), Path("out/Setup.app"), Path("runtime"));
    } catch (const Mistakes& mistakes) {
      return std::regex_replace(mistakes.what(), std::regex("(^|\n)[^\n]*?:[0-9]+:[0-9]+: "), "$1");
    } catch (const Refusal& refusal) {
      return refusal.what();
    }
    return "";
  }

  // A file of the package.
  std::string Resource(const std::string& name) const {
    return Read("out/Setup.app/Contents/Resources/" + name);
  }

  List Names(const std::string& folder) const {
    List names;
    for (const auto& item : fs::directory_iterator(Path(folder))) names.insert(item.path().filename());
    return names;
  }

  static std::string Unscrambled(std::string bytes) {
    for (std::size_t i = 1; i < bytes.size(); i += 2) bytes[i] = static_cast<char>(bytes[i] - 1);
    return bytes;
  }

  // Field `number`, counted from 1, of a record.
  static std::string Field(std::string record, const std::string& separator, int number) {
    while (--number > 0) record.erase(0, record.find(separator) + separator.size());
    return record.substr(0, record.find(separator));
  }
};

}  // namespace pack
