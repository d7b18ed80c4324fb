// An essay at the terminal: walked through, corrected, and reported on.
#pragma once

#include <string>

#include "app/page_fetcher.h"
#include "platform/timer.h"

struct Composition;
struct TerminalCommand;

/// Prints what a browser would show.
class PagePrinter : public PageFetcher {
 public:
  using PageFetcher::PageFetcher;
  void Navigate(const std::string& url) override;
};

class TerminalEssay {
 public:
  enum ExitStatus { kFinished = 0, kBrokenOff = 1, kNoAnswer = 3 };

  explicit TerminalEssay(Composition& composition);

  /// Walks a text (UTF-8). Corrections are read from standard input, one a line; an empty line or the end of
  /// the input breaks off.
  int Walk(const std::string& text);
  /// Prints the report of an essay, or writes its page to a file when one is named. Throws RunTimeError.
  int Report(const std::string& essayId, const std::string& htmlFile);

 private:
  void AskCorrection();
  void ExplainFault();

  Composition& composition_;
  PagePrinter printer_;
  Timer correcting_;  ///< looks whether the walk waits for a correction, or for another one
};

/// Runs the command `essay` and gives its exit status. Throws RunTimeError.
int RunEssay(Composition& composition, const TerminalCommand& command);
