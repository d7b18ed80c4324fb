// Posts to the pages of upload and synchronisation.
#pragma once

#include <string>

#include "base/http.h"

namespace marovane {

struct Program;

using Headers = base::HttpHeaders;

/// Posts a learner's request to a page below gServerUrlRoot and returns the decoded reply; refusal::kTooLong
/// for the status 413. Throws RunTimeError when no reply came, when its status is another one that is not of
/// success, or when it cannot be decoded.
/// @param oldAccount an older account that is merged, "" for none
std::string PostPage(Program& program, const std::string& page, const std::string& body,
                     const std::string& contentType, const Headers& headers,
                     const std::string& oldAccount = "");
/// The same with the content types that most pages get.
std::string PostPage(Program& program, const std::string& page, const std::string& body,
                     const Headers& headers = {}, const std::string& oldAccount = "");

}  // namespace marovane
