// SPDX-License-Identifier: MIT
// Archives that are packed as a whole: what they make whatever the frames cut, and lies of the frames.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "archive/Sandbox.h"
#include "archive/planning/Plan.h"
#include "archive/writing/Crew.h"
#include "support/SolidBuilder.h"

using namespace ziptest;

/// Stored items of every kind, also with long fields, and what they make.
const std::vector<Item>& AllKinds() {
  static const std::vector<Item> items = [] {
    std::string text;
    for (int i = 0; i < 3000; ++i) text += std::to_string(i * i) + (i % 7 == 0 ? "\n" : " ");
    Item long64 = File("long64", "sixty-four");
    long64.local = long64.central = [](Says& s) {
      s.extra = Extra(1, Le(s.size, 8) + Le(s.compressed, 8));
      s.size = s.compressed = 0xFFFFFFFF;
    };
    return std::vector<Item>{
        Folder("d/", 040555),
        {.name = "d/run", .content = text, .mode = 0100755},
        File("empty", ""),
        Folder("hollow/"),
        {.name = "utc", .content = "x", .centralExtra = Extra(0x5455, "\1" + Le(1234567890, 4))},
        File("__MACOSX/._x", "left out"),
        long64,
        {.name = "gr\u00F6\u00DFe", .content = text + text, .flags = 1 << 11},
        {.name = "pipe", .content = "of a stream", .mode = 0010600},
        File("last", ""),
        Link("d/up", "../gr\u00F6\u00DFe"),
    };
  }();
  return items;
}

