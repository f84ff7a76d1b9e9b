// SPDX-License-Identifier: MIT
// The blocking view of HTTP: one call, one request, its body.
#pragma once

#include <cstdint>
#include <string>

namespace GlobalsKv {

/// Main thread only. Returns the body's bytes, whatever the page's status; empty when the request failed or
/// `timeoutSeconds` went by before its end, "Exception" where there was no memory for the body. Nothing is
/// shown. The outcome is looked for once a second. Windows repaint meanwhile, and what the user does is
/// dropped. A request that is late ends with the call.
std::string HttpGet(const std::string& url, std::int64_t timeoutSeconds);

/// The same with `postData` as the body of a POST; a GET where that is empty.
std::string HttpPostNew(const std::string& url, const std::string& postData, std::int64_t timeoutSeconds);
std::string HttpPost(const std::string& url, const std::string& postData, std::int64_t timeoutSeconds);

/// Adds a field to form data. Escaping what it holds is the caller's affair.
void PostDataAppend(std::string& postData, const std::string& name, const std::string& value);

}  // namespace GlobalsKv
