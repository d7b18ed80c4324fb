// The wall between the windows and the web engine. The engine is in a library of its own that is loaded
// when the first page is shown, so nothing here knows it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <string>

namespace marovane {

/// Inputs of a page by id (UTF-8), as they are now.
struct PageInputs {
  std::map<std::string, std::string> values;
  std::map<std::string, bool> checked;
};

/// A header of a request; one without a value is none.
struct WebHeader {
  QByteArray name, value;
};

/// What pages may do.
struct WebRights {
  QString pictureFolder;  ///< the only files that written pages see, and these as pictures
  /// Address of the own server, whose pictures written pages show, and to which their forms go. They reach
  /// no other host.
  std::function<QString()> ownServer = [] { return QString(); };
  /// Says by its address whether a page of a server may give commands. Written pages always may.
  std::function<bool(const QString& url)> mayCommand = [](const QString&) { return false; };
  /// What proves to a server that a navigation of the program is the learner's. Pages' own requests never
  /// have it, nor does what a redirection leads to.
  std::function<WebHeader(const QString& url)> proofFor = [](const QString&) { return WebHeader(); };
};

/// One view of web pages. Deleting it deletes its widget and frees its page.
class WebPane {
 public:
  virtual ~WebPane() = default;
  virtual QWidget* Widget() = 0;
  virtual void Navigate(const QString& url) = 0;
  /// Shows a page that the program wrote. Its forms post in the character set that its meta line declares.
  virtual void Write(const QString& html) = 0;
  virtual void SubmitForm(int index) = 0;
  virtual void GoBack() = 0;
  virtual void GoForward() = 0;
  /// Marks boxes by id or takes their marks away, as soon as the page is there.
  virtual void SetChecked(const std::map<std::string, bool>& marks) = 0;
  /// Reads the inputs of a written page; the callback comes later, or at once when there is no page.
  virtual void ReadInputs(std::function<void(const PageInputs&)> callback) = 0;

  /// What happens in the page. All must be set before the first page is shown.
  struct Events {
    std::function<bool(const QString& url)> beforeNavigate;  ///< false: do not go there
    std::function<void(const QString& url)> command;         ///< a cmd: or rem: link of a trusted page
    std::function<void(const QString& url)> documentComplete;
    std::function<void(const QString& text)> statusText;
    std::function<void(const QString& title)> title;
  };
  Events events;
  WebRights rights;  ///< set like the events
};

/// The scheme of the addresses of written pages. An outside page cannot have it.
inline const char* const kWrittenPageScheme = "marovane";

}  // namespace marovane