TEST(Solid, MakesTheSameWhereverFramesBegin) {
  const std::string zip = ZipOf(AllKinds());
  const Sandbox plain;
  ASSERT_EQ(plain.Expand(zip), "");
  const Snapshot expected = plain.Look("target");
  ASSERT_EQ(expected.size(), 10u);
  EXPECT_EQ(expected.at("pipe"), "file 600 of a stream");
  for (const std::size_t length :
       {zip.size(), std::size_t{50'000}, std::size_t{999}, std::size_t{61}, std::size_t{7}, std::size_t{1}}) {
    if (length == 1 && zip.size() > 60'000) continue;
    for (const unsigned workers : {1u, 2u, 16u}) {
      SCOPED_TRACE(std::to_string(length) + " bytes a frame, workers: " + std::to_string(workers));
      const Sandbox box;
      ASSERT_EQ(box.Expand(Solid(zip, length), {.workers = workers}), "");
      EXPECT_EQ(box.Look("target"), expected);
      struct stat facts {};
      EXPECT_TRUE(lstat(box.Path("target/utc").c_str(), &facts) == 0 && facts.st_mtime == 1234567890);
    }
  }
  // Checksums in the frames, in the table, in neither.
  const auto bare = [](Frames& f) { f.flags = 0; };
  const std::string small = ZipOf({File("a", "alpha"), File("b", "beta")});
  const auto unsummed = [&](Frames& f) {
    f.packed = {PackFrame(small, {.checksum = false})};
    f.rows[0].packed = static_cast<std::uint32_t>(f.packed[0].size());
  };
  const auto neither = [&](Frames& f) { bare(f), unsummed(f); };
  for (const auto& change : std::vector<std::function<void(Frames&)>>{{}, bare, unsummed, neither}) {
    const Sandbox box;
    EXPECT_EQ(box.Expand(Solid(small, 1000, change)), "");
    EXPECT_EQ(box.Look("target"), Items("a: alpha|b: beta"));
  }
}

TEST(Solid, ThePlanDecodesWhatItReadsAndNoMore) {
  std::vector<Item> items;
  for (int i = 0; i < 1000; ++i) items.push_back(File(std::to_string(i), std::string(500, 'x')));
  const std::string zip = ZipOf(items);
  std::string bytes = Solid(zip, 5000);
  bytes[bytes.size() / 10] ^= 1;  // far from the directory
  auto plan = archive::ReadPlan(archive::MemorySource(bytes), 2);
  ASSERT_TRUE(plan.Ok()) << plan.Failure().Sentence();
  EXPECT_EQ(plan->files.size(), 1000u);
  EXPECT_EQ(plan->bytes, 500'000u);
  const std::string wrongSum = Solid(zip, 5000, [](Frames& f) { f.flags = 0, f.packed[3].back() ^= 1; });
  for (const std::string& damaged : {bytes, wrongSum}) {
    const Sandbox box;
    EXPECT_NE(box.Expand(damaged).find("damaged"), std::string::npos);
    EXPECT_FALSE(box.Has("target"));
  }
  // A frame of 5,000 bytes and a mebibyte of its own for each, out of half of what there is.
  EXPECT_EQ(archive::CrewFor(*plan, 16, 1 << 20), 1u);
  EXPECT_EQ(archive::CrewFor(*plan, 16, 7 << 20), 3u);
  EXPECT_EQ(archive::CrewFor(*plan, 16, std::uint64_t{1} << 40), 16u);
}

TEST(Solid, ThePlanHearsAStopAndDoesNotSearchForALostEnd) {
  const std::string zip = ZipOf({Link("l", "a"), File("a", std::string(100'000, 'a')), File("b")});
  const std::atomic<bool> stop{true};
  auto stopped = archive::ReadPlan(archive::MemorySource(Solid(zip, 10'000)), 1, &stop);
  ASSERT_FALSE(stopped.Ok());
  EXPECT_EQ(stopped.Failure().Sentence(), archive::Interrupted().Sentence());
  auto lost = archive::ReadPlan(archive::MemorySource(Solid(zip.substr(0, zip.size() - 1), 10'000)), 1);
  ASSERT_FALSE(lost.Ok());
  EXPECT_EQ(lost.Failure().Sentence(), "the archive is cut short: its end record is missing");
}

TEST(Solid, LiesAreRefusedAndLeaveNothing) {
  const std::string zip =
      ZipOf({File("a", std::string(300, 'a')), File("b"), File("c", std::string(200, 'c'))});
  const auto says = [&](const std::function<void(Frames&)>& change) { return Solid(zip, 200, change); };
  const auto framed = [&](std::size_t number, const std::function<std::string(std::string)>& pack) {
    return says([&](Frames& f) {
      f.packed[number] = pack(zip.substr(number * 200, 200));
      f.rows[number].packed = static_cast<std::uint32_t>(f.packed[number].size());
      f.flags = 0;
    });
  };
  const std::string good = says({});
  std::string lied = zip;
  lied[30 + 1 + 300 + 14] ^= 1;  // the checksum in b's local header
  std::string late = zip;
  late[30 + 1 + 300 + 10] ^= 1;
  std::string content = zip;
  content[40] ^= 1;
  std::vector<Item> gap = {File("a"), {.name = "hole", .onlyLocal = true}, File("b")};
  gap[1].content = std::string(70'000, ' ');
  const std::string table = good.substr(good.size() - (8 + 9 + 12 * ((zip.size() + 199) / 200)));
  const struct {
    const char* why;
    std::string bytes;
    const char* sentence;
  } rows[] = {
      {"no table", PackFrame(zip), "no archive"},
      {"cut in a frame", good.substr(0, 100), "cut short"},
      {"cut in the table", good.substr(0, good.size() - 5), "cut short"},
      {"nothing but a table", Solid("", 1), "is empty"},
      {"a byte behind the table", says([](Frames& f) { f.behind = "x"; }), "cut short"},
      {"bytes before the table", says([](Frames& f) { f.before = "x"; }), "leaves bytes out"},
      {"a frame to be skipped between", says([](Frames& f) {
         f.packed[1] = "\x50\x2A\x4D\x18" + Le(2, 4) + "xx" + f.packed[1];
         f.rows[1].packed += 10;
       }),
       "not where"},
      {"a second table", good + table, ""},
      {"another table before", says([&](Frames& f) { f.before = table; }), "leaves bytes out"},
      {"too many counted", says([](Frames& f) { ++f.count; }), "not where its end says"},
      {"too few counted", says([](Frames& f) { --f.count; }), "not where its end says"},
      {"a million counted", says([](Frames& f) { f.count = 1 << 30; }), "too long"},
      {"longer than stated", says([](Frames& f) { f.tableLonger = 1; }), "not where its end says"},
      {"another mark", says([](Frames& f) { f.mark = 0x184D2A50; }), "not where its end says"},
      {"reserved flags", says([](Frames& f) { f.flags |= 4; }), "unknown kind"},
      {"a flag that doesn't fit", says([](Frames& f) { f.flags = 0, f.tableLonger = 4; }), "not where"},
      {"a checksum that differs", says([](Frames& f) { f.rows[1].checksum ^= 1; }), "another checksum"},
      {"sums beyond the file", says([](Frames& f) { f.rows[0].packed = 0xFFFFFFF0; }), "more than"},
      {"sums short of it", says([](Frames& f) { f.rows.back().packed -= 1; }), "leaves bytes out"},
      {"frames exchanged",
       says([](Frames& f) { std::swap(f.rows[0], f.rows[1]), std::swap(f.packed[0], f.packed[1]); }), ""},
      {"rows exchanged", says([](Frames& f) { f.flags = 0, f.rows[0].packed -= 3, f.rows[1].packed += 3; }),
       "frame 2"},
      {"another size", says([](Frames& f) { --f.rows[0].size; }), "another size"},
      {"no size", says([](Frames& f) { f.rows[0].size = 0; }), "empty"},
      {"a size beyond all", says([](Frames& f) { f.rows[0].size = (16 << 20) + 1; }), "16 MiB"},
      {"an empty frame more", says([](Frames& f) {
         f.packed.push_back(PackFrame(""));
         f.rows.push_back({static_cast<std::uint32_t>(f.packed.back().size()), 0, 0x51D8E999});
         ++f.count;
       }),
       "is empty"},
      {"less than stated",
       framed(1,
              [](std::string s) {
                std::string packed = PackFrame(s);  // a raw block of one byte less, by its header
                return packed.substr(0, packed.size() - 1);
              }),
       "damaged"},
      {"bytes behind a frame's end", framed(1, [](const std::string& s) { return PackFrame(s) + "xyz"; }),
       "damaged"},
      {"two frames in one row", framed(1, [](const std::string& s) { return PackFrame(s) + PackFrame(""); }),
       "damaged"},
      {"no content size",
       framed(1, [](const std::string& s) { return PackFrame(s, {.size = false, .window = 10}); }),
       "doesn't state its size"},
      {"a dictionary", framed(1, [](const std::string& s) { return PackFrame(s, {.dictionary = true}); }),
       "dictionary"},
      {"a window beyond all",
       framed(1,
              [](const std::string& s) {
                std::string packed = PackFrame(s, {.checksum = false, .size = false, .window = 10});
                packed[4] = static_cast<char>(0x40),
                packed[5] = 15 << 3;  // 32 MiB, and the size in two bytes
                return packed.insert(6, Le(s.size() - 256, 2));
              }),
       "memory"},
      {"packed twice", Solid(good, 100), "packed twice"},
      {"a deflated entry", Solid(ZipOf({File("a"), Packed("b", std::string(500, 'b'))}), 100),
       "packed twice"},
      {"a streamed entry", Solid(ZipOf({{.name = "a", .tail = Tail::ShortMarked}}), 100), "behind its data"},
      {"bytes in front", Solid(Zip{.items = {File("a")}, .before = "#!/bin/sh\n"}.Bytes(), 100), "begin"},
      {"a gap", Solid(ZipOf(gap), 5000), "gap"},
      {"a small gap", Solid(Zip{.items = {File("a")}, .between = "gap"}.Bytes(), 40), "another length"},
      {"a local header that lies, in one frame", Solid(lied, 200), "another checksum"},
      {"a local header of another time", Solid(late, 200), "time"},
      {"a local header that lies, across frames", Solid(lied, 11), "another checksum"},
      {"content that lies, in one frame", Solid(content, 5000), "checksum of the entry \"a\""},
      {"content that lies, across frames", Solid(content, 17), "checksum of the entry \"a\""},
  };
  for (const auto& row : rows) {
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
    }
  }
}
