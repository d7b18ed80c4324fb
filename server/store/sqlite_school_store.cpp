#include <mutex>

#include "base/transaction.h"
#include "server/store/school_store.h"
#include "server/store/store_database.h"

namespace server {
namespace {

using Row = std::vector<std::string>;
using Values = std::vector<base::DbValue>;

constexpr const char* kClasses =
    "SELECT id, name, (SELECT count(*) FROM pupil WHERE class = class.id),"
    " (SELECT count(*) FROM topic WHERE class = class.id),"
    " (SELECT count(*) FROM hand_in JOIN topic ON topic.id = hand_in.topic"
    "  WHERE topic.class = class.id AND marked_day = '')"
    " FROM class WHERE teacher = ?";
constexpr const char* kTopicColumns =
    "topic.id, class.id, class.name, title, question, deadline, changed_day,"
    " (SELECT count(*) FROM hand_in AS given WHERE given.topic = topic.id),"
    " (SELECT count(*) FROM hand_in AS given WHERE given.topic = topic.id AND given.marked_day = '')";
constexpr const char* kHandInColumns =
    "hand_in.account, pupil.name, essay_id, day, org_essay, new_essay, comment, marked_day";

/// The class, when it is the teacher's own: for writes. Its parameters are the class and the teacher.
constexpr const char* kOwnClass = "(SELECT id FROM class WHERE id = CAST(? AS INTEGER) AND teacher = ?)";
/// The same for the topic and the teacher.
constexpr const char* kOwnTopic =
    "(SELECT topic.id FROM topic JOIN class ON class.id = topic.class WHERE topic.id = ? AND teacher = ?)";

SchoolClass ClassOf(const Row& row) {
  return {row[0], row[1], std::stoul(row[2]), std::stoul(row[3]), std::stoul(row[4])};
}

Topic TopicOf(const Row& row) {
  return {row[0], row[1], row[2], row[3], row[4], row[5], row[6], std::stoul(row[7]), std::stoul(row[8])};
}

HandIn HandInOf(const Row& row, std::size_t from = 0) {
  return {row[from],     row[from + 1], row[from + 2], row[from + 3],
          row[from + 4], row[from + 5], row[from + 6], row[from + 7]};
}

Assignment AssignmentOf(const Row& row) {
  constexpr std::size_t kHandIn = 9;  // after the columns of the topic
  Assignment assignment{TopicOf(row), std::nullopt};
  if (!row[kHandIn].empty()) assignment.handIn = HandInOf(row, kHandIn);
  return assignment;
}

/// The topics of all classes of an account; it is the first parameter.
std::string AssignmentsSql(const char* condition) {
  return std::string("SELECT ") + kTopicColumns + ", " + kHandInColumns +
         " FROM pupil JOIN class ON class.id = pupil.class JOIN topic ON topic.class = class.id"
         " LEFT JOIN hand_in ON hand_in.topic = topic.id AND hand_in.account = pupil.account"
         " WHERE pupil.account = ? " +
         condition + " ORDER BY topic.number DESC";
}

class SqliteSchoolStore : public SchoolStore {
 public:
  explicit SqliteSchoolStore(const std::filesystem::path& file) : database_(OpenStoreDatabase(file)) {}

  std::optional<Teacher> FindTeacher(const std::string& login) override {
    return First<Teacher>("SELECT login, name, password_hash FROM teacher WHERE login = ?", {login},
                          TeacherOf);
  }

  void PutTeacher(const Teacher& teacher) override {
    Write(
        "INSERT INTO teacher VALUES (?, ?, ?) ON CONFLICT (login) DO UPDATE SET name = excluded.name,"
        " password_hash = excluded.password_hash",
        {teacher.login, teacher.name, teacher.passwordHash});
  }

  std::vector<Teacher> Teachers() override {
    return All<Teacher>("SELECT login, name, password_hash FROM teacher ORDER BY login", {}, TeacherOf);
  }

  std::vector<SchoolClass> Classes(const std::string& teacher) override {
    return All<SchoolClass>(std::string(kClasses) + " ORDER BY name, id", {teacher}, ClassOf);
  }

