// What proves to a server that a request is the learner's own: the tokens that it gives at logins.
#pragma once

#include <map>
#include <string>

#include "base/http.h"
#include "protocol/form.h"

namespace marovane {

struct Message;
struct Program;

/// A token belongs to one account of one server, and goes nowhere else. Those of the desktop edition are in
/// `token.set` beside `setup.set`; those of a campus, whose computers many pupils share, end with the run.
class Proof {
 public:
  explicit Proof(Program& program) : program_(program) {}

  /// The token that goes with a request of an account to this address. "" when none is known, and for every
  /// address that is not below gServerUrlRoot.
  std::string TokenFor(const std::string& url, const std::string& account) const;
  /// Adds the token of the present account to a request. With one it follows no redirection.
  /// @param oldAccount an older account that the request merges, whose token goes along; "" for none
  void AddTo(base::HttpRequest& request, const std::string& oldAccount = "") const;

  /// Sends a learner's request. When the server wants a login and a password is known, logs in, and sends the
  /// request once more. Throws RunTimeError when no reply came.
  /// @param oldAccount as for AddTo
  base::HttpResponse Send(const base::HttpRequest& request, const std::string& oldAccount = "");
  /// Posts a learner's fields to a page below gServerUrlRoot. Replies are those of TryPost.
  std::string Ask(const char* page, protocol::Fields fields);

  /// Posts a login to a page below gServerUrlRoot, and remembers the token in its reply. Replies are those of
  /// TryPost.
  /// @param account the one that logs in, "" for one that is being made
  std::string AskLogin(const char* page, const std::string& account, protocol::Fields fields);
  /// Whether a server has said that this password is wrong. It counts the tries, so there is only one.
  bool IsRefused(const std::string& password) const { return !password.empty() && password == refused_; }
  /// Shows why the latest login without the learner failed, once in a run.
  void TellRefusal();

 private:
  std::string Key(const std::string& account) const;
  std::string File() const;
  std::string Find(const std::string& account) const;
  std::string Read(const std::string& key) const;
  void Write(const std::string& key, const std::string& token);
  void Keep(const std::string& account, const base::HttpResponse& response);
  void Forget(const std::string& account, const std::string& token);
  bool LogInAgain();
  std::string KnownPassword() const;

  Program& program_;
  std::map<std::string, std::string> tokens_;  // of this run, by their keys in the file
  std::string refused_;                        // a password
  const Message* untold_ = nullptr;
  bool isTold_ = false;
};

/// Asks the server whether a password is the account's, which logs in.
/// @param account may have "-" and blanks in it
/// @return the server's reply, or `refusal::kConnectFailed`
std::string CheckAccountPassword(Program& program, const std::string& account, const std::string& password);

}  // namespace marovane
