// SPDX-License-Identifier: MIT
#pragma once

/// May this process open so many descriptors more? Tries it: setrlimit(2), and what it was started with.
bool DescriptorsCanOpen(unsigned count);
