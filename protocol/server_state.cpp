#include "protocol/server_state.h"

#include <fmt/format.h>

#include "base/text.h"

namespace protocol {

std::string EncodeComparison(bool isSame, const ServerState& state) {
  return fmt::format("{}#{}#{}#{}", isSame ? "OK_" : "DIFFERENT", state.server, state.latestPost,
                     state.knowsSeen ? "Y" : "N");
}

std::optional<ServerState> ParseComparison(std::string_view reply) {
  const auto fields = base::Split(reply, "#");
  const bool hasState = fields.size() == 4 && (fields[0] == "OK_" || fields[0] == "DIFFERENT") &&
                        !fields[1].empty() && (fields[3] == "Y" || fields[3] == "N");
  if (!hasState) return std::nullopt;
  return ServerState{fields[1], fields[2], fields[3] == "Y"};
}

std::string EncodeSeen(std::string_view server, std::string_view latestPost) {
  return fmt::format("{}#{}", server, latestPost);
}

Seen ParseSeen(std::string_view header) {
  const auto fields = base::Split(header, "#");
  if (fields.size() != 2) return {};
  return {fields[0], fields[1]};
}

}  // namespace protocol
