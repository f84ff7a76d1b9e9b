// SPDX-License-Identifier: MIT
// Archives that must be refused: the verdict, nothing changed outside, nothing left inside.
#include <gtest/gtest.h>

#include "archive/Sandbox.h"
#include "support/SolidBuilder.h"

using namespace ziptest;

struct Row {
  const char* why;
  std::string bytes;
  const char* sentence;  // part of what the user is told
};
using Lie = std::function<void(Says&)>;

/// Each row, and the same packed as a whole, is expanded into a folder that is missing and, without the
/// wall's help, into one that holds something.
void ExpectRefused(const std::vector<Row>& rows) {
  std::size_t same = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const Sandbox box;
    box.Write("outside", "untouched");
    for (const bool there : {false, true}) {
      if (there) box.Write("target/a", "old");
      const Snapshot before = box.Look();
      const std::string told = box.Expand(row.bytes, {.wall = !there});
      EXPECT_TRUE(!told.empty() && told.find(row.sentence) != std::string::npos) << told;
      fs::remove(box.Archive());
      EXPECT_EQ(box.Look(), before);
      const std::size_t frame = std::max<std::size_t>(row.bytes.size() / 50, 37);
      const std::string whole = box.Expand(Solid(row.bytes, frame));
      EXPECT_NE(whole, "") << "packed as a whole";
      same += whole.find(row.sentence) != whole.npos;
      fs::remove(box.Archive());
      EXPECT_EQ(box.Look(), before) << "packed as a whole";
    }
  }
  EXPECT_GE(same, rows.size() / 5) << "others are refused for their form, such as deflated ones";
}

TEST(Hostile, NamesThatMayNotBeCreated) {
  std::string longPath = "x";
  while (longPath.size() <= 4096) longPath = "abcdefghi/" + longPath;
  const struct {
    const char* sentence;
    std::vector<std::string> names;
    std::uint8_t host = 3;
  } names[] = {
      {"\"..\"", {"../outside", "x/../../outside", "x/../good2", "x/.."}},
      {"\"..\"", {"x\\..\\..\\outside"}, 0},
      {"absolute", {"/tmp/x", "/"}},
      {"absolute", {"\\\\server\\x"}, 10},
      {"drive", {"C:/x"}},
      {"drive", {"c:\\x"}, 0},
      {"\".\"", {"./x"}},
      {"empty name", {"x//y", "x//"}},
      {"no name", {""}},
      {"control character", {std::string("x\0y", 3), "x\ny", "\x1b[2J", "x\xC2\x9By"}},  // the last: C1
      {"too long a name", {std::string(256, 'n')}},
      {"too long a path", {longPath}},
      {"kept", {".ditto-1-0123456789abcdef/x"}},  // a staging folder of somebody
  };
  std::vector<Row> rows;
  for (const auto& row : names)
    for (const std::string& name : row.names)
      rows.push_back({row.sentence, ZipOf({File("good"), {.name = name, .host = row.host}}), row.sentence});
  const auto field = [](const std::string& name) { return Extra(0x7075, "\1" + Le(Crc("plain"), 4) + name); };
  rows.push_back(
      {"broken UTF-8 that claims to be some", ZipOf({{.name = "x\xFFy", .flags = 1 << 11}}), "no UTF-8"});
  rows.push_back({"a Unicode field that climbs",
                  ZipOf({{.name = "plain", .centralExtra = field("../outside")}}), "\"..\""});
  rows.push_back({"a Unicode field that only the local header has",
                  ZipOf({{.name = "plain", .localExtra = field("other")}}), "another name"});
  rows.push_back({"a flagged name and another one in the Unicode field",
                  ZipOf({{.name = "plain", .flags = 1 << 11, .centralExtra = field("other")}}), "two names"});
  ExpectRefused(rows);
}

