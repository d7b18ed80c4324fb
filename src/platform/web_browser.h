// The browser control: pages that the program writes, and pages of servers.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "base/html.h"
#include "platform/controls.h"

namespace marovane {

class WebBrowser;

/// What marks the scripts of written pages as the program's own: random, and another one in each run.
const std::string& PageNonce();

/// The line of a written page that says what it may do, which must come first in it: it runs no script
/// without the nonce, shows pictures from files and from the own server, posts its forms there, and loads
/// nothing else.
/// @param serverRoot address of the own server, "" for none
base::Html PagePolicy(std::string_view serverRoot);

/// Whoever really shows the pages of a browser control. Addresses and pages are UTF-8.
class WebRenderer {
 public:
  virtual ~WebRenderer() = default;
  virtual void Navigate(const std::string& url) = 0;
  virtual void Write(const std::string& html) = 0;
  /// Submits a form of the written page, by number from 0.
  virtual void SubmitForm(int index) = 0;
  /// Marks boxes of the written page by id, all at once, or takes their marks away.
  virtual void SetChecked(const std::map<std::string, bool>& marks) = 0;
  virtual void GoBack() = 0;
  virtual void GoForward() = 0;
};

class WebBrowser : public Control {
 public:
  WebBrowser(Form& form, const std::string& name) : Control(form, name) {}

  void Navigate(const std::string& url);
  /// Replaces the document by a page that the program has built.
  void Write(const base::Html& page);
  void SubmitForm(int index);
  void GoBack();
  void GoForward();

  Property<std::string> LocationURL;
  /// The page last written, "" after a navigation.
  const std::string& Page() const { return page_; }

  /// Values of the inputs of the written page by id, as its script or its user left them.
  std::map<std::string, std::string> inputValues;
  std::map<std::string, bool> inputChecked;
  bool Checked(const std::string& id) const;
  void SetChecked(const std::map<std::string, bool>& marks);
  std::string Value(const std::string& id) const;

  Event<const std::string&, bool&> BeforeNavigate2{*this};  ///< address; set the flag to cancel
  Event<const std::string&> DocumentComplete{*this};        ///< address
  Event<const std::string&> StatusTextChange{*this};
  Event<const std::string&> TitleChange{*this};

  /// The renderer, which the view or the terminal supplies. Without one a page is only remembered.
  void SetRenderer(WebRenderer* renderer) { renderer_ = renderer; }

  /// What the user of a page does in it: follows a link. True when no handler cancelled.
  bool FollowLink(const std::string& url);

 private:
  WebRenderer* renderer_ = nullptr;
  std::string page_;
};

}  // namespace marovane
