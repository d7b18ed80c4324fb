// User settings: from `setup.set` into the shared state, and to and from the server.
#pragma once

#include <string>
#include <string_view>

namespace marovane {

struct Program;

/// Fills the settings of the shared state from `setup.set`, repairing what is missing or not legal. Throws
/// RunTimeError when the file cannot be read or written.
void LoadSettings(Program& program);

/// Fetches the settings from the server into `setup.set` (mode "r") or sends those that are there (mode "w").
/// An unreachable server or a refusal changes nothing; settings that it has not accepted are sent before any
/// are fetched.
/// @param pno account number; comes back without "-" and blanks when the server could be reached.
void SyncUserSettings(Program& program, std::string& pno, std::string_view mode);

/// Sends the settings that the server has not accepted yet, now that it may: the password is known.
void SyncUnsentSettings(Program& program);

/// A value of the read-only mirror of the account registry; "" when it is missing.
std::string GetRegValue(Program& program, std::string_view valueName);

/// One key of `setup.set`.
std::string ReadSetup(Program& program, std::string_view key);
void WriteSetup(Program& program, std::string_view key, std::string_view value);
/// The password that was kept for later starts; "" when there is none or it is not to be used.
std::string StoredPassword(Program& program);
/// Notes in `setup.set` whether something waits for the next full synchronisation, "Y" or "N".
void WriteNeedSync(Program& program, std::string_view value);

}  // namespace marovane
