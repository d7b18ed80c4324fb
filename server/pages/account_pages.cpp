// Logins, a learner's settings, and which parts of the program are used.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>

#include "base/day.h"
#include "base/text.h"
#include "protocol/account.h"
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

using Settings = std::map<std::string, std::string, std::less<>>;

std::string Number(const Form& form) { return form.Required("pno", kNumberLimit); }

/// The "name:value" pairs of a list joined by "$". As for the program, a value ends at a second ":".
Settings SettingsOf(std::string_view list) {
  Settings settings;
  while (!list.empty()) {
    std::string_view pair = base::PopPiece(list, "$");
    const std::string name = base::Trim(base::PopPiece(pair, ":"), base::kWhiteSpace);
    settings.emplace(name, base::Trim(base::PopPiece(pair, ":"), base::kWhiteSpace));
  }
  return settings;
}

std::string KeptList(const Settings& settings) {
  std::string list;
  for (const std::string_view name : kKeptSettings) {
    const auto setting = settings.find(name);
    if (setting != settings.end()) list += fmt::format("${}:{}", name, setting->second);
  }
  return list;
}

Reply WriteSettings(Services& services, const Form& form) {
  const auto settings = SettingsOf(form.Required("setting", kListLimit));
  const auto password = settings.find("userPW");
  const std::string account =
      services.accounts.Authenticate(Number(form), password == settings.end() ? "" : password->second);
  services.store.PutUserSettings(account, KeptList(settings));
  return TextReply("OK_");
}

Reply ReadSettings(Services& services, const Form& form) {
  const std::string account = services.accounts.Known(Number(form));
  return TextReply(fmt::format("OK_Pno:{}{}", account, services.store.UserSettings(account)));
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
