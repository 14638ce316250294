-- Informats through SQL: classic informats, template names and the any-date reader; dates and
-- timestamps converted from the reader's kind; NULL for what cannot be read.

-- ISO texts every 7919 seconds over six years: the any-date reader agrees with the text's cast.
SELECT count(*) AS texts,
       count(*) FILTER (WHERE vx_read_timestamp(s, 'ANYDATE') IS DISTINCT FROM s::timestamp) AS timestamp_differs,
       count(*) FILTER (WHERE vx_read_date(s, 'ANYDATE') IS DISTINCT FROM s::date) AS date_differs,
       count(*) FILTER (WHERE vx_read(s, 'E8601DT') IS DISTINCT FROM extract(epoch FROM s::timestamp - timestamp '1960-01-01')::float8) AS seconds_differ
FROM generate_series(timestamp '1998-06-01 00:00:00', timestamp '2004-06-01', interval '7919 seconds') AS g(t),
     LATERAL (SELECT to_char(t, 'YYYY-MM-DD"T"HH24:MI:SS')) AS x(s);

SELECT text, spec,
       vx_read(text, spec, locale) AS value,
       vx_read_date(text, spec, locale) AS date,
       vx_read_timestamp(text, spec, locale) AS timestamp
FROM (VALUES ('20200304', 'B8601DA', 'en_US'),
             ('2020-03-04T10:30:00.5', 'E8601DT', 'en_US'),
             ('03/04/2020', 'MMDDYY10.', 'en_US'),
             ('Mar 4, 2020', 'ANYDATE', 'en_US'),
             ('04MAR2020:23:59:59', 'anydate', 'en_US'),
             ('1582-10-15', 'ANYDATE', 'en_US'),
             ('not a date', 'ANYDATE', 'en_US')) AS v(text, spec, locale);

SELECT text, spec, vx_read(text, spec, locale) AS value
FROM (VALUES ('$1,234.50', 'DOLLAR', 'en_US'),
             ('1.234,50', 'COMMAX', 'de_DE'),
             ('(12.50)', 'NEGPAREN', 'en_US'),
             ('12.5%', 'PERCENT', 'en_US'),
             ('FF', 'HEX', 'en_US'),
             ('10:30:15', 'TIME', 'en_US'),
             ('abc', 'DOLLAR', 'en_US'),
             ('', 'DOLLAR', 'en_US'),
             ('.', 'DOLLAR', 'en_US')) AS v(text, spec, locale);

-- NULL in, NULL out; the strict variants answer as the others when the text is read.
SELECT vx_read(NULL, 'DOLLAR') IS NULL AS null_text,
       vx_read('1', NULL) IS NULL AS null_spec,
       vx_read_strict('$5', 'DOLLAR') AS strict_value,
       vx_read_date_strict('20200304', 'B8601DA') AS strict_date,
       vx_read_timestamp_strict('2020-03-04T10:30:00', 'ANYDATE') AS strict_timestamp;

-- Immutable: an index on an expression, used by a query that names it.
CREATE TABLE arrivals (id int, arrived text);
INSERT INTO arrivals SELECT i, to_char(date '2020-01-01' + i, 'DD-MON-YYYY') FROM generate_series(1, 500) AS i;
CREATE INDEX arrivals_day ON arrivals (vx_read_date(arrived, 'ANYDATE'));
SET enable_seqscan = off;
EXPLAIN (COSTS OFF) SELECT id FROM arrivals WHERE vx_read_date(arrived, 'ANYDATE') = date '2020-06-01';
SELECT id FROM arrivals WHERE vx_read_date(arrived, 'ANYDATE') = date '2020-06-01';
RESET enable_seqscan;
DROP TABLE arrivals;
