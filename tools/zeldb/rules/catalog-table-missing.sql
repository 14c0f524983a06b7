-- title: Tables that are missing
-- why: The screens that need them fail. Rules about them were left out.
-- severity: error
-- do: Let `zeldb refresh` make them, then restore their rows from a backup.
-- finding: The table {Name} is missing.
-- table:
-- keys: Name
select Name from #missing order by Name
