// Head and foot of every page that the program builds, and the commands of its links.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/html.h"

namespace marovane {

class WebBrowser;

/// @param part  "HEADER" or "FOOTER"; another word gives ""
/// @param color of the header: "" dark, "YELLOW" parchment, another text is the background colour itself
base::Html BuildPageFrame(std::string_view part, std::string_view color);

/// The script and the style of all pages, which come before the body. A page has no script of its own:
/// attributes of its elements say what they do.
///   data-go="ADDRESS"    a click goes there
///   data-open="ADDRESS"  a double click goes there; with data-tick="ID" it marks that box first
///   data-pick="ID"       a click marks that option
///   data-send            a click goes to "cmd:suggest:" and the value of the marked option
///   data-toggle="ID"     a click opens or closes that element; what has data-flip in the clicked one opens
///                        or closes with it, or changes its picture for the one that data-flip names
///   data-mark            a click paints this cell; with the value "off" it only wipes the one before
///   data-invert          a click inverts the boxes "chkdel_…" of its table
///   data-delete          a click, or Enter, goes to "cmd:del:" and the values of those that are marked
///   data-faces="ID"      under the mouse, away from it and pressed it is the picture ID 1, 0 or 2
///   data-quiet           of a body: no dragging, no selecting, no context menu
/// The classes "hot" and "blue" turn that colour under the mouse, "plain" loses its line.
const base::Html& PageActions();

/// A page on parchment from its header to the opened body: a fixed background picture, quiet.
base::Html BeginParchmentPage(std::string_view programFolder);

/// The same on the dark ground.
/// @param style the page's own
base::Html BeginDarkPage(const base::Html& style = {});

/// What addresses "cmd:NAME:ARGUMENT" do, by "NAME:", and addresses "cmd:NAME", by "NAME".
using PageCommands = std::map<std::string, std::function<void(const std::string& argument)>>;

/// Has the commands in a page's links carried out. The page follows no address that begins with "cmd:".
/// @param before comes before each command, an unknown one too
void OnCommands(WebBrowser& page, PageCommands commands, std::function<void()> before = {});

}  // namespace marovane
