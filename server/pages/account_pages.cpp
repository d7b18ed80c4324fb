// Logins, a learner's settings, and which parts of the program are used.
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/day.h"
#include "protocol/account.h"
#include "protocol/lists.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kOwnerLimit = 200;
constexpr std::size_t kListLimit = 1000;

/// What of the list is kept. Not `Pno`, which the asker names, and not `userPW`: a reply never holds a
/// password.
constexpr std::array<std::string_view, 7> kKeptSettings = {"alwaysOnTop",   "autoCleanHistory", "autoKeyinPw",
                                                           "eduBackground", "feedbackErrData",  "FontSize",
                                                           "transformValue"};
constexpr std::array<std::string_view, 5> kActs = {"collo", "similar", "similar_2", "chn2eng", "eng2xpl"};

using Settings = std::vector<protocol::Setting>;

std::string Number(const Form& form) { return form.Required("pno", kNumberLimit); }

/// The first setting of this name, or the end.
auto Find(const Settings& settings, std::string_view name) {
  return std::ranges::find(settings, name, &protocol::Setting::name);
}

/// What is kept of a list, in the form that follows the account number in a reply.
std::string KeptList(const Settings& settings) {
  std::string list;
  for (const std::string_view name : kKeptSettings) {
    const auto setting = Find(settings, name);
    if (setting != settings.end()) list += "$" + protocol::EncodeSettings({*setting});
  }
  return list;
}

/// Proven by the password in the list.
Reply WriteSettings(Services& services, const Call& call) {
  const Settings settings = protocol::ParseSettings(call.form.Required("setting", kListLimit));
  const auto password = Find(settings, "userPW");
  const std::string account = services.accounts.Authenticate(
      Number(call.form), password == settings.end() ? "" : password->value, call.caller.address);
  services.store.PutUserSettings(account, KeptList(settings));
  return TextReply("OK_");
}

Reply ReadSettings(Services& services, const Call& call) {
  const std::string account = LearnerOf(services, call.caller, Number(call.form));
  return TextReply("OK_" + protocol::EncodeSettings({{"Pno", account}}) +
                   services.store.UserSettings(account));
}

Reply WithToken(Reply reply, const LoggedIn& login) {
  reply.token = login.token;
  return reply;
}

Reply LoginReply(const LoggedIn& login) { return WithToken(TextReply("OK_" + login.account), login); }

/// A campus login. The first one of an account sets its password.
Reply CampusLogin(Services& services, const Call& call, const std::string& password) {
  const std::string number = call.form.Required("login", kNumberLimit);
  const bool isFirst = services.accounts.SetFirstPassword(number, password, call.caller.address);
  const LoggedIn login = services.accounts.LogIn(number, password, call.caller);
  const ServerSettings& settings = services.settings;
  return WithToken(
      TextReply(fmt::format("{}{}#{}#", isFirst ? "SET_" : "OK_", settings.schoolCode, settings.schoolName)),
      login);
}

bool WantsAccount(const Form& form) {
  return form.Find("pno").value_or("").empty() && !form.Find("username").value_or("").empty();
}

Reply MakeAccount(Services& services, const Form& form, const std::string& password) {
  if (!services.settings.openAccounts) throw Refusal(refusal::kClosed);
  const std::string userName = form.Required("username", kOwnerLimit);
  const std::string email = form.Required("email", kOwnerLimit);
  if (email.find('@') == std::string::npos) throw Refusal(refusal::kWrongEmail);
  const LoggedIn login = services.accounts.Make(password);
  services.store.PutOwner(login.account, userName, email);
  return LoginReply(login);
}

}  // namespace

Reply SchoolServer(Services& services, const Call& call) {
  const auto& schools = services.settings.schools;
  const auto school = schools.find(protocol::CleanAccount(call.form.Required("regId", kNumberLimit)));
  if (school == schools.end()) throw Refusal(refusal::kNotFound);
  return TextReply("OK_" + school->second);
}

Reply Login(Services& services, const Call& call) {
  const std::string password = call.form.Required("password", protocol::kLongestPassword);
  if (call.form.Find("login")) return CampusLogin(services, call, password);
  if (WantsAccount(call.form)) return MakeAccount(services, call.form, password);
  return LoginReply(services.accounts.LogIn(Number(call.form), password, call.caller));
}

Reply CheckPassword(Services& services, const Call& call) {
  const std::string password = call.form.Required("pw", protocol::kLongestPassword);
  return LoginReply(services.accounts.LogIn(Number(call.form), password, call.caller));
}

Reply UserSettings(Services& services, const Call& call) {
  const std::string method = call.form.Required("met", kWordLimit);
  if (method == "r") return ReadSettings(services, call);
  if (method == "w") return WriteSettings(services, call);
  throw Refusal(refusal::kUnknownMethod);
}

Reply UserAct(Services& services, const Call& call) {
  const std::string act = call.form.Required("act", kWordLimit);
  if (std::ranges::find(kActs, act) == kActs.end()) throw Refusal(refusal::kUnknownAct);
  services.store.CountAct(call.account, base::IsoDay(base::Today()), act);
  return TextReply("OK_");
}

}  // namespace server
