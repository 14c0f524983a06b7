-- title: User numbers given twice
-- why: Changing or deleting the one user does it to the other, too.
-- severity: error
-- do: Give one of them a free number with `zeldb sql`.
-- finding: {Users} users bear the number {Row_No}.
-- table: User_Information
-- keys: Row_No
select Row_No, count(*) as Users
from User_Information group by Row_No having count(*) > 1
order by Row_No
