// One sentence after another through the main window, and what came out of it.
#pragma once

#include <string>

#include "app/page_fetcher.h"

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
  void PrintJson(const std::string& sentence) const;
  void Raise(const std::string& verdict);
  std::string MarkedSentence(const std::string& sentence) const;
  std::string Outline() const;

  Composition& composition_;
  PageFetcher fetcher_;
  bool json_;
  int status_ = kRight;
};
