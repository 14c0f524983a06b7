-- title: Session numbers given twice
-- why: What belongs to the one belongs to the other, too.
-- severity: error
-- do: Give one of them a free number with `zeldb sql`.
-- finding: {Sessions} sessions bear the number {SessionId}.
-- table: tblSession
-- keys: SessionId
select SessionId, count(*) as Sessions
from tblSession group by SessionId having count(*) > 1
order by SessionId
