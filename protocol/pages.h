// The names of all pages, below the root of the server or of the web engine. docs/protocol.md says what they
// accept and answer.
#pragma once

namespace protocol::page {

// Of any server.
inline constexpr const char* kServerProbe = "p_getconn.asp";
inline constexpr const char* kEngineAddress = "p_all_webengine_get.asp";
inline constexpr const char* kNewestVersion = "p_getversion.asp";
inline constexpr const char* kPublisherNews = "p_publisher_news.asp";
inline constexpr const char* kServiceMail = "m_service_mail.asp";
inline constexpr const char* kFeedback = "p_feedback.asp";

// Of the web engine.
inline constexpr const char* kEngineProbe = "p_passWebEngine_conn.asp";
inline constexpr const char* kCheckSentence = "p_passWebEngine.asp";
inline constexpr const char* kWordBank = "p_passWebEngine_wbank.asp";
inline constexpr const char* kTranslate = "p_com_translate.asp";

// Result pages, and the outside sites of the word helper.
inline constexpr const char* kShowPackedPage = "p_decode.asp";
inline constexpr const char* kArchivePage = "p_all_engine_htm_rec.asp";
inline constexpr const char* kShowArchivedPage = "p_all_engine_htm_show.asp";
inline constexpr const char* kWebHelperSites = "p_getwebhelper.asp";

// Accounts.
inline constexpr const char* kSchoolServer = "p_server_get.asp";
inline constexpr const char* kLogin = "p_getlogin.asp";
inline constexpr const char* kCheckPassword = "p_getauthwithpw.asp";
inline constexpr const char* kUserSettings = "p_getusersettings.asp";
inline constexpr const char* kUserAct = "p_update_useract.asp";

// Records of several computers.
inline constexpr const char* kUpdateRecords = "p_update_err_rec.asp";
inline constexpr const char* kSyncChecksum = "p_sync_checksum.asp";
inline constexpr const char* kSyncClient = "p_sync_client_new.asp";

// Assignments.
inline constexpr const char* kWork = "p_mrv_get_essay_work.asp";  ///< the list by POST, a question by GET
inline constexpr const char* kHandInEssay = "p_set_essay_work_finalset.asp";
inline constexpr const char* kTeacherComment = "p_get_essay_work_teacher.asp";

}  // namespace protocol::page
