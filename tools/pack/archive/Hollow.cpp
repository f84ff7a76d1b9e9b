// SPDX-License-Identifier: MIT
#include "pack/archive/Hollow.h"

#include <libdeflate.h>

#include "pack/archive/ZipFormat.h"

namespace pack {

std::string HollowZip(std::vector<TreeItem> items) {
  std::string zip;
  ZipDirectory directory;
  for (TreeItem& item : items) {
    item.size = 0;
    ZipEntry entry{.item = &item, .place = zip.size()};
    entry.size = entry.packed = item.target.size();
    entry.crc = libdeflate_crc32(0, item.target.data(), item.target.size());
    zip += LocalHeader(entry) + item.target;
    directory.Add(entry);
  }
  zip += directory.End(zip.size());
  return zip;
}

}  // namespace pack
