// SPDX-License-Identifier: MIT
// Writes what ParseRecord reads.
#pragma once

#include <string>
#include <vector>

#include "package/InstallerRecord.h"

/// A value that a record can't hold.
struct RecordFault {
  std::string field;  // by its name in the format; of a list with the entry's number: "labels[2]"
  std::string why;    // goes on with a sentence about it: "can't hold ..."
};

struct WrittenRecord {
  std::string data;      // Mac Roman, not scrambled
  std::string textData;  // UTF-8
  std::vector<RecordFault> faults;
};

/// Texts are UTF-8, with LF for line ends and without a NUL. Only what comes without a fault reads back as it
/// was.
WrittenRecord WriteRecord(const InstallerRecord& record);
