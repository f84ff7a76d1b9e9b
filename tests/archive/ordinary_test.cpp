// SPDX-License-Identifier: MIT
// Archives that must pass, and what they make.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "archive/Sandbox.h"
#include "platform/archive/Plan.h"
#include "platform/posix/Descriptor.h"

namespace fs = std::filesystem;

namespace ziptest {
namespace {

/// Without the item itself: what the archive makes in an empty folder.
Snapshot Made(const Zip& zip) {
  const Sandbox box;
  EXPECT_EQ(box.Expand(zip), "");
  return Look(box.Target());
}

TEST(Ordinary, KindsModesAndContent) {
  const std::string large(5 << 20, 'L');
  Zip zip;
  zip.items = {Folder("Empty/"),
               Folder("Closed/", 040555),
               File("Closed/inside"),
               With(File("run.sh"), [](Item& i) { i.mode = 0100755; }),
               With(File("marked"), [](Item& i) { i.mode = 0104755; }),
               With(File("dos"), [](Item& i) { i.host = 0; }),
               With(File("large", large), [](Item& i) { i.deflate = true; }),
               With(File("small", std::string(999, 's')), [](Item& i) { i.deflate = true; }),
               With(File("nothing", ""), [](Item& i) { i.deflate = true; }),
               File("implied/deep/er", "x"),
               File("Case"),
               File("case"),
               File("__MACOSX/._x"),
               Folder("__MACOSX/d/"),
               Folder("keep/"),
               File("keep/__MACOSX")};
  const Snapshot expected = {{"Empty", "folder 755"},
                             {"Closed", "folder 555"},
                             {"Closed/inside", "file 644 content\n"},
                             {"run.sh", "file 755 content\n"},
                             {"marked", "file 755 content\n"},
                             {"dos", "file 644 content\n"},
                             {"large", "file 644 " + large},
                             {"small", "file 644 " + std::string(999, 's')},
                             {"nothing", "file 644 "},
                             {"implied", "folder 755"},
                             {"implied/deep", "folder 755"},
                             {"implied/deep/er", "file 644 x"},
                             {"Case", "file 644 content\n"},
                             {"case", "file 644 content\n"},
                             {"keep", "folder 755"},
                             {"keep/__MACOSX", "file 644 content\n"}};
  const mode_t before = umask(077);  // modes are the archive's
  EXPECT_EQ(Made(zip), expected);
  umask(before);
}

TEST(Ordinary, LinksStayAsTheyAre) {
  Zip zip;
  zip.items = {File("F.framework/Versions/A/F", "code"),
               Link("F.framework/Versions/Current", "A"),
               Link("F.framework/F", "Versions/Current/F"),
               Link("F.framework/Up", "Versions/Current/../A/F"),
               Link("d/e/out-and-in", "../../F.framework"),
               Link("here", "."),
               Link("later", "not/there/yet"),
               With(Link("packed", "F.framework"), [](Item& i) { i.deflate = true; })};
  const Sandbox box;
  ASSERT_EQ(box.Expand(zip), "");
  Snapshot made = Look(box.Target());
  EXPECT_EQ(made["F.framework/F"], "link Versions/Current/F");
  EXPECT_EQ(made["d/e/out-and-in"], "link ../../F.framework");
  EXPECT_EQ(made["packed"], "link F.framework");
  EXPECT_EQ(Read(box.Target() + "/F.framework/Up"), "code");
  EXPECT_EQ(Read(box.Target() + "/d/e/out-and-in/F"), "code");
}

TEST(Ordinary, FormsOfTheArchive) {
  const std::vector<Item> two = {File("a", "alpha"),
                                 With(File("b", "beta"), [](Item& i) { i.deflate = true; })};
  const Snapshot expected = {{"a", "file 644 alpha"}, {"b", "file 644 beta"}};
  const auto tailed = [&](Tail tail) {
    Zip zip{two, "", false, "", "", {}};
    for (Item& item : zip.items) item.tail = tail;
    return zip;
  };
  const auto ending = [&](std::function<void(Ending&)> change) {
    return Zip{two, "", false, "", "", change};
  };
  Zip long64{two,
             "",
             false,
             "",
             "",
             [](Ending& e) { e.zip64 = true, e.count = e.countHere = 0xFFFF, e.size = e.offset = 0xFFFFFFFF; }};
  for (Item& item : long64.items) {
    const auto say = [](Says& s) {
      s.extra = Extra(0x9901, "other") + Extra(1, Le(s.size, 8) + Le(s.compressed, 8));
      s.size = s.compressed = 0xFFFFFFFF;
    };
    item.local = item.central = say;
  }
  Zip prepended64 = long64;
  prepended64.before = std::string(777, '#');
  Zip inner{
      {With(File("a", "alpha"), [](Item&) {}), With(File("b", "beta"), [](Item&) {})}, "", false, "", "", {}};
  const struct {
    const char* why;
    Zip zip;
  } rows[] = {
      {"record behind the data", tailed(Tail::Short)},
      {"record with its mark", tailed(Tail::ShortMarked)},
      {"long record", tailed(Tail::Long)},
      {"long record with its mark", tailed(Tail::LongMarked)},
      {"comment", ending([](Ending& e) { e.comment = std::string(0xFFFF, 'c'); })},
      {"comment with half a mark", ending([](Ending& e) { e.comment = "PK\5"; })},
      {"bytes before, not counted", Zip{two, std::string(1000, '#'), false, "", "", {}}},
      {"bytes before, counted", Zip{two, std::string(1000, '#'), true, "", "", {}}},
      {"a gap before the directory", Zip{two, "", false, "gap", "", {}}},
      {"zip64 everywhere", long64},
      {"zip64 record nobody needs", ending([](Ending& e) { e.zip64 = true; })},
      {"zip64 with bytes before", prepended64},
      {"a deleted entry",
       Zip{{With(File("c"), [](Item& i) { i.only_local = true; }), two[0], two[1]}, "", false, "", "", {}}},
      {"padding in extra fields",
       Zip{{With(two[0], [](Item& i) { i.localExtra = i.centralExtra = std::string(3, '\0'); }), two[1]},
           "",
           false,
           "",
           "",
           {}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(Made(row.zip), expected);
  }
  EXPECT_EQ(Made(Zip{}), Snapshot{});
  inner.items = {File("inner.zip", inner.Bytes())};  // an archive as the last entry is no second end
  EXPECT_EQ(Made(inner).size(), 1u);
}

TEST(Ordinary, DeepTreesManyEntriesAndLongNames) {
  std::string path;
  while (path.size() < 4080) path += "d/";
  Zip zip;
  zip.items = {File(path + "f", "deep"), File(std::string(255, 'n'), "long")};
  const Sandbox box;
  ASSERT_EQ(box.Expand(zip), "");
  EXPECT_EQ(fs::file_size(box.Target() + "/" + std::string(255, 'n')), 4u);
  EXPECT_EQ(RunShell("cd " + box.Target() + " && find . -name f | wc -c").out,
            std::to_string(path.size() + 4) + "\n");

  Zip many;  // more than 16 bits count: the field holds a rest
  for (int i = 0; i < 66000; ++i)
    many.items.push_back(File(std::to_string(i % 50) + "/" + std::to_string(i), ""));
  auto plan = archive::ReadPlan(archive::MemorySource(many.Bytes()), 2);
  ASSERT_TRUE(plan.Ok()) << plan.Failure().Sentence();
  EXPECT_EQ(plan->files.size(), 66000u);
}

TEST(Ordinary, TimesAreSet) {
  const std::int64_t stated = 1234567890;
  Zip zip;
  zip.items = {Folder("d/"), File("d/f"), Link("l", "d"),
               With(File("utc"), [&](Item& i) { i.centralExtra = Extra(0x5455, "\1" + Le(stated, 4)); })};
  const Sandbox box;
  ASSERT_EQ(box.Expand(zip), "");
  std::tm local{};
  local.tm_year = 121, local.tm_mon = 5, local.tm_mday = 1, local.tm_hour = 12, local.tm_isdst = -1;
  for (const char* name : {"d", "d/f", "l", "utc"}) {
    struct stat facts {};
    ASSERT_EQ(lstat((box.Target() + "/" + name).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mtime, name == std::string("utc") ? stated : std::mktime(&local)) << name;
  }
}

TEST(Ordinary, AgreesWithUnzip) {
  if (!HasProgram("zip") || !HasProgram("unzip")) GTEST_SKIP() << "zip and unzip are missing";
  const Sandbox box;
  const std::string make = "cd " + (box / ".") +
                           " && mkdir -p in/empty in/sub && cp -r /usr/include/linux in/h && "
                           "head -c 3000000 /dev/urandom > in/noise && seq 900000 > in/numbers && "
                           "ln -s ../numbers in/sub/l && echo x > in/sub/größe && chmod 700 in/sub && "
                           "chmod 555 in/empty && cd in && zip -qry ../a.zip . && mkdir ../unzipped && "
                           "unzip -q ../a.zip -d ../unzipped";
  ASSERT_EQ(RunShell(make).status, 0);
  ASSERT_EQ(box.Expand(Read(box.Archive())), "");
  EXPECT_EQ(Look(box.Target()), Look(box / "unzipped"));
}

/// An archive whose entry "big" has `size` stored bytes, which are a hole in the file.
std::string MakeHuge(const Sandbox& box, std::uint64_t size, std::function<void(Says&)> lieAboutAfter) {
  const auto rest = static_cast<std::uint32_t>(size);
  Item big = File("big", ""), after = File("after", "behind");
  big.local = big.central = [=](Says& s) { s.compressed = s.size = rest; };
  after.central = [=](Says& s) {
    s.offset += rest;
    if (lieAboutAfter) lieAboutAfter(s);
  };
  const Zip zip{{big, after}, "", false, "", "", [=](Ending& e) { e.offset += rest; }};
  const std::string bytes = zip.Bytes();
  const std::size_t head = 30 + std::string("big").size();
  Write(box.Archive(), bytes.substr(0, head));
  fs::resize_file(box.Archive(), head + size);
  std::ofstream(box.Archive(), std::ios::app | std::ios::binary) << bytes.substr(head);
  return box.Archive();
}

TEST(Ordinary, ArchivesBeyondFourGigabytesWithoutLongFieldsAreRecovered) {
  constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;
  const Sandbox box;
  const auto plan = [&](const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY));
    return archive::ReadPlan(archive::FileSource(file.Get(), fs::file_size(path)), 1);
  };
  for (const std::uint64_t size : {kWrap + 5, 2 * kWrap - 100, 3 * kWrap + 70}) {
    SCOPED_TRACE(size);
    auto recovered = plan(MakeHuge(box, size, {}));
    ASSERT_TRUE(recovered.Ok()) << recovered.Failure().Sentence();
    const std::vector<archive::Entry>& entries = recovered->directory.entries;
    EXPECT_EQ(entries[0].size, size);
    EXPECT_EQ(entries[1].data, 33 + size + 35);
    EXPECT_EQ(entries[1].size, 6u);
  }
  auto refused = plan(MakeHuge(box, kWrap + 5, [](Says& s) { s.offset += 1; }));
  ASSERT_FALSE(refused.Ok());
  EXPECT_NE(refused.Failure().Sentence().find("\"after\" is not clear"), std::string::npos);
}

}  // namespace
}  // namespace ziptest
