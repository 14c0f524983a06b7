-- title: Fees of no subject
-- why: What is received settles a subject; these amounts settle none, so that the student still owes them.
-- severity: error
-- do: Open the fee receipt, choose the subject of the line and save it again.
-- finding: {Lines} lines of fee receipt {VouNo} name no subject.
-- table: DetJV
-- keys: VouNo
select VouNo, count(*) as Lines
from DetJV where VouStatus = 'FR' and SubID is null
group by VouNo
order by VouNo
