-- title: Accounts of several applications
-- why: Each save of one of them sets the account's opening balance and replaces the receipt of the others. A name
--     that is on the chart elsewhere leads to that.
-- severity: note
-- do: Give each application an account of its own, or see after each save that the balance is that of both.
-- finding: {Applications} applications share the account {CusCode}.
-- table: tblMasApp
-- keys: CusCode
select CusCode, count(*) as Applications
from tblMasApp where CusCode <> 0
group by CusCode having count(*) > 1
order by CusCode
