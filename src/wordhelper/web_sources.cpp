#include "wordhelper/web_sources.h"

#include <algorithm>

#include "base/cp950.h"
#include "base/files.h"
#include "base/percent.h"
#include "base/text.h"
#include "core/program.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

std::string ChoiceFile(const Program& program) { return program.app.gTempDir + "/marovane/websource.set"; }

bool IsDigit(const std::string& text) { return text.size() == 1 && text[0] >= '0' && text[0] <= '9'; }

std::string LineOf(std::string_view bytes) {
  if (bytes.ends_with('\r')) bytes.remove_suffix(1);
  try {
    return base::Trim(base::FromCp950(bytes));
  } catch (const RunTimeError&) {
    return "";
  }
}

}  // namespace

std::string AddressOf(const protocol::OutsideSite& site, const std::string& text) {
  const std::string address = base::Replace(site.url, kSearchedText, text);
  return site.lang == "cn" ? base::UrlEncodeUtf8(address) : address;
}

ChosenSources ReadChosenSources(Program& program) {
  ChosenSources chosen;
  const base::Files& files = program.machine.files;
  if (!files.FileExists(ChoiceFile(program))) return chosen;
  const auto lines = base::Split(files.Read(ChoiceFile(program)), "\n");
  for (std::size_t i = 0; i < std::min(chosen.size(), lines.size()); ++i) chosen[i] = LineOf(lines[i]);
  return chosen;
}

void WriteChosenSources(Program& program, const ChosenSources& chosen) {
  std::string bytes;
  for (const auto& name : chosen) bytes += base::ToCp950(name) + "\r\n";
  base::RewriteFile(program.machine.files, ChoiceFile(program), bytes, true);
}

int IndexOfChosen(const std::vector<std::string>& names, const std::string& chosen) {
  const auto found = std::ranges::find(names, chosen);
  if (!chosen.empty() && found != names.end()) return static_cast<int>(found - names.begin());
  if (!IsDigit(chosen)) return 0;
  const int number = chosen[0] - '0';
  return number < static_cast<int>(names.size()) ? number : 0;
}

}  // namespace marovane
