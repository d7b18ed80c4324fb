#include "core/message_catalogue.h"

#include <gtest/gtest.h>

namespace marovane {

namespace {

TEST(MessageCatalogue, HasTheNumberIconButtonsAndKindOfEachMessage) {
  const struct {
    const Message& message;
    const char* number;
    int icon;
    const char* buttons;
    int kind;
  } kMessages[] = {
      {Message::kNetworkDown, "1", 1, "OK", 1},
      {Message::kNewVersion, "4", 2, "YES_NO", 3},
      {Message::kNoUpdater, "5", 1, "OK", 1},
      {Message::kNothingToReport, "7", 0, "OK", 0},
      {Message::kBadEmail, "8", 1, "OK", 0},
      {Message::kNoRemark, "9", 1, "OK", 0},
      {Message::kRemarkTooLong, "10", 1, "OK", 0},
      {Message::kFeedbackSent, "11", 0, "OK", 0},
      {Message::kOverwriteFile, "12", 2, "YES_NO", 2},
      {Message::kNoSentences, "13", 1, "OK", 0},
      {Message::kChooseSentences, "14", 1, "OK", 0},
      {Message::kDeleteSentences, "15", 2, "OK_CANCEL", 2},
      {Message::kDeleteTopic, "15", 2, "YES_NO", 2},
      {Message::kDeleted, "17", 0, "OK", 0},
      {Message::kExported, "18", 0, "OK", 0},
      {Message::kChooseDays, "19", 1, "OK", 0},
      {Message::kDeleteDays, "21", 2, "OK_CANCEL", 2},
      {Message::kChooseMistake, "22", 1, "OK", 0},
      {Message::kChooseEducation, "23", 1, "OK", 0},
      {Message::kNoEngineReply, "24", 1, "OK", 1},
      {Message::kEnterWord, "25", 1, "OK", 0},
      {Message::kEnterAccount, "26", 1, "OK", 0},
      {Message::kPasswordLength, "27", 1, "OK", 0},
      {Message::kWrongAccount, "31", 1, "OK", 0},
      {Message::kWrongPassword, "32", 1, "OK", 0},
      {Message::kPasswordNeeded, "35", 1, "OK", 0},
      {Message::kEngineTimeout, "39", 1, "OK", 1},
      {Message::kLeaveProgram, "40", 2, "OK_CANCEL", 2},
      {Message::kManySentences, "42", 0, "OK", 0},
      {Message::kReinstall, "47", 2, "YES_NO", 3},
      {Message::kMergeOldAccount, "49", 2, "OK_CANCEL", 4},
      {Message::kMergeDone, "50", 1, "OK", 4},
      {Message::kNoPartners, "51", 1, "OK", 1},
      {Message::kNotOffered, "52", 1, "OK", 0},
      {Message::kBadSourceList, "53", 1, "OK", 1},
      {Message::kNoSource, "54", 1, "OK", 0},
      {Message::kNoTranslation, "55", 1, "OK", 1},
      {Message::kUnexpectedError, "404", 1, "OK", 1},
      {Message::kReinstallRefused, "471", 1, "OK", 3},
      {Message::kPasswordSet, "2977", 1, "OK", 0},
      {Message::kServerNotFound, "2984", 1, "OK", 1},
      {Message::kNotOnCampus, "2999", 2, "OK", 0},
      {Message::kBadSigns, "13001", 1, "OK", 0},
      {Message::kEnterEssay, "14001", 1, "OK", 0},
      {Message::kWrongSentence, "14003", 1, "OK", 0},
      {Message::kNoEndMark, "14004", 1, "OK", 0},
      {Message::kEssayDone, "14005", 1, "OK", 0},
      {Message::kNewEssay, "14006", 2, "OK_CANCEL", 2},
      {Message::kNoAssignment, "14007", 1, "OK", 0},
      {Message::kNoEssays, "14013", 1, "OK", 0},
      {Message::kChooseEssays, "14014", 1, "OK", 0},
      {Message::kDeleteEssays, "14015", 2, "OK_CANCEL", 2},
      {Message::kOneRowAtATime, "14016", 0, "OK", 0},
      {Message::kHandInThis, "14016", 0, "OK_CANCEL", 0},
      {Message::kSomeNotDeleted, "14017", 0, "OK", 0},
      {Message::kHandedIn, "14018", 1, "OK", 0},
      {Message::kHandInNow, "14019", 2, "YES_NO", 2},
      {Message::kOwnTopic, "14020", 0, "OK", 0},
      {Message::kDoubtfulSentence, "14021", 2, "YES_NO", 2},
      {Message::kNotHandedIn, "14022", 1, "OK", 0},
      {Message::kEssayTooLong, "14023", 1, "OK", 0},
      {Message::kTooManySentences, "14024", 1, "OK", 0},
      {Message::kUploadFailed, "15001", 2, "YES_NO", 3},
      {Message::kNoEngineAddress, "16001", 2, "OK_CANCEL", 2},
      {Message::kSentenceTooLong, "13002", 1, "OK", 0},
      {Message::kSeveralSentences, "13003", 2, "YES_NO", 2},
      {Message::kRefusedByEngine, "13004", 1, "OK", 1},
      {Message::kEssayWaits, "14025", 1, "OK", 0},
      {Message::kDraftNotKept, "14026", 1, "OK", 1},
      {Message::kDraftCopied, "14027", 1, "OK", 1},
      {Message::kDraftNotRead, "14028", 1, "OK", 1},
      {Message::kUnknownAccount, "29851", 1, "OK", 0},
      {Message::kNewAccount, "", 0, "OK", 0},
  };
  constexpr const char* kButtons[] = {"OK", "OK_CANCEL", "YES_NO"};
  for (const auto& [message, number, icon, buttons, kind] : kMessages) {
    EXPECT_EQ(message.number, number);
    EXPECT_EQ(static_cast<int>(message.icon), icon) << number;
    EXPECT_STREQ(kButtons[static_cast<int>(message.buttons)], buttons) << number;
    EXPECT_EQ(static_cast<int>(message.kind), kind) << number;
  }
}

}  // namespace

}  // namespace marovane
