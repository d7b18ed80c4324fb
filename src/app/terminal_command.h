// The words of the terminal edition's command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/day.h"

namespace marovane {

struct TerminalCommand {
  enum class Kind {
    kCheck,
    kRecords,
    kDays,
    kSentences,
    kMistakes,
    kExport,
    kEssay,
    kEssayReport,
    kEssayTopics,
    kEssayDelete,
    kWords,
    kTranslate,
    kSelfCheck,
    kHelp,
    kVersion
  };
  Kind kind = Kind::kCheck;
  bool local = false;  ///< check with the local engine
  bool json = false;
  bool paragraph = false;  ///< export sentences as one paragraph
  std::string file;        ///< to export into
  std::vector<std::string> sentences;
  std::string query;  ///< "word,code" for the word bank, or the Chinese to translate
  std::vector<base::Day> days;
  std::string essay;     ///< file to walk, or id of an essay to report on or to delete
  std::string title;     ///< of a new topic for the essay, "" for one made from the day
  std::string topic;     ///< id of a topic that is taken up again
  std::string htmlFile;  ///< where the report's page goes; "" prints it as text
};

/// Nothing when the words make no command; `problem` then says why.
std::optional<TerminalCommand> ParseTerminalCommand(const std::vector<std::string>& words,
                                                    std::string& problem);

extern const char* const kTerminalUsage;

}  // namespace marovane