TEST(Hostile, ItemsThatContradictEachOther) {
  ExpectRefused({
      {"the same file twice", ZipOf({File("a"), File("a")}), "two items"},
      {"the same folder twice", ZipOf({Folder("d/"), Folder("d/")}), "twice"},
      {"file, then folder", ZipOf({File("x"), Folder("x/")}), "two items"},
      {"folder, then file", ZipOf({Folder("x/"), File("x")}), "two items"},
      {"implied folder, then file", ZipOf({File("x/y"), File("x")}), "two items"},
      {"through a file", ZipOf({File("x"), File("x/y")}), "no folder"},
      {"through a link", ZipOf({Link("x", "."), File("x/y")}), "no folder"},
      {"a link and a folder", ZipOf({Link("x", "."), Folder("x/")}), "two items"},
      {"a folder and a link", ZipOf({File("x/y"), Link("x", "..")}), "two items"},
      {"one name by slash and backslash", ZipOf({File("x/y"), {.name = "x\\y", .host = 0}}), "two items"},
      {"a link's mode under a folder's name", ZipOf({Folder("x/", 0120777)}), "two kinds"},
      {"a folder's mode under a file's name", ZipOf({Folder("x")}), "two kinds"},
      {"a folder with data", ZipOf({{.name = "x/", .content = "data", .mode = 040755}}), "with data"},
      {"a device", ZipOf({{.name = "x", .content = "", .mode = 0060644}}), "special file"},
      {"a FIFO", ZipOf({{.name = "x", .content = "", .mode = 0010644}}), "special file"},
  });
}

TEST(Hostile, LinksThatLeadOutside) {
  std::vector<Item> chain = {File("end")};
  for (int i = 0; i < 60; ++i)
    chain.push_back(Link("l" + std::to_string(i), i ? "l" + std::to_string(i - 1) : "end"));
  Item damaged = Link("l", "a");
  damaged.central = damaged.local = [](Says& s) { s.crc = 1; };
  ExpectRefused({
      {"absolute", ZipOf({Link("l", "/etc/passwd")}), "outside"},
      {"climbs", ZipOf({Link("l", "../x")}), "outside"},
      {"climbs from a folder", ZipOf({Link("d/l", "../../x")}), "outside"},
      {"climbs through another link", ZipOf({Link("d/e/l", "../up/../x"), Link("d/up", "..")}), "outside"},
      {"climbs out of what is missing", ZipOf({Link("d/l", "nothing/../../../x")}), "knows where"},
      {"itself", ZipOf({Link("l", "l")}), "too many"},
      {"a circle", ZipOf({Link("a", "b/x"), Link("b", "a")}), "too many"},
      {"more links than the kernel follows", ZipOf(chain), "too many"},
      {"empty", ZipOf({Link("l", "")}), "no usable target"},
      {"NUL", ZipOf({Link("l", std::string("a\0b", 3))}), "no usable target"},
      {"too long", ZipOf({Link("l", std::string(4096, 'x'))}), "too long a target"},
      {"wrong checksum", ZipOf({damaged}), "checksum"},
  });
}

