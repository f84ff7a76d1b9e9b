// SPDX-License-Identifier: MIT
// Decoding of stored names.
#include "archive/reading/Names.h"

#include <gtest/gtest.h>

#include "support/ZipBuilder.h"

namespace archive {
namespace {

TEST(Names, AreDecodedByHostFlagAndField) {
  const auto unicode = [](const char* version, const char* of) {
    return version + ziptest::Le(ziptest::Crc(of), 4) + "näme";
  };
  const std::string field = unicode("\1", "n"), stale = unicode("\1", "m"), newer = unicode("\2", "n");
  const struct {
    const char* why;
    std::string stored;
    Host host;
    bool utf8;
    std::optional<std::string_view> field;
    std::string name;
  } rows[] = {
      {"plain", "a/b.txt", Host::Unix, false, {}, "a/b.txt"},
      {"flagged UTF-8", "ä", Host::Dos, true, {}, "ä"},
      {"unflagged UTF-8 of a Mac", "ä€😀", Host::Mac, false, {}, "ä€😀"},
      {"unflagged bytes of DOS, though they look like UTF-8", "\xC3\xA4", Host::Dos, false, {}, "├ñ"},
      {"Unix bytes that are no UTF-8", "\x84\xE1\xFF", Host::Unix, false, {}, "äß\u00A0"},
      {"the whole upper half begins and ends right", "\x80\xFE", Host::Dos, false, {}, "Ç■"},
      {"Unicode field", "n", Host::Dos, false, field, "näme"},
      {"Unicode field of another name", "n", Host::Dos, false, stale, "n"},
      {"Unicode field of a version to come", "n", Host::Dos, false, newer, "n"},
      {"backslashes of DOS", "a\\b", Host::Dos, false, {}, "a/b"},
      {"backslashes of NTFS, flagged", "ä\\b", Host::Ntfs, true, {}, "ä/b"},
      {"a backslash in a name of Unix", "a\\b", Host::Unix, false, {}, "a\\b"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    auto decoded = DecodeName({row.stored, row.host, row.utf8, row.field});
    ASSERT_TRUE(decoded.Ok());
    EXPECT_EQ(decoded->value_or(row.stored), row.name);
  }
}

TEST(Names, OfBrokenUtf8AreRefusedWhereUtf8IsStated) {
  for (const char* bytes :
       {"\xC0\x80", "\xC1\xBF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80", "\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98"})
    EXPECT_FALSE(DecodeName({bytes, Host::Unix, true, {}}).Ok()) << bytes;
}

TEST(Names, InSentencesAreFitForATerminal) {
  EXPECT_EQ(Quoted("a\x1b[31m\n\xFFä"), "\"a\\x1B[31m\\x0A\\xFFä\"");
  EXPECT_LT(Quoted(std::string(100000, 'x')).size(), 300u);
}

}  // namespace
}  // namespace archive
