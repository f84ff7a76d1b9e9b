// SPDX-License-Identifier: MIT
// Archives that must be refused: the verdict, nothing changed outside, nothing left inside.
#include <gtest/gtest.h>

#include <filesystem>

#include "archive/Sandbox.h"

namespace ziptest {
namespace {

struct Row {
  const char* why;
  std::string bytes;
  const char* sentence;  // part of what the user is told
};

Zip Of(std::vector<Item> items) {
  Zip zip;
  zip.items = std::move(items);
  return zip;
}
Zip Ends(std::function<void(Ending&)> change) {
  Zip zip = Of({File("a"), File("b")});
  zip.ending = std::move(change);
  return zip;
}
Item Central(Item item, std::function<void(Says&)> lie) {
  item.central = std::move(lie);
  return item;
}
Item Local(Item item, std::function<void(Says&)> lie) {
  item.local = std::move(lie);
  return item;
}

/// Each row is expanded into a folder that is missing and into one that holds something.
void ExpectRefused(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const Sandbox box;
    Write(box / "outside", "untouched");
    const Snapshot before = Look(box / ".");
    EXPECT_NE(box.Expand(row.bytes).find(row.sentence), std::string::npos) << box.Expand(row.bytes);
    std::filesystem::remove(box.Archive());
    EXPECT_EQ(Look(box / "."), before);

    std::filesystem::create_directory(box.Target());
    Write(box.Target() + "/a", "old");
    const Snapshot held = Look(box / ".");
    EXPECT_NE(box.Expand(row.bytes), "");
    std::filesystem::remove(box.Archive());
    EXPECT_EQ(Look(box / "."), held);
  }
}

TEST(Hostile, NamesThatMayNotBeCreated) {
  std::vector<Row> rows;
  const auto add = [&rows](const char* why, const std::string& name, const char* sentence,
                           std::uint8_t host = 3) {
    rows.push_back(
        {why, Of({File("good"), With(File(name), [&](Item& i) { i.host = host; })}).Bytes(), sentence});
  };
  add("climbs at once", "../outside", "\"..\"");
  add("climbs later", "x/../../outside", "\"..\"");
  add("climbs and comes back", "x/../good2", "\"..\"");
  add("ends in a climb", "x/..", "\"..\"");
  add("absolute", "/tmp/x", "absolute");
  add("drive", "C:/x", "drive");
  add("drive with a backslash", "c:\\x", "drive", 0);
  add("backslash climbs", "x\\..\\..\\outside", "\"..\"", 0);
  add("backslash makes it absolute", "\\\\server\\x", "absolute", 10);
  add("dot", "./x", "\".\"");
  add("only a slash", "/", "absolute");
  add("empty component", "x//y", "empty name");
  add("two slashes at the end", "x//", "empty name");
  add("no name", "", "no name");
  add("NUL", std::string("x\0y", 3), "control character");
  add("newline", "x\ny", "control character");
  add("escape", "\x1b[2J", "control character");
  add("a C1 control in UTF-8", "x\xC2\x9By", "control character");
  add("long component", std::string(256, 'n'), "too long a name");
  add(
      "long path",
      [] {
        std::string path;
        while (path.size() <= 4096) path += "abcdefghi/";
        return path + "x";
      }(),
      "too long a path");
  add("a staging folder of somebody", ".ditto-1-0123456789abcdef/x", "kept");
  rows.push_back({"broken UTF-8 that claims to be some",
                  Of({With(File("x\xFFy"), [](Item& i) { i.flags = 1 << 11; })}).Bytes(), "no UTF-8"});
  rows.push_back(
      {"a Unicode field that climbs",
       Of({With(File("plain"),
                [](Item& i) { i.centralExtra = Extra(0x7075, "\1" + Le(Crc("plain"), 4) + "../outside"); })})
           .Bytes(),
       "\"..\""});
  rows.push_back({"a flagged name and another one in the Unicode field",
                  Of({With(File("plain"),
                           [](Item& i) {
                             i.flags = 1 << 11;
                             i.centralExtra = Extra(0x7075, "\1" + Le(Crc("plain"), 4) + "other");
                           })})
                      .Bytes(),
                  "two names"});
  ExpectRefused(rows);
}

TEST(Hostile, ItemsThatContradictEachOther) {
  const Item fileNamedAsFolder = With(Folder("x/"), [](Item& i) { i.mode = 0120777; });
  ExpectRefused({
      {"the same file twice", Of({File("a"), File("a")}).Bytes(), "two items"},
      {"the same folder twice", Of({Folder("d/"), Folder("d/")}).Bytes(), "twice"},
      {"file, then folder", Of({File("x"), Folder("x/")}).Bytes(), "two items"},
      {"folder, then file", Of({Folder("x/"), File("x")}).Bytes(), "two items"},
      {"implied folder, then file", Of({File("x/y"), File("x")}).Bytes(), "two items"},
      {"through a file", Of({File("x"), File("x/y")}).Bytes(), "no folder"},
      {"through a link", Of({Link("x", "."), File("x/y")}).Bytes(), "no folder"},
      {"a link and a folder", Of({Link("x", "."), Folder("x/")}).Bytes(), "two items"},
      {"a folder and a link", Of({File("x/y"), Link("x", "..")}).Bytes(), "two items"},
      {"one name by slash and backslash",
       Of({File("x/y"), With(File("x\\y"), [](Item& i) { i.host = 0; })}).Bytes(), "two items"},
      {"a link's mode under a folder's name", Of({fileNamedAsFolder}).Bytes(), "two kinds"},
      {"a folder's mode under a file's name", Of({Folder("x")}).Bytes(), "two kinds"},
      {"a folder with data", Of({With(Folder("x/"), [](Item& i) { i.content = "data"; })}).Bytes(),
       "with data"},
      {"a device", Of({With(File("x"), [](Item& i) { i.mode = 0060644; })}).Bytes(), "special file"},
      {"a FIFO", Of({With(File("x"), [](Item& i) { i.mode = 0010644; })}).Bytes(), "special file"},
  });
}

TEST(Hostile, LinksThatLeadOutside) {
  std::vector<Item> chain = {File("end")};
  for (int i = 0; i < 60; ++i)
    chain.push_back(Link("l" + std::to_string(i), i ? "l" + std::to_string(i - 1) : "end"));
  ExpectRefused({
      {"absolute", Of({Link("l", "/etc/passwd")}).Bytes(), "outside"},
      {"climbs", Of({Link("l", "../x")}).Bytes(), "outside"},
      {"climbs from a folder", Of({Link("d/l", "../../x")}).Bytes(), "outside"},
      {"climbs through another link", Of({Link("d/e/l", "../up/../x"), Link("d/up", "..")}).Bytes(),
       "outside"},
      {"climbs out of what is missing", Of({Link("d/l", "nothing/../../../x")}).Bytes(), "knows where"},
      {"itself", Of({Link("l", "l")}).Bytes(), "too many"},
      {"a circle", Of({Link("a", "b/x"), Link("b", "a")}).Bytes(), "too many"},
      {"more links than the kernel follows", Of(chain).Bytes(), "too many"},
      {"empty", Of({Link("l", "")}).Bytes(), "no usable target"},
      {"NUL", Of({Link("l", std::string("a\0b", 3))}).Bytes(), "no usable target"},
      {"too long", Of({Link("l", std::string(4096, 'x'))}).Bytes(), "too long a target"},
      {"wrong checksum",
       Of({Central(Local(Link("l", "a"), [](Says& s) { s.crc = 1; }), [](Says& s) { s.crc = 1; })}).Bytes(),
       "checksum"},
  });
}

TEST(Hostile, LocalHeadersThatDisagree) {
  const auto local = [](std::function<void(Says&)> lie) {
    return Of({File("a"), Local(File("b"), lie)}).Bytes();
  };
  const auto streamed = [](Tail tail, std::function<void(Item&)> change) {
    return Of({With(File("a"),
                    [&](Item& i) {
                      i.tail = tail;
                      change(i);
                    }),
               File("b")})
        .Bytes();
  };
  ExpectRefused({
      {"another name", local([](Says& s) { s.name = "c"; }), "another name"},
      {"a longer name", local([](Says& s) { s.name = "bb", s.nameLength = 2; }), "another name"},
      {"another checksum", local([](Says& s) { s.crc ^= 1; }), "another checksum"},
      {"another packed length", local([](Says& s) { s.compressed += 1; }), "another checksum"},
      {"another length", local([](Says& s) { s.size = 0; }), "another checksum"},
      {"another method", local([](Says& s) { s.method = 8; }), "another method"},
      {"encrypted here only", local([](Says& s) { s.flags = 1; }), "other flags"},
      {"a zip64 mark without its field", local([](Says& s) { s.size = 0xFFFFFFFF; }), "zip64"},
      {"an extra field that runs out", local([](Says& s) {
         s.size = 0xFFFFFFFF;
         s.extra = Le(1, 2) + Le(99, 2) + "short";
       }),
       "extra"},
      {"no record behind the data",
       streamed(Tail::None,
                [](Item& i) {
                  i.flags = 8;
                  i.local = [](Says& s) { s.crc = 0, s.compressed = s.size = 0; };
                }),
       "behind its data"},
      {"a lie behind the data",
       streamed(Tail::ShortMarked, [](Item& i) { i.central = [](Says& s) { s.crc ^= 1; }; }),
       "behind its data"},
      {"no header at all", Of({Central(File("a"), [](Says& s) { s.offset = 4; })}).Bytes(), "missing"},
      {"two entries of one header",
       Of({File("a"), Central(File("b"), [](Says& s) { s.offset = 0, s.name = "a"; })}).Bytes(), ""},
      {"an entry inside of another one's data",
       [] {
         const Item inner = File("b");
         Zip quoted = Of({With(File("a", Of({inner}).Bytes()), [](Item&) {}), inner});
         quoted.items[1].central = [](Says& s) { s.offset = 31; };  // the copy in a's data
         return quoted.Bytes();
       }(),
       "overlaps"},
      {"data that reaches into the directory",
       Of({Central(Local(File("a"), [](Says& s) { s.compressed = s.size += 1; }),
                   [](Says& s) { s.compressed = s.size += 1; })})
           .Bytes(),
       "overlaps"},
  });
}

TEST(Hostile, DirectoriesThatLie) {
  const std::string good = Of({File("a"), File("b")}).Bytes();
  const auto central = [](std::function<void(Says&)> lie) {
    return Of({File("a"), Central(File("b"), lie)}).Bytes();
  };
  ExpectRefused({
      {"nothing", "", "no zip archive"},
      {"noise", std::string(5000, 'x'), "no zip archive"},
      {"cut in the directory", good.substr(0, good.size() - 30), "no zip archive"},
      {"cut in the end record", good.substr(0, good.size() - 1), "no zip archive"},
      {"bytes behind the end", good + "x", "no zip archive"},
      {"cut at the front", good.substr(10), "not where"},
      {"a hole in the directory",
       [&] {
         std::string holed = good;
         holed[holed.rfind("PK\1\2")] = 'x';
         return holed;
       }(),
       "damaged after \"a\""},
      {"too many counted", Ends([](Ending& e) { e.count = ++e.countHere; }).Bytes(), "as many"},
      {"too few counted", Ends([](Ending& e) { e.count = --e.countHere; }).Bytes(), "as many"},
      {"counts that differ", Ends([](Ending& e) { ++e.count; }).Bytes(), "discs"},
      {"another disc", Ends([](Ending& e) { e.disk = 1; }).Bytes(), "discs"},
      {"directory too long", Ends([](Ending& e) { e.size += 1; }).Bytes(), ""},
      {"directory longer than the file", Ends([](Ending& e) { e.size = 1 << 30; }).Bytes(), "larger"},
      {"directory behind itself", Ends([](Ending& e) { e.offset += 1; }).Bytes(), "not where"},
      {"directory before itself", Ends([](Ending& e) { e.offset -= 1; }).Bytes(), ""},
      {"another end in the comment",
       Ends([](Ending& e) { e.comment = "PK\5\6" + std::string(18, '\0'); }).Bytes(), "two possible ends"},
      {"zip64 mark without a record", Ends([](Ending& e) { e.offset = 0xFFFFFFFF; }).Bytes(), "zip64"},
      {"zip64 record that contradicts", Ends([](Ending& e) { e.zip64 = true, e.count64 = 1; }).Bytes(),
       "contradict"},
      {"zip64 record elsewhere", Ends([](Ending& e) { e.zip64 = true, e.place64 += 99; }).Bytes(),
       "zip64 end record"},
      {"zip64 directory elsewhere",
       Ends([](Ending& e) { e.zip64 = true, e.offset = 0xFFFFFFFF, e.offset64 -= 1; }).Bytes(), "contradict"},
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
  const std::string text(5000, 't'), large(3 << 20, 'l');
  const auto both = [](Item item, std::function<void(Says&)> lie) {
    return Of({File("a"), Local(Central(item, lie), lie)}).Bytes();
  };
  std::vector<Row> rows;
  for (const std::string& content : {text, large}) {
    const Item deflated = With(File("b", content), [](Item& i) { i.deflate = true; });
    rows.push_back({"wrong checksum, stored", both(File("b", content), [](Says& s) { s.crc ^= 1; }),
                    "checksum of the entry \"b\""});
    rows.push_back(
        {"wrong checksum", both(deflated, [](Says& s) { s.crc ^= 1; }), "checksum of the entry \"b\""});
    rows.push_back({"longer", both(deflated, [](Says& s) { s.size -= 1; }), "longer"});
    rows.push_back({"longer by far", both(deflated, [](Says& s) { s.size = 1; }), "longer"});
    rows.push_back({"shorter", both(deflated, [](Says& s) { s.size += 1; }), "shorter"});
    rows.push_back(
        {"bytes behind the stream",
         both(With(deflated, [&](Item& i) { i.packed = Deflate(content) + "more"; }), [](Says&) {}),
         "damaged"});
    rows.push_back(
        {"cut stream",
         both(With(deflated, [&](Item& i) { i.packed = Deflate(content).substr(0, 10); }), [](Says&) {}),
         "damaged"});
    rows.push_back({"noise",
                    both(With(deflated, [](Item& i) { i.packed = std::string(4000, '\xEE'); }), [](Says&) {}),
                    "damaged"});
  }
  const Item bomb = With(File("b", "x"), [](Item& i) {
    i.centralExtra = i.localExtra = Extra(1, Le(std::uint64_t{1} << 60, 8));
    i.deflate = true;
  });
  rows.push_back({"more than the disk holds", both(bomb, [](Says& s) { s.size = 0xFFFFFFFF; }), "room"});
  ExpectRefused(rows);
}

}  // namespace
}  // namespace ziptest
