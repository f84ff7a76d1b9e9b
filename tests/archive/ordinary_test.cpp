// SPDX-License-Identifier: MIT
// Archives that must pass, and what they make.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <isa-l/igzip_lib.h>
#include <libdeflate.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "archive/Sandbox.h"
#include "archive/planning/Plan.h"
#include "archive/reading/Inflate.h"
#include "base/Descriptor.h"

using namespace ziptest;

TEST(Ordinary, KindsModesContentAndLinks) {
  const std::string large(5 << 20, 'L'), small(999, 's');
  Item packed = Link("packed", "keep");
  packed.deflate = true;
  // An item, its name and what it makes, if anything.
  const std::tuple<Item, const char*, std::string> rows[] = {
      {Folder("Empty/"), "Empty", "folder 755"},
      {Folder("Closed/", 040555), "Closed", "folder 555"},
      {Folder("Odd/", 0100644), "Odd", "folder 755"},
      {File("Closed/inside"), "Closed/inside", "file 644 content\n"},
      {{.name = "run.sh", .mode = 0100755}, "run.sh", "file 755 content\n"},
      {{.name = "marked", .mode = 0104755}, "marked", "file 755 content\n"},
      {{.name = "dos", .host = 0}, "dos", "file 644 content\n"},
      {Packed("large", large), "large", "file 644 " + large},
      {Packed("small", small), "small", "file 644 " + small},
      {Packed("nothing", ""), "nothing", "file 644 "},
      {File("implied/deep/er", "x"), "implied/deep/er", "file 644 x"},
      {File("Case"), "Case", "file 644 content\n"},
      {File("case"), "case", "file 644 content\n"},
      {File("__MACOSX/._x"), "", ""},
      {Folder("__MACOSX/d/"), "", ""},
      {Folder("keep/"), "keep", "folder 755"},
      {File("keep/__MACOSX"), "keep/__MACOSX", "file 644 content\n"},
      {Link("keep/up", "../keep"), "keep/up", "link to ../keep"},
      {Link("keep/through", "up/../implied/deep"), "keep/through", "link to up/../implied/deep"},
      {Link("here", "."), "here", "link to ."},
      {Link("later", "not/there/yet"), "later", "link to not/there/yet"},
      {packed, "packed", "link to keep"},
  };
  std::vector<Item> items;
  Snapshot expected = {{"implied", "folder 755"}, {"implied/deep", "folder 755"}};
  for (const auto& [item, name, made] : rows) {
    items.push_back(item);
    if (!made.empty()) expected[name] = made;
  }
  const Sandbox box;
  const mode_t before = umask(077);  // modes are the archive's
  EXPECT_EQ(box.Expand(ZipOf(items)), "");
  umask(before);
  EXPECT_EQ(box.Look("target"), expected);
}

TEST(Ordinary, LargeEntriesTakeEveryWay) {
  // Among equals none is worth two threads.
  std::vector<Item> items = {File("stored", std::string(3 << 20, 's')),
                             Packed("alone", std::string(9 << 20, 'a'))};
  for (const char name : {'1', '2', '3', '4'}) items.push_back(Packed({name}, std::string(2 << 20, name)));
  for (const unsigned workers : {1u, 2u, 16u}) {
    const Sandbox box;
    ASSERT_EQ(box.Expand(ZipOf(items), {.workers = workers}), "");
    for (const Item& item : items) EXPECT_TRUE(box.Read("target/" + item.name) == item.content) << item.name;
  }
  items[5].packed = Deflate(items[5].content).substr(9);
  EXPECT_NE(Sandbox().Expand(ZipOf(items)).find("\"4\" is damaged"), std::string::npos);
}

