-- title: Subjects of courses that are gone
-- why: The finder of subjects and the reports by course leave them out.
-- severity: error
-- do: Open the subject, choose its course and save it again.
-- finding: Subject {SubId} "{SubName}" is of course {CourseId}, which is gone.
-- table: tblSubject
-- keys: SubId
select SubId, SubName, CourseId
from tblSubject s
where not exists (select * from tblCourse c where c.CourseId = s.CourseId)
order by SubId
