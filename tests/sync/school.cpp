#include "tests/sync/school.h"

#include "base/day.h"
#include "platform/run_time_error.h"

namespace marovane {

School::School() { Start(); }

void School::AddAccount(const std::string& number) { door_.AddAccount(number, SyncServer::kOldPassword); }

void School::Crash() {
  process_.reset();
  Start();
}

void School::Start() {
  process_ =
      std::make_unique<RealServer>(loop_, std::vector<std::string>{"--data", Database().parent_path()});
}

base::HttpResponse Network::Send(const base::HttpRequest& request, Weather weather) {
  if (weather == Weather::kNoConnection) throw RunTimeError("no connection");
  if (weather == Weather::kServerError) return {500, "text/html", "<html>oops</html>", request.url};
  if (weather == Weather::kForeignPage) {
    return {200, "text/html", "<html>Welcome to our network! # Log in.</html>", request.url};
  }
  base::HttpResponse response = Deliver(request);
  if (weather == Weather::kServerCrash) school_.Crash();
  if (weather == Weather::kHalfReply) response.body.resize(response.body.size() / 2);
  if (weather == Weather::kReplyLost || weather == Weather::kServerCrash) {
    throw RunTimeError("the reply got lost");
  }
  return response;
}

base::HttpResponse Network::Deliver(base::HttpRequest request) {
  const std::string name = "http://server/";
  request.url.replace(0, name.size(), school_.Root());
  const bool isProbe = request.url.ends_with("p_getconn.asp");
  base::HttpResponse response = curl_.Send(request);
  // The school lives on the same day as the computers, whatever the real one is.
  if (isProbe) response.body = "ONLINE " + base::ShownDay(base::DayOf(loop_.Now()));
  return response;
}

}  // namespace marovane
