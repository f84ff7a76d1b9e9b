// SPDX-License-Identifier: MIT
// Payloads and other archives, expanded again.
#include "pack/Archive.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "Workshop.h"

namespace pack {

using std::string_literals::operator""s;

class Archives : public Workshop {
 protected:
  // The zip that is in a solid archive.
  std::string Clear(const std::string& bytes) const {
    if (!bytes.starts_with("\x28\xB5\x2F\xFD")) return bytes;
    const std::string names = "'" + Write("solid", bytes) + "' -o '" + Path("clear") + "'";
    EXPECT_EQ(0, std::system(("zstd -dqf " + names).c_str()));
    return Read("clear");
  }

  // What the runtime's helper makes of an archive.
  Contents Expanded(const std::string& bytes) const {
    // Folders that forbid their owner to write are among them.
    static_cast<void>(std::system(("chmod -R u+w '" + Path("expanded") + "' 2>/dev/null").c_str()));
    fs::remove_all(Path("expanded"));
    const std::string paths = " -xk '" + Write("opened.zip", Clear(bytes)) + "' '" + Path("expanded") + "'";
    // Leaks can't be looked for behind the helper's wall.
    EXPECT_EQ(0, std::system(("ASAN_OPTIONS=detect_leaks=0 " DITTO_PROGRAM + paths).c_str()));
    return Look("expanded");
  }
};

TEST_F(Archives, ATreeKeepsItsRightsLinksTimesAndNames) {
  Write("payload/Tool", std::string(5000, 'x'), 0777);
  Write("payload/Grüße – 京都.txt", "é");
  Write("payload/Fixed/file", "", 0444);
  Folder("payload/Empty");
  Link("payload/Current", "Fixed");
  Link("payload/Dangling", "../nowhere");
  fs::permissions(Path("payload/Fixed"), fs::perms(0555));
  const timespec times[2] = {{0x12345678, 0}, {0x12345678, 0}};
  ::utimensat(AT_FDCWD, Path("payload/Tool").c_str(), times, 0);
  ASSERT_EQ("", Pack({{"payload", {{"compression", "deflate"}}}}));

  const std::string archive = Unscrambled(Resource("Data2"));
  EXPECT_EQ(Items("Lamp/|Lamp/Current: link to Fixed|Lamp/Dangling: link to ../nowhere|Lamp/Empty/|"
                  "Lamp/Fixed: folder 555|Lamp/Fixed/file: file 444 |Lamp/Grüße – 京都.txt: é|"
                  "Lamp/Read Me.txt: Hello.\n|Lamp/Tool: file 777 " +
                  std::string(5000, 'x')),
            Expanded(archive));
  EXPECT_NE(std::string::npos, archive.find("UT\x05\0\x01\x78\x56\x34\x12"s)) << "the time of the tool";
  // Bit 11 of the flags of the local header says that the name is UTF-8.
  EXPECT_EQ(0x08, archive[archive.find("Lamp/Grüße") - 30 + 7] & 0x08);
  EXPECT_LT(archive.size(), 5000U);
  std::vector<std::size_t> places;
  for (const char* name :
       {"Current", "Dangling", "Empty/", "Fixed/", "Fixed/file", "Grüße", "Read Me.txt", "Tool"})
    places.push_back(archive.find(std::string("Lamp/") + name));
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end())) << "the order is the same in each run";

  ASSERT_EQ("", Pack({{"payload", {{"compression", "deflate"}}}}));
  EXPECT_EQ(archive, Unscrambled(Resource("Data2"))) << "the same tree gives the same bytes";
  ASSERT_EQ("", Pack({{"targetFolder", "Maker/Lamp"}, {"patch", true}}));
  EXPECT_TRUE(Expanded(Unscrambled(Resource("Data2"))).contains("LampPatch/Tool"));
}

TEST_F(Archives, AnExistingZipIsTakenAsItIsIfItFits) {
  ArchiveFolder("", Path("payload"), "Lamp", {Method::kDeflate, Level::kFast}, Path("lamp.zip"));
  const json payload = {{"folder", nullptr}, {"zip", "lamp.zip"}};
  ASSERT_EQ("", Pack({{"payload", payload}}));
  EXPECT_EQ(Read("lamp.zip"), Unscrambled(Resource("Data2")));
  EXPECT_EQ(
      "payload.zip must hold nothing but a folder \"Lantern\", and holds \"Lamp\": " + Path("lamp.zip") + ".",
      Pack({{"payload", payload}, {"targetFolder", "Lantern"}}));
}

TEST_F(Archives, ItemsAndCleanupProgramsHaveTheirContentAtTheTop) {
  Write("extra/x", "x");
  Write("Cleaner.app/Contents/MacOS/Cleaner", "c");
  ASSERT_EQ("", Pack({{"options", {{{"name", "Extra"}, {"folder", "extra"}}}},
                      {"cleanup", {{"mode", 1}, {"program", {{"folder", "Cleaner.app"}}}}}}));
  EXPECT_EQ((Contents{{"x", "file 644 x"}}), Expanded(Resource("Option1.zip")));
  EXPECT_EQ("file 644 c", Expanded(Unscrambled(Resource("Data3")))["Contents/MacOS/Cleaner"]);

  Write("runtime/PostInstallCleanup", "own", 0755);
  ASSERT_EQ("", Pack({{"cleanup", {{"mode", "deleteInstaller"}}}}));
  Contents own = Expanded(Unscrambled(Resource("Data3")));
  EXPECT_EQ("file 755 own", own["Contents/MacOS/PostInstallCleanup"]);
  EXPECT_TRUE(own.contains("Contents/Info.plist"));
}

}  // namespace pack
