// The tables of `server.db`, as the steps that have made them.
#pragma once

#include <array>
#include <cstddef>

namespace server {

inline constexpr const char* kAccountTables = R"(
    CREATE TABLE account (
      number TEXT PRIMARY KEY,
      password_hash TEXT NOT NULL,
      settings TEXT NOT NULL DEFAULT ''
    );
    CREATE TABLE act (
      account TEXT NOT NULL REFERENCES account (number),
      day TEXT NOT NULL,
      act TEXT NOT NULL,
      times INTEGER NOT NULL,
      PRIMARY KEY (account, day, act)
    );
)";

inline constexpr const char* kArchiveTable = R"(
    CREATE TABLE archive (
      pnomd5 TEXT NOT NULL,
      checksum TEXT NOT NULL,
      page TEXT NOT NULL,
      PRIMARY KEY (pnomd5, checksum)
    );
)";

inline constexpr const char* kOwnersAndFeedback = R"(
    ALTER TABLE account ADD COLUMN user_name TEXT NOT NULL DEFAULT '';
    ALTER TABLE account ADD COLUMN email TEXT NOT NULL DEFAULT '';
    CREATE TABLE feedback (
      day TEXT NOT NULL,
      account TEXT NOT NULL,
      errcode TEXT NOT NULL,
      sentence TEXT NOT NULL,
      remarks TEXT NOT NULL,
      email TEXT NOT NULL
    );
)";

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

// Ids and flags from before posts were tested, as protocol/record_form.h cleans them: the computers that have
// such rows do the same, so that both sides go on having equal ones.
inline constexpr const char* kCleanRecords = R"(
    CREATE TEMP TABLE cleaned AS
      WITH RECURSIVE
        id (old) AS (
          SELECT essay_id FROM sentence UNION SELECT essay_s_id FROM sentence UNION SELECT essay_id FROM essay
          UNION SELECT work_id FROM essay UNION SELECT essay_id FROM hand_in),
        step (old, n, new) AS (
          SELECT old, 1, '' FROM id
            WHERE old GLOB '*[^0-9A-Za-z._-]*' OR length(CAST(old AS BLOB)) > min(length(old), 64)
          UNION ALL
          SELECT old, n + 1,
              new || CASE WHEN substr(old, n, 1) GLOB '[0-9A-Za-z._-]' THEN substr(old, n, 1) ELSE '' END
            FROM step WHERE n <= min(length(old), 64))
      SELECT old, new FROM step WHERE n > min(length(old), 64);
    UPDATE sentence SET essay_id = cleaned.new FROM cleaned WHERE essay_id = cleaned.old;
    UPDATE sentence SET essay_s_id = cleaned.new FROM cleaned WHERE essay_s_id = cleaned.old;
    UPDATE essay SET essay_id = cleaned.new FROM cleaned WHERE essay_id = cleaned.old;
    UPDATE essay SET work_id = cleaned.new FROM cleaned WHERE work_id = cleaned.old;
    UPDATE hand_in SET essay_id = cleaned.new FROM cleaned WHERE essay_id = cleaned.old;
    DROP TABLE cleaned;
    UPDATE sentence SET have_htm = 'N' WHERE have_htm NOT IN ('N', '1', '2');
    UPDATE essay SET final_set = 'N' WHERE final_set NOT IN ('N', 'A', 'Y');
)";

// Rows get ids of their own (`IdOfRow` gives one to each that is there already), those of deleted rows are
// remembered, and the posts their order.
inline constexpr const char* kRowIds = R"(
    ALTER TABLE sentence ADD COLUMN uid TEXT NOT NULL DEFAULT '';
    CREATE TABLE gone (
      id INTEGER PRIMARY KEY AUTOINCREMENT,
      account TEXT NOT NULL REFERENCES account (number),
      uid TEXT NOT NULL,           -- id of a sentence or an essay
      UNIQUE (account, uid)
    );
    CREATE TABLE new_post (
      seq INTEGER PRIMARY KEY AUTOINCREMENT,
      account TEXT NOT NULL REFERENCES account (number),
      id TEXT NOT NULL,
      UNIQUE (account, id)
    );
    INSERT INTO new_post (account, id) SELECT account, id FROM post;
    INSERT INTO new_post (account, id)
      SELECT account, lower(hex(randomblob(16))) FROM (SELECT account FROM sentence UNION SELECT account FROM essay)
      WHERE account NOT IN (SELECT account FROM post);
    DROP TABLE post;
    ALTER TABLE new_post RENAME TO post;
    CREATE INDEX post_order ON post (account, seq);
    CREATE TABLE server (id TEXT NOT NULL);
    INSERT INTO server VALUES (lower(hex(randomblob(16))));
)";
// Between the two the rows get their ids.
inline constexpr std::size_t kStepOfRowIds = 7;
inline constexpr const char* kRowIdIndex = "CREATE UNIQUE INDEX sentence_uid ON sentence (account, uid);";

// What programs send to prove that they have logged in; the server knows only the hash.
inline constexpr const char* kTokenTable = R"(
    CREATE TABLE token (
      id INTEGER PRIMARY KEY AUTOINCREMENT,
      hash TEXT NOT NULL UNIQUE,   -- SHA-256
      account TEXT NOT NULL REFERENCES account (number),
      made_day TEXT NOT NULL,
      last_day TEXT NOT NULL
    );
    CREATE INDEX token_account ON token (account);
)";

/// Step N brings a database of version N to version N + 1. A step that was published is never changed.
inline constexpr std::array kSchemaSteps{kAccountTables, kArchiveTable, kOwnersAndFeedback,
                                         kRecordTables,  kSchoolTables, kCleanRecords,
                                         kRowIds,        kRowIdIndex,   kTokenTable};

}  // namespace server