  std::optional<SchoolClass> FindClass(const std::string& teacher, const std::string& classId) override {
    return First<SchoolClass>(std::string(kClasses) + " AND id = CAST(? AS INTEGER)", {teacher, classId},
                              ClassOf);
  }

  std::string AddClass(const std::string& teacher, const std::string& name) override {
    const std::lock_guard lock(mutex_);
    return *database_->Text("INSERT INTO class (teacher, name) VALUES (?, ?) RETURNING id", {teacher, name});
  }

  bool RenameClass(const std::string& teacher, const std::string& classId, const std::string& name) override {
    return Write(std::string("UPDATE class SET name = ? WHERE id = ") + kOwnClass, {name, classId, teacher});
  }

  bool DeleteClass(const std::string& teacher, const std::string& classId) override {
    return Write(std::string("DELETE FROM class WHERE id = ") + kOwnClass +
                     " AND NOT EXISTS (SELECT 1 FROM pupil WHERE pupil.class = class.id)"
                     " AND NOT EXISTS (SELECT 1 FROM topic WHERE topic.class = class.id)",
                 {classId, teacher});
  }

  std::vector<Pupil> Pupils(const std::string& teacher, const std::string& classId) override {
    return All<Pupil>(
        std::string("SELECT account, name FROM pupil WHERE class = ") + kOwnClass + " ORDER BY account",
        {classId, teacher}, [](const Row& row) {
          return Pupil{row[0], row[1]};
        });
  }

  bool AddPupils(const std::string& teacher, const std::string& classId,
                 const std::vector<Pupil>& pupils) override {
    const std::lock_guard lock(mutex_);
    base::Transaction transaction(*database_);
    if (database_->Text(std::string("SELECT ") + kOwnClass, {classId, teacher}) == "") return false;
    for (const Pupil& pupil : pupils) {
      database_->Run("INSERT INTO account (number, password_hash) VALUES (?, ?) ON CONFLICT DO NOTHING",
                     {pupil.account, pupil.passwordHash});
      database_->Run(
          "INSERT INTO pupil VALUES (CAST(? AS INTEGER), ?, ?)"
          " ON CONFLICT (class, account) DO UPDATE SET name = excluded.name",
          {classId, pupil.account, pupil.name});
    }
    transaction.Commit();
    return true;
  }

  bool RemovePupil(const std::string& teacher, const std::string& classId,
                   const std::string& account) override {
    return Write(std::string("DELETE FROM pupil WHERE class = ") + kOwnClass + " AND account = ?",
                 {classId, teacher, account});
  }

  std::vector<Topic> Topics(const std::string& teacher, const std::string& classId) override {
    return All<Topic>(std::string("SELECT ") + kTopicColumns +
                          " FROM topic JOIN class ON class.id = topic.class"
                          " WHERE teacher = ? AND class.id = CAST(? AS INTEGER) ORDER BY topic.number DESC",
                      {teacher, classId}, TopicOf);
  }

  std::optional<Topic> FindTopic(const std::string& teacher, const std::string& topicId) override {
    return First<Topic>(std::string("SELECT ") + kTopicColumns +
                            " FROM topic JOIN class ON class.id = topic.class"
                            " WHERE teacher = ? AND topic.id = ?",
                        {teacher, topicId}, TopicOf);
  }

  bool AddTopic(const std::string& teacher, const Topic& topic) override {
    return Write(
        "INSERT INTO topic (id, class, title, question, deadline, changed_day)"
        " SELECT ?, id, ?, ?, ?, '' FROM class WHERE id = CAST(? AS INTEGER) AND teacher = ?",
        {topic.id, topic.title, topic.question, topic.deadline, topic.classId, teacher});
  }

  bool ChangeTopic(const std::string& teacher, const Topic& topic) override {
    return Write(
        std::string("UPDATE topic SET title = ?, question = ?, deadline = ?, changed_day = ? WHERE id = ") +
            kOwnTopic,
        {topic.title, topic.question, topic.deadline, topic.changedDay, topic.id, teacher});
  }

