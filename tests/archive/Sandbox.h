// SPDX-License-Identifier: MIT
// A fresh folder for a case, and what stands in a folder as a value to compare.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "archive/ZipBuilder.h"
#include "platform/archive/Expand.h"

namespace ziptest {

/// Path to "kind mode [content or target]" for everything below a folder; links are not followed.
using Snapshot = std::map<std::string, std::string>;
Snapshot Look(const std::string& folder);

void Write(const std::string& path, const std::string& bytes);
std::string Read(const std::string& path);

class Sandbox {
 public:
  Sandbox();
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;
  Sandbox& operator=(const Sandbox&) = delete;

  /// A path below the fresh folder.
  std::string operator/(const std::string& name) const { return fRoot + "/" + name; }
  std::string Target() const { return *this / "target"; }
  std::string Archive() const { return *this / "a.zip"; }

  /// Expands `bytes` into Target() in this process. The sentence of the failure; empty on success.
  std::string Expand(const std::string& bytes, bool mustBeNew = false) const;
  std::string Expand(const Zip& zip, bool mustBeNew = false) const { return Expand(zip.Bytes(), mustBeNew); }

 private:
  std::string fRoot;
};

struct Outcome {
  int status = 0;  // as the shell reports it: 128 + the signal's number
  std::string out, err;
};
/// Runs the built helper.
Outcome RunDitto(const std::vector<std::string>& arguments);
/// Runs a command line of the shell in which "$DITTO" is the helper.
Outcome RunShell(const std::string& line);
bool HasProgram(const std::string& name);

}  // namespace ziptest
