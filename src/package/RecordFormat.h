// SPDX-License-Identifier: MIT
// The two records of a package, Data and TextData: which value stands where, and how. What reads a package
// and what writes one go through these tables.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <variant>

#include "package/InstallerRecord.h"

/// "pixels,width,height"; an empty field for no picture.
struct PictureMember {
  std::string InstallerRecord::*pixels;
  std::int64_t InstallerRecord::*width;
  std::int64_t InstallerRecord::*height;
};

/// A long text; see package/Notes.h.
struct NoteMember {
  std::string InstallerRecord::*text;
};

/// What kind of member it is says how its field is written: a text as it stands, "1" for a boolean, digits,
/// and texts joined by "|".
using RecordMember =
    std::variant<std::string InstallerRecord::*, bool InstallerRecord::*, std::int64_t InstallerRecord::*,
                 std::vector<std::string> InstallerRecord::*, NoteMember, PictureMember>;

struct RecordField {
  std::size_t place;  // from 1; the places between are reserved, and empty
  const char* name;   // the key by which a description gives it
  RecordMember member;
};

struct RecordFormat {
  std::string_view separator;
  std::size_t fields;
  bool macRoman;  // else UTF-8
  std::span<const RecordField> table;
};

inline constexpr std::string_view kLabelSeparator = "|";

extern const RecordFormat kDataFormat;
extern const RecordFormat kTextDataFormat;
