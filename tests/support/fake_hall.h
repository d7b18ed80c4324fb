// Windows behind the doors of a hall that only note what they are asked for.
#pragma once

#include <string>
#include <vector>

#include "core/program.h"
#include "platform/controls.h"

namespace marovane {

class FakeMain : public Form, public MainWindow {
 public:
  explicit FakeMain(Machine& theMachine) : Form(theMachine, "frmMain") {}
  Form& AsForm() override { return *this; }
  RichTextBox& InputBox() override { return txtInput; }
  Control& MenuButton(int /*index*/) override { return txtInput; }
  void SetInputTextStyle(int /*mode*/) override {}
  std::string CheckInputText(const std::string& /*action*/, const std::string& text) override {
    checked.push_back(text);
    return text;
  }
  void PassStringToEngine() override {}
  void CloseAppProcdure() override { ++closings; }

  RichTextBox txtInput{*this, "txtInput"};
  int closings = 0;
  std::vector<std::string> checked;  ///< texts that CheckInputText was given
};

class FakeSplash : public Form, public Splash {
 public:
  explicit FakeSplash(Machine& theMachine) : Form(theMachine, "frmSplash") {}
  Form& AsForm() override { return *this; }
  void StartClosing() override {}
};

class FakeBrowser : public Form, public Browser {
 public:
  explicit FakeBrowser(Machine& theMachine) : Form(theMachine, "frmBrowser") {}
  Form& AsForm() override { return *this; }
  void GoNavigate(const std::string& url, int mode) override { Note(visited, url, mode); }
  void GoWritePage(const base::Html& page, int mode) override { Note(written, page.Markup(), mode); }
  void GoPostPage(const base::Html& page, int mode) override { Note(posted, page.Markup(), mode); }
  std::vector<std::string> visited, written, posted;  ///< the mode, a blank, and the address or page

 private:
  static void Note(std::vector<std::string>& list, const std::string& text, int mode) {
    list.push_back(std::to_string(mode) + " " + text);
  }
};

class FakeSuggestions : public Form, public Suggestions {
 public:
  explicit FakeSuggestions(Machine& theMachine) : Form(theMachine, "frmSuggest") {}
  Form& AsForm() override { return *this; }
  void HideTabs() override { log.emplace_back("hide"); }
  void ShowSuggest(const std::string& kind, const std::string& list) override {
    log.push_back(kind + " " + list);
  }
  std::vector<std::string> log;
};

class FakeWordHelper : public Form, public WordHelper {
 public:
  explicit FakeWordHelper(Machine& theMachine) : Form(theMachine, "frmCollocation") {}
  Form& AsForm() override { return *this; }
  void SetFreeword(int index, const std::string& text) override { Note("free", index, text); }
  void SetKeyword(int index, const std::string& text) override { Note("key", index, text); }
  void SelectTab(int index) override { Note("tab", index, ""); }
  std::vector<std::string> log;

 private:
  void Note(const char* what, int index, const std::string& text) {
    log.push_back(what + std::to_string(index) + " " + text);
  }
};

/// An upload that does nothing but end.
class FakeUpload : public UploadRun {
 public:
  explicit FakeUpload(AppState& app) : app_(app) {}
  void SyncProgress(const std::string& mode) override {
    modes.push_back(mode);
    app_.gUploadFinished = true;
  }
  std::vector<std::string> modes;

 private:
  AppState& app_;
};

/// Any other window behind a door.
class FakeWindow : public Form, public HallWindow {
 public:
  using Form::Form;
  Form& AsForm() override { return *this; }
};

/// Stands behind the doors of a program, and makes the steps of its start do nothing, until a test wants
/// more.
struct FakeHall {
  explicit FakeHall(Program& program)
      : frmMain(program.machine),
        frmSplash(program.machine),
        frmBrowser(program.machine),
        frmSuggest(program.machine),
        frmCollocation(program.machine),
        frmUpload(program.app),
        frmDiary(program.machine, "frmDiary"),
        frmSetup(program.machine, "frmSetup"),
        frmFeedback(program.machine, "frmFeedback"),
        frmPassword(program.machine, "frmPassword"),
        frmEssayInputEdu(program.machine, "frmEssayInputEdu") {
    Hall& hall = program.hall;
    Lead(hall.frmMain, frmMain);
    Lead(hall.frmSplash, frmSplash);
    Lead(hall.frmBrowser, frmBrowser);
    Lead(hall.frmSuggest, frmSuggest);
    Lead(hall.frmCollocation, frmCollocation);
    Lead(hall.frmUpload, frmUpload);
    Lead(hall.frmDiary, frmDiary);
    Lead(hall.frmSetup, frmSetup);
    Lead(hall.frmFeedback, frmFeedback);
    Lead(hall.frmPassword, frmPassword);
    Lead(hall.frmEssayInputEdu, frmEssayInputEdu);
    for (auto* step : {&hall.checkDatabaseBuild, &hall.unpackDataFiles, &hall.showMissingData,
                       &hall.refreshUpdater, &hall.showPublisherNews, &hall.checkVersion}) {
      *step = [] {};
    }
  }

  /// Puts a window behind a door.
  template <class T, class W>
  static void Lead(Door<T>& door, W& window) {
    door.LeadsTo([&window]() -> T& { return window; });
  }

  FakeMain frmMain;
  FakeSplash frmSplash;
  FakeBrowser frmBrowser;
  FakeSuggestions frmSuggest;
  FakeWordHelper frmCollocation;
  FakeUpload frmUpload;
  FakeWindow frmDiary, frmSetup, frmFeedback, frmPassword, frmEssayInputEdu;
};

}  // namespace marovane
