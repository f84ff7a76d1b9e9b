// SPDX-License-Identifier: MIT
// Payloads and other archives, read back entry by entry.
#include "pack/Archive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <zip.h>

#include "Workshop.h"

namespace pack {

using std::string_literals::operator""s;

class Archives : public Workshop {
 protected:
  // The entries as they come: name, mode, and the first bytes of the content.
  List Open(const std::string& bytes) const {
    zip_t* zip = zip_open(Write("opened.zip", bytes).c_str(), ZIP_CHECKCONS, nullptr);
    if (zip == nullptr) return {"no archive"};
    List entries;
    for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
      const auto index = static_cast<zip_uint64_t>(i);
      zip_uint8_t system = 0;
      zip_uint32_t attributes = 0;
      zip_file_get_external_attributes(zip, index, 0, &system, &attributes);
      EXPECT_EQ(ZIP_OPSYS_UNIX, system);
      char mode[16];
      std::snprintf(mode, sizeof mode, " %o ", attributes >> 16);
      zip_file_t* file = zip_fopen_index(zip, index, 0);
      char content[16];
      const zip_int64_t size = zip_fread(file, content, sizeof content);
      zip_fclose(file);
      entries.push_back(zip_get_name(zip, index, ZIP_FL_ENC_RAW) +
                        (mode + std::string(content, static_cast<std::size_t>(size))));
    }
    zip_discard(zip);
    return entries;
  }
};

TEST_F(Archives, ATreeKeepsItsRightsLinksTimesAndNames) {
  Write("payload/Tool", std::string(5000, 'x'), 0755);
  Write("payload/Grüße – 京都.txt", "é");
  Write("payload/Fixed/file", "", 0444);
  Folder("payload/Empty");
  Link("payload/Current", "Fixed");
  Link("payload/Dangling", "../nowhere");
  fs::permissions(Path("payload/Fixed"), fs::perms(0555));
  const timespec times[2] = {{0x12345678, 0}, {0x12345678, 0}};
  ::utimensat(AT_FDCWD, Path("payload/Tool").c_str(), times, 0);
  ASSERT_EQ("", Pack(Describe()));

  const std::string archive = Unscrambled(Resource("Data2"));
  EXPECT_EQ((List{"Lamp/ 40755 ", "Lamp/Current 120777 Fixed", "Lamp/Dangling 120777 ../nowhere",
                  "Lamp/Empty/ 40755 ", "Lamp/Fixed/ 40555 ", "Lamp/Fixed/file 100444 ",
                  "Lamp/Grüße – 京都.txt 100644 é", "Lamp/Read Me.txt 100644 Hello.\n",
                  "Lamp/Tool 100755 xxxxxxxxxxxxxxxx"}),
            Open(archive));
  EXPECT_NE(std::string::npos, archive.find("UT\x05\0\x01\x78\x56\x34\x12"s)) << "the time of the tool";
  // Bit 11 of the flags of the local header says that the name is UTF-8.
  EXPECT_EQ(0x08, archive[archive.find("Lamp/Grüße") - 30 + 7] & 0x08);
  EXPECT_LT(archive.size(), 5000U);

  ASSERT_EQ("", Pack(Describe()));
  EXPECT_EQ(archive, Unscrambled(Resource("Data2"))) << "the same tree gives the same bytes";
  ASSERT_EQ("", Pack(Describe({{"targetFolder", "Maker/Lamp"}, {"patch", true}})));
  EXPECT_EQ("LampPatch/ 40755 ", Open(Unscrambled(Resource("Data2")))[0]);
}

TEST_F(Archives, AnExistingZipIsTakenAsItIsIfItFits) {
  ZipFolder("", Path("payload"), "Lamp", Path("lamp.zip"));
  const json payload = {{"folder", nullptr}, {"zip", "lamp.zip"}};
  ASSERT_EQ("", Pack(Describe({{"payload", payload}})));
  EXPECT_EQ(Read("lamp.zip"), Unscrambled(Resource("Data2")));
  EXPECT_EQ("payload.zip has an entry that isn't in the folder \"Lantern\": Lamp/.",
            Pack(Describe({{"payload", payload}, {"targetFolder", "Lantern"}})));

  zip_t* zip = zip_open(Path("lamp.zip").c_str(), 0, nullptr);
  zip_dir_add(zip, "Lamp/../../x", ZIP_FL_ENC_UTF_8);
  ASSERT_EQ(0, zip_close(zip));
  EXPECT_EQ("payload.zip has an entry that leads out of it: Lamp/../../x/.",
            Pack(Describe({{"payload", payload}})));
}

TEST_F(Archives, ItemsAndCleanupProgramsHaveTheirContentAtTheTop) {
  Write("extra/x", "x");
  Write("Cleaner.app/Contents/MacOS/Cleaner", "c");
  ASSERT_EQ("", Pack(Describe({{"options", {{{"name", "Extra"}, {"folder", "extra"}}}},
                               {"cleanup", {{"mode", 1}, {"program", {{"folder", "Cleaner.app"}}}}}})));
  EXPECT_EQ((List{"x 100644 x"}), Open(Resource("Option1.zip")));
  EXPECT_EQ("Contents/MacOS/Cleaner 100644 c", Open(Unscrambled(Resource("Data3"))).back());

  Write("runtime/PostInstallCleanup", "own", 0755);
  ASSERT_EQ("", Pack(Describe({{"cleanup", {{"mode", "deleteInstaller"}}}})));
  const List own = Open(Unscrambled(Resource("Data3")));
  EXPECT_EQ(1, std::count(own.begin(), own.end(), "Contents/MacOS/PostInstallCleanup 100755 own"));
  EXPECT_NE(std::string::npos, Unscrambled(Resource("Data3")).find("Contents/Info.plist"));
}

}  // namespace pack
