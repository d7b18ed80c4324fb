// What a teacher's page gets, may use and returns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "protocol/form.h"
#include "server/services/shared_engine.h"
#include "server/store/account_store.h"
#include "server/store/school_store.h"

namespace server {

/// One request, whatever carried it.
struct TeacherRequest {
  bool isPost = false;
  std::string path;       ///< below "teacher/"
  protocol::Form fields;  ///< of the query, or of the form that was posted
  std::string cookies;
  std::string address;  ///< of the caller
};

struct TeacherReply {
  int status = 200;
  std::string page;                       ///< UTF-8
  std::string location = {};              ///< of a redirection
  std::vector<std::string> cookies = {};  ///< Set-Cookie
};

/// A request of a teacher who has logged in; a posted form has proven that it is ours.
struct TeacherCall {
  SchoolStore& school;
  AccountStore& store;
  const SharedEngine& engine;
  const Teacher& teacher;
  const protocol::Form& fields;
  std::string formToken;
  std::string base;  ///< "/prefix/teacher/"
};

/// What was asked for is unknown, or another teacher's: the reply does not say which.
class NotFound : public std::runtime_error {
 public:
  NotFound() : std::runtime_error("not found") {}
};

// Pages. Those of a POST come back with a redirection, or with the form and what is wrong in it.
TeacherReply ClassList(const TeacherCall& call);
TeacherReply MakeClass(const TeacherCall& call);
TeacherReply ClassPage(const TeacherCall& call);
TeacherReply RenameClass(const TeacherCall& call);
TeacherReply DeleteClass(const TeacherCall& call);
TeacherReply ImportPupils(const TeacherCall& call);
TeacherReply RemovePupil(const TeacherCall& call);
TeacherReply TopicForm(const TeacherCall& call);
TeacherReply SaveTopic(const TeacherCall& call);
TeacherReply DeleteTopic(const TeacherCall& call);
TeacherReply TopicPage(const TeacherCall& call);
TeacherReply EssayPage(const TeacherCall& call);
TeacherReply SaveComment(const TeacherCall& call);

}  // namespace server
