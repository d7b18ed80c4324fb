// The one client of engines: of those that judge sentences and of the word bank's, on the web and on this
// machine.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace marovane {

struct Program;

/// What the callers of engines do each in their own way.
struct EngineTerms {
  /// Time after which an engine counts as silent.
  std::chrono::seconds limit{30};
  /// Asks the learner, when no web engine could be allotted, whether to try once more; "no" ends the program.
  /// Without it, none is allotted: the one at hand is asked.
  std::function<bool()> wantsMoreAttempts = {};
  /// Shows the web engine's root in gProgressDetail. Called before each request while gDetailMessage is set.
  std::function<void()> showAddress = {};
  /// Whether the learner has broken off in another way than EventLoop::BreakOff.
  std::function<bool()> isStopped = {};
};

class EngineClient {
 public:
  explicit EngineClient(Program& program, EngineTerms terms = {});

  /// Whether a web engine is there, which gWebEngineRoot then names.
  bool IsOnline();

  /// Posts to a page of the web engine until it answers: at once, then after half a second, one second, and
  /// every two seconds, each time a little more or less, so that a school's computers do not ask all
  /// together. A refusal that will not change ends the asking.
  /// @return what its reply says after "OK_"; nothing when the time was over, the learner has broken off, or
  /// the
  ///         engine has refused
  std::optional<std::string> AskWeb(const std::string& page, const std::string& body);
  /// Whether the learner has broken off since this client was made.
  bool IsBrokenOff() const;
  /// The word with which it has refused, "" otherwise.
  const std::string& Refusal() const { return refusal_; }

  /// Starts a program of gEngineDir and waits until it has ended and answered. Throws RunTimeError when it
  /// does not start, and what hasAnswered throws.
  /// @param hasAnswered asked while no program of this name is running
  /// @return false when the time was over or the learner has broken off
  bool RunLocal(const std::string& name, const std::string& argument,
                const std::function<bool()>& hasAnswered);

 private:
  using Milliseconds = std::chrono::milliseconds;
  void Begin();
  Milliseconds Rest() const;
  bool IsReachable();
  bool HasAllotted();
  void Allot();
  std::optional<std::string> Post(const std::string& page, const std::string& body);
  void Pause(int tries);
  bool IsStopped() const { return IsBrokenOff() || (terms_.isStopped && terms_.isStopped()); }

  Program& program_;
  EngineTerms terms_;
  const int timesBrokenOff_;
  Milliseconds end_{0};
  std::string refusal_;
};

}  // namespace marovane
