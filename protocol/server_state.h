// Which server has which of an account's records: what the reply to a comparison says beside its word.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace protocol {

/// Changes are known by the ids of the posts that brought them; a server remembers all of them. So a server
/// that was restored from an older copy does not know what a program has seen since then.
struct ServerState {
  std::string server;      ///< drawn when its database was made
  std::string latestPost;  ///< the latest change of the account's records; "" when there was none
  bool knowsSeen = true;   ///< what the program says that it has seen is of this server, and known to it

  bool operator==(const ServerState&) const = default;
};

/// The reply to a comparison: its word, and the state of the server.
std::string EncodeComparison(bool isSame, const ServerState& state);
/// The state in such a reply; nothing from a server that tells none.
std::optional<ServerState> ParseComparison(std::string_view reply);

/// The value of the header that says what a program has seen of a server.
std::string EncodeSeen(std::string_view server, std::string_view latestPost);
struct Seen {
  std::string server, latestPost;
};
/// Empty texts for a header that is none.
Seen ParseSeen(std::string_view header);

}  // namespace protocol
