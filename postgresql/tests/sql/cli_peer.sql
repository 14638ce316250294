-- The SQL functions answer what the CLI answers on the same inputs (cli_cases.txt, run by run.sh
-- into the file named by VXPG_CLI_DATA): formats text for text, informats value for value.
\getenv cli_data VXPG_CLI_DATA
CREATE TABLE cli (kind text, spec text, locale text, input text, expected text);
COPY cli FROM :'cli_data';
SELECT kind, count(*) AS cases, count(DISTINCT spec) AS specs FROM cli GROUP BY kind ORDER BY kind;
SELECT kind, spec, locale, input, expected, got
FROM (SELECT *, CASE kind WHEN 'format' THEN vx_format(input::float8, spec, locale)
                          ELSE vx_read(input, spec, locale)::text END AS got
      FROM cli) AS c
WHERE CASE kind WHEN 'format' THEN got IS DISTINCT FROM expected
                ELSE got::float8 IS DISTINCT FROM nullif(expected, '.')::float8 END;
DROP TABLE cli;
