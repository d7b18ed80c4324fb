// Bodies of posts as browsers make them of a form (application/x-www-form-urlencoded).
#pragma once

#include <string>
#include <string_view>

/// Appends a field to a body. Name and value are bytes in the character set of the form.
void AddField(std::string& body, std::string_view name, std::string_view value);

/// The bytes in which a browser sends a text (UTF-8) of a page in Big5: line ends are CR LF, and a character
/// without a code is a numeric reference, "&#8217;".
std::string Big5FormText(std::string_view text);
