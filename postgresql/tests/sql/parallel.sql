-- Parallel workers load the library themselves and answer as one backend does.
CREATE TABLE texts AS
SELECT i, date '1960-01-01' + i % 30000 AS day,
       CASE WHEN i % 7 = 0 THEN 'not a date ' || i
            ELSE to_char(timestamp '1970-01-01' + i * interval '997 seconds', 'YYYY-MM-DD HH24:MI:SS') END AS iso
FROM generate_series(1, 200000) AS i;
ANALYZE texts;

CREATE FUNCTION workers_launched(query text) RETURNS int LANGUAGE plpgsql AS $$
DECLARE plan jsonb;
BEGIN
    EXECUTE 'EXPLAIN (ANALYZE, FORMAT JSON) ' || query INTO plan;
    RETURN coalesce((jsonb_path_query_first(plan, '$.**."Workers Launched"'))::int, 0);
END $$;

\set query 'SELECT count(*) AS rows, sum(hashtext(vx_format(day, $$NLDATE20.$$, $$de_DE$$))::bigint) AS text_hash, sum(vx_read(iso, $$ANYDATE$$)) AS seconds, count(vx_read(iso, $$ANYDATE$$)) AS read FROM texts'

SET max_parallel_workers_per_gather = 0;
CREATE TABLE serial AS :query;
SELECT workers_launched(:'query') AS serial_workers;

SET max_parallel_workers_per_gather = 2;
SET parallel_setup_cost = 0;
SET parallel_tuple_cost = 0;
SET min_parallel_table_scan_size = 0;
SET parallel_leader_participation = off;
SELECT workers_launched(:'query') AS parallel_workers;
EXPLAIN (COSTS OFF) :query;
CREATE TABLE parallel AS :query;
SELECT (SELECT row(s.*)::text FROM serial AS s) = (SELECT row(p.*)::text FROM parallel AS p) AS same_result,
       (SELECT rows FROM parallel) AS rows, (SELECT read FROM parallel) AS read;
DROP TABLE serial, parallel, texts;
DROP FUNCTION workers_launched(text);
