// Posts to the pages of upload and synchronisation.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace marovane {

struct Program;

using Headers = std::vector<std::pair<std::string, std::string>>;

/// Posts to a page below gServerUrlRoot and returns the decoded reply; refusal::kTooLong for the status 413.
/// Throws RunTimeError when no reply came, when its status is another one that is not of success, or when it
/// cannot be decoded.
std::string PostPage(Program& program, const std::string& page, const std::string& body,
                     const std::string& contentType, const Headers& headers);
/// The same with the content types that most pages get.
std::string PostPage(Program& program, const std::string& page, const std::string& body,
                     const Headers& headers = {});

}  // namespace marovane
