// SPDX-License-Identifier: MIT
// How the packager says no: one sentence that names the field at fault.
#pragma once

#include <stdexcept>
#include <string>

namespace pack {

/// Ends the run: nothing of the bundle is kept. `subject` is the field's path in the description, such as
/// "choices[0].name", or the file that the sentence is about; `why` goes on with the sentence.
class Refusal : public std::runtime_error {
 public:
  Refusal(const std::string& subject, const std::string& why)
      : std::runtime_error(subject + " " + why + ".") {}
};

}  // namespace pack
