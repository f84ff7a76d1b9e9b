// SPDX-License-Identifier: MIT
// A synchronous run of one command line.
#pragma once

#include <string>

class Shell {
 public:
  /// Returns when the command has ended.
  void Execute(const std::string& command);
  /// The last command's exit code; 127 when the shell itself could not be started.
  int ErrorCode() const { return fErrorCode; }

 private:
  int fErrorCode = 0;
};
