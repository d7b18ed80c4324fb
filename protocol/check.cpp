#include "protocol/check.h"

#include <fmt/format.h>

#include "base/digest.h"
#include "base/text.h"
#include "protocol/form.h"

namespace protocol {
namespace {

std::string Field(std::string_view text) { return base::Replace(text, "#", "＃"); }

std::string Suggestions(std::string_view text) { return base::Replace(Field(text), ",", "<@>"); }

}  // namespace

std::string EncodeCheck(const std::string& account, std::string_view runCode, const std::string& sentence) {
  return PlainBody({{"pno", account},
                    {"pnomd5", base::SlotMd5(account)},
                    {"checksum", base::SlotMd5(base::Replace(sentence, " ", ""))},
                    {"p1", "beta"},
                    {"p2", "0"},
                    {"p3", runCode},
                    {"cidx", "0"},
                    {kSentenceField, base::Replace(sentence, " ", "%20")}});
}

std::string EncodeCheckReply(const CheckReply& reply) {
  if (reply.IsRight()) {
    return fmt::format("0#0#{}#{}#{}", reply.pagePath, Suggestions(reply.colSuggestion),
                       Suggestions(reply.synSuggestion));
  }
  return fmt::format("{}#{}#{}#{}", reply.findMistake, Field(reply.errcode), reply.pagePath,
                     Field(reply.sentence));
}

CheckReply ParseCheckReply(std::string_view text) {
  auto fields = base::Split(text, "#");
  fields.resize(5);
  for (auto& field : fields) field = base::Trim(field);
  if (fields[0] == "0") {
    return {.findMistake = "0",
            .errcode = "0",
            .sentence = "",
            .pagePath = fields[2],
            .colSuggestion = base::Replace(fields[3], "<@>", ","),
            .synSuggestion = base::Replace(fields[4], "<@>", ",")};
  }
  if (fields[0] != "1" && fields[0] != "2") return {};
  return {.findMistake = fields[0],
          .errcode = ErrorCodeOf(fields[1]),
          .sentence = fields[3],
          .pagePath = fields[2],
          .colSuggestion = "",
          .synSuggestion = ""};
}

std::string ErrorCodeOf(std::string_view text) {
  constexpr int kLongest = 6;
  const std::string plain = base::Replace(text, "!", "");
  return base::Mid(base::Trim(std::string_view(plain).substr(0, plain.find('#'))), 1, kLongest);
}

}  // namespace protocol
