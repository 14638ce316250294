-- The extension installs, and each function tells the planner what it may assume.
CREATE EXTENSION vxlocfmt;
SELECT p.oid::regprocedure AS function, p.provolatile, p.proparallel, p.proisstrict
FROM pg_proc p
JOIN pg_depend d ON d.classid = 'pg_proc'::regclass AND d.objid = p.oid AND d.deptype = 'e'
JOIN pg_extension e ON e.oid = d.refobjid AND e.extname = 'vxlocfmt'
ORDER BY 1::text;
