// SPDX-License-Identifier: MIT
// Streams over real files, and over what only looks like one.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/BinaryStream.h"
#include "support/TemporaryTree.h"

TEST(BinaryStream, OpensFilesAlone) {
  const TemporaryTree tree;
  ASSERT_EQ(::mkfifo(tree.Path("pipe").c_str(), 0644), 0);
  tree.Link("dangling", "none");
  for (const char* name : {"", "pipe", "dangling", "none"})
    EXPECT_FALSE(BinaryStream::Open(FolderItem(tree.Path(name)))) << name;
  EXPECT_FALSE(BinaryStream::Open(FolderItem("/dev/full")));
}

TEST(BinaryStream, NewFilesTakeTheNameAndNothingElse) {
  const TemporaryTree tree;
  tree.Write("victim", "kept");
  tree.Link("file", tree.Path("victim"));
  std::optional<BinaryStream> stream = BinaryStream::Create(FolderItem(tree.Path("file")));
  ASSERT_TRUE(stream && stream->Write("bytes") && stream->Close());
  EXPECT_EQ(tree.Read("victim") + tree.Read("file"), "keptbytes");
  EXPECT_FALSE(BinaryStream::Create(FolderItem(tree.Folder("folder"))));
}
