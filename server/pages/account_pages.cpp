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

constexpr std::size_t kPasswordLimit = 64;
constexpr std::size_t kOwnerLimit = 200;
constexpr std::size_t kListLimit = 1000;

/// What of the list is kept. Not `Pno`, which the asker names, and not `userPW`: whoever knows an account's
/// number may ask for its settings.
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

Reply WriteSettings(Services& services, const Form& form) {
  const Settings settings = protocol::ParseSettings(form.Required("setting", kListLimit));
  const auto password = Find(settings, "userPW");
  const std::string account =
      services.accounts.Authenticate(Number(form), password == settings.end() ? "" : password->value);
  services.store.PutUserSettings(account, KeptList(settings));
  return TextReply("OK_");
}

Reply ReadSettings(Services& services, const Form& form) {
  const std::string account = services.accounts.Known(Number(form));
  return TextReply("OK_" + protocol::EncodeSettings({{"Pno", account}}) +
                   services.store.UserSettings(account));
}

/// A campus login. The first one of an account sets its password.
Reply CampusLogin(Services& services, const Form& form, const std::string& password) {
  const std::string login = form.Required("login", kNumberLimit);
  const bool isFirst = services.accounts.SetFirstPassword(login, password);
  if (!isFirst) services.accounts.Authenticate(login, password);
  const ServerSettings& settings = services.settings;
  return TextReply(
      fmt::format("{}{}#{}#", isFirst ? "SET_" : "OK_", settings.schoolCode, settings.schoolName));
}

bool WantsAccount(const Form& form) {
  return form.Find("pno").value_or("").empty() && !form.Find("username").value_or("").empty();
}

Reply MakeAccount(Services& services, const Form& form, const std::string& password) {
  if (!services.settings.openAccounts) throw Refusal(refusal::kClosed);
  const std::string userName = form.Required("username", kOwnerLimit);
  const std::string email = form.Required("email", kOwnerLimit);
  if (email.find('@') == std::string::npos) throw Refusal(refusal::kWrongEmail);
  const std::string account = services.accounts.Make(password);
  services.store.PutOwner(account, userName, email);
  return TextReply("OK_" + account);
}

}  // namespace

Reply SchoolServer(Services& services, const Call& call) {
  const auto& schools = services.settings.schools;
  const auto school = schools.find(protocol::CleanAccount(call.form.Required("regId", kNumberLimit)));
  if (school == schools.end()) throw Refusal(refusal::kNotFound);
  return TextReply("OK_" + school->second);
}

Reply Login(Services& services, const Call& call) {
  const std::string password = call.form.Required("password", kPasswordLimit);
  if (call.form.Find("login")) return CampusLogin(services, call.form, password);
  if (WantsAccount(call.form)) return MakeAccount(services, call.form, password);
  return TextReply("OK_" + services.accounts.Authenticate(Number(call.form), password));
}

Reply CheckPassword(Services& services, const Call& call) {
  const std::string password = call.form.Required("pw", kPasswordLimit);
  return TextReply("OK_" + services.accounts.Authenticate(Number(call.form), password));
}

Reply UserSettings(Services& services, const Call& call) {
  const std::string method = call.form.Required("met", kWordLimit);
  if (method == "r") return ReadSettings(services, call.form);
  if (method == "w") return WriteSettings(services, call.form);
  throw Refusal(refusal::kUnknownMethod);
}

Reply UserAct(Services& services, const Call& call) {
  const std::string act = call.form.Required("act", kWordLimit);
  if (std::ranges::find(kActs, act) == kActs.end()) throw Refusal(refusal::kUnknownAct);
  services.store.CountAct(services.accounts.Known(Number(call.form)), base::IsoDay(base::Today()), act);
  return TextReply("OK_");
}

}  // namespace server
