#include "platform/host/curl_http.h"

#include <gmock/gmock.h>

#include "platform/run_time_error.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

namespace {

TEST(CurlHttp, NamesTheAddressOfARequestThatFailedAndRefusesAnotherMeanwhile) {
  class PaintingLoop : public VirtualLoop {
   public:
    std::function<void()> onPaint;

   protected:
    void Block(const std::function<void()>& work) override {
      onPaint();
      work();
    }
  };
  PaintingLoop loop;
  CurlHttp http(loop);
  const auto send = [&] { http.Send({.method = "GET", .url = "ftp://127.0.0.1/"}); };
  loop.onPaint = [&] { EXPECT_THROW(send(), std::logic_error); };
  EXPECT_THAT(send, ::testing::ThrowsMessage<RunTimeError>(::testing::StartsWith("ftp://127.0.0.1/: ")));
}

}  // namespace

}  // namespace marovane
