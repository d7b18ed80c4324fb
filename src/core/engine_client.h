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
  /// Whether the learner has broken off.
  std::function<bool()> isStopped = {};
  /// A transfer that breaks after the engine was reached is an error, not a missing answer.
  bool reportsBrokenTransfer = false;
  /// There is a pause also after a reply that is no answer.
  bool pausesAfterReplies = false;
};

class EngineClient {
 public:
  explicit EngineClient(Program& program, EngineTerms terms = {});

  /// Whether a web engine is there, which gWebEngineRoot then names.
  bool IsOnline();

  /// Posts to a page of the web engine, again and again, until it answers. Throws RunTimeError for a broken
  /// transfer if the terms say so.
  /// @return what its reply says after "OK_"; nothing when the time was over or the learner has broken off
  std::optional<std::string> AskWeb(const std::string& page, const std::string& body);

  /// Starts a program of gEngineDir and waits until it has ended and answered. Throws RunTimeError when it
  /// does not start, and what hasAnswered throws.
  /// @param hasAnswered asked while no program of this name is running
  /// @return false when the time was over or the learner has broken off
  bool RunLocal(const std::string& name, const std::string& argument,
                const std::function<bool()>& hasAnswered);

 private:
  using Milliseconds = std::chrono::milliseconds;
  void Allot();
  std::optional<std::string> Post(const std::string& page, const std::string& body);
  void AwaitNextTry(bool isOnline, Milliseconds atMost);
  bool IsStopped() const { return terms_.isStopped && terms_.isStopped(); }

  Program& program_;
  EngineTerms terms_;
};

}  // namespace marovane
