#include <libxml/HTMLparser.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "platform/html.h"

namespace marovane {

namespace {

struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

Document Parse(std::string_view page) {
  constexpr int kOptions = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;
  // The text is UTF-8 here whatever its own meta line says.
  return Document(htmlReadMemory(page.data(), static_cast<int>(page.size()), nullptr, "UTF-8", kOptions));
}

std::string_view NameOf(const xmlNode& node) {
  return node.type == XML_ELEMENT_NODE ? reinterpret_cast<const char*>(node.name) : "";
}

std::string Attribute(xmlNode& node, const char* name) {
  xmlChar* value = xmlGetProp(&node, reinterpret_cast<const xmlChar*>(name));
  if (value == nullptr) return "";
  std::string text = reinterpret_cast<const char*>(value);
  xmlFree(value);
  return text;
}

template <class Visit>
void Walk(xmlNode* node, const Visit& visit) {
  for (; node != nullptr; node = node->next) {
    visit(*node);
    Walk(node->children, visit);
  }
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsBlock(std::string_view name) {
  return IsOneOf(name, {"p", "div", "h1", "h2", "h3", "h4", "li", "ul", "ol", "tr", "table", "br", "hr",
                        "section", "header", "footer", "dt", "dd"});
}

// Collects the visible text; runs of white space count as one blank.
class TextWriter {
 public:
  void Write(xmlNode* node) {
    for (; node != nullptr; node = node->next) {
      const auto name = NameOf(*node);
      if (IsOneOf(name, {"head", "style", "script"})) continue;
      if (node->type == XML_TEXT_NODE) Add(reinterpret_cast<const char*>(node->content));
      if (IsBlock(name)) EndLine();
      if (name == "td" || name == "th") Add(" ");
      Write(node->children);
      if (IsBlock(name)) EndLine();
    }
  }

  std::string Finish() {
    EndLine();
    return text_;
  }

 private:
  void Add(std::string_view text) {
    for (char sign : text) {
      const bool isBlank = sign == ' ' || sign == '\n' || sign == '\r' || sign == '\t';
      if (!isBlank) {
        line_ += sign;
      } else if (!line_.empty() && line_.back() != ' ') {
        line_ += ' ';
      }
    }
  }

  void EndLine() {
    while (line_.ends_with(' ')) line_.pop_back();
    if (!line_.empty()) text_ += line_ + "\n";
    line_.clear();
  }

  std::string text_;
  std::string line_;
};

}  // namespace

std::vector<HtmlForm> HtmlForms(std::string_view page) {
  std::vector<HtmlForm> forms;
  const Document document = Parse(page);
  if (!document) return forms;
  Walk(xmlDocGetRootElement(document.get()), [&forms](xmlNode& node) {
    const auto name = NameOf(node);
    if (name == "form") forms.push_back({Attribute(node, "action"), Attribute(node, "method"), {}});
    if (name != "input" || forms.empty() || Attribute(node, "name").empty()) return;
    forms.back().fields.emplace_back(Attribute(node, "name"), Attribute(node, "value"));
  });
  return forms;
}

std::string HtmlToText(std::string_view page) {
  const Document document = Parse(page);
  if (!document) return "";
  TextWriter writer;
  writer.Write(xmlDocGetRootElement(document.get()));
  return writer.Finish();
}

}  // namespace marovane
