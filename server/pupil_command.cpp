#include "server/pupil_command.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>

#include "protocol/account.h"
#include "server/accounts/password.h"
#include "server/command_line.h"
#include "server/owner_words.h"
#include "server/store/account_store.h"

namespace server {
namespace {

void SetPassword(AccountStore& store, const std::string& account) {
  const std::string password = ReadPassword();
  if (!protocol::IsPassword(password)) {
    throw std::runtime_error(
        fmt::format("the password, read from standard input, must have {} to {} letters, digits and signs of "
                    "ASCII, no blank at either end",
                    protocol::kShortestPassword, protocol::kLongestPassword));
  }
  store.PutAccount(account, HashPassword(password));
}

void ListComputers(AccountStore& store, const std::string& account) {
  const auto tokens = store.Tokens(account);
  fmt::print("{} computers\n", tokens.size());
  for (const Token& token : tokens) fmt::print("since {}, last used {}\n", token.madeDay, token.lastDay);
}

void ForgetComputers(AccountStore& store, const std::string& account) {
  const std::size_t count = store.Tokens(account).size();
  store.ForgetTokens(account);
  fmt::print("{} computers have to log in again\n", count);
}

}  // namespace

const char* const kPupilUsage =
    "       marovane-server pupil password NUMBER --data FOLDER\n"
    "       marovane-server pupil computers NUMBER --data FOLDER\n"
    "       marovane-server pupil forget NUMBER --data FOLDER\n";

PupilCommand ParsePupilCommand(const std::vector<std::string>& words) {
  using Action = PupilCommand::Action;
  static const std::map<std::string, Action> kActions = {
      {"password", Action::kPassword}, {"computers", Action::kComputers}, {"forget", Action::kForget}};
  if (words.empty()) throw UsageError("pupil: password, computers or forget is missing");
  const auto action = kActions.find(words[0]);
  if (action == kActions.end()) throw UsageError(fmt::format("pupil: unknown word \"{}\"", words[0]));
  const OwnerWords read = ReadOwnerWords({words.begin() + 1, words.end()});
  if (read.names.size() != 1) throw UsageError(fmt::format("pupil {} needs an account number", words[0]));
  return {action->second, read.dataDir, protocol::CleanAccount(read.names[0])};
}

void RunPupilCommand(const PupilCommand& command) {
  const auto store = OpenAccountStore(OwnersDatabase(command.dataDir));
  if (!store->PasswordHash(command.account)) {
    throw std::runtime_error(fmt::format("there is no account \"{}\"", command.account));
  }
  switch (command.action) {
    case PupilCommand::Action::kPassword:
      return SetPassword(*store, command.account);
    case PupilCommand::Action::kComputers:
      return ListComputers(*store, command.account);
    case PupilCommand::Action::kForget:
      return ForgetComputers(*store, command.account);
  }
}

}  // namespace server
