-- title: Users without a login
-- why: The person can't log in.
-- severity: error
-- do: Delete the user and enter it again, which makes the login.
-- finding: User {Row_No} "{User_Name}" has no login.
-- table: User_Information
-- keys: Row_No
select Row_No, isnull(User_Name, '') as User_Name
from User_Information u
where not exists (select * from #logins l where l.Name = u.User_Name)
order by Row_No
