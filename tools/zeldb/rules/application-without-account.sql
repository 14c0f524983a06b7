-- title: Applications without a student's account
-- why: Nothing can be received from the student, and what is owed is in no ledger. A first save that was cut off
--     leaves that, and the account itself when it was made already (student-without-application).
-- severity: error
-- do: Delete the rows of the application, and of an account that was made for it, with `zeldb sql`, and enter the
--     application again.
-- finding: Application {AppID} of "{StuName}" has no account.
-- table: tblMasApp
-- keys: AppID
select AppID, StuName
from tblMasApp where isnull(CusCode, 0) = 0
order by AppID
