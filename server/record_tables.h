// The tables of records, as a step of the schema of `server.db`.
#pragma once

namespace marovane {

// The numbers are the order of arrival, and are never used twice.
inline constexpr const char* kRecordTables = R"(
    CREATE TABLE sentence (
      id INTEGER PRIMARY KEY AUTOINCREMENT,
      account TEXT NOT NULL REFERENCES account (number),
      errcode TEXT NOT NULL,       -- '' of a correct sentence
      sentence TEXT NOT NULL,
      day TEXT NOT NULL,
      essay_id TEXT NOT NULL,
      essay_s_id TEXT NOT NULL,
      have_htm TEXT NOT NULL
    );
    CREATE INDEX sentence_account ON sentence (account);
    CREATE INDEX sentence_text ON sentence (account, sentence);
    CREATE TABLE essay (
      id INTEGER PRIMARY KEY AUTOINCREMENT,
      account TEXT NOT NULL REFERENCES account (number),
      day TEXT NOT NULL,
      essay_id TEXT NOT NULL,
      work_id TEXT NOT NULL,
      final_set TEXT NOT NULL,
      quiz TEXT NOT NULL,
      org_essay TEXT NOT NULL,
      new_essay TEXT NOT NULL
    );
    CREATE INDEX essay_account ON essay (account, essay_id);
    CREATE TABLE post (
      account TEXT NOT NULL REFERENCES account (number),
      id TEXT NOT NULL,
      PRIMARY KEY (account, id)
    ) WITHOUT ROWID;
    CREATE TABLE merge (
      account TEXT NOT NULL REFERENCES account (number),
      from_account TEXT NOT NULL REFERENCES account (number),
      kind TEXT NOT NULL,
      last_id INTEGER NOT NULL,
      PRIMARY KEY (account, from_account, kind)
    ) WITHOUT ROWID;
)";

}  // namespace marovane
