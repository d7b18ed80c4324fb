-- Categories and codes of errors. A code begins with the id of its category; no id begins another one.
create table errtype (errtype_id text primary key, errtype text not null);
create table errmain (errcode text primary key, outline text);
