// SPDX-License-Identifier: MIT
#include "package/Scrambling.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/Scramble.h"
#include "platform/BinaryStream.h"
#include "platform/Machine.h"
#include "util/GlobalsKv.h"

namespace {

/// Even, so that each piece begins with an unchanged byte as the file does.
constexpr std::size_t kPiece = 256U << 10;

bool ShiftFile(BinaryStream& source, BinaryStream& target, void (*shift)(char*, std::size_t, std::uint64_t)) {
  std::vector<char> piece(kPiece);
  std::uint64_t left = source.Length();
  while (const std::size_t got = source.Read(piece.data(), piece.size())) {
    shift(piece.data(), got, 0);
    if (!target.Write(piece.data(), got)) return false;
    left -= std::min<std::uint64_t>(left, got);
    Machine::Current().Yield();
  }
  return left == 0;
}

}  // namespace

void DecryptStr(std::string& text) {
  UnscrambleBytes(text.data(), text.size(), 0);
}

std::string Encrypt(const std::string& text) {
  std::string scrambled = text;
  ScrambleBytes(scrambled.data(), scrambled.size(), 0);
  return scrambled;
}

void EncryptDecryptFileEnd(const std::string& path, bool encrypt) {
  const std::optional<FolderItem> item = GlobalsKv::MyGetFolderItem(path);
  std::optional<BinaryStream> source = item ? BinaryStream::Open(*item) : std::nullopt;
  if (!source) return;
  const FolderItem fresh = item->FreshSibling();
  std::optional<BinaryStream> target = BinaryStream::Create(fresh);
  if (!target) return;
  const FolderItem original(item->ResolvedPath());
  const bool written = ShiftFile(*source, *target, encrypt ? ScrambleBytes : UnscrambleBytes) &&
                       target->Close() && fresh.SetPermissions(original.Permissions());
  // The old bytes stand until all of the new ones do.
  if (!written || fresh.MoveFileTo(*item) != FolderItem::Moved::Yes) static_cast<void>(fresh.Delete());
}
