// Between HTTP and the teachers' site.
#pragma once

#include "server/teacher/site.h"

namespace httplib {
class ContentReader;
struct Request;
struct Response;
}  // namespace httplib

namespace server {

/// What a path below the root must begin with to be a page of the site.
inline constexpr std::string_view kTeacherFolder = "teacher/";

/// Answers a request with the path below that folder. @param readBody null for a GET. @param isBehindProxy
/// takes the caller's address from X-Real-IP.
void AnswerTeacher(TeacherSite& site, std::string_view path, const httplib::Request& request,
                   const httplib::ContentReader* readBody, bool isBehindProxy, httplib::Response& response);

}  // namespace server
