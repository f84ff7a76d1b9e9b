// SPDX-License-Identifier: MIT
// The archives' bytes, opened by other people's programs and taken apart by hand.
#include "pack/archive/Solid.h"

#include <algorithm>
#include <random>

#include "Workshop.h"
#include "pack/archive/PlainZip.h"
#include "pack/archive/ZipFormat.h"

namespace pack {

using std::string_literals::operator""s;

class Packing : public Workshop {
 protected:
  static constexpr std::size_t kFrame = 64 * 1024, kBlock = 1024;

  static std::string Noise(std::size_t size) {
    static std::minstd_rand random;
    std::string noise(size, '\0');
    for (char& c : noise) c = static_cast<char>(random() >> 8);
    return noise;
  }

  static std::string Letters(std::size_t size, unsigned kind) {
    std::minstd_rand random(kind);
    std::string letters(size, '\0');
    for (char& c : letters) c = static_cast<char>('a' + random() / 7 % 26);
    return letters;
  }

  void MakeTree() const {
    std::string text;
    for (int line = 0; line < 20'000; ++line) text += "Line " + std::to_string(line * line) + "\n";
    Write("tree/a/Grüße – 京都.txt", "é");
    Write("tree/a/Long.txt", text, 0755);
    Write("tree/b/Long.txt", text + "more");
    Write("tree/b/empty", "", 0400);
    Write("tree/b/noise", Noise(150'000));
    Write("tree/c", Noise(5'000));
    Write("tree/z.txt", "the last one");
    Folder("tree/Nothing");
    Link("tree/link", "a/Long.txt");
    // A little in its middle can be compressed, which is where a sample is taken.
    std::string half = Noise(127 * kBlock);
    half.replace(half.size() / 2, 300, 300, 'x');
    Write("tree/half", half);
  }

  std::string Solid(std::vector<TreeItem> items, std::size_t workers) const {
    fs::remove(Path("solid"));
    WriteSolid(std::move(items), Level::kNormal, Path("solid"), {kFrame, workers});
    return Read("solid");
  }
  std::string Deflated(const std::vector<TreeItem>& items, std::size_t workers) const {
    fs::remove(Path("deflated"));
    WritePlainZip(items, {Method::kDeflate, Level::kNormal}, Path("deflated"), {kBlock, workers});
    return Read("deflated");
  }
  int Run(const std::string& line) const {
    return std::system(("cd '" + Path() + "' && " + line + " > said 2>&1").c_str());
  }
  // What the zip `name` holds; nothing if one of two programs finds a fault in it.
  Contents Opened(const std::string& name) const {
    fs::remove_all(Path("opened"));
    const bool fine = Run("unzip -tq " + name) == 0 &&
                      Run("mkdir opened && LC_ALL=C.UTF-8 bsdtar -xpf " + name + " -C opened") == 0;
    EXPECT_TRUE(fine) << Read("said");
    return fine ? Look("opened") : Contents{};
  }

  static std::uint64_t Little(const std::string& bytes, std::size_t at, unsigned width) {
    std::uint64_t value = 0;
    for (unsigned i = width; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return value;
  }
};

TEST_F(Packing, ASolidArchiveIsAZipInFramesWithATable) {
  MakeTree();
  const std::string solid = Solid(ListTree("", Path("tree"), ""), 2);
  ASSERT_EQ(0, Run("zstd -dq solid -o clear.zip")) << Read("said");
  EXPECT_EQ(Look("tree"), Opened("clear.zip"));
  const std::string clear = Read("clear.zip");

  ASSERT_EQ(0x8F92EAB1, Little(solid, solid.size() - 4, 4));
  EXPECT_EQ(0x80, Little(solid, solid.size() - 5, 1)) << "with sums";
  const std::uint64_t frames = Little(solid, solid.size() - 9, 4);
  const std::size_t table = solid.size() - 9 - 12 * frames;
  EXPECT_EQ(0x184D2A5E, Little(solid, table - 8, 4));
  EXPECT_EQ(9 + 12 * frames, Little(solid, table - 4, 4));
  std::uint64_t place = 0, content = 0;
  std::size_t directory = 0;
  for (std::size_t row = table; row < table + 12 * frames; row += 12) {
    EXPECT_EQ(0xFD2FB528, Little(solid, place, 4));
    directory = content;
    place += Little(solid, row, 4);
    content += Little(solid, row + 4, 4);
    EXPECT_LE(Little(solid, row + 4, 4), kFrame);
    EXPECT_EQ(Little(solid, place - 4, 4), Little(solid, row + 8, 4)) << "a frame ends with its sum";
  }
  EXPECT_EQ(table - 8, place) << "nothing stands between the frames";
  EXPECT_EQ(clear.size(), content);
  EXPECT_EQ("PK\x01\x02", clear.substr(directory, 4)) << "the directory has a frame of its own";

  // Entries stand one behind the other: folders, links, files by their extensions, and what is dense.
  std::string names;
  std::size_t entry = 0;
  while (Little(clear, entry, 4) == 0x04034B50) {
    names += clear.substr(entry + 30, Little(clear, entry + 26, 2)) + "|";
    entry += 30 + Little(clear, entry + 26, 2) + Little(clear, entry + 28, 2) + Little(clear, entry + 18, 4);
  }
  EXPECT_EQ(directory, entry);
  EXPECT_EQ("Nothing/|a/|b/|link|b/empty|half|a/Grüße – 京都.txt|a/Long.txt|b/Long.txt|z.txt|c|b/noise|",
            names);
}

TEST_F(Packing, FilesThatAreAlikeMeetInOneFrame) {
  // Eight files of four kinds: in the order of their names no two of a kind would lie in one frame.
  for (unsigned i = 0; i < 8; ++i) {
    Write("tree/" + std::to_string(i), Letters(25'000, i % 4 + 1));
  }
  EXPECT_LT(Solid(ListTree("", Path("tree"), ""), 2).size(), 95'000U);
}

TEST_F(Packing, NeitherCoresNorTheListingShowInTheBytes) {
  MakeTree();
  std::vector<TreeItem> items = ListTree("", Path("tree"), "Lamp");
  const std::string deflated = Deflated(items, 1), solid = Solid(items, 1);
  for (const std::size_t workers : {2, 5}) {
    EXPECT_EQ(deflated, Deflated(items, workers)) << workers;
    std::shuffle(items.begin(), items.end(), std::minstd_rand(7));
    EXPECT_EQ(solid, Solid(items, workers)) << workers;
    items = ListTree("", Path("tree"), "Lamp");
  }
}

TEST_F(Packing, ADeflatedFileIsMadeOfBlocks) {
  MakeTree();
  const std::string bytes = Deflated(ListTree("", Path("tree"), ""), 2);
  EXPECT_EQ(Look("tree"), Opened("deflated"));
  for (const char* stored : {"tree/half", "tree/b/noise"})
    EXPECT_NE(std::string::npos, bytes.find(Read(stored))) << stored;
  // Ten times the same letters, which a block finds in what those before it end with.
  std::string again;
  for (int i = 0; i < 10; ++i) again += Letters(10'000, 1);
  Write("again/again", again);
  EXPECT_LT(Deflated(ListTree("", Path("again"), ""), 2).size(), 15'000U);
}

TEST_F(Packing, AFileThatIsNotWhatItWasIsRefused) {
  Write("tree/a", "aaaa");
  Write("tree/b", std::string(3 * kFrame, 'b'));
  const std::vector<TreeItem> items = ListTree("", Path("tree"), "");
  const auto refused = [&](const std::string& name, const char* why) {
    for (const bool solid : {true, false}) {
      try {
        solid ? Solid(items, 2) : Deflated(items, 2);
        ADD_FAILURE() << name << why;
      } catch (const Refusal& refusal) {
        EXPECT_TRUE(std::string(refusal.what()).starts_with(Path(name) + why)) << refusal.what();
      }
    }
  };
  for (const std::size_t size : {3 * kFrame - 1, 3 * kFrame + 1, 3 * kFrame}) {
    Write("tree/b", std::string(size, 'c'));
    refused("tree/b", " changed while it was packed");
  }
  fs::remove(Path("tree/a"));
  refused("tree/a", " can't be read: No such file");
  Link("tree/a", "b");
  refused("tree/a", " can't be read: ");
}

TEST_F(Packing, NamesThatNoArchiveCanHoldAreRefused) {
  Write("tree/Gr\xFC\xDF", "");
  EXPECT_THROW(ListTree("", Path("tree"), ""), Refusal);
  EXPECT_NO_THROW(ListTree("", Path("payload"), std::string(65'500, 'x')));
  EXPECT_THROW(ListTree("", Path("payload"), std::string(65'530, 'x')), Refusal);
}

TEST_F(Packing, WhatIsBeyond32BitsGoesIntoTheExtraField) {
  TreeItem item;
  item.name = "n";
  item.mode = 0100644;
  item.stated = 0x12345678;  // 1979-09-05
  ZipEntry entry{&item, kStored, 0xAABBCCDD, 0x123456789, 0x123456789, 0x223456789};
  const std::string sizes = "\x89\x67\x45\x23\x01\0\0\0\x89\x67\x45\x23\x01\0\0\0"s;
  const std::string time = "UT\x05\0\x01\x78\x56\x34\x12"s;
  const std::string head = "\0\0\0\0\0\0\x21\0\xDD\xCC\xBB\xAA\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\0"s;
  EXPECT_EQ("PK\x03\x04\x2D\0"s + head + "\x1D\0n\x01\0\x10\0"s + sizes + time, LocalHeader(entry));
  ZipDirectory directory;
  directory.Add(entry);
  const std::string row = "PK\x01\x02\x2D\x03\x2D\0"s + head +
                          "\x25\0\0\0\0\0\0\0\0\0\xA4\x81\xFF\xFF\xFF\xFFn"s + "\x01\0\x18\0"s + sizes +
                          "\x89\x67\x45\x23\x02\0\0\0"s + time;
  EXPECT_EQ(
      row +
          "PK\x06\x06\x2C\0\0\0\0\0\0\0\x2D\x03\x2D\0\0\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0"s +
          "\x54\0\0\0\0\0\0\0\0\0\0\0\x07\0\0\0PK\x06\x07\0\0\0\0\x54\0\0\0\x07\0\0\0\x01\0\0\0"s +
          "PK\x05\x06\0\0\0\0\x01\0\x01\0\x54\0\0\0\xFF\xFF\xFF\xFF\0\0"s,
      directory.End(0x700000000));
}

}  // namespace pack
