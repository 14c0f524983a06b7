-- title: Account codes given twice
-- why: Two accounts of one code change places in the tree and in trial balances. Two clerks who save at one moment
--     can do that.
-- severity: error
-- do: Delete the one that is not used and make it again, or number it anew with `zeldb sql`.
-- finding: {Accounts} accounts bear the code {AcNodes}.
-- table: Accounts
-- keys: AcNodes
select rtrim(AcNodes) as AcNodes, count(*) as Accounts
from Accounts where AcNodes <> ''
group by rtrim(AcNodes) having count(*) > 1
order by rtrim(AcNodes)
