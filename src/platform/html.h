// Pages without a renderer: their text and their forms.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace marovane {

struct HtmlForm {
  std::string action;
  std::string method;                                       ///< as written
  std::vector<std::pair<std::string, std::string>> fields;  ///< named inputs with their values
};

/// The forms of a page (UTF-8), in order; also ones that are not closed.
std::vector<HtmlForm> HtmlForms(std::string_view page);
/// What a reader sees of a page (UTF-8), as plain lines.
std::string HtmlToText(std::string_view page);

}  // namespace marovane
