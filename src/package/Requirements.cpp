// SPDX-License-Identifier: MIT
#include "package/Requirements.h"

#include "util/Strings.h"

namespace {

struct Version {
  std::int64_t major;
  std::int64_t minor;
};

constexpr Version kVersions[] = {{10, 10}, {10, 11}, {10, 12}, {10, 13}, {10, 14},
                                 {10, 15}, {11, 0},  {11, 1},  {11, 2},  {11, 3}};

std::string NumberOf(const Version& version) {
  return std::to_string(version.major) + "." + std::to_string(version.minor);
}

struct Memory {
  const char* keyword;
  std::int64_t megabytes;
  const char* amount;
};

constexpr Memory kMemories[] = {{"250MB", 250, "250 MB"}, {"500MB", 500, "500 MB"}, {"1GB", 1000, "1 GB"},
                                {"2GB", 2000, "2 GB"},    {"4GB", 4000, "4 GB"},    {"8GB", 8000, "8 GB"},
                                {"16GB", 16000, "16 GB"}, {"32GB", 32000, "32 GB"}};

/// Version 10 is asked for of systems of version 10 only; a later requirement looks at both numbers.
bool IsTooOld(const Version& required, std::int64_t major, std::int64_t minor) {
  if (required.major == 10) return major == 10 && minor < required.minor;
  return major < required.major || (major == required.major && minor < required.minor);
}

}  // namespace

std::string VersionComplaint(const std::string& keyword, std::int64_t major, std::int64_t minor) {
  for (const Version& row : kVersions) {
    const std::string number = NumberOf(row);
    if (ViewConst::NonCaseMatch(keyword, "MacOS" + number))
      return IsTooOld(row, major, minor) ? "Mac OS X " + number + " or later is required." : "";
  }
  return "";
}

std::string MemoryComplaint(const std::string& keyword, std::int64_t megabytes) {
  for (const Memory& row : kMemories) {
    if (ViewConst::NonCaseMatch(keyword, row.keyword))
      return megabytes < row.megabytes ? std::string(row.amount) + " RAM is required." : "";
  }
  return "";
}

std::vector<std::string> VersionKeywords() {
  std::vector<std::string> keywords;
  for (const Version& row : kVersions) keywords.push_back("MacOS" + NumberOf(row));
  return keywords;
}

std::vector<std::string> MemoryKeywords() {
  std::vector<std::string> keywords;
  for (const Memory& row : kMemories) keywords.emplace_back(row.keyword);
  return keywords;
}
