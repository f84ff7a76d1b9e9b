// SPDX-License-Identifier: MIT
// How the packager says no: one sentence that names what is at fault.
#pragma once

#include <stdexcept>
#include <string>

namespace pack {

/// Ends what throws it: nothing of the bundle is kept. `subject` is the path of a key in the description,
/// such as "choices[0].name", or the file that the sentence is about; `why` goes on with the sentence.
class Refusal : public std::runtime_error {
 public:
  Refusal(const std::string& subject, const std::string& why)
      : std::runtime_error(subject + " " + why + (why.ends_with('?') ? "" : ".")), fSubject(subject) {}
  const std::string& Subject() const { return fSubject; }

 protected:
  explicit Refusal(const std::string& sentences) : std::runtime_error(sentences) {}

 private:
  std::string fSubject;
};

/// All that is wrong with a description: a line for each mistake, "FILE:LINE:COLUMN: sentence".
class Mistakes : public Refusal {
 public:
  explicit Mistakes(const std::string& lines) : Refusal(lines) {}
};

}  // namespace pack