  bool DeleteTopic(const std::string& teacher, const std::string& topicId) override {
    return Write(std::string("DELETE FROM topic WHERE id = ") + kOwnTopic +
                     " AND NOT EXISTS (SELECT 1 FROM hand_in WHERE hand_in.topic = topic.id)",
                 {topicId, teacher});
  }

  std::vector<HandIn> HandIns(const std::string& teacher, const std::string& topicId) override {
    return All<HandIn>(
        std::string("SELECT ") + kHandInColumns +
            " FROM hand_in JOIN topic ON topic.id = hand_in.topic JOIN class ON class.id = topic.class"
            " LEFT JOIN pupil ON pupil.class = class.id AND pupil.account = hand_in.account"
            " WHERE teacher = ? AND topic.id = ? ORDER BY hand_in.account",
        {teacher, topicId}, [](const Row& row) { return HandInOf(row); });
  }

  bool Mark(const std::string& teacher, const std::string& topicId, const HandIn& marked) override {
    return Write(
        std::string("UPDATE hand_in SET comment = ?, marked_day = ? WHERE account = ? AND topic = ") +
            kOwnTopic,
        {marked.comment, marked.markedDay, marked.account, topicId, teacher});
  }

  std::vector<Assignment> Assignments(const std::string& account) override {
    return All<Assignment>(AssignmentsSql(""), {account}, AssignmentOf);
  }

  std::optional<Assignment> FindAssignment(const std::string& account, const std::string& topicId) override {
    return First<Assignment>(AssignmentsSql("AND topic.id = ?"), {account, topicId}, AssignmentOf);
  }

  HandInResult StoreHandIn(const std::string& account, const std::string& essayId, const std::string& topicId,
                           const std::string& day) override {
    if (!FindAssignment(account, topicId)) return HandInResult::kNoTopic;
    const std::lock_guard lock(mutex_);
    base::Transaction transaction(*database_);
    const bool isThere =
        Changes("UPDATE essay SET final_set = 'Y' WHERE account = ? AND essay_id = ? AND work_id = ?",
                {account, essayId, topicId});
    if (!isThere) return HandInResult::kNoEssay;
    database_->Run(
        "INSERT INTO hand_in (topic, account, essay_id, day, org_essay, new_essay)"
        " SELECT work_id, account, essay_id, ?, org_essay, new_essay FROM essay"
        " WHERE account = ? AND essay_id = ? AND work_id = ? ORDER BY id DESC LIMIT 1"
        " ON CONFLICT DO NOTHING",
        {day, account, essayId, topicId});
    const auto handedIn =
        database_->Text("SELECT essay_id FROM hand_in WHERE topic = ? AND account = ?", {topicId, account});
    if (handedIn != essayId) return HandInResult::kOtherEssay;
    transaction.Commit();
    return HandInResult::kTaken;
  }

 private:
  static Teacher TeacherOf(const Row& row) { return {row[0], row[1], row[2]}; }

  template <typename Item, typename Make>
  std::vector<Item> All(const std::string& sql, const Values& parameters, Make make) {
    const std::lock_guard lock(mutex_);
    std::vector<Item> items;
    database_->Run(sql, parameters, [&](const base::DbRow& row) { items.push_back(make(row.Texts())); });
    return items;
  }

  template <typename Item, typename Make>
  std::optional<Item> First(const std::string& sql, const Values& parameters, Make make) {
    auto items = All<Item>(sql, parameters, make);
    return items.empty() ? std::nullopt : std::optional<Item>(std::move(items[0]));
  }

  /// Whether the statement has changed a row.
  bool Changes(const std::string& sql, const Values& parameters) {
    return database_->Text(sql + " RETURNING 1", parameters).has_value();
  }

  bool Write(const std::string& sql, const Values& parameters) {
    const std::lock_guard lock(mutex_);
    return Changes(sql, parameters);
  }

  std::mutex mutex_;
  std::unique_ptr<base::Database> database_;
};

}  // namespace

std::unique_ptr<SchoolStore> OpenSqliteSchoolStore(const std::filesystem::path& file) {
  return std::make_unique<SqliteSchoolStore>(file);
}

}  // namespace server
