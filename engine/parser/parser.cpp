#include "engine/parser/parser.h"

#include <link-grammar/link-includes.h>

#include <algorithm>
#include <future>
#include <mutex>
#include <stdexcept>

#if defined(__SANITIZE_ADDRESS__)
// The library keeps the path of its dictionary for each thread, and loses it when the loading thread ends:
// once, some bytes.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { return "leak:liblink-grammar\n"; }
extern "C" const char* __lsan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#endif

namespace tolvex {
namespace {

constexpr int kLinkageLimit = 100;
constexpr int kShortLength = 10;

struct OptionsDeleter {
  void operator()(Parse_Options options) const { parse_options_delete(options); }
};
struct SentenceDeleter {
  void operator()(::Sentence sentence) const { sentence_delete(sentence); }
};
using SharedDictionary = std::shared_ptr<std::remove_pointer_t<Dictionary>>;
using OptionsHandle = std::unique_ptr<std::remove_pointer_t<Parse_Options>, OptionsDeleter>;
using SentenceHandle = std::unique_ptr<std::remove_pointer_t<::Sentence>, SentenceDeleter>;

OptionsHandle StrictOptions() {
  OptionsHandle options(parse_options_create());
  parse_options_set_verbosity(options.get(), 0);
  parse_options_set_linkage_limit(options.get(), kLinkageLimit);
  parse_options_set_short_length(options.get(), kShortLength);
  parse_options_set_spell_guess(options.get(), 0);
  parse_options_set_min_null_count(options.get(), 0);
  parse_options_set_max_null_count(options.get(), 0);
  parse_options_set_max_parse_time(options.get(), 1);
  parse_options_reset_resources(options.get());
  return options;
}

std::string PlainForm(const Token& token) {
  if (token.lower == "he/she" || token.lower == "she/he" || token.lower == "s/he") return "he";
  if (token.lower == "his/her" || token.lower == "her/his") return "his";
  return token.text;
}

bool IsEnd(const std::string& text) { return text == "." || text == "?" || text == "!"; }

bool OpensClauseLoosely(const Sentence& sentence, int i) {
  return sentence.Is(i, {"and", "but", "so", "or", "because", "while", "whereas", "although", "though", "if",
                         "when", "since", "as", "where"});
}

bool IsOpener(const Sentence& sentence) {
  return sentence.Is(
      0, {"and",      "but",         "so",       "or",        "also",         "then",      "first",
          "second",   "third",       "secondly", "firstly",   "thirdly",      "lastly",    "finally",
          "moreover", "furthermore", "however",  "therefore", "thus",         "hence",     "nowadays",
          "besides",  "yet",         "still",    "now",       "consequently", "otherwise", "unfortunately"});
}

[[noreturn]] void Unreadable(const std::filesystem::path& dataDir) {
  throw std::runtime_error("missing or damaged language data: " + (dataDir / kParserLanguage).string());
}

SharedDictionary LoadDictionary(const std::filesystem::path& dataDir) {
  static std::mutex loading;  // the data directory is a setting of the whole library
  const std::lock_guard lock(loading);
  // Without a handler the library would pile its messages up for each thread.
  lg_error_set_handler([](lg_errinfo*, void*) {}, nullptr);
  dictionary_set_data_dir(std::filesystem::absolute(dataDir).c_str());
  SharedDictionary dictionary(dictionary_create_lang(kParserLanguage), [](Dictionary loaded) {
    if (loaded != nullptr) dictionary_delete(loaded);
  });
  if (!dictionary) Unreadable(dataDir);
  return dictionary;
}

}  // namespace

struct Parser::Handle {
  std::shared_future<SharedDictionary> dictionary;
};

Parser::Parser(const std::filesystem::path& dataDir) : handle_(std::make_unique<Handle>()) {
  if (!std::filesystem::exists(dataDir / kParserLanguage / "4.0.dict")) Unreadable(dataDir);
  handle_->dictionary = std::async(std::launch::async, LoadDictionary, dataDir).share();
}

Parser::~Parser() = default;

void Parser::WaitUntilLoaded() const { handle_->dictionary.get(); }

bool ParseEffort::Spend(int tokens) {
  const long cost = long{tokens} * tokens * tokens;
  if (cost > left_) return false;
  left_ -= cost;
  return true;
}

bool Parser::Accepts(const std::string& text) const {
  const SentenceHandle parsed(sentence_create(text.c_str(), handle_->dictionary.get().get()));
  const OptionsHandle options = StrictOptions();
  if (sentence_split(parsed.get(), options.get()) < 0) return false;
  return sentence_parse(parsed.get(), options.get()) > 0 && sentence_num_valid_linkages(parsed.get()) > 0;
}

bool Parser::AcceptsPart(const Sentence& sentence, int first, int end, ParseEffort& effort) const {
  if (end - first < 2) return true;
  if (!effort.Spend(end - first)) return false;
  std::string text;
  for (int i = first; i < end; ++i) {
    if (i > first && sentence.At(i).spaceBefore) text += ' ';
    text += i == first ? Capitalised(PlainForm(sentence.At(i))) : PlainForm(sentence.At(i));
  }
  if (!IsEnd(sentence.At(end - 1).text)) text += '.';
  return Accepts(text);
}

bool Parser::AcceptsLoosely(const Sentence& sentence, ParseEffort& effort) const {
  const int size = sentence.Size();
  if (AcceptsPart(sentence, 0, size, effort)) return true;
  int start = 0;
  if (size > 3 && IsOpener(sentence)) {
    start = sentence.At(1).text == "," ? 2 : 1;
    if (AcceptsPart(sentence, start, size, effort)) return true;
  }
  for (int i = start + 1; i < std::min(size - 3, start + 9); ++i) {
    if (sentence.At(i).text != ",") continue;
    if (AcceptsPart(sentence, i + 1, size, effort)) return true;
    break;
  }
  for (int i = start + 3; i < size - 3; ++i) {
    const std::string& text = sentence.At(i).text;
    const bool mark = text == ";" || text == ":" || text == "--" || text == "-";
    const bool comma = text == "," && OpensClauseLoosely(sentence, i + 1);
    if (!mark && !comma) continue;
    if (AcceptsPart(sentence, start, i, effort) && AcceptsPart(sentence, comma ? i + 2 : i + 1, size, effort))
      return true;
  }
  return false;
}

}  // namespace tolvex
