#include "app/compose.h"

#include "core/error_report.h"
#include "core/provisioning.h"
#include "core/records_place.h"
#include "core/version_check.h"
#include "records/salvage.h"

namespace marovane {

Composition::Composition(Machine& machine, InstallationValues installation)
    : program(machine, std::move(installation)) {
  auto& hall = program.hall;
  hall.frmMain.LeadsTo([this]() -> MainWindow& { return *frmMain; });
  hall.frmSplash.LeadsTo([this]() -> Splash& { return *frmSplash; });
  hall.frmBrowser.LeadsTo([this]() -> Browser& { return *frmBrowser; });
  hall.frmCollocation.LeadsTo([this]() -> WordHelper& { return *frmCollocation; });
  hall.frmSuggest.LeadsTo([this]() -> Suggestions& { return *frmSuggest; });
  hall.frmMenu.LeadsTo([this]() -> TextMenu& { return *frmMenu; });
  hall.frmDebug.LeadsTo([this]() -> HallWindow& { return *frmDebug; });
  hall.frmErrSentence.LeadsTo([this]() -> ErrorSentences& { return *frmErrSentence; });
  hall.frmBindSelect.LeadsTo([this]() -> HallWindow& { return *frmBindSelect; });
  hall.frmSentences.LeadsTo([this]() -> DaySentences& { return *frmSentences; });
  hall.frmDiary.LeadsTo([this]() -> HallWindow& { return *frmDiary; });
  hall.frmErrList.LeadsTo([this]() -> ErrorStatistics& { return *frmErrList; });
  hall.frmEssay.LeadsTo([this]() -> Essay& { return essay; });
  hall.frmEssayInputEdu.LeadsTo([this]() -> HallWindow& { return *essay.frmEssayInputEdu; });
  hall.frmEssayInputForm.LeadsTo([this]() -> HallWindow& { return *essay.frmEssayInputForm; });
  hall.frmEssayCollect.LeadsTo([this]() -> HallWindow& { return *essay.frmEssayCollect; });
  hall.frmSetup.LeadsTo([this]() -> HallWindow& { return *frmSetup; });
  hall.frmPassword.LeadsTo([this]() -> HallWindow& { return *frmPassword; });
  hall.frmFeedback.LeadsTo([this]() -> HallWindow& { return *frmFeedback; });
  hall.frmXQDLogin.LeadsTo([this]() -> HallWindow& { return *frmXQDLogin; });
  hall.checkDatabaseBuild = [this] {
    CheckDatabaseBuild(program);
    if (!RecordsFolder(program).empty()) MendRecords(program);
  };
  hall.refreshUpdater = [this] { RefreshUpdater(program); };
  hall.showPublisherNews = [this] { ShowPublisherNews(program, frmPublisher); };
  hall.checkVersion = [this] { CheckVersion(program); };
  hall.frmUpload.LeadsTo([this]() -> UploadRun& { return *frmUpload; });
  hall.frmSyncLogin.LeadsTo([this]() -> HallWindow& { return *frmSyncLogin; });
  hall.unpackDataFiles = [this] { UnpackDataFiles(program); };
  hall.showMissingData = [this] { ShowMissingData(program); };
  ReportUnhandledErrors(program);
}

}  // namespace marovane
