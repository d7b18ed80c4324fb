#include "core/message_catalogue.h"

namespace marovane {

using enum Message::Icon;
using enum Message::Buttons;
using enum Message::Kind;

// clang-format off
constexpr Message Message::kNetworkDown{"1", kWarning, kOk, kError, "目前網路中斷或傳輸品質不佳，請檢查網路連線"};
constexpr Message Message::kNewVersion{"4", kAsk, kYesNo, kUpdate, "目前已有新版程式! \r\n\r\n您是否要現在進行更新?"};
constexpr Message Message::kNoUpdater{"5", kWarning, kOk, kError, "無法正確啟動更新程式! 您的程式可能損毀以致於缺少必要的組件, 請重新安裝"};
constexpr Message Message::kNothingToReport{"7", kNotice, kOk, kPlain, "如果您對辨析結果有疑惑，[問題回饋] 是供您回饋您的問題，目前您並沒有執行辨析動作！"};
constexpr Message Message::kBadEmail{"8", kWarning, kOk, kPlain, "請檢查您輸入的e-mail是否正確！"};
constexpr Message Message::kNoRemark{"9", kWarning, kOk, kPlain, "請您輸入要反應的說明內容！"};
constexpr Message Message::kRemarkTooLong{"10", kWarning, kOk, kPlain, "您的說明已超過200個半字元（相當100個中文字），請儘量縮短，然後再次送出！"};
constexpr Message Message::kFeedbackSent{"11", kNotice, kOk, kPlain, "您的意見已經傳送至伺服器完成了！"};
constexpr Message Message::kFeedbackRefused{"56", kWarning, kOk, kError, "伺服器不接受這則意見！\r\n請修改說明後再試一次"};
constexpr Message Message::kOverwriteFile{"12", kAsk, kYesNo, kQuestion, "檔案已經存在, 您要覆蓋它嗎?"};
constexpr Message Message::kNoSentences{"13", kWarning, kOk, kPlain, "沒有任何造句記錄"};
constexpr Message Message::kChooseSentences{"14", kWarning, kOk, kPlain, "請您選取至少一個造句記錄"};
constexpr Message Message::kDeleteSentences{"15", kAsk, kOkCancel, kQuestion, "您確定要刪除所選的記錄嗎?"};
constexpr Message Message::kDeleteTopic{"15", kAsk, kYesNo, kQuestion, "您確定要刪除所選的記錄嗎?"};
constexpr Message Message::kDeleted{"17", kNotice, kOk, kPlain, "記錄已經刪除完成"};
constexpr Message Message::kExported{"18", kNotice, kOk, kPlain, "已經輸出完成"};
constexpr Message Message::kChooseDays{"19", kWarning, kOk, kPlain, "請您選取至少一天"};
constexpr Message Message::kDeleteDays{"21", kAsk, kOkCancel, kQuestion, "您確定要刪除所選日期的記錄嗎?"};
constexpr Message Message::kChooseMistake{"22", kWarning, kOk, kPlain, "要列示犯錯句子，請點取特定犯錯，而非類別名稱……"};
constexpr Message Message::kChooseEducation{"23", kWarning, kOk, kPlain, "學歷選項必須設定"};
constexpr Message Message::kNoEngineReply{"24", kWarning, kOk, kError, "抱歉! 修辭引擎沒有回傳任何資料"};
constexpr Message Message::kEnterWord{"25", kWarning, kOk, kPlain, "請您輸入單字，才能執行辨析動作！"};
constexpr Message Message::kEnterAccount{"26", kWarning, kOk, kPlain, "請輸入帳號"};
constexpr Message Message::kPasswordLength{"27", kWarning, kOk, kPlain, "密碼必須為4～64碼，限用英文字母、數字及半形符號"};
constexpr Message Message::kWrongAccount{"31", kWarning, kOk, kPlain, "帳號有誤，請檢查！"};
constexpr Message Message::kWrongPassword{"32", kWarning, kOk, kPlain, "密碼有誤，請檢查！"};
constexpr Message Message::kTryLater{"33", kWarning, kOk, kPlain, "嘗試的次數太多，請稍候片刻再試"};
constexpr Message Message::kBadLoginText{"34", kWarning, kOk, kPlain, "帳號或密碼中有伺服器不接受的字元，請檢查！"};
constexpr Message Message::kPasswordNeeded{"35", kWarning, kOk, kPlain, "伺服器需要您的密碼，才會接受及提供您的記錄！\r\n在您登入之前，所有記錄仍保留在本台電腦"};
constexpr Message Message::kEngineTimeout{"39", kWarning, kOk, kError, "等待解析引擎的回傳時間過久, 已中斷呼叫, 請再試一次"};
constexpr Message Message::kLeaveProgram{"40", kAsk, kOkCancel, kQuestion, "您確定要離開本程式嗎?"};
constexpr Message Message::kManySentences{"42", kNotice, kOk, kPlain, "您保存的〔我的造句〕已超過5000句！\r\n\r\n建議於〔設定〕視窗中，設定〔自動清除六個月以之的記錄〕，記錄數目太多，會影響系統的執行效率。"};
constexpr Message Message::kReinstall{"47", kAsk, kYesNo, kUpdate, "軟體已有重大的變革, 需重新安裝程式！ \r\n\r\n您是否要現在進行下載安裝?"};
constexpr Message Message::kMergeOldAccount{"49", kAsk, kOkCancel, kMerge, "如果您有 Marovane 舊帳號，同步功能可以將其他帳號的使用資料（如您所造的句子及犯錯記錄等）整合至目前電腦。您要繼續嗎？"};
constexpr Message Message::kMergeDone{"50", kWarning, kOk, kMerge, "同步完成！\r\n\r\n已自伺服器端將您於別台電腦所造的句子及犯錯記錄等，同步至本台電腦。"};
constexpr Message Message::kNoPartners{"51", kWarning, kOk, kError, "抱歉，找不到任何搭配資料"};
constexpr Message Message::kNotOffered{"52", kWarning, kOk, kPlain, "抱歉，本版本還沒提供此功能"};
constexpr Message Message::kBadSourceList{"53", kWarning, kOk, kError, "伺服器提供的查詢網站清單有誤\r\n\r\n有誤的網站已略過，其餘的仍可使用"};
constexpr Message Message::kNoSource{"54", kWarning, kOk, kPlain, "目前沒有可用的查詢網站\r\n\r\n請檢查網路連線，再重新開啟本視窗"};
constexpr Message Message::kNoTranslation{"55", kWarning, kOk, kError, "無法取得中文翻譯\r\n\r\n請檢查網路連線，或換個說法再試一次"};
constexpr Message Message::kUnexpectedError{"404", kWarning, kOk, kError, "出現無法預期錯誤"};
constexpr Message Message::kReinstallRefused{"471", kWarning, kOk, kUpdate, "因為軟體已有重大的變革！\r\n\r\n若未重新安裝程式, 可能產生無法預期的錯誤\r\n您選擇不更新將無法使用本軟體"};
constexpr Message Message::kPasswordSet{"2977", kWarning, kOk, kPlain, "您的密碼已經設定完成！\r\n以後登入時即憑本密碼登入，請緊記密碼。"};
constexpr Message Message::kServerNotFound{"2984", kWarning, kOk, kError, "無法找到伺服器！請檢查是否有誤。"};
constexpr Message Message::kNotOnCampus{"2999", kAsk, kOk, kPlain, "雲端版不適用本功能"};
constexpr Message Message::kBadSigns{"13001", kWarning, kOk, kPlain, "您輸入的內容中含有不正確的字，請檢查"};
constexpr Message Message::kSentenceTooLong{"13002", kWarning, kOk, kPlain, "這個句子太長了！最多為2000個字元\r\n請分成幾個句子後再輸入"};
constexpr Message Message::kSeveralSentences{"13003", kAsk, kYesNo, kQuestion, "您輸入的不只一個句子\r\n\r\n是否要以〔短文寫作〕逐句批改？"};
constexpr Message Message::kRefusedByEngine{"13004", kWarning, kOk, kError, "解析引擎拒絕批改這個句子\r\n請檢查句子與您的帳號"};
constexpr Message Message::kEnterEssay{"14001", kWarning, kOk, kPlain, "請您輸入短文內容，才能執行辨析動作！"};
constexpr Message Message::kWrongSentence{"14003", kWarning, kOk, kPlain, "此句子有誤！請您修正後按 [Enter] 繼續解析"};
constexpr Message Message::kNoEndMark{"14004", kWarning, kOk, kPlain, "句子必需以標點結尾！"};
constexpr Message Message::kEssayDone{"14005", kWarning, kOk, kPlain, "辨析結束！短文全部正確完成！"};
constexpr Message Message::kNewEssay{"14006", kAsk, kOkCancel, kQuestion, "您要寫一篇新的短文嗎？"};
constexpr Message Message::kNoAssignment{"14007", kWarning, kOk, kPlain, "目前尚無指定題目 ！但您仍可自定題目撰寫短文"};
constexpr Message Message::kNoEssays{"14013", kWarning, kOk, kPlain, "沒有任何短文記錄"};
constexpr Message Message::kChooseEssays{"14014", kWarning, kOk, kPlain, "請您選取至少一個短文"};
constexpr Message Message::kDeleteEssays{"14015", kAsk, kOkCancel, kQuestion, "您確定要刪除所選的短文嗎？\r\n此篇短文中的造句記錄，也會一併刪除\r\n\r\n您確定嗎？"};
constexpr Message Message::kOneRowAtATime{"14016", kNotice, kOk, kPlain, "您確定要以這個短文作為交卷嗎？"};
constexpr Message Message::kHandInThis{"14016", kNotice, kOkCancel, kPlain, "您確定要以這個短文作為交卷嗎？"};
constexpr Message Message::kSomeNotDeleted{"14017", kNotice, kOk, kPlain, "記錄已經刪除完成！但已交卷的項目無法刪除"};
constexpr Message Message::kHandedIn{"14018", kWarning, kOk, kPlain, "已經完成交卷"};
constexpr Message Message::kHandInNow{"14019", kAsk, kYesNo, kQuestion, "是否以此篇短文作交卷？"};
constexpr Message Message::kOwnTopic{"14020", kNotice, kOk, kPlain, "這是一個自定題目的短文，沒有對應的題目內容"};
constexpr Message Message::kDoubtfulSentence{"14021", kAsk, kYesNo, kQuestion, "本句子有要您注意的地方 (橘色部份)\r\n請檢查是否要修正……\r\n\r\n您要修正此句子嗎？"};
constexpr Message Message::kNotHandedIn{"14022", kWarning, kOk, kPlain, "目前暫時無法更新伺服器完成交卷！\r\n您可稍候再自行選擇交卷"};
constexpr Message Message::kEssayTooLong{"14023", kWarning, kOk, kPlain, "短文太長了！最多為32767個字元\r\n請將短文分成幾篇後再送出"};
constexpr Message Message::kTooManySentences{"14024", kWarning, kOk, kPlain, "短文的句子太多了！最多為1000個句子\r\n請將短文分成幾篇後再送出"};
constexpr Message Message::kEssayWaits{"14025", kWarning, kOk, kPlain, "短文正在批改中！\r\n請先完成或中斷批改，再分析其他句子"};
constexpr Message Message::kDraftNotKept{"14026", kWarning, kOk, kError, "您輸入的短文無法暫存，可能磁碟已滿！\r\n在關閉視窗之前，請先將內容複製到別處"};
constexpr Message Message::kDraftCopied{"14027", kWarning, kOk, kError, "您輸入的短文無法暫存，可能磁碟已滿！\r\n內容已複製到剪貼簿，請先貼到別處保存，再按確定"};
constexpr Message Message::kDraftNotRead{"14028", kWarning, kOk, kError, "上次未送出的短文無法讀取！\r\n檔案已改名，仍保留在同一資料夾"};
constexpr Message Message::kUploadFailed{"15001", kAsk, kYesNo, kUpdate, "無法正常完成上傳\r\n\r\n網路中斷或傳輸品質不佳，您要重試嗎？"};
constexpr Message Message::kRowsRefused{"15002", kWarning, kOk, kError, "伺服器不接受其中一些記錄！\r\n這些記錄仍保留在本台電腦"};
constexpr Message Message::kRecordsSetAside{"15003", kWarning, kOk, kError, "伺服器上沒有本台電腦原有的一些記錄！\r\n同步之前的全部記錄已另存一份"};
constexpr Message Message::kNoEngineAddress{"16001", kAsk, kOkCancel, kQuestion, "無法正確配發網路引擎位址\r\n請檢查您的網路是否中斷或傳輸品質不佳\r\n\r\n確認後按確定再嘗試取得，或按取消終止"};
constexpr Message Message::kUnknownAccount{"29851", kWarning, kOk, kPlain, "帳號管理伺服器回報您的帳號不屬於任何伺服器所管理\r\n請您確定所輸入的帳號是正確的。"};
// The account number comes as the detail.
constexpr Message Message::kNewAccount{"", kNotice, kOk, kPlain, ""};

// Nobody shows these; they are kept so that the catalogue stays whole.
constexpr Message Message::kTest{"0", kNotice, kOk, kPlain, "這是訊息顯示的測試"};
constexpr Message Message::kOneSentenceAtATime{"16", kNotice, kOk, kPlain, "分析某句子，每次只限一個句子，您可以用滑鼠雙擊某句子啟動"};
constexpr Message Message::kThreeDaysAtMost{"20", kNotice, kOk, kPlain, "每次選取不能超過三天"};
constexpr Message Message::kNewEngine{"46", kNotice, kOk, kPlain, "目前已有新版的引擎解析程式！ \r\n\r\n您是否要現在進行更新?"};
constexpr Message Message::kEnterServer{"2985", kNotice, kOk, kPlain, "請輸入伺服器"};
constexpr Message Message::kEnterNoun{"5001", kNotice, kOk, kPlain, "請先於輸入格輸入該名詞……"};
constexpr Message Message::kEnterAdjective{"5002", kNotice, kOk, kPlain, "您只須輸入形容詞原形……"};
constexpr Message Message::kEnterAdverb{"5003", kNotice, kOk, kPlain, "您只須輸入此副詞片語之中心詞，如想寫：在早上，輸入morning即可……"};
constexpr Message Message::kEnterVerb{"5004", kNotice, kOk, kPlain, "您只須輸入動詞原形……"};
constexpr Message Message::kSameEssay{"14002", kNotice, kOk, kPlain, "與先前的短文相同！"};

constexpr Progress Progress::kChecking{"3000", "正在分析您的句子中...請稍候...."};
constexpr Progress Progress::kPreparingData{"3001", "正在檢查與建立必要組件資料中...."};
constexpr Progress Progress::kUploadingAtEnd{"3002", "正在上傳造句的分析資料中....\r\n\r\n結束後會自動關閉程式"};
constexpr Progress Progress::kCollectingDays{"3003", "正在彙整造句資料中....請稍候"};
constexpr Progress Progress::kSynchronising{"3004", "正在進行資料同步處理中....請稍候"};
constexpr Progress Progress::kCollectingRecords{"3005", "正在進行彙整資料處理中....請稍候"};
constexpr Progress Progress::kFetching{"3007", "正在取得資訊中...請稍候...."};
constexpr Progress Progress::kComparing{"3008", "正在比對同步資料中...請稍候...."};
constexpr Progress Progress::kFindingServer{"10001", "正在與伺服器取得連線資訊中，請稍候...."};
constexpr Progress Progress::kAskingEngine{"10002", "正在呼叫伺服器引擎，取得資訊中請稍候...."};
constexpr Progress Progress::kTranslating{"10003", "正在取得中文翻譯中，請稍候...."};
// As above: nobody shows it.
constexpr Progress Progress::kAnalysing{"3006", "正在進行分析中...請稍候...."};
// clang-format on

}  // namespace marovane