TEST(Ordinary, FormsOfTheArchive) {
  const std::vector<Item> two = {File("a", "alpha"), Packed("b", "beta")};
  const auto each = [&](auto change) {
    std::vector<Item> items = two;
    for (Item& item : items) change(item);
    return items;
  };
  const auto tailed = [&](Tail tail) { return Zip{.items = each([&](Item& i) { i.tail = tail; })}; };
  const std::vector<Item> padded =
      each([](Item& i) { i.localExtra = i.centralExtra = std::string(3, '\0'); });
  const auto say64 = [](Says& s) {
    s.extra = Extra(0x9901, "other") + Extra(1, Le(s.size, 8) + Le(s.compressed, 8));
    s.size = s.compressed = 0xFFFFFFFF;
  };
  const auto end64 = [](Ending& e) {
    e.zip64 = true, e.count = e.countHere = 0xFFFF, e.size = e.offset = 0xFFFFFFFF;
  };
  const Zip long64{.items = each([&](Item& i) { i.local = i.central = say64; }), .ending = end64};
  Zip prepended64 = long64;
  prepended64.before = std::string(777, '#');
  const std::string named = Extra(0x7075, "\1" + Le(Crc("plain"), 4) + "a");
  const std::pair<const char*, Zip> rows[] = {
      {"record behind the data", tailed(Tail::Short)},
      {"record with its mark", tailed(Tail::ShortMarked)},
      {"long record", tailed(Tail::Long)},
      {"long record with its mark", tailed(Tail::LongMarked)},
      {"comment", {.items = two, .ending = [](Ending& e) { e.comment = std::string(0xFFFF, 'c'); }}},
      {"comment with half a mark", {.items = two, .ending = [](Ending& e) { e.comment = "PK\5"; }}},
      {"a Unicode name in both headers",
       {.items = {{.name = "plain", .content = "alpha", .centralExtra = named, .localExtra = named},
                  two[1]}}},
      {"bytes before, not counted", {.items = two, .before = std::string(1000, '#')}},
      {"bytes before, counted", {.items = two, .before = std::string(1000, '#'), .countsBefore = true}},
      {"a gap before the directory", {.items = two, .between = "gap"}},
      {"zip64 everywhere", long64},
      {"zip64 record nobody needs", {.items = two, .ending = [](Ending& e) { e.zip64 = true; }}},
      {"zip64 with bytes before", prepended64},
      {"a deleted entry", {.items = {{.name = "c", .onlyLocal = true}, two[0], two[1]}}},
      {"padding in extra fields", {.items = padded}},
  };
  const auto made = [](const std::string& bytes) {
    const Sandbox box;
    EXPECT_EQ(box.Expand(bytes), "");
    return box.Look("target");
  };
  for (const auto& [why, zip] : rows) EXPECT_EQ(made(zip.Bytes()), Items("a: alpha|b: beta")) << why;
  EXPECT_EQ(made(ZipOf({})), Snapshot{});
  EXPECT_EQ(made(ZipOf({File("a")}) + std::string(10'000, '\0')).size(), 1u) << "filled up to a block";
  EXPECT_EQ(made(ZipOf({File("last.zip", ZipOf({File("a")}))})).size(), 1u) << "no second end";
}

TEST(Ordinary, DeepTreesManyEntriesAndLongNames) {
  std::string path;
  while (path.size() < 4080) path += "d/";
  const Sandbox box;
  ASSERT_EQ(box.Expand(ZipOf({File(path + "f", "deep"), File(std::string(255, 'n'), "long")})), "");
  EXPECT_EQ(box.Read("target/" + std::string(255, 'n')), "long");
  EXPECT_EQ(RunShell("cd " + box.Target() + " && find . -name f | wc -c").out,
            std::to_string(path.size() + 4) + "\n");

  std::vector<Item> many;  // more than 16 bits count: the field holds a rest
  for (int i = 0; i < 66000; ++i) many.push_back(File(std::to_string(i % 50) + "/" + std::to_string(i), ""));
  auto plan = archive::ReadPlan(archive::MemorySource(ZipOf(many)), 2);
  ASSERT_TRUE(plan.Ok()) << plan.Failure().Sentence();
  EXPECT_EQ(plan->files.size(), 66000u);
}

TEST(Ordinary, TimesAreSet) {
  const std::int64_t stated = 1234567890;
  const Sandbox box;
  const Item utc{.name = "utc", .centralExtra = Extra(0x5455, "\1" + Le(stated, 4))};
  ASSERT_EQ(box.Expand(ZipOf({Folder("d/"), File("d/f"), Link("l", "d"), utc})), "");
  std::tm local{};
  local.tm_year = 121, local.tm_mon = 5, local.tm_mday = 1, local.tm_hour = 12, local.tm_isdst = -1;
  for (const std::string name : {"d", "d/f", "l", "utc"}) {
    struct stat facts {};
    ASSERT_EQ(lstat(box.Path("target/" + name).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mtime, name == "utc" ? stated : std::mktime(&local)) << name;
  }
}

/// The plan of an archive whose entry "big" has `size` stored bytes, which are a hole in the file.
auto PlanOfHuge(std::uint64_t size, std::uint64_t lieAboutAfter = 0) {
  const auto rest = static_cast<std::uint32_t>(size);
  const auto wrapped = [=](Says& s) { s.compressed = s.size = rest; };
  const Zip zip{.items = {{.name = "big", .content = "", .central = wrapped, .local = wrapped},
                          {.name = "after",
                           .content = "behind",
                           .central = [=](Says& s) { s.offset += rest + lieAboutAfter; }}},
                .ending = [=](Ending& e) { e.offset += rest; }};
  const std::string bytes = zip.Bytes();
  const std::size_t head = 30 + std::string("big").size();
  const Sandbox box;
  fs::resize_file(box.Write("a.zip", bytes.substr(0, head)), head + size);
  std::ofstream(box.Archive(), std::ios::app | std::ios::binary) << bytes.substr(head);
  const Descriptor file(open(box.Archive().c_str(), O_RDONLY));
  return archive::ReadPlan(archive::FileSource(file.Get(), fs::file_size(box.Archive())), 1);
}

TEST(Ordinary, ArchivesBeyondFourGigabytesWithoutLongFieldsAreRecovered) {
  constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;
  for (const std::uint64_t size : {kWrap + 5, 2 * kWrap - 100, 3 * kWrap + 70}) {
    auto recovered = PlanOfHuge(size);
    ASSERT_TRUE(recovered.Ok()) << recovered.Failure().Sentence();
    const std::vector<archive::Entry>& entries = recovered->directory.entries;
    EXPECT_EQ(entries[0].size, size);
    EXPECT_EQ(entries[1].data, 33 + size + 35);
    EXPECT_EQ(entries[1].size, 6u);
  }
  auto refused = PlanOfHuge(kWrap + 5, 1);
  ASSERT_FALSE(refused.Ok());
  EXPECT_NE(refused.Failure().Sentence().find("\"after\" is not clear"), std::string::npos);
}

/// A stream of so many mebibytes of zeros and five more, from one that is made once.
std::string PackedZeros(int mebibytes) {
  const std::string zeros(1 << 20, '\0');
  std::string packed(1 << 20, '\0');
  isal_zstream stream;
  isal_deflate_stateless_init(&stream);
  stream.next_in = reinterpret_cast<std::uint8_t*>(const_cast<char*>(zeros.data()));
  stream.avail_in = static_cast<std::uint32_t>(zeros.size());
  stream.next_out = reinterpret_cast<std::uint8_t*>(packed.data());
  stream.avail_out = static_cast<std::uint32_t>(packed.size());
  stream.flush = FULL_FLUSH;  // the next one begins with a whole byte
  EXPECT_EQ(isal_deflate_stateless(&stream), COMP_OK);
  packed.resize(stream.total_out);
  std::string all;
  while (mebibytes-- > 0) all += packed;
  return all + Deflate(zeros.substr(0, 5));
}

class Count : public archive::Outlet {
 public:
  std::span<unsigned char> Buffer() override { return fPiece; }
  archive::Status Put(std::size_t length) override {
    made += length;
    return {};
  }
  archive::Status Close() override { return {}; }
  std::uint64_t made = 0;

 private:
  std::vector<unsigned char> fPiece = std::vector<unsigned char>(archive::kPiece);
};

TEST(Ordinary, AStreamLongerThanItsFieldIsTakenWhenThereIsRoom) {
  Item item{.name = "zeros", .content = std::string(5, '\0'), .deflate = true, .packed = PackedZeros(4096)};
  std::uint32_t crc = 0;
  const std::string zeros(1 << 20, '\0');
  for (int i = 0; i < 4096; ++i) crc = libdeflate_crc32(crc, zeros.data(), zeros.size());
  crc = libdeflate_crc32(crc, zeros.data(), 5);
  item.local = item.central = [=](Says& s) { s.crc = crc; };
  const archive::MemorySource source(ZipOf({item}));
  auto plan = archive::ReadPlan(source, 1);
  ASSERT_TRUE(plan.Ok());
  const archive::Entry& entry = plan->EntryOf(plan->files[0]);
  ASSERT_EQ(entry.size, 5u);

  const std::atomic<bool> never{false};
  for (const bool room : {true, false}) {
    Count count;
    std::uint64_t asked = 0;
    const archive::Status status =
        archive::Inflater(never).Stream(source, entry, count, [&](std::uint64_t more) {
          asked = more;
          return room ? archive::Status() : archive::Fail("no room");
        });
    EXPECT_EQ(status.Sentence(), room ? "" : "no room");
    EXPECT_EQ(asked, std::uint64_t{1} << 32);
    EXPECT_EQ(count.made, room ? asked + 5 : 0);
  }
}
