// SPDX-License-Identifier: MIT
// Payloads and other archives, read back entry by entry.
#include "pack/Archive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <zip.h>

#include <map>

#include "Workshop.h"

namespace pack {
namespace {

struct Entry {
  unsigned mode = 0;
  std::string content;
  std::string utc;  // the extra field with the modification time
};

class Archives : public Workshop {
 protected:
  // Entries by name; `order` takes the names as they come.
  std::map<std::string, Entry> Open(const std::string& bytes,
                                    std::vector<std::string>* order = nullptr) const {
    Write("opened.zip", bytes);
    zip_t* zip = zip_open((root / "opened.zip").c_str(), ZIP_CHECKCONS, nullptr);
    EXPECT_NE(nullptr, zip);
    std::map<std::string, Entry> entries;
    for (zip_uint64_t i = 0; zip != nullptr && i < static_cast<zip_uint64_t>(zip_get_num_entries(zip, 0));
         ++i) {
      const std::string name = zip_get_name(zip, i, ZIP_FL_ENC_RAW);
      Entry& entry = entries[name];
      zip_uint8_t system = 0;
      zip_uint32_t attributes = 0;
      zip_file_get_external_attributes(zip, i, 0, &system, &attributes);
      EXPECT_EQ(ZIP_OPSYS_UNIX, system) << name;
      entry.mode = attributes >> 16;
      zip_file_t* file = zip_fopen_index(zip, i, 0);
      entry.content.resize(1 << 16);
      entry.content.resize(static_cast<std::size_t>(zip_fread(file, entry.content.data(), 1 << 16)));
      zip_fclose(file);
      zip_uint16_t length = 0;
      const auto* utc = zip_file_extra_field_get_by_id(zip, i, 0x5455, 0, &length, ZIP_FL_CENTRAL);
      if (utc != nullptr) entry.utc.assign(utc, utc + length);
      if (order != nullptr) order->push_back(name);
    }
    if (zip != nullptr) zip_discard(zip);
    return entries;
  }
};

TEST_F(Archives, ATreeKeepsItsRightsLinksTimesAndNames) {
  Write("payload/Tool", std::string(5000, 'x'));
  Write("payload/Grüße – 京都.txt", "é");
  Write("payload/Fixed/file", "");
  fs::create_directories(root / "payload/Empty");
  fs::create_directory_symlink("Fixed", root / "payload/Current");
  fs::create_symlink("../nowhere", root / "payload/Dangling");
  ::chmod((root / "payload/Tool").c_str(), 0755);
  ::chmod((root / "payload/Fixed/file").c_str(), 0444);
  ::chmod((root / "payload/Fixed").c_str(), 0555);
  const timespec times[2] = {{0x12345678, 0}, {0x12345678, 0}};
  ::utimensat(AT_FDCWD, (root / "payload/Tool").c_str(), times, 0);
  ASSERT_EQ("", Pack(Describe()));

  std::vector<std::string> order;
  const std::string archive = Unscrambled(Resource("Data2"));
  auto entries = Open(archive, &order);
  EXPECT_EQ(
      (std::vector<std::string>{"Lamp/", "Lamp/Current", "Lamp/Dangling", "Lamp/Empty/", "Lamp/Fixed/",
                                "Lamp/Fixed/file", "Lamp/Grüße – 京都.txt", "Lamp/Read Me.txt", "Lamp/Tool"}),
      order);
  EXPECT_EQ(0100755U, entries["Lamp/Tool"].mode);
  EXPECT_EQ(std::string(5000, 'x'), entries["Lamp/Tool"].content);
  EXPECT_EQ("\x01\x78\x56\x34\x12", entries["Lamp/Tool"].utc);
  EXPECT_EQ(0040555U, entries["Lamp/Fixed/"].mode);
  EXPECT_EQ(0100444U, entries["Lamp/Fixed/file"].mode);
  EXPECT_EQ(0120777U, entries["Lamp/Current"].mode);
  EXPECT_EQ("Fixed", entries["Lamp/Current"].content);
  EXPECT_EQ("../nowhere", entries["Lamp/Dangling"].content);
  // Bit 11 of the flags of the local header says that the name is UTF-8.
  const std::size_t name = archive.find("Lamp/Grüße");
  EXPECT_EQ(0x08, archive[name - 30 + 7] & 0x08);
  EXPECT_LT(archive.size(), 5000U);

  ASSERT_EQ("", Pack(Describe()));
  EXPECT_EQ(archive, Unscrambled(Resource("Data2"))) << "the same tree gives the same bytes";
}

TEST_F(Archives, APayloadsTopFolderIsTheTargetsLastName) {
  ASSERT_EQ("", Pack(Describe({{"targetFolder", "Maker/Lamp"}, {"patch", true}})));
  EXPECT_TRUE(Open(Unscrambled(Resource("Data2"))).contains("LampPatch/Read Me.txt"));
}

TEST_F(Archives, AnExistingZipIsTakenAsItIsIfItFits) {
  ZipFolder("", root / "payload", "Lamp", root / "lamp.zip");
  const json payload = {{"folder", nullptr}, {"zip", "lamp.zip"}};
  ASSERT_EQ("", Pack(Describe({{"payload", payload}})));
  EXPECT_EQ(Read("lamp.zip"), Unscrambled(Resource("Data2")));
  EXPECT_EQ("payload.zip has an entry that isn't in the folder \"Lantern\": Lamp/.",
            Pack(Describe({{"payload", payload}, {"targetFolder", "Lantern"}})));

  zip_t* zip = zip_open((root / "lamp.zip").c_str(), 0, nullptr);
  zip_dir_add(zip, "Lamp/../../x", ZIP_FL_ENC_UTF_8);
  ASSERT_EQ(0, zip_close(zip));
  EXPECT_EQ("payload.zip has an entry that leads out of it: Lamp/../../x/.",
            Pack(Describe({{"payload", payload}})));
}

TEST_F(Archives, ItemsAndTheCleanupProgramHaveTheirContentAtTheTop) {
  Write("extra/In/x", "x");
  Write("Cleaner.app/Contents/MacOS/Cleaner", "c");
  ASSERT_EQ("", Pack(Describe({{"options", {{{"name", "Extra"}, {"folder", "extra"}}}},
                               {"cleanup", {{"mode", 1}, {"program", {{"folder", "Cleaner.app"}}}}}})));
  EXPECT_EQ("x", Open(Resource("Option1.zip"))["In/x"].content);
  EXPECT_EQ("c", Open(Unscrambled(Resource("Data3")))["Contents/MacOS/Cleaner"].content);
}

TEST_F(Archives, TheRuntimesOwnCleanupProgramGetsABundle) {
  Write("runtime/PostInstallCleanup", "own");
  ::chmod((root / "runtime/PostInstallCleanup").c_str(), 0755);
  ASSERT_EQ("", Pack(Describe({{"cleanup", {{"mode", "deleteInstaller"}}}})));
  auto entries = Open(Unscrambled(Resource("Data3")));
  EXPECT_EQ("own", entries["Contents/MacOS/PostInstallCleanup"].content);
  EXPECT_EQ(0100755U, entries["Contents/MacOS/PostInstallCleanup"].mode);
  EXPECT_NE(std::string::npos, entries["Contents/Info.plist"].content.find("PostInstallCleanup"));
}

}  // namespace
}  // namespace pack
