// Teachers, their classes and pupils, the topics that they set, and the essays that are handed in on them.
// An interface like AccountStore, so that another database can be used.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace server {

struct Teacher {
  std::string login;
  std::string name;
  std::string passwordHash;
};

struct SchoolClass {
  std::string id;
  std::string name;
  std::size_t pupils = 0;
  std::size_t topics = 0;
  std::size_t unmarked = 0;  ///< essays that wait for the teacher
};

struct Pupil {
  std::string account;
  std::string name;
  std::string passwordHash = {};  ///< of an account to be made; an account that exists keeps its own
};

/// Days are ISO text.
struct Topic {
  std::string
      id;  ///< lower-case letters and digits, drawn at random: it must never be a number of the program's
  std::string classId;
  std::string className;
  std::string title;
  std::string question;
  std::string deadline;
  std::string changedDay;  ///< "" while the topic is as it was set
  std::size_t handedIn = 0;
  std::size_t unmarked = 0;  ///< of those handed in
};

/// An essay as it was handed in: later posts of the pupil do not change it.
struct HandIn {
  std::string account;
  std::string pupilName;
  std::string essayId;
  std::string day;
  std::string orgEssay;  ///< first text
  std::string newEssay;  ///< corrected text
  std::string comment;
  std::string markedDay;  ///< "" until the teacher has marked it
};

/// A topic as one pupil has it.
struct Assignment {
  Topic topic;
  std::optional<HandIn> handIn;
};

enum class HandInResult { kTaken, kNoTopic, kNoEssay, kOtherEssay };

/// Texts are UTF-8. What a teacher asks for or changes is always named with the teacher: what belongs to
/// another one is not found. May be used from several threads; each call is one transaction. Throws
/// std::runtime_error when the database fails; then nothing has changed.
class SchoolStore {
 public:
  virtual ~SchoolStore() = default;

  virtual std::optional<Teacher> FindTeacher(const std::string& login) = 0;
  /// Makes the teacher, or changes name and password; the classes stay.
  virtual void PutTeacher(const Teacher& teacher) = 0;
  virtual std::vector<Teacher> Teachers() = 0;

  virtual std::vector<SchoolClass> Classes(const std::string& teacher) = 0;
  virtual std::optional<SchoolClass> FindClass(const std::string& teacher, const std::string& classId) = 0;
  /// Returns the number of the new class.
  virtual std::string AddClass(const std::string& teacher, const std::string& name) = 0;
  /// False for a class of another teacher, here and below.
  virtual bool RenameClass(const std::string& teacher, const std::string& classId,
                           const std::string& name) = 0;

  /// False also while the class has pupils or topics.
  virtual bool DeleteClass(const std::string& teacher, const std::string& classId) = 0;

  /// By account number; none for a class of another teacher.
  virtual std::vector<Pupil> Pupils(const std::string& teacher, const std::string& classId) = 0;
  /// Puts all of them into the class, and makes the accounts that do not exist. One who is there already gets
  /// the new name.
  virtual bool AddPupils(const std::string& teacher, const std::string& classId,
                         const std::vector<Pupil>& pupils) = 0;
  /// The account stays, and so does what the pupil has handed in.
  virtual bool RemovePupil(const std::string& teacher, const std::string& classId,
                           const std::string& account) = 0;

  /// The newest first.
  virtual std::vector<Topic> Topics(const std::string& teacher, const std::string& classId) = 0;
  virtual std::optional<Topic> FindTopic(const std::string& teacher, const std::string& topicId) = 0;
  virtual bool AddTopic(const std::string& teacher, const Topic& topic) = 0;
  /// Changes title, question, deadline and `changedDay`.
  virtual bool ChangeTopic(const std::string& teacher, const Topic& topic) = 0;
  /// False also when somebody has handed in.
  virtual bool DeleteTopic(const std::string& teacher, const std::string& topicId) = 0;

  /// By account number.
  virtual std::vector<HandIn> HandIns(const std::string& teacher, const std::string& topicId) = 0;
  virtual bool Mark(const std::string& teacher, const std::string& topicId, const HandIn& marked) = 0;

  /// What the classes of a pupil have to write, the newest topic first.
  virtual std::vector<Assignment> Assignments(const std::string& account) = 0;
  /// Nothing for a topic that the pupil does not have.
  virtual std::optional<Assignment> FindAssignment(const std::string& account,
                                                   const std::string& topicId) = 0;
  /// Hands in an essay that the pupil's program has posted before, and marks it so among the records. Asked
  /// again for the same essay it changes nothing.
  virtual HandInResult StoreHandIn(const std::string& account, const std::string& essayId,
                                   const std::string& topicId, const std::string& day) = 0;
};

/// Works on a database that `OpenAccountStore` has brought up to date.
std::unique_ptr<SchoolStore> OpenSqliteSchoolStore(const std::filesystem::path& file);

}  // namespace server
