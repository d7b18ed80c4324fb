// The frame and the small parts that the teachers' pages share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/html.h"
#include "server/teacher/teacher_page.h"

namespace server {

/// A whole page for somebody who has not logged in.
std::string OuterPage(const std::string& base, std::string_view title, const base::Html& content);
/// A whole page with the teacher's name and the way out.
TeacherReply SitePage(const TeacherCall& call, std::string_view title, const base::Html& content,
                      int status = 200);
/// Shows another page. `target` is below the base; ids in it are digits and lower-case letters.
TeacherReply GoTo(const TeacherCall& call, const std::string& target);

/// A titled window of the page.
base::Html Panel(std::string_view title, const base::Html& content);
/// What went wrong, each in a line; nothing for none.
base::Html ErrorList(const std::vector<std::string>& errors);
/// The beginning of a form with its token; it ends with "</form>".
base::Html FormBegin(const TeacherCall& call, std::string_view action);
/// A form that deletes what the hidden field names, once the teacher has ticked that this is meant.
base::Html DeleteForm(const TeacherCall& call, std::string_view action, std::string_view field,
                      std::string_view id, std::string_view button);
/// Whether it was ticked.
bool IsConfirmed(const TeacherCall& call);
/// What the page before has done, from the field `done`.
base::Html DoneNotice(const TeacherCall& call);
/// The way to the page above.
base::Html BackLink(const TeacherCall& call, std::string_view target, std::string_view text);

/// The field's value, "" when it is missing.
std::string Field(const TeacherCall& call, const std::string& name);
/// The teacher's class or topic that the field `class` or `topic` names. Throws NotFound.
SchoolClass WantedClass(const TeacherCall& call);
Topic WantedTopic(const TeacherCall& call);

}  // namespace server
