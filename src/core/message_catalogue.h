// All messages and progress texts of the program, by name.
#pragma once

#include <string_view>

namespace marovane {

/// What a message says and how its window looks.
struct Message {
  enum class Icon { kNotice, kWarning, kAsk };  ///< in the order of imgIcons
  enum class Buttons { kOk, kOkCancel, kYesNo };
  enum class Kind { kPlain, kError, kQuestion, kUpdate, kMerge };  ///< chooses the caption

  std::string_view number;
  Icon icon;
  Buttons buttons;
  Kind kind;
  std::string_view text;

  static const Message kNetworkDown, kNewVersion, kNoUpdater, kNothingToReport, kBadEmail, kNoRemark,
      kRemarkTooLong, kFeedbackSent, kFeedbackRefused, kOverwriteFile, kNoSentences, kChooseSentences,
      kDeleteSentences, kDeleteTopic, kDeleted, kExported, kChooseDays, kDeleteDays, kChooseMistake,
      kChooseEducation, kNoEngineReply, kEnterWord, kEnterAccount, kPasswordLength, kWrongAccount,
      kWrongPassword, kTryLater, kBadLoginText, kPasswordNeeded, kEngineTimeout, kLeaveProgram,
      kManySentences, kReinstall, kMergeOldAccount, kMergeDone, kNoPartners, kNotOffered, kBadSourceList,
      kNoSource, kNoTranslation, kUnexpectedError, kReinstallRefused, kPasswordSet, kServerNotFound,
      kNotOnCampus, kBadSigns, kEnterEssay, kWrongSentence, kNoEndMark, kEssayDone, kNewEssay, kNoAssignment,
      kNoEssays, kChooseEssays, kDeleteEssays, kOneRowAtATime, kHandInThis, kSomeNotDeleted, kHandedIn,
      kHandInNow, kOwnTopic, kDoubtfulSentence, kNotHandedIn, kEssayTooLong, kTooManySentences, kUploadFailed,
      kRowsRefused, kRecordsSetAside, kNoEngineAddress, kUnknownAccount, kNewAccount, kSentenceTooLong,
      kSeveralSentences, kRefusedByEngine, kEssayWaits, kDraftNotKept, kDraftCopied, kDraftNotRead;
  static const Message kTest, kOneSentenceAtATime, kThreeDaysAtMost, kNewEngine, kEnterServer, kEnterNoun,
      kEnterAdjective, kEnterAdverb, kEnterVerb, kSameEssay;
};

/// What a progress box says.
struct Progress {
  std::string_view number;
  std::string_view text;

  static const Progress kChecking, kPreparingData, kUploadingAtEnd, kCollectingDays, kSynchronising,
      kCollectingRecords, kAnalysing, kFetching, kComparing, kFindingServer, kAskingEngine, kTranslating;
};

}  // namespace marovane
