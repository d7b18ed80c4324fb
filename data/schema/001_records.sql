-- The record database. All inserts are positional, so the order of the columns is part of the design.
-- Days are ISO texts (2026-11-05), so that they sort and compare as dates.
create table oksentence (
  sId text not null,
  okFlag text not null,       -- always 'N'
  sentence text not null,     -- with U+2019 in place of the apostrophe
  sDate text not null,
  upload text not null,       -- 'N' new, 'Y' on the server, 'D' deleted and not yet told
  essayId text not null,      -- '0' or '' outside an essay
  essaySId text not null,
  haveHtm text not null       -- 'N' none, '1' page of an error, '2' page of a warning
);
create index oksentence_day on oksentence (sDate);
create index oksentence_id on oksentence (sId);
create index oksentence_essay on oksentence (essayId, essaySId);
create index oksentence_text on oksentence (sentence);
create index oksentence_upload on oksentence (upload);

create table errsentence (
  id text not null,
  sentence text not null,     -- faulty parts between pairs of "*"
  errcode text not null,
  sDate text not null,
  upload text not null,
  essayId text not null,
  essaySId text not null,
  haveHtm text not null
);
create index errsentence_day on errsentence (sDate);
create index errsentence_id on errsentence (id);
create index errsentence_code on errsentence (errcode);
create index errsentence_essay on errsentence (essayId, essaySId);
create index errsentence_text on errsentence (sentence);
create index errsentence_upload on errsentence (upload);

create table mistakes (
  Errcode text not null,
  times integer not null
);
create index mistakes_code on mistakes (Errcode);

create table essay (
  essayId text not null,
  workId text not null,
  quiz text not null,
  orgEssay text not null,
  newEssay text not null,
  upload text not null,
  finalSet text not null,     -- 'A' not finished, 'N' finished, 'Y' handed in
  sDate text not null
);
create index essay_id on essay (essayId);
create index essay_work on essay (workId);
create index essay_day on essay (sDate);

create table workRec (
  sDate text not null,
  chkright text not null,
  chkwrong text not null,
  recFlag text not null       -- always 'N'
);
create index workRec_day on workRec (sDate);

-- Sentences that were deleted before any server knew them. To a server they say nothing: an equal sentence
-- that it has is another computer's.
create table never_sent (
  id text primary key
) without rowid;
create trigger oksentence_never_sent after update of upload on oksentence
when old.upload = 'N' and new.upload = 'D' begin
  insert or ignore into never_sent values (new.sId);
end;
create trigger errsentence_never_sent after update of upload on errsentence
when old.upload = 'N' and new.upload = 'D' begin
  insert or ignore into never_sent values (new.id);
end;

pragma user_version = 1;
