// SPDX-License-Identifier: MIT
// Writes the archives that the fuzzers start from, one of each form, into the folder that is named.
#include <fstream>

#include "support/SolidBuilder.h"
#include "support/ZipBuilder.h"

namespace {

using namespace ziptest;

Zip Of(std::vector<Item> items) {
  Zip zip;
  zip.items = std::move(items);
  return zip;
}

Zip Long64() {
  Zip zip = Of({File("a", "alpha"), Packed("b", "beta beta beta")});
  for (Item& item : zip.items)
    item.local = item.central = [](Says& s) {
      s.extra = Extra(1, Le(s.size, 8) + Le(s.compressed, 8));
      s.size = s.compressed = 0xFFFFFFFF;
    };
  zip.ending = [](Ending& e) {
    e.zip64 = true;
    e.count = e.countHere = 0xFFFF;
    e.size = e.offset = 0xFFFFFFFF;
  };
  return zip;
}

/// Names in every encoding: code page 437 with backslashes, flagged UTF-8, a Unicode path field.
Zip Names() {
  const Item dos{.name = "dir\\\x81.txt", .host = 0};
  const Item flagged{.name = "gr\u00F6\u00DFe", .flags = 1 << 11};
  const Item field{.name = "plain",
                   .centralExtra = Extra(0x7075, "\1" + Le(Crc("plain"), 4) + "d/\u00FC") +
                                   Extra(0x5455, "\1" + Le(1234567890, 4))};
  return Of({dos, flagged, field, File("__MACOSX/._x")});
}

/// The directory names the second entry first.
Zip Reversed() {
  Zip zip = Of({File("a"), File("b")});
  const std::size_t second = 30 + 1 + zip.items[0].content.size();
  zip.items[0].central = [=](Says& s) { s.name = "b", s.offset = second; };
  zip.items[1].central = [](Says& s) { s.name = "a", s.offset = 0; };
  return zip;
}

/// Beyond 4 GiB by a hole in the data of the first entry: every 32-bit field is a rest.
std::string Wrapped() {
  const std::size_t inData = 30 + 1 + 2;
  return "HOLE" + Le(inData, 4) + '\1' + Of({File("a", "alpha"), Packed("b", "beta")}).Bytes();
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

int main(int, char** arguments) {
  const std::string folder = std::string(arguments[1]) + "/";
  const std::string stored = Of({File("a"), File("b/c", "x")}).Bytes();
  Write(folder + "empty", Of({}).Bytes());
  Write(folder + "stored", stored);
  Write(folder + "deflated", Of({Packed("a", std::string(9000, 'a') + "bcd"), Packed("b", "")}).Bytes());
  Write(folder + "folders", Of({Folder("d/"), Folder("d/e/", 040555), File("d/e/f"), File("i/j/k")}).Bytes());
  Item packedLink = Link("l", "F");
  packedLink.deflate = true;
  Write(folder + "links",
        Of({File("F/V/A/F"), Link("F/V/C", "A"), Link("F/F", "V/C/F"), Link("up", "F/V/C/../A"), packedLink})
            .Bytes());
  Write(folder + "names", Names().Bytes());
  for (const Tail tail : {Tail::Short, Tail::ShortMarked, Tail::Long, Tail::LongMarked}) {
    const auto tailed = [tail](Item item) {
      item.tail = tail;
      return item;
    };
    Write(folder + "descriptor" + std::to_string(static_cast<int>(tail)),
          Of({tailed(Packed("a", "alpha")), tailed(File("b", "beta"))}).Bytes());
  }
  Zip commented = Of({File("a")});
  commented.ending = [](Ending& e) { e.comment = "a comment"; };
  Write(folder + "comment", commented.Bytes());
  Zip prefixed = Of({File("a")});
  prefixed.before = "#!/bin/sh\n";
  Write(folder + "prefix", prefixed.Bytes());
  Zip long64 = Long64();
  Write(folder + "zip64", long64.Bytes());
  long64.before = "before";
  Write(folder + "zip64-prefix", long64.Bytes());
  Write(folder + "wrapped", Wrapped());
  Write(folder + "reversed", Reversed().Bytes());
  for (const std::size_t length : {20, 500})
    Write(folder + "solid" + std::to_string(length), Solid(stored, length));
  Write(folder + "nested", Of({File("inner.zip", stored)}).Bytes());
  return 0;
}
