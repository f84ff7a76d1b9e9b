// SPDX-License-Identifier: MIT
// Scrambling, with bytes written out by hand, of strings and of files of several pieces.
#include "package/Scrambling.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/TestMachine.h"
#include "support/TestPackage.h"

TEST(Scrambling, RaisesEverySecondByte) {
  const struct {
    std::string clear, scrambled;
  } rows[] = {
      {"", ""},
      {"A", "A"},
      {"AAAA", "ABAB"},
      {std::string("A\xFF", 2), std::string("A\0", 2)},
      {std::string("\0\0\xFF\x7F", 4), std::string("\0\x01\xFF\x80", 4)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Encrypt(row.clear), row.scrambled);
    std::string text = row.scrambled;
    DecryptStr(text);
    EXPECT_EQ(text, row.clear);
  }
}

TEST(Scrambling, FilesOfAnyLengthInBothDirections) {
  const TemporaryTree tree;
  const TestMachine machine(tree);
  constexpr std::size_t kPiece = 256U << 10;
  for (const std::size_t length :
       {std::size_t{0}, std::size_t{1}, kPiece - 1, kPiece, kPiece + 1, 3 * kPiece + 7}) {
    std::string clear;
    while (clear.size() < length) clear += static_cast<char>(clear.size() * 7 + clear.size() / 251);
    tree.Write("file", clear);
    EncryptDecryptFileEnd(tree.Path("file"), true);
    EXPECT_TRUE(tree.Read("file") == ScrambledByHand(clear)) << length;
    EncryptDecryptFileEnd(tree.Path("file"), false);
    EXPECT_TRUE(tree.Read("file") == clear) << length;
  }
}

TEST(Scrambling, OtherFilesKeepTheirBytes) {
  const TemporaryTree tree;
  const TestMachine machine(tree);
  tree.Write("folder/kept", "AAAA");
  std::filesystem::create_hard_link(tree.Path("folder/kept"), tree.Path("second"));
  tree.Link("link", tree.Path("folder/kept"));
  for (const char* name : {"second", "link"}) {
    EncryptDecryptFileEnd(tree.Path(name), true);
    EXPECT_EQ(tree.Read(name), "ABAB") << name;
    EXPECT_EQ(tree.Read("folder/kept"), "AAAA") << name;
  }
  tree.Link("folder/dangling", "none");
  const TemporaryTree::Contents before = tree.Look();
  for (const char* name : {"none", "folder", "folder/dangling", "none/file"})
    EncryptDecryptFileEnd(tree.Path(name), false);
  EncryptDecryptFileEnd("relative", false);
  EXPECT_EQ(tree.Look(), before);
}

TEST(Scrambling, AFullDiskLosesNothing) {
  const TemporaryTree tree;
  const TestMachine machine(tree);
  const SmallDisk disk(tree.Folder("disk"), 512);
  if (!disk.Mounted()) GTEST_SKIP() << "no right to mount";
  const std::string bytes(400'000, 'A');
  tree.Write("disk/file", bytes);
  EncryptDecryptFileEnd(tree.Path("disk/file"), true);
  EXPECT_TRUE(tree.Read("disk/file") == ScrambledByHand(bytes)) << "no room is needed";
  std::filesystem::create_hard_link(tree.Path("disk/file"), tree.Path("disk/second"));
  EncryptDecryptFileEnd(tree.Path("disk/second"), false);
  EXPECT_TRUE(tree.Read("disk/second") == ScrambledByHand(bytes)) << "a new file has none";
  EXPECT_EQ(tree.Look("disk").size(), 2U);
}
