// SPDX-License-Identifier: MIT
// Reads and plans whatever bytes come: the end records, the directory, local headers, names, links.
#include "fuzz/Bytes.h"
#include "fuzz/PlanRules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::Bytes source({reinterpret_cast<const char*>(data), size});
  auto plan = archive::ReadPlan(source, 1);
  if (plan.Ok())
    fuzz::CheckPlan(*plan, source);
  else
    fuzz::CheckSentence(plan.Failure());
  return 0;
}
