// The check engine: the only header of it that the program and the server see.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex {

/// The folder of the language data: the first that exists of the one that the variable MAROVANE_DATA names,
/// ../share/tolvex and ../share/marovane/tolvex beside the running program. Throws std::runtime_error when
/// there is none.
std::filesystem::path FindDataDir();

/// What the engine thinks of a sentence. The numbers are the ones of the key `findMistake`.
enum class Verdict { kRight = 0, kErrors = 1, kWatch = 2 };

/// Byte offsets into the sentence as it was given: [begin, end). An insertion has begin == end.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// One fault. Texts are UTF-8.
struct Fault {
  std::string code;                      ///< code of the error catalogue, at most 6 letters and digits
  Verdict level = Verdict::kErrors;      ///< kErrors or kWatch
  Span span;                             ///< where it is
  std::string message;                   ///< what is wrong and why, in Traditional Chinese for a beginner
  std::vector<std::string> corrections;  ///< texts to put in place of the span, best first
};

/// The engine's answer for one sentence.
struct Judgement {
  Verdict verdict = Verdict::kRight;
  std::string errcode = "0";   ///< code of the most certain fault, "0" when there is none
  std::string marked;          ///< the sentence with "*" before and after each faulty part
  std::vector<Fault> faults;   ///< at most three, the most certain first
  std::string corrected;       ///< the sentence with the first corrections put in
  std::string col_suggestion;  ///< "0", or items as the suggestion window reads them
  std::string syn_suggestion;  ///< "0", or items as the suggestion window reads them
};

/// One loaded engine. Judge is const and may be called from several threads at once.
class Engine {
 public:
  /// Loads the language data of a folder. Throws std::runtime_error with a readable text when a file
  /// is missing or damaged. The dictionary of the parser goes on loading in the background.
  explicit Engine(const std::filesystem::path& dataDir);
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  /// Returns when everything is loaded. Throws std::runtime_error when the parser's dictionary is damaged.
  void WaitUntilLoaded() const;

  /// Judges one English sentence (ASCII expected; other bytes are treated as unknown signs). Throws on no
  /// input; only a damaged dictionary of the parser makes it throw, by the first sentence that needs it.
  Judgement Judge(std::string_view sentence) const;

 private:
  struct Data;
  std::unique_ptr<Data> data_;
};

/// The result page of a judgement: UTF-8 text of a complete HTML page whose meta line declares Big5, made of
/// characters that Big5 holds. A page for a right sentence contains "本句子沒有發現錯誤".
std::string ResultPage(std::string_view sentence, const Judgement& judgement);
/// The same page around a body that was taken out of one.
std::string ResultPageOf(std::string_view body);

}  // namespace tolvex
