-- Rows get ids that no other row of any computer has: 25 digits. Those that a server has already get them with
-- the next reload; until then they are known by what they say.
update oksentence set sId = printf('%014d%011d', sId, abs(random() % 100000000000))
where upload = 'N' or sId in (select id from never_sent);
update errsentence set id = printf('%014d%011d', id, abs(random() % 100000000000))
where upload = 'N' or id in (select id from never_sent);
delete from never_sent;
insert or ignore into never_sent select sId from oksentence where upload = 'D' and length(sId) = 25;
insert or ignore into never_sent select id from errsentence where upload = 'D' and length(id) = 25;

-- The flag upload may also be 'R': a server has refused the row for good. It stays on this computer.

-- Sentences and essays that were deleted and have left their tables, here or elsewhere. A server that was
-- restored has to hear of them again.
create table gone (
  id text primary key,
  upload text not null        -- 'N' not told to the server, 'Y' told, 'R' refused for good
) without rowid;

-- Whom and what the flags 'Y' speak of, in one row; none before the first synchronisation.
create table belongs (
  one integer primary key check (one = 1),
  account text not null,
  server text not null,       -- the name that the server has drawn for itself; '' of one that has none
  seen text not null,         -- the latest post of the account that was seen there; '' for none
  isBehind text not null      -- 'Y' while the server may lack what this computer has
);

pragma user_version = 2;
