-- title: Course numbers given twice
-- why: The subjects of the one are those of the other, too, and screens that look for the course's name fail.
-- severity: error
-- do: Give one of them a free number with `zeldb sql`.
-- finding: {Courses} courses bear the number {CourseId}.
-- table: tblCourse
-- keys: CourseId
select CourseId, count(*) as Courses
from tblCourse group by CourseId having count(*) > 1
order by CourseId
