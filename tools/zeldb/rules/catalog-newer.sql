-- title: The catalog of a newer version
-- why: It may hold what this version does not know, so that this version must not change it, and the other rules may
--     mistake it.
-- severity: error
-- do: Use the newer version of the program with it.
-- finding: The catalog is of version {Version}; this program knows those up to {Known}.
-- table:
-- keys:
select Version, Known from #catalog where Version > Known
