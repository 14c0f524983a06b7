-- title: Logins without a user
-- why: Deleting a user leaves the login, so that the person can still log in; so does a new user whose save was cut
--     off.
-- severity: note
-- do: Give the login a password that nobody knows: zeldb passwd CATALOG LOGIN.
-- finding: The login "{Name}" belongs to no user.
-- table: User_Information
-- keys: Name
select Name
from #logins l
where Name <> 'sa' and not exists (select * from User_Information u where u.User_Name = l.Name)
order by Name
