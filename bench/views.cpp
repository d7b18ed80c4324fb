// The time of the windows that look back on records, beside the bare time of their SQL.
#include <filesystem>
#include <functional>

#include "base/day.h"
#include "base/posix_files.h"
#include "base/sqlite.h"
#include "bench/statistics.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "platform/headless/headless_windows.h"
#include "platform/host/host_environment.h"
#include "platform/host/opencc.h"
#include "platform/host/posix_processes.h"
#include "platform/http.h"
#include "records/err_list_db.h"
#include "records/record_db.h"
#include "tests/support/realistic_records.h"
#include "tests/support/temp_folder.h"
#include "tests/support/virtual_loop.h"
#include "views/chart_drawing.h"
#include "views/day_sentences_page.h"
#include "views/diary.h"
#include "views/error_statistics_page.h"

using namespace marovane;

namespace {

constexpr base::Day kToday{std::chrono::year{2026} / 11 / 5};

class NoServer : public HttpClient {
 public:
  base::HttpResponse Send(const base::HttpRequest& /*request*/) override { return {}; }
  void SendLater(const base::HttpRequest& /*request*/) override {}
};

// Passes statements on and adds up the time that they take, the rows read included, the work on them not.
class TimedDatabases : public base::Databases {
 public:
  explicit TimedDatabases(base::Databases& databases) : databases_(databases) {}
  std::unique_ptr<base::Database> Open(const std::filesystem::path& path, Mode mode) override {
    return std::make_unique<Timed>(*this, databases_.Open(path, mode));
  }
  std::unique_ptr<base::Database> Create(const std::filesystem::path& path) override {
    return std::make_unique<Timed>(*this, databases_.Create(path));
  }
  double milliseconds = 0;

 private:
  class Timed : public base::Database {
   public:
    Timed(TimedDatabases& owner, std::unique_ptr<base::Database> db) : owner_(owner), db_(std::move(db)) {}
    void Run(std::string_view sql, const std::vector<base::DbValue>& parameters,
             const std::function<void(const base::DbRow&)>& onRow) override {
      double inRows = 0;
      const double all = bench::Milliseconds([&] {
        db_->Run(sql, parameters, [&](const base::DbRow& row) {
          if (onRow) inRows += bench::Milliseconds([&] { onRow(row); });
        });
      });
      owner_.milliseconds += all - inRows;
    }
    void RunScript(const std::string& script) override { db_->RunScript(script); }

   private:
    TimedDatabases& owner_;
    std::unique_ptr<base::Database> db_;
  };

  base::Databases& databases_;
};

class Bench {
 public:
  Bench(const std::filesystem::path& shipped, const RealisticRecords& wish) : wish_(wish) {
    const auto path = folder_ / "Marovane.mdb";
    std::filesystem::copy_file(shipped / "Marovane.mdb", path);
    FillRealistically(*sqlite_.Open(path, base::Databases::Mode::kReadWrite), wish);
    program_.app.gConnRecords = "Data Source=" + path.string() + ";";
    program_.app.gConnErrList = "Data Source=" + (shipped / "err4list.mdb").string() + ";";
  }

  void Run() {
    fmt::print("{} sentences on {} days\n", FormatNumber(wish_.sentences), FormatNumber(wish_.days));
    Measure("list of days, made anew", [this] {
      RebuildDays(days_);
      return std::size_t{0};
    });
    Measure("diary", [this] { return DiaryPage(DiaryDays(days_)).Markup().size(); });
    Measure("day sentences, all days",
            [this] { return DaySentencesPage(days_.OkSentences({}), {}).Markup().size(); });
    Measure("day sentences, one day",
            [this] { return DaySentencesPage(days_.OkSentences({kToday}), {}).Markup().size(); });
    Measure("error statistics",
            [this] { return ErrorStatisticsPage("/x", CountErrors(errList_, records_)).Markup().size(); });
    Measure("charts",
            [this] { return ChartsPage(CollectCharts(records_, errList_, kToday)).Markup().size(); });
  }

 private:
  void Measure(const char* what, const std::function<std::size_t()>& work) {
    constexpr int kRuns = 15;
    std::vector<double> all;
    std::vector<double> sql;
    std::size_t size = 0;
    for (int i = 0; i < kRuns; ++i) {
      databases_.milliseconds = 0;
      all.push_back(bench::Milliseconds([&] { size = work(); }));
      sql.push_back(databases_.milliseconds);
    }
    fmt::print("  {:<26} median {:8.2f} ms   worst {:8.2f} ms   of it SQL {:8.2f} ms   page {:>12} bytes\n",
               what, bench::Quantile(all, 0.5), bench::Quantile(all, 1), bench::Quantile(sql, 0.5),
               FormatNumber(static_cast<std::int64_t>(size)));
  }

  RealisticRecords wish_;
  TempFolder folder_;
  VirtualLoop loop_;
  HeadlessWindows windows_;
  HeadlessDesktop desktop_;
  NoServer http_;
  base::PosixFiles files_;
  base::SqliteDatabases sqlite_;
  TimedDatabases databases_{sqlite_};
  PosixProcesses processes_{loop_};
  OpenCcConverter chinese_;
  Environment environment_ = ReadHostEnvironment("");
  Machine machine_{loop_, windows_, desktop_, http_, files_, databases_, processes_, chinese_, environment_};
  Program program_{machine_, {}};
  RecordDb records_{program_};
  ErrListDb errList_{program_};
  DayRecords days_{records_};
};

}  // namespace

int main() {
  const auto shipped = ReadHostEnvironment("").programFolder / "data";
  for (const int sentences : {2000, 20000, 100000}) {
    const int days = sentences == 2000 ? 200 : sentences * 3 / 100;
    Bench(shipped, {.sentences = sentences, .days = days, .lastDay = kToday}).Run();
  }
  return 0;
}
