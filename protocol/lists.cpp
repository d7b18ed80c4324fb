#include "protocol/lists.h"

#include <fmt/format.h>

#include "base/percent.h"
#include "base/text.h"
#include "protocol/record_form.h"

namespace protocol {
namespace {

constexpr std::string_view kListSeparator = "<@>";
constexpr std::string_view kSettingSigns = "$:\r\n";  // would cut a setting

std::string TitleField(std::string_view title) {
  return base::Replace(base::Replace(base::Replace(title, "#", "＃"), kListSeparator, "＜@＞"), "OK_",
                       "OK＿");
}

// Up to the title a record has all its fields.
std::optional<Assignment> ParseAssignment(std::string_view record) {
  auto fields = base::Split(record, "#");
  const bool hasTitle = fields.size() >= 4;
  fields.resize(6);
  const std::string workId = CleanRecordId(fields[0]);
  if (!hasTitle || workId.empty()) return std::nullopt;
  return Assignment{workId, fields[1] == "Y", fields[2], fields[3], fields[4], fields[5] == "Y"};
}

}  // namespace

std::string EncodeAssignments(const std::vector<Assignment>& assignments) {
  std::string list;
  for (const auto& each : assignments) {
    list += fmt::format("{}{}#{}#{}#{}#{}#{}", list.empty() ? "" : kListSeparator, each.workId,
                        each.isHandedIn ? "Y" : "N", each.deadline, TitleField(each.title), each.changedOn,
                        each.isMarked ? "Y" : "");
  }
  return "OK_" + list;
}

std::optional<std::vector<Assignment>> ParseAssignments(std::string_view reply) {
  if (!reply.starts_with("OK")) return std::nullopt;
  std::vector<Assignment> assignments;
  for (const auto& record : base::Split(base::Replace(reply, "OK_", ""), kListSeparator)) {
    if (auto assignment = ParseAssignment(record)) assignments.push_back(std::move(*assignment));
  }
  return assignments;
}

std::string EncodeSettings(const std::vector<Setting>& settings) {
  std::string list;
  for (const auto& [name, value] : settings) {
    list.append(list.empty() ? "" : "$").append(name).append(":");
    list += base::EncodeMarked(value, kSettingSigns);
  }
  return list;
}

std::vector<Setting> ParseSettings(std::string_view list) {
  std::vector<Setting> settings;
  for (const auto& pair : base::Split(list.substr(0, list.find_first_of("\r\n")), "$")) {
    const auto parts = base::Split(pair, ":");
    if (parts.size() >= 2) {
      settings.push_back({base::Trim(parts[0]), base::DecodeMarked(base::Trim(parts[1]), kSettingSigns)});
    }
  }
  return settings;
}

std::string EncodeOutsideSites(const std::vector<OutsideSite>& sites) {
  std::string list;
  for (const auto& [name, kind, lang, url] : sites) {
    list += fmt::format("{}{}||{}||{}||{}", list.empty() ? "" : kListSeparator, name, kind, lang, url);
  }
  return list;
}

OutsideSites ParseOutsideSites(std::string_view reply) {
  const std::string_view separator = reply.find("||") == std::string_view::npos ? "#" : "||";
  OutsideSites list;
  for (const auto& record : base::Split(reply, kListSeparator)) {
    if (record.empty()) break;
    const auto fields = base::Split(record, separator);
    if (fields.size() < 4) {
      list.isFaulty = true;
    } else {
      list.sites.push_back({fields[0], base::Lower(fields[1]), base::Lower(fields[2]), fields[3]});
    }
  }
  return list;
}

}  // namespace protocol
