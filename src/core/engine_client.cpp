#include "core/engine_client.h"

#include <algorithm>
#include <utility>

#include "core/process_control.h"
#include "core/program.h"
#include "core/server_access.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;

// Lets the file system and an engine that is being killed come to rest: turns of the event loop, not a span
// of time, since the loop must go on.
void LetThingsRest(EventLoop& loop) {
  constexpr int kTurns = 5001;
  for (int i = 0; i < kTurns; ++i) loop.DoEvents();
}

}  // namespace

EngineClient::EngineClient(Program& program, EngineTerms terms)
    : program_(program), terms_(std::move(terms)) {}

bool EngineClient::IsOnline() try {
  if (terms_.wantsMoreAttempts) Allot();
  return IsWebEngineOnline(program_);
} catch (const RunTimeError&) {
  return false;
}

void EngineClient::Allot() {
  while (!AllocateWebEngine(program_)) {
    if (!terms_.wantsMoreAttempts()) program_.machine.loop.End();
  }
}

std::optional<std::string> EngineClient::AskWeb(const std::string& page, const std::string& body) {
  EventLoop& loop = program_.machine.loop;
  const auto end = loop.Elapsed() + terms_.limit;
  while (!IsStopped()) {
    const bool isOnline = IsOnline();
    loop.DoEvents();  // whoever stops the asking waits for one reply at most
    if (IsStopped()) break;
    auto answer = isOnline ? Post(page, body) : std::nullopt;
    if (IsStopped()) break;
    if (answer) return answer;
    const auto rest = end - loop.Elapsed();
    if (rest <= 0ms) break;
    AwaitNextTry(isOnline, rest);
  }
  return std::nullopt;
}

std::optional<std::string> EngineClient::Post(const std::string& page, const std::string& body) try {
  constexpr std::string_view kSuccess = "OK_";
  auto& app = program_.app;
  if (app.gDetailMessage && terms_.showAddress) {
    app.gProgressDetail = app.gWebEngineRoot;
    terms_.showAddress();
  }
  const std::string reply = PostForm(program_, app.gWebEngineRoot + page, body);
  if (!reply.starts_with(kSuccess)) return std::nullopt;
  return reply.substr(kSuccess.size());
} catch (const RunTimeError&) {
  if (terms_.reportsBrokenTransfer) throw;
  return std::nullopt;
}

// Who is not there now will hardly be in the next moment; who says something else may answer at once.
void EngineClient::AwaitNextTry(bool isOnline, Milliseconds atMost) {
  EventLoop& loop = program_.machine.loop;
  if (isOnline && !terms_.pausesAfterReplies) return loop.DoEvents();
  loop.WaitUntil([this] { return IsStopped(); }, std::min<Milliseconds>(atMost, 1s));
}

bool EngineClient::RunLocal(const std::string& name, const std::string& argument,
                            const std::function<bool()>& hasAnswered) {
  const Machine& machine = program_.machine;
  LetThingsRest(machine.loop);
  StartHelper(program_, program_.app.gEngineDir, name, {argument});
  Timer lookAgain(machine.loop, 1000);  // an engine that another program has started wakes nobody by its end
  lookAgain.Enabled = true;
  bool isDone = false;
  machine.loop.WaitUntil(
      [&] {
        isDone = !IsProcessRunning(machine.processes, name) && hasAnswered();
        return isDone || IsStopped();
      },
      terms_.limit);
  return isDone && !IsStopped();
}

}  // namespace marovane
