// The hall: what windows of higher floors offer to everybody. The composition puts the real ones behind its
// doors.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/html.h"

namespace marovane {

class Control;
class Form;
class RichTextBox;

/// A door to a window. Going through it is a reference to the window, and loads it if need be. The
/// composition of each edition puts a window behind every door.
template <class T>
class Door {
 public:
  void LeadsTo(std::function<T&()> reference) { reference_ = std::move(reference); }
  T& operator*() const { return reference_(); }
  T* operator->() const { return &reference_(); }

 private:
  std::function<T&()> reference_;
};

/// What every window behind a door can be asked for.
class HallWindow {
 public:
  virtual ~HallWindow() = default;
  virtual Form& AsForm() = 0;
};

/// `frmMain`.
class MainWindow : public HallWindow {
 public:
  virtual RichTextBox& InputBox() = 0;
  virtual Control& MenuButton(int index) = 0;
  virtual void SetInputTextStyle(int mode) = 0;
  virtual std::string CheckInputText(const std::string& action, const std::string& text) = 0;
  virtual void PassStringToEngine() = 0;
  virtual void CloseAppProcdure() = 0;
};

/// `frmSplash`.
class Splash : public HallWindow {
 public:
  /// Brings the records and the server into step, and closes the window after a while.
  virtual void StartClosing() = 0;
};

/// `frmMenu`, the pop-up menu of the input box.
class TextMenu : public HallWindow {
 public:
  virtual void PopUp() = 0;
};

/// `frmBrowser`. Mode 1 is its pane `webMain`, mode 2 `webOther`.
class Browser : public HallWindow {
 public:
  virtual void GoNavigate(const std::string& url, int mode) = 0;
  virtual void GoWritePage(const base::Html& page, int mode) = 0;
  /// Writes a page into the pane and submits its first form.
  virtual void GoPostPage(const base::Html& page, int mode) = 0;
};

/// `frmSuggest`.
class Suggestions : public HallWindow {
 public:
  virtual void HideTabs() = 0;
  virtual void ShowSuggest(const std::string& kind, const std::string& list) = 0;
};

/// `frmCollocation`, the word helper.
class WordHelper : public HallWindow {
 public:
  virtual void SetFreeword(int index, const std::string& text) = 0;
  virtual void SetKeyword(int index, const std::string& text) = 0;
  virtual void SelectTab(int index) = 0;
};

/// `frmSentences`.
class DaySentences : public HallWindow {
 public:
  virtual void ShowDaySentences(const std::string& kind, const std::string& days) = 0;
};

/// `frmErrList`.
class ErrorStatistics : public HallWindow {
 public:
  virtual void GetHtmlListAllErrType() = 0;
};

/// `frmErrSentence`.
class ErrorSentences : public HallWindow {
 public:
  virtual void ShowErrSentence(const std::string& errcode) = 0;
};

/// `frmEssay`.
class Essay : public HallWindow {
 public:
  /// Opens an essay of the learner's own with this text in its box.
  virtual void StartEssayWith(const std::string& text) = 0;
  virtual void ShowEssay(const std::string& essayId) = 0;
};

/// `frmUpload`.
class UploadRun {
 public:
  virtual ~UploadRun() = default;
  virtual void SyncProgress(const std::string& mode) = 0;
  /// Synchronises without a word, before there is a main window, and closes the record database. True when
  /// the server has all that is in it.
  virtual bool SendEverything() = 0;
};

struct Hall {
  Door<MainWindow> frmMain;
  Door<Splash> frmSplash;
  Door<TextMenu> frmMenu;
  Door<Browser> frmBrowser;
  Door<Suggestions> frmSuggest;
  Door<WordHelper> frmCollocation;
  Door<DaySentences> frmSentences;
  Door<ErrorStatistics> frmErrList;
  Door<ErrorSentences> frmErrSentence;
  Door<Essay> frmEssay;
  Door<UploadRun> frmUpload;
  Door<HallWindow> frmDiary, frmEssayInputEdu, frmEssayInputForm, frmEssayCollect, frmFeedback, frmSetup,
      frmPassword, frmBindSelect, frmXQDLogin, frmSyncLogin, frmDebug;

  // Steps of the start that live on higher floors.
  std::function<void()> checkDatabaseBuild, unpackDataFiles, showMissingData, refreshUpdater,
      showPublisherNews, checkVersion;
};

}  // namespace marovane