TEST(Hostile, LocalHeadersThatDisagree) {
  const auto local = [](Lie lie) { return ZipOf({File("a"), {.name = "b", .local = lie}}); };
  const auto central = [](Lie lie) { return ZipOf({File("a"), {.name = "b", .central = lie}}); };
  const auto streamed = [](Item first) { return ZipOf({first, File("b")}); };
  const Lie nothing = [](Says& s) { s.crc = 0, s.compressed = s.size = 0; };
  const Lie longer = [](Says& s) { s.compressed = s.size += 1; };
  ExpectRefused({
      {"another name", local([](Says& s) { s.name = "c"; }), "another name"},
      {"a longer name", local([](Says& s) { s.name = "bb", s.nameLength = 2; }), "another name"},
      {"another checksum", local([](Says& s) { s.crc ^= 1; }), "another checksum"},
      {"another packed length", local([](Says& s) { s.compressed += 1; }), "another checksum"},
      {"another length", local([](Says& s) { s.size = 0; }), "another checksum"},
      {"another method", local([](Says& s) { s.method = 8; }), "another method"},
      {"encrypted here only", local([](Says& s) { s.flags = 1; }), "other flags"},
      {"a zip64 mark without its field", local([](Says& s) { s.size = 0xFFFFFFFF; }), "zip64"},
      {"an extra field that runs out",
       local([](Says& s) { s.size = 0xFFFFFFFF, s.extra = Le(1, 2) + Le(99, 2) + "short"; }), "extra"},
      {"no record behind the data", streamed({.name = "a", .flags = 8, .local = nothing}), "behind its data"},
      {"no header at all", ZipOf({{.name = "a", .central = [](Says& s) { s.offset = 4; }}}), "missing"},
      {"two entries of one header", central([](Says& s) { s.offset = 0, s.name = "a"; }), ""},
      {"an entry inside of another one's data: the copy in a's",
       ZipOf({File("a", ZipOf({File("b")})), {.name = "b", .central = [](Says& s) { s.offset = 31; }}}),
       "overlaps"},
      {"data that reaches into the directory", ZipOf({{.name = "a", .central = longer, .local = longer}}),
       "overlaps"},
  });
  // A lie in each field of each form of the record.
  std::vector<Row> rows;
  for (const Tail tail : {Tail::Short, Tail::ShortMarked, Tail::Long, Tail::LongMarked}) {
    const std::size_t mark = tail == Tail::ShortMarked || tail == Tail::LongMarked ? 4 : 0;
    const std::size_t length = tail == Tail::Short || tail == Tail::ShortMarked ? 4 : 8;
    for (const std::size_t field : {std::size_t{0}, std::size_t{4}, 3 + length, 4 + length, 3 + 2 * length}) {
      std::string bytes = streamed({.name = "a", .tail = tail});
      bytes[bytes.find("content\n") + 8 + mark + field] ^= 1;
      rows.push_back({"a lie behind the data", bytes, "behind its data"});
    }
  }
  ExpectRefused(rows);
}

TEST(Hostile, DirectoriesThatLie) {
  const std::string good = ZipOf({File("a"), File("b")});
  std::string holed = good;
  holed[holed.rfind("PK\1\2")] = 'x';
  const std::string streamed = ZipOf({{.name = "s", .content = "PK\7\10 no end", .tail = Tail::ShortMarked},
                                      {.name = "l", .tail = Tail::LongMarked},
                                      {.name = "t", .tail = Tail::Short}});
  const std::string nested = ZipOf({File("n", good), File("rest")});
  const std::string long64 = ZipOf({{.name = "long", .local = [](Says& s) {
                                       s.extra = Extra(1, Le(s.size, 8) + Le(s.compressed, 8));
                                       s.compressed = s.size = 0xFFFFFFFF;
                                     }}});
  const auto ends = [](std::function<void(Ending&)> change) {
    return Zip{.items = {File("a"), File("b")}, .ending = change}.Bytes();
  };
  const auto central = [](Lie lie) { return ZipOf({File("a"), {.name = "b", .central = lie}}); };
  ExpectRefused({
      {"nothing", "", "no zip archive"},
      {"noise", std::string(5000, 'x'), "no zip archive"},
      {"cut in a header", good.substr(0, 10), "no zip archive"},
      {"cut in an entry", good.substr(0, 34), "short in the entry \"a\""},
      {"cut in a zip64 entry", long64.substr(0, 58), "short in the entry \"long\""},
      {"cut behind a streamed entry", streamed.substr(0, 155), "short in the entry \"t\""},
      {"cut behind an archive that is stored in it", nested.substr(0, nested.find(good) + good.size()),
       "short after the entry \"n\""},
      {"cut in the directory", good.substr(0, good.size() - 30), "after the entry \"b\""},
      {"cut in the end record", good.substr(0, good.size() - 1), "after the entry \"b\""},
      {"bytes behind the end", good + "x", "bytes stand behind"},
      {"bytes behind zeros behind the end", good + std::string(100, '\0') + "x", "bytes stand behind"},
      {"cut at the front", good.substr(10), "not where"},
      {"a hole in the directory", holed, "damaged after \"a\""},
      {"too many counted", ends([](Ending& e) { e.count = ++e.countHere; }), "as many"},
      {"too few counted", ends([](Ending& e) { e.count = --e.countHere; }), "as many"},
      {"counts that differ", ends([](Ending& e) { ++e.count; }), "discs"},
      {"another disc", ends([](Ending& e) { e.disk = 1; }), "discs"},
      {"directory too long", ends([](Ending& e) { e.size += 1; }), ""},
      {"directory longer than the file", ends([](Ending& e) { e.size = 1 << 30; }), "larger"},
      {"directory behind itself", ends([](Ending& e) { e.offset += 1; }), "not where"},
      {"directory before itself", ends([](Ending& e) { e.offset -= 1; }), ""},
      {"another end in the comment", ends([](Ending& e) { e.comment = "PK\5\6" + std::string(18, '\0'); }),
       "two possible ends"},
      {"zip64 mark without a record", ends([](Ending& e) { e.offset = 0xFFFFFFFF; }), "zip64"},
      {"zip64 record that contradicts", ends([](Ending& e) { e.zip64 = true, e.count64 = 1; }), "contradict"},
      {"zip64 record elsewhere", ends([](Ending& e) { e.zip64 = true, e.place64 += 99; }),
       "zip64 end record"},
      {"zip64 directory elsewhere",
       ends([](Ending& e) { e.zip64 = true, e.offset = 0xFFFFFFFF, e.offset64 -= 1; }), "contradict"},
      {"entry beyond the directory", central([](Says& s) { s.offset = 5000; }), "outside"},
      {"zip64 length without its field", central([](Says& s) { s.size = 0xFFFFFFFF; }), "zip64"},
      {"zip64 field too short", central([](Says& s) { s.size = 0xFFFFFFFF, s.extra = Extra(1, "1234"); }),
       "zip64"},
      {"two zip64 fields", central([](Says& s) { s.extra = Extra(1, "12345678") + Extra(1, "12345678"); }),
       "extra"},
      {"a huge zip64 length", central([](Says& s) {
         s.compressed = s.size = 0xFFFFFFFF;
         s.extra = Extra(1, Le(~0ull, 8) + Le(~0ull, 8));
       }),
       "outside"},
      {"stored with two lengths", central([](Says& s) { s.size += 1; }), "two lengths"},
      {"encrypted", central([](Says& s) { s.flags = 1; }), "encrypted"},
      {"masked", central([](Says& s) { s.flags = 1 << 13; }), "encrypted"},
      {"unknown method", central([](Says& s) { s.method = 12; }), "unknown method"},
      {"on another disc", central([](Says& s) { s.disk = 1; }), "another disc"},
  });
}

