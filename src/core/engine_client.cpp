#include "core/engine_client.h"

#include <algorithm>
#include <random>
#include <utility>

#include "core/process_control.h"
#include "core/program.h"
#include "core/server_access.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "protocol/refusal.h"

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
    : program_(program), terms_(std::move(terms)), timesBrokenOff_(program.machine.loop.TimesBrokenOff()) {}

bool EngineClient::IsBrokenOff() const { return program_.machine.loop.TimesBrokenOff() != timesBrokenOff_; }

// Never nothing, which would be no limit.
EngineClient::Milliseconds EngineClient::Rest() const {
  return std::max<Milliseconds>(end_ - program_.machine.loop.Elapsed(), 1ms);
}

void EngineClient::Begin() { end_ = program_.machine.loop.Elapsed() + terms_.limit; }

bool EngineClient::IsOnline() {
  Begin();
  return IsReachable();
}

bool EngineClient::IsReachable() try {
  if (terms_.wantsMoreAttempts) Allot();
  return IsWebEngineOnline(program_, std::min(kProbeLimit, Rest()));
} catch (const RunTimeError&) {
  return false;
}

// Several attempts, one straight after the other.
bool EngineClient::HasAllotted() {
  for (int i = 0; i < kEngineAttempts; ++i) {
    if (TryWebEngine(program_, std::min(kProbeLimit, Rest()))) return true;
    if (program_.machine.loop.Elapsed() >= end_) return false;
  }
  return false;
}

void EngineClient::Allot() {
  while (!HasAllotted()) {
    if (!terms_.wantsMoreAttempts()) program_.machine.loop.End();
    Begin();  // the time in which the learner has thought does not count
  }
}

std::optional<std::string> EngineClient::AskWeb(const std::string& page, const std::string& body) {
  EventLoop& loop = program_.machine.loop;
  Begin();
  refusal_.clear();
  for (int tries = 0; !IsStopped(); ++tries) {
    const bool isOnline = IsReachable();
    loop.DoEvents();  // whoever stops the asking waits for one reply at most
    if (IsStopped()) break;
    auto answer = isOnline ? Post(page, body) : std::nullopt;
    if (IsStopped()) break;
    if (answer) return answer;
    if (!refusal_.empty() || loop.Elapsed() >= end_) break;
    Pause(tries);
  }
  return std::nullopt;
}

// A transfer that breaks is no answer; the next one may come through.
std::optional<std::string> EngineClient::Post(const std::string& page, const std::string& body) try {
  constexpr std::string_view kSuccess = "OK_";
  auto& app = program_.app;
  if (app.gDetailMessage && terms_.showAddress) {
    app.gProgressDetail = app.gWebEngineRoot;
    terms_.showAddress();
  }
  const std::string reply = PostForm(program_, app.gWebEngineRoot + page, body, Rest());
  if (protocol::refusal::IsFinal(reply)) refusal_ = reply;
  if (!reply.starts_with(kSuccess)) return std::nullopt;
  return reply.substr(kSuccess.size());
} catch (const RunTimeError&) {
  return std::nullopt;
}

void EngineClient::Pause(int tries) {
  static std::minstd_rand random{std::random_device{}()};
  const auto share = std::uniform_int_distribution{80, 120}(random);
  const Milliseconds pause = std::min<Milliseconds>(500ms * (1 << std::min(tries, 2)), 2s) * share / 100;
  program_.machine.loop.WaitUntil([this] { return IsStopped(); }, std::min(pause, Rest()));
}

bool EngineClient::RunLocal(const std::string& name, const std::string& argument,
                            const std::function<bool()>& hasAnswered) {
  const Machine& machine = program_.machine;
  LetThingsRest(machine.loop);
  const int id = StartHelper(program_, program_.app.gEngineDir, name, {argument});
  Timer lookAgain(machine.loop, 1000);  // the page may be written by a program that the engine has started
  lookAgain.Enabled = true;
  bool isDone = false;
  machine.loop.WaitUntil(
      [&] {
        isDone = !IsProcessRunning(machine.processes, id) && hasAnswered();
        return isDone || IsStopped();
      },
      terms_.limit);
  return isDone && !IsStopped();
}

}  // namespace marovane
