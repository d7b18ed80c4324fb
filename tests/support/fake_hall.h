// Windows behind the doors of a hall that only note what they are asked for.
#pragma once

#include <string>
#include <vector>

#include "core/program.h"
#include "platform/controls.h"

namespace marovane {

/// A window behind a door of its own kind.
template <class Role>
class FakeForm : public Form, public Role {
 public:
  using Form::Form;
  Form& AsForm() override { return *this; }
};
using FakeWindow = FakeForm<HallWindow>;

class FakeMain : public FakeForm<MainWindow> {
 public:
  explicit FakeMain(Machine& theMachine) : FakeForm(theMachine, "frmMain") {}
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

class FakeSplash : public FakeForm<Splash> {
 public:
  explicit FakeSplash(Machine& theMachine) : FakeForm(theMachine, "frmSplash") {}
  void StartClosing() override {}
};

class FakeBrowser : public FakeForm<Browser> {
 public:
  explicit FakeBrowser(Machine& theMachine) : FakeForm(theMachine, "frmBrowser") {}
  void GoNavigate(const std::string& url, int mode) override { Note(visited, url, mode); }
  void GoWritePage(const base::Html& page, int mode) override { Note(written, page.Markup(), mode); }
  void GoPostPage(const base::Html& page, int mode) override { Note(posted, page.Markup(), mode); }
  std::vector<std::string> visited, written, posted;  ///< the mode, a blank, and the address or page

 private:
  static void Note(std::vector<std::string>& list, const std::string& text, int mode) {
    list.push_back(std::to_string(mode) + " " + text);
  }
};

class FakeSuggestions : public FakeForm<Suggestions> {
 public:
  explicit FakeSuggestions(Machine& theMachine) : FakeForm(theMachine, "frmSuggest") {}
  void HideTabs() override { log.emplace_back("hide"); }
  void ShowSuggest(const std::string& kind, const std::string& list) override {
    log.push_back(kind + " " + list);
  }
  std::vector<std::string> log;
};

class FakeWordHelper : public FakeForm<WordHelper> {
 public:
  explicit FakeWordHelper(Machine& theMachine) : FakeForm(theMachine, "frmCollocation") {}
  void SetFreeword(int index, const std::string& text) override { Note("free", index, text); }
  void SetKeyword(int index, const std::string& text) override { Note("key", index, text); }
  void SelectTab(int index) override { Note("tab", index, ""); }
  std::vector<std::string> log;

 private:
  void Note(const char* what, int index, const std::string& text) {
    log.push_back(what + std::to_string(index) + " " + text);
  }
};

class FakeEssay : public FakeForm<Essay> {
 public:
  explicit FakeEssay(Machine& theMachine) : FakeForm(theMachine, "frmEssay") {}
  void StartEssayWith(const std::string& text) override { started.push_back(text); }
  void ShowEssay(const std::string& essayId) override { shown.push_back(essayId); }
  std::vector<std::string> started, shown;
};

/// An upload that does nothing but end.
class FakeUpload : public UploadRun {
 public:
  explicit FakeUpload(AppState& app) : app_(app) {}
  void SyncProgress(const std::string& mode) override {
    modes.push_back(mode);
    app_.gUploadFinished = true;
  }
  bool SendEverything() override {
    modes.emplace_back("everything");
    return sendsEverything;
  }
  std::vector<std::string> modes;
  bool sendsEverything = true;

 private:
  AppState& app_;
};

/// Windows behind the doors of a program. The steps of its start do nothing, until a test wants more.
struct FakeHall {
  explicit FakeHall(Program& theProgram) : program(theProgram) {
    Hall& hall = program.hall;
    Lead(hall.frmMain, frmMain);
    Lead(hall.frmSplash, frmSplash);
    Lead(hall.frmBrowser, frmBrowser);
    Lead(hall.frmSuggest, frmSuggest);
    Lead(hall.frmCollocation, frmCollocation);
    Lead(hall.frmEssay, frmEssay);
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

  Program& program;
  FakeMain frmMain{program.machine};
  FakeSplash frmSplash{program.machine};
  FakeBrowser frmBrowser{program.machine};
  FakeSuggestions frmSuggest{program.machine};
  FakeWordHelper frmCollocation{program.machine};
  FakeEssay frmEssay{program.machine};
  FakeUpload frmUpload{program.app};
  FakeWindow frmDiary{program.machine, "frmDiary"}, frmSetup{program.machine, "frmSetup"},
      frmFeedback{program.machine, "frmFeedback"}, frmPassword{program.machine, "frmPassword"},
      frmEssayInputEdu{program.machine, "frmEssayInputEdu"};
};

}  // namespace marovane
