// An essay at the terminal: walked through, corrected, and reported on.
#pragma once

#include <string>

#include "app/page_fetcher.h"
#include "platform/timer.h"

namespace marovane {

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
  /// the input breaks off. Throws RunTimeError for an unknown topic.
  /// @param topic id of a topic that has essays already, "" for a new one
  /// @param title of a new topic, "" for one made from the day
  int Walk(const std::string& text, const std::string& topic, const std::string& title);
  /// Prints the report of an essay, or writes its page to a file when one is named. Throws RunTimeError.
  int Report(const std::string& essayId, const std::string& htmlFile);

  /// Lists the topics, each with its essays.
  int Topics();
  /// Deletes an essay with its sentences, here and on the server. Throws RunTimeError for an unknown one and
  /// for one that was handed in.
  int Delete(const std::string& essayId);

 private:
  void OpenTopic(const std::string& topic, const std::string& title);
  void AskCorrection();
  void ExplainFault();

  Composition& composition_;
  PagePrinter printer_;
  Timer correcting_;  ///< looks whether the walk waits for a correction, or for another one
};

/// Runs the command `essay` and gives its exit status. Throws RunTimeError.
int RunEssay(Composition& composition, const TerminalCommand& command);

}  // namespace marovane
