-- title: Subject numbers given twice
-- why: What is owed for the one is owed for the other, too, and screens that look for the subject's name fail.
-- severity: error
-- do: Give one of them a free number with `zeldb sql`.
-- finding: {Subjects} subjects bear the number {SubId}.
-- table: tblSubject
-- keys: SubId
select SubId, count(*) as Subjects
from tblSubject group by SubId having count(*) > 1
order by SubId
