// The records at a terminal.
#include <fmt/format.h>

#include "app/compose.h"
#include "app/terminal.h"
#include "app/terminal_command.h"
#include "base/day.h"
#include "core/text_utility.h"
#include "views/day_sentences_page.h"
#include "views/error_statistics_page.h"

namespace marovane {

namespace {

void ListDay(RecordDb& records, base::Day day) {
  const std::string date = base::ShownDay(day);
  for (const auto& row : records.OkSentencesOf(day)) {
    fmt::print("{}\tPASS\t0\t{}\n", date, PlainApostrophes(row.sentence));
  }
  for (const auto& row : records.ErrSentencesOf(day)) {
    fmt::print("{}\tERRS\t{}\t{}\n", date, row.errcode, PlainApostrophes(row.sentence));
  }
}

void ListRecords(RecordDb& records, const TerminalCommand& command) {
  for (const auto& day : command.days.empty() ? records.Days() : command.days) ListDay(records, day);
}

void ListDays(RecordDb& records) {
  DayRecords days(records);
  RebuildDays(days);
  for (const auto& [day, ok, err] : DiaryDays(days)) {
    fmt::print("{}\t{}\t{}\t{}\n", base::ShownDay(day), FormatNumber(ok + err), FormatNumber(ok),
               FormatNumber(err));
  }
}

std::vector<std::string> ShownSentences(RecordDb& records, const TerminalCommand& command) {
  std::vector<std::string> sentences;
  for (const auto& row : DayRecords(records).OkSentences(command.days)) {
    sentences.push_back(ShownSentence(row));
  }
  return sentences;
}

void ListMistakes(Composition& composition) {
  for (const auto& category : CountErrors(composition.errList, composition.records)) {
    fmt::print("{}\t{}\t{}\n", category.category.id, category.category.name, FormatNumber(category.count));
    for (const auto& [code, count] : category.codes) {
      fmt::print("  {}\t{}\t{}\n", code.errcode, code.outline, FormatNumber(count));
    }
  }
}

int Export(Composition& composition, const TerminalCommand& command) {
  const bool isWritten = ExportSentences(composition.program, command.file,
                                         ShownSentences(composition.records, command), command.paragraph);
  return isWritten ? 0 : 1;
}

}  // namespace

int RunRecordCommand(Composition& composition, const TerminalCommand& command) {
  using Kind = TerminalCommand::Kind;
  if (command.kind == Kind::kExport) return Export(composition, command);
  if (command.kind == Kind::kRecords) ListRecords(composition.records, command);
  if (command.kind == Kind::kDays) ListDays(composition.records);
  if (command.kind == Kind::kMistakes) ListMistakes(composition);
  if (command.kind == Kind::kSentences) {
    for (const auto& sentence : ShownSentences(composition.records, command)) fmt::print("{}\n", sentence);
  }
  return 0;
}

}  // namespace marovane
