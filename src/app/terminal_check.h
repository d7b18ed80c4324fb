// One sentence after another through the main window, and what came out of it.
#pragma once

#include <optional>
#include <string>

#include "app/page_fetcher.h"
#include "engine/tolvex.h"

namespace marovane {

struct Composition;

class TerminalCheck {
 public:
  enum ExitStatus { kRight = 0, kErrors = 1, kWatch = 2, kNoAnswer = 3 };

  TerminalCheck(Composition& composition, bool json);

  /// Checks one sentence and prints what the engine says.
  void Check(const std::string& sentence);
  /// The gravest status of all checks so far.
  int Status() const { return status_; }

 private:
  void Ask(const std::string& sentence);
  void Print(const std::string& sentence) const;
  void PrintJson(const std::string& sentence);
  void Raise(const std::string& verdict);
  std::string MarkedSentence(const std::string& sentence) const;
  std::string Outline() const;
  /// What the engine of this installation finds in the sentence as it was sent: the exchanges carry only the
  /// surest fault.
  tolvex::Judgement Faults(const std::string& plain);

  Composition& composition_;
  PageFetcher fetcher_;
  std::optional<tolvex::Engine> engine_;
  bool json_;
  int status_ = kRight;
};

}  // namespace marovane
