// SPDX-License-Identifier: MIT
// The three streams that every program counts on.
#pragma once

/// To be called first. A stream that the process was started without leads to /dev/null from now on: the next
/// file to be opened would take its number, and what is meant for the stream.
void OpenStandardStreams();
