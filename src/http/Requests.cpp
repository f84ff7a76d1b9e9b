// SPDX-License-Identifier: MIT
#include "http/Requests.h"

#include <utility>

#include "http/Transfer.h"

namespace GlobalsKv {

std::string HttpGet(const std::string& url, std::int64_t timeoutSeconds) {
  return HttpPostNew(url, "", timeoutSeconds);
}

std::string HttpPostNew(const std::string& url, const std::string& postData, std::int64_t timeoutSeconds) {
  TKvHttpThread thread;
  thread.fURL = url;
  thread.fPost = postData;
  if (!thread.Start()) return "";
  THttpProgress progress;
  progress.fTimeout = timeoutSeconds;
  progress.fKvHttp = thread.fKvHttp;
  progress.ShowModal();
  return std::move(thread.fKvHttp->fResponse);
}

std::string HttpPost(const std::string& url, const std::string& postData, std::int64_t timeoutSeconds) {
  return HttpPostNew(url, postData, timeoutSeconds);
}

void PostDataAppend(std::string& postData, const std::string& name, const std::string& value) {
  if (!postData.empty()) postData += "&";
  postData += name + "=" + value;
}

}  // namespace GlobalsKv
