// SPDX-License-Identifier: MIT
// An input of a fuzzer as an archive, and the way to say that a rule is broken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "archive/Result.h"
#include "archive/Source.h"

namespace fuzz {

/// The input's bytes. One that begins with "HOLE", a place (4 bytes) and a count stands for a file of some
/// times 4 GiB: the bytes behind that head, with zeros in between at the place.
class Bytes : public archive::Source {
 public:
  static constexpr std::string_view kHoleMark = "HOLE";
  static constexpr std::size_t kHoleHead = 9;

  explicit Bytes(std::string_view input) : Bytes(Split(input)) {}
  bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const override;

 private:
  struct Parts {
    std::string_view before, after;
    std::uint64_t hole = 0;
  };
  static Parts Split(std::string_view input);
  explicit Bytes(const Parts& parts);

  const Parts fParts;
};

/// Ends the process, which makes the input a finding.
[[noreturn]] void Broken(std::string_view rule, std::string_view where = {});

/// A refusal's sentence must be fit for a terminal.
void CheckSentence(const archive::Status& failure);

}  // namespace fuzz
