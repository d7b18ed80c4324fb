// The shared state: one record that every window and module reads and writes.
#pragma once

#include <chrono>
#include <string>

#include "base/day.h"
#include "protocol/unique_id.h"

namespace marovane {

/// Strings start empty, numbers at 0 and flags False. It is read through the name `app`. Nothing locks it:
/// there is one thread, and whoever waits must expect that others have changed it meanwhile.
struct AppState {
  // Identity and paths. Folders end in "/".
  std::string gProductCode;  ///< "mrv"
  std::string gEdition;      ///< "MRV" desktop, "XQD" campus cloud
  std::string gDataDirName;  ///< "marovane"
  std::string gTempDir;      ///< root of all working data, without a slash at its end
  std::string gEngineDir;
  std::string gSetupFile;
  std::string gRegistryFile;

  // Server roots. Each ends in "/", but for gUpdaterUrlRoot, which is a host name.
  std::string gServerUrlRoot;
  std::string gPublisherRoot;
  std::string gWebEngineRoot;  ///< the allotted web engine
  std::string gFileServerRoot;
  std::string gUpdaterUrlRoot;
  std::string gACServerRoot;
  std::string gWebSiteRoot;

  // Databases, as connection strings.
  std::string gConnRecords;
  std::string gConnErrList;

  // Account and settings.
  std::string gAccountNo;  ///< "" for none
  std::string gAccountPassword;
  std::string gUploadAccountNo;  ///< account that the next upload works for
  std::string gFontSizeName;
  int gInputFontSize = 0;  ///< points
  std::string gAutoCleanHistory;
  std::string gAutoKeyinPw;
  std::string gAlwaysOnTop;
  int gTransformValue = 0;  ///< final opacity of the main window, 100 and up
  std::string gEduBackground;
  std::string gFeedbackErrData;

  // Engine and checking.
  bool gUseWebEngine = false;
  bool gUseWebEngineWbank = false;
  bool gDetailMessage = false;
  std::string gVerdict;  ///< "STOP", "PASS", "WARN", "ERRS"; during an essay also its own words
  std::string gLastInput;
  bool gSentencesBusy = false;  ///< a sentence of the list is analysed again; nothing is recorded
  bool gBigTextInput = false;   ///< the input box shows the user's text, not the placeholder
  std::string gEngineLevel;
  /// The server's date; the epoch of dates (1899-12-30) when it is not known.
  base::Day gServerDate{std::chrono::year{1899}, std::chrono::month{12}, std::chrono::day{30}};
  std::string gTeacherAccount;
  std::string gEngineVersion;
  std::string gEssayPageChecksum;

  // Shell and messages.
  int gFadeAlpha = 0;
  int gFadeStep = 0;
  bool gMenuExtended = false;
  bool gInputHasFocus = false;
  bool gMainReload = false;
  std::string gMsgResult;
  std::string gProgressDetail;
  protocol::UniqueIds gRecIds;
  std::string gSuggestMode;
  bool gUploadFinished = false;
  bool gAccountRefusalShown = false;  ///< of this run
  bool gXqdLoginDone = false;
  bool gXqdLoginOk = false;

  // The running essay.
  bool gEssayStartRequested = false;
  std::string gEssayWorkId;
  std::string gEssayQuiz;
  std::string gEssayId;
  std::string gEssayOriginal;
  std::string gEssayCurrent;
  std::string gEssaySentence;
  int gEssaySentenceNo = 0;   ///< place in gEssaySentence, from 1, in UTF-16 units
  int gEssaySentenceLen = 0;  ///< length of the sentence that is highlighted
  std::string gEssaySId;      ///< shared by all attempts at the sentence that is judged
  std::string gEssayCurSentence;
  bool gEssayNewSentence = false;  ///< the next sentence gets a gEssaySId of its own
  bool gEssayMode = false;
  bool gEssayFinished = false;
  bool gEssayReportShown = false;   ///< the report of the walk that has just ended is shown
  bool gEssayActive = false;        ///< the essay window has been activated
  bool gEssayNoListReturn = false;  ///< closing the essay window does not lead back to the list of topics
  bool gWorkListOk = false;         ///< the server has listed the assignments
  std::string gEssayPlacementMode;  ///< "NORMAL" while the essay window reloads itself

  // Which windows are open.
  bool gOpenMain = false;
  bool gOpenBindSelect = false;
  bool gOpenCollocation = false;
  bool gOpenDiary = false;
  bool gOpenErrList = false;
  bool gOpenErrSentence = false;
  bool gOpenFeedback = false;
  bool gOpenPassword = false;
  bool gOpenSentences = false;
  bool gOpenSetup = false;
  bool gOpenSuggest = false;
  bool gOpenBrowser = false;
  bool gOpenEssay = false;
  bool gOpenEssayInputEdu = false;
  bool gOpenEssayInputForm = false;
  bool gOpenEssayCollect = false;
  bool gSplashShown = false;
};

}  // namespace marovane
