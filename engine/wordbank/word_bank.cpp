#include <mutex>

#include "base/text.h"
#include "engine/text/token.h"
#include "engine/wexbin.h"
#include "engine/wordbank/text_table.h"
#include "engine/wordbank/translator.h"

namespace wexbin {
namespace {

// The lines of a text of the table: "phrase<TAB>note".
std::vector<Item> ItemsOf(std::string_view text) {
  std::vector<Item> items;
  while (!text.empty()) {
    std::string_view note = base::PopPiece(text, "\n");
    const std::string_view phrase = base::PopPiece(note, "\t");
    items.push_back({std::string(phrase), std::string(note)});
  }
  return items;
}

}  // namespace

std::string Item::Line() const { return note.empty() ? phrase : phrase + " >> " + note; }

struct WordBank::Data {
  explicit Data(const std::filesystem::path& dir)
      : bankFile(dir / "wordbank.tables"), bank(bankFile, "bank"), chinesePath(dir / "chinese.tables") {}

  // Most users of the bank never translate: the dictionary is mapped at the first question.
  const Translator& Chinese() {
    std::call_once(chineseMapped, [this] {
      chineseFile = std::make_unique<tolvex::TableFile>(chinesePath);
      translator = std::make_unique<Translator>(*chineseFile);
    });
    return *translator;
  }

  tolvex::TableFile bankFile;
  TextTable bank;
  std::filesystem::path chinesePath;
  std::once_flag chineseMapped;
  std::unique_ptr<tolvex::TableFile> chineseFile;
  std::unique_ptr<Translator> translator;
};

WordBank::WordBank(const std::filesystem::path& dataDir) : data_(std::make_unique<Data>(dataDir)) {}

WordBank::~WordBank() = default;

std::vector<Item> WordBank::Find(std::string_view word, std::string_view code) const {
  const auto found = data_->bank.Find(std::string(code) + ' ' + base::Lower(base::Trimmed(word)));
  return found ? ItemsOf(*found) : std::vector<Item>();
}

std::string WordBank::Reply(std::string_view query) const {
  const auto comma = query.rfind(',');
  if (comma == std::string_view::npos) return {};
  std::string reply;
  for (const Item& item : Find(query.substr(0, comma), base::Trimmed(query.substr(comma + 1)))) {
    reply += (reply.empty() ? "" : "<@>") + item.Line();
  }
  return reply;
}

std::string WordBank::Translate(std::string_view chinese) const {
  return data_->Chinese().Translate(chinese);
}

}  // namespace wexbin
