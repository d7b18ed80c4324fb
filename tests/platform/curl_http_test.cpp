#include "platform/host/curl_http.h"

#include <gmock/gmock.h>

#include <thread>

#include "platform/run_time_error.h"
#include "tests/support/virtual_loop.h"

namespace {

TEST(CurlHttp, PassesAnErrorOnFromTheThreadThatDidTheWorkAndNamesTheAddress) {
  class ThreadedLoop : public VirtualLoop {
   public:
    void RunBlocking(const std::function<void()>& work) override { std::thread(work).join(); }
  };
  ThreadedLoop loop;
  CurlHttp http(loop);
  EXPECT_THAT([&] { http.Send({.method = "GET", .url = "ftp://127.0.0.1/"}); },
              ::testing::ThrowsMessage<RunTimeError>(::testing::StartsWith("ftp://127.0.0.1/: ")));
}

}  // namespace