TEST(Hostile, DataThatIsNotWhatItStates) {
  const auto both = [](Item item, Lie lie) {
    item.local = item.central = lie;
    return ZipOf({File("a"), item});
  };
  std::vector<Row> rows;
  for (const std::string& content : {std::string(5000, 't'), std::string(3 << 20, 'l')}) {
    const Item deflated = Packed("b", content);
    const auto packed = [&](const std::string& stream) {
      Item item = deflated;
      item.packed = stream;
      return ZipOf({File("a"), item});
    };
    const Lie sum = [](Says& s) { s.crc ^= 1; };
    rows.push_back({"wrong checksum, stored", both(File("b", content), sum), "checksum of the entry \"b\""});
    rows.push_back({"wrong checksum", both(deflated, sum), "checksum of the entry \"b\""});
    rows.push_back({"longer", both(deflated, [](Says& s) { s.size -= 1; }), "longer"});
    rows.push_back({"longer by far", both(deflated, [](Says& s) { s.size = 1; }), "longer"});
    rows.push_back({"shorter", both(deflated, [](Says& s) { s.size += 1; }), "shorter"});
    rows.push_back({"bytes behind the stream", packed(Deflate(content) + "more"), "damaged"});
    rows.push_back({"cut stream", packed(Deflate(content).substr(0, 10)), "damaged"});
    rows.push_back({"noise", packed(std::string(4000, '\xEE')), "damaged"});
  }
  Item bomb = Packed("b", "x");
  bomb.centralExtra = bomb.localExtra = Extra(1, Le(std::uint64_t{1} << 60, 8));
  rows.push_back({"more than the disk holds", both(bomb, [](Says& s) { s.size = 0xFFFFFFFF; }), "room"});
  ExpectRefused(rows);
}
