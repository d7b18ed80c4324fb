#include "core/settings.h"

#include <charconv>

#include "base/files.h"
#include "base/percent.h"
#include "base/text.h"
#include "core/data_paths.h"
#include "core/key_value_file.h"
#include "core/program.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "protocol/account.h"
#include "protocol/lists.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"

namespace marovane {

namespace {

constexpr std::string_view kFileSigns = "=\r\n";  // would cut a value in the file

}  // namespace

std::string ReadSetup(Program& program, std::string_view key) {
  return base::DecodeMarked(ReadWriteSetFile(program.machine.files, program.app.gSetupFile, "R", key, ""),
                            kFileSigns);
}

void WriteSetup(Program& program, std::string_view key, std::string_view value) {
  ReadWriteSetFile(program.machine.files, program.app.gSetupFile, "W", key,
                   base::EncodeMarked(value, kFileSigns));
}

void WriteNeedSync(Program& program, std::string_view value) { WriteSetup(program, "NeedSync", value); }

std::string GetRegValue(Program& program, std::string_view valueName) {
  return ReadWriteSetFile(program.machine.files, AccountFile(program.machine.environment), "R", valueName,
                          "");
}

namespace {

// Noted while the server has not accepted the settings that were saved last. A wrong password is not tried
// again until another one was typed: the server counts the tries.
constexpr const char* kUnsent = "unsentSettings";
constexpr const char* kWaiting = "1";
constexpr const char* kWrongPassword = "2";
constexpr const char* kSent = "0";

bool IsNone(const std::string& value) { return value.empty() || value == "0"; }

// Restores a value that `setup.set` lacks from the registry mirror, and writes it there. True when there was
// one.
bool RestoreFromRegistry(Program& program, const char* key, std::string& value) {
  const std::string mirrored = base::Trim(GetRegValue(program, key));
  value = IsNone(mirrored) ? "" : mirrored;
  WriteSetup(program, key, value);
  return !value.empty();
}

void LoadAccountNo(Program& program) {
  auto& accountNo = program.app.gAccountNo;
  accountNo = ReadSetup(program, "Pno");
  if (IsNone(accountNo) && !RestoreFromRegistry(program, "Pno", accountNo)) return;
  SyncUserSettings(program, accountNo, "r");
}

void LoadPassword(Program& program) {
  auto& password = program.app.gAccountPassword;
  password = ReadSetup(program, "userPW");
  if (IsNone(password)) RestoreFromRegistry(program, "userPW", password);
  if (program.proof.IsRefused(password)) password.clear();
}

void LoadFontSize(Program& program) {
  auto& app = program.app;
  app.gFontSizeName = ReadSetup(program, "FontSize");
  if (app.gFontSizeName != "MIDDLE" && app.gFontSizeName != "BIG" && app.gFontSizeName != "SMALL") {
    app.gFontSizeName = "MIDDLE";
    WriteSetup(program, "FontSize", app.gFontSizeName);
  }
  app.gInputFontSize = app.gFontSizeName == "BIG" ? 15 : 12;
}

// A value that is not legal is off in the file, and on for this run.
void LoadSwitch(Program& program, const char* key, std::string& value) {
  value = ReadSetup(program, key);
  if (value == "1" || value == "0") return;
  WriteSetup(program, key, "0");
  value = "1";
}

void SetTransformValue(Program& program, int value) {
  program.app.gTransformValue = value;
  WriteSetup(program, "transformValue", std::to_string(value));
}

void LoadTransformValue(Program& program) {
  constexpr int kDefault = 240;
  constexpr int kLeast = 100;
  constexpr int kMost = 32767;
  const std::string text = ReadSetup(program, "transformValue");
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  // Also a text that only begins with a digit is none that anybody wanted.
  if (text.empty() || text[0] < '0' || error != std::errc{} || end != text.data() + text.size() ||
      number > kMost) {
    SetTransformValue(program, kDefault);
  } else if (number < kLeast) {
    SetTransformValue(program, kLeast);
  } else {
    program.app.gTransformValue = number;
  }
}

void LoadTexts(Program& program) {
  auto& app = program.app;
  app.gEduBackground = ReadSetup(program, "eduBackground");
  if (app.gEduBackground.empty()) WriteSetup(program, "eduBackground", "");
  app.gFeedbackErrData = ReadSetup(program, "feedbackErrData");
  if (!app.gFeedbackErrData.empty()) return;
  app.gFeedbackErrData = "0";
  WriteSetup(program, "feedbackErrData", app.gFeedbackErrData);
}

// A password that is not kept for the next start is none in memory, but the server accepts no settings
// without it.
std::vector<protocol::Setting> SettingsList(Program& program, const std::string& pno) {
  std::vector<protocol::Setting> settings;
  for (const char* const name : {"alwaysOnTop", "autoCleanHistory", "autoKeyinPw", "eduBackground",
                                 "feedbackErrData", "FontSize", "Pno", "transformValue", "userPW"}) {
    settings.push_back({name, ReadSetup(program, name)});
    if (settings.back().name == "Pno") settings.back().value = pno;
  }
  const std::string& typed = program.app.gAccountPassword;
  if (!typed.empty()) settings.back().value = typed;
  return settings;
}

// Says whether the server has accepted them.
bool SendSettings(Program& program, const std::string& pno) {
  const std::vector<protocol::Setting> settings = SettingsList(program, pno);
  if (settings.back().value.empty()) return false;  // nobody has typed the password yet
  const std::string list = protocol::PlainValue(protocol::EncodeSettings(settings));
  const std::string reply = program.proof.Ask(
      protocol::page::kUserSettings, {{"pdcode", "mrv"}, {"pno", pno}, {"met", "w"}, {"setting", list}});
  const bool isAccepted = reply.starts_with("OK");
  if (isAccepted) WriteSetup(program, kUnsent, kSent);
  if (reply == protocol::refusal::kWrongPassword) WriteSetup(program, kUnsent, kWrongPassword);
  return isAccepted;
}

void StoreSettings(Program& program, const std::string& reply) {
  constexpr int kListFrom = 4;
  constexpr std::size_t kMostSettings = 50;
  // What has more names than the file has room for is some other page.
  const auto settings = protocol::ParseSettings(base::Mid(reply, kListFrom));
  if (settings.size() > kMostSettings) return;
  for (const auto& [name, value] : settings) WriteSetup(program, name, value);
}

}  // namespace

std::string StoredPassword(Program& program) {
  if (ReadSetup(program, "autoKeyinPw") == "0" && !program.installation.hasOwnServer) return "";
  const std::string stored = ReadSetup(program, "userPW");
  const std::string password = IsNone(stored) ? base::Trim(GetRegValue(program, "userPW")) : stored;
  return IsNone(password) ? "" : password;
}

void LoadSettings(Program& program) {
  auto& app = program.app;
  LoadAccountNo(program);  // what the server holds is what the following steps see
  LoadPassword(program);
  LoadFontSize(program);
  LoadSwitch(program, "autoCleanHistory", app.gAutoCleanHistory);
  LoadSwitch(program, "autoKeyinPw", app.gAutoKeyinPw);
  if (app.gAutoKeyinPw == "0" && !program.installation.hasOwnServer) app.gAccountPassword.clear();
  LoadSwitch(program, "alwaysOnTop", app.gAlwaysOnTop);
  LoadTransformValue(program);
  LoadTexts(program);
}

void SyncUserSettings(Program& program, std::string& pno, std::string_view mode) try {
  if (mode == "w") WriteSetup(program, kUnsent, kWaiting);
  if (!IsServerOnline(program)) return;
  pno = protocol::CleanAccount(pno);
  const std::string unsent = ReadSetup(program, kUnsent);
  // Until the server has them, its own are older.
  if (unsent == kWrongPassword || (unsent == kWaiting && !SendSettings(program, pno)) || mode == "w") return;
  const std::string reply =
      program.proof.Ask(protocol::page::kUserSettings, {{"pdcode", "mrv"}, {"pno", pno}, {"met", "r"}});
  // Also what is neither a success nor a refusal, such as some other server's page, holds no settings.
  if (reply.starts_with("OK")) StoreSettings(program, reply);
} catch (const BrokenOff&) {
  return;  // whoever does not want to wait for the server has the settings of this computer
}

void SyncUnsentSettings(Program& program) {
  const std::string unsent = ReadSetup(program, kUnsent);
  if (unsent == kWaiting || unsent == kWrongPassword) SyncUserSettings(program, program.app.gAccountNo, "w");
}

}  // namespace marovane
