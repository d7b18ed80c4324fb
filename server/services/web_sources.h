// Outside dictionaries and corpus sites that the word helper may send a learner to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace server {

/// Records "name||kind||lang||url" (UTF-8) as `p_getwebhelper.asp` hands them out. `kind` is "cn" for a site
/// that accepts Chinese, "en" for one that accepts English; `lang` is "cn" when the finished address must be
/// percent-encoded; "##String2chk##" in `url` is replaced by the text.
using WebSources = std::vector<std::string>;

/// Reads the owner's file, one record a line; blank lines and lines that begin with ";" do not count. Without
/// a file there are some public sites. A line that makes no record is logged and left out.
/// Throws std::runtime_error when the file cannot be read.
WebSources ReadWebSources(const std::filesystem::path& file);

}  // namespace server
