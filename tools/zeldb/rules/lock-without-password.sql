-- title: The lock has no password
-- why: Nobody passes the lock in front of "Set Menus" and "Remove Data".
-- severity: error
-- do: Set one: zeldb sql CATALOG "insert into LctPswd (Pswd) values ('WORD')".
-- finding: No password opens the lock.
-- table: LctPswd
-- keys:
select 0 as Passwords
where not exists (select * from LctPswd where Pswd <> '')
