// SPDX-License-Identifier: MIT
// Scrambling, with bytes written out by hand, of strings and of files of several pieces.
#include "package/Scrambling.h"

#include "support/TestMachine.h"
#include "support/TestPackage.h"

class Scrambling : public MachineTest {};

TEST_F(Scrambling, RaisesEverySecondByteOfTextsAndFilesOfAnyLength) {
  const std::string clear("A\xFF\0\0AAA", 7);
  const std::string scrambled("A\0\0\001ABA", 7);
  EXPECT_EQ(Encrypt(clear), scrambled);
  EXPECT_EQ(ScrambledByHand(clear), scrambled);
  std::string text = scrambled;
  DecryptStr(text);
  EXPECT_EQ(text, clear);
  constexpr std::size_t kPiece = 256U << 10;
  for (const std::size_t length : {std::size_t{0}, std::size_t{1}, kPiece, kPiece + 1, 3 * kPiece + 7}) {
    std::string bytes;
    while (bytes.size() < length) bytes += static_cast<char>(bytes.size() * 7 + bytes.size() / 251);
    fTree.Write("file", bytes, 0640);
    EncryptDecryptFileEnd(fTree.Path("file"), true);
    EXPECT_TRUE(fTree.Read("file") == ScrambledByHand(bytes)) << length;
    EncryptDecryptFileEnd(fTree.Path("file"), false);
    EXPECT_TRUE(fTree.Read("file") == bytes) << length;
    EXPECT_EQ(FolderItem(fTree.Path("file")).Permissions(), 0640U);
  }
}

TEST_F(Scrambling, OtherFilesKeepTheirBytesAndAFullDiskLosesNothing) {
  fTree.Write("kept", "AAAA");
  fs::create_hard_link(fTree.Path("kept"), fTree.Path("second"));
  fTree.Link("link", fTree.Path("kept"));
  for (const char* name : {"second", "link"}) {
    EncryptDecryptFileEnd(fTree.Path(name), true);
    EXPECT_EQ(fTree.Read(name) + fTree.Read("kept"), "ABABAAAA") << name;
  }
  fTree.Link("dangling", "none");
  const Contents before = fTree.Look();
  for (const char* name : {"none", "home", "dangling"}) EncryptDecryptFileEnd(fTree.Path(name), false);
  EXPECT_EQ(fTree.Look(), before);
  const SmallDisk disk(fTree.Folder("disk"), 512);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  fTree.Write("disk/file", std::string(400'000, 'A'), 0640);
  const Contents stood = fTree.Look("disk");
  EncryptDecryptFileEnd(fTree.Path("disk/file"), true);
  EXPECT_EQ(fTree.Look("disk"), stood) << "a new file has no room, and the old one keeps bytes and mode";
}
