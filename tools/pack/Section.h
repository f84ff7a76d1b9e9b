// SPDX-License-Identifier: MIT
// One object of the description, read key by key: wrong types and unknown keys are told by name.
#pragma once

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "pack/Notes.h"
#include "pack/Problems.h"

namespace pack {

class Section {
 public:
  /// `name` is the object's own path in the description, empty for the outermost one. Paths in the object
  /// count from `folder`. What is wrong goes to `problems`, and its value is an empty one then.
  Section(const nlohmann::json& json, std::string name, std::filesystem::path folder, Problems& problems);
  /// An object inside of this one.
  Section Inner(const std::string& key, const nlohmann::json& json) {
    return Section(json, Name(key), fFolder, fProblems);
  }

  /// The key's path in the description: "payload.folder".
  std::string Name(const std::string& key) const;
  const std::filesystem::path& Folder() const { return fFolder; }
  Problems& Faults() { return fProblems; }
  void Refuse(const std::string& key, const std::string& why) { fProblems.Add(Name(key), why); }

  /// The key's value, nullptr if it is absent. Asking for a key makes it a known one, here and in all below.
  const nlohmann::json* Find(const std::string& key);

  /// `otherwise` where the key is absent.
  bool Flag(const std::string& key, bool otherwise = false);
  std::int64_t Number(const std::string& key, std::int64_t smallest, std::int64_t largest);
  /// A string, or an object that names a file: {"file": "x.txt"}. Lines end in LF; the line end that closes a
  /// file isn't part of its text.
  std::string Text(const std::string& key);
  /// As Text; {"html": "..."} and files that end in ".html" or ".htm" are pages.
  Note NoteText(const std::string& key);
  /// Something that exists, empty if the key is absent.
  std::filesystem::path File(const std::string& key);
  std::filesystem::path Directory(const std::string& key);

  /// One of some words, in any case; `why` goes on with the sentence about any other, before what may have
  /// been meant. Empty if the key is absent.
  std::string Word(const std::string& key, const std::vector<std::string>& known, const std::string& why);

  /// Refuses the keys that nobody asked for.
  void Finish();

 private:
  std::filesystem::path Path(const std::string& key);

  const nlohmann::json& fJson;
  std::string fName;
  std::filesystem::path fFolder;
  std::set<std::string> fKnown;
  Problems& fProblems;
};

/// A JSON string as the records take it: no NUL, LF for every line end. Throws Refusal for anything else.
std::string TextOf(const nlohmann::json& json, const std::string& name);

}  // namespace pack
