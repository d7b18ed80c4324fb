// The teacher's assignments, as the server lists them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace marovane {

struct Program;

/// Texts are UTF-8, and shown as they are.
struct Assignment {
  std::string workId;
  bool isHandedIn = false;
  std::string deadline;
  std::string title;
  std::string changedOn;  ///< when the teacher changed the topic, "" for never
  bool isMarked = false;  ///< the teacher has commented on what was handed in
};

/// Reads "OK_" and records joined by "<@>", their fields by "#". Another reply has none. A record that ends
/// before its title or has no number is passed over; an empty title is none the worse.
std::vector<Assignment> ParseAssignments(std::string_view reply);

/// Asks the server, and notes in gWorkListOk whether it has listed them.
std::vector<Assignment> FetchAssignments(Program& program);

}  // namespace marovane
