#include "platform/host/opencc.h"

#include <fmt/format.h>
#include <opencc.h>

#include <cstddef>
#include <exception>
#include <unordered_map>
#include <utility>

#include "base/utf16.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

std::size_t CharacterSize(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

}  // namespace

class OpenCcConverter::Direction {
 public:
  explicit Direction(std::string tables) : tables_(std::move(tables)) {}

  std::string Convert(std::string_view text) {
    // Well-formed from here on, so that each lead byte tells the truth about what follows.
    const std::string whole = base::ToUtf8(base::ToUtf16(text));
    std::string result;
    result.reserve(whole.size());
    for (std::string_view rest = whole; !rest.empty(); rest.remove_prefix(CharacterSize(rest))) {
      const std::string_view character = rest.substr(0, CharacterSize(rest));
      result += character.size() == 1 ? character : std::string_view(Counterpart(character));
    }
    return result;
  }

 private:
  const std::string& Counterpart(std::string_view character) {
    const auto [found, isNew] = known_.try_emplace(std::string(character));
    if (isNew) {
      const std::string converted = Ask(character);
      const bool isOne = !converted.empty() && CharacterSize(converted) == converted.size();
      found->second = isOne ? converted : character;
    }
    return found->second;
  }

  std::string Ask(std::string_view character) {
    try {
      if (!converter_) converter_ = std::make_unique<opencc::SimpleConverter>(tables_);
      return converter_->Convert(std::string(character));
    } catch (const std::exception& error) {
      throw RunTimeError(fmt::format("OpenCC, {}: {}", tables_, error.what()));
    }
  }

  std::string tables_;
  std::unique_ptr<opencc::SimpleConverter> converter_;
  std::unordered_map<std::string, std::string> known_;
};

OpenCcConverter::OpenCcConverter()
    : toSimplified_(std::make_unique<Direction>("t2s.json")),
      toTraditional_(std::make_unique<Direction>("s2t.json")) {}

OpenCcConverter::~OpenCcConverter() = default;

std::string OpenCcConverter::ToSimplified(std::string_view text) const {
  return toSimplified_->Convert(text);
}

std::string OpenCcConverter::ToTraditional(std::string_view text) const {
  return toTraditional_->Convert(text);
}

}  // namespace marovane
