-- title: Subjects whose net amount is not amount less discount
-- why: What is owed for a subject is its amount less the discount.
-- severity: error
-- do: Open the application, take the subject's line back and add it again, and save.
-- finding: Subject {SubID} of application {AppID} is {SubAmt} less {Discount}, but {NetAmount} net.
-- table: tblDetApp
-- keys: AppID SubID
select AppID, SubID, isnull(SubAmt, 0) as SubAmt, isnull(Discount, 0) as Discount, NetAmount
from tblDetApp where NetAmount <> isnull(SubAmt, 0) - isnull(Discount, 0)
order by AppID, SubID
