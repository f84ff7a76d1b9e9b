// SPDX-License-Identifier: MIT
// Reads and plans whatever bytes come: the end records, the directory, local headers, names, links.
#include "archive/reading/FrameSource.h"
#include "fuzz/Bytes.h"
#include "fuzz/PlanRules.h"
#include "support/SolidBuilder.h"

namespace {

void Check(const archive::Source& source) {
  auto plan = archive::ReadPlan(source, 1);
  if (!plan.Ok())
    fuzz::CheckSentence(plan.Failure());
  else if (plan->solid.Is())
    fuzz::CheckPlan(*plan, archive::FrameSource(source, plan->solid.frames));
  else
    fuzz::CheckPlan(*plan, source);
}

}  // namespace

/// As it is, and packed as a whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Check(fuzz::Bytes(bytes));
  Check(archive::MemorySource(ziptest::Solid(bytes, size / 3 + 1)));
  return 0;
}
