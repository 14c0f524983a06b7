-- title: No menu right is ticked
-- why: The program stops as soon as any screen is closed.
-- severity: error
-- do: Open "Set Menus" first of all, tick what is to be shown and save; or set Active to '1' with `zeldb sql`.
-- finding: Of {Rights} menu rights none is ticked.
-- table: Menus
-- keys:
select (select count(*) from Menus) as Rights
where not exists (select * from Menus where Active = '1')
