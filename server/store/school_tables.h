// The tables of schools, as a step of the schema of `server.db`.
#pragma once

namespace server {

inline constexpr const char* kSchoolTables = R"(
    CREATE TABLE teacher (
      login TEXT PRIMARY KEY,
      name TEXT NOT NULL,
      password_hash TEXT NOT NULL
    ) WITHOUT ROWID;
    CREATE TABLE class (
      id INTEGER PRIMARY KEY AUTOINCREMENT,
      teacher TEXT NOT NULL REFERENCES teacher (login),
      name TEXT NOT NULL
    );
    CREATE INDEX class_teacher ON class (teacher);
    CREATE TABLE pupil (
      class INTEGER NOT NULL REFERENCES class (id),
      account TEXT NOT NULL REFERENCES account (number),
      name TEXT NOT NULL,
      PRIMARY KEY (class, account)
    ) WITHOUT ROWID;
    CREATE INDEX pupil_account ON pupil (account);
    CREATE TABLE topic (
      number INTEGER PRIMARY KEY AUTOINCREMENT,
      id TEXT NOT NULL UNIQUE,
      class INTEGER NOT NULL REFERENCES class (id),
      title TEXT NOT NULL,
      question TEXT NOT NULL,
      deadline TEXT NOT NULL,
      changed_day TEXT NOT NULL    -- '' while it stands as it was set
    );
    CREATE INDEX topic_class ON topic (class);
    CREATE TABLE hand_in (
      topic TEXT NOT NULL REFERENCES topic (id),
      account TEXT NOT NULL REFERENCES account (number),
      essay_id TEXT NOT NULL,
      day TEXT NOT NULL,
      org_essay TEXT NOT NULL,
      new_essay TEXT NOT NULL,
      comment TEXT NOT NULL DEFAULT '',
      marked_day TEXT NOT NULL DEFAULT '',
      PRIMARY KEY (topic, account)
    ) WITHOUT ROWID;
)";

}  // namespace server
