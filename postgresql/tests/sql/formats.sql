-- Formats through SQL: the overloads hand the format what its kind takes, PostgreSQL's own
-- calendar agrees with the library's day by day, NULLs stay NULL.

-- Every day of 1900 to 2100, against to_char on the same date.
SELECT count(*) AS days,
       count(*) FILTER (WHERE vx_format(d, 'NLDATE20.') <> to_char(d, 'FMMonth FMDD, YYYY')) AS nldate_differs,
       count(*) FILTER (WHERE vx_format(d, 'WEEKV.') <> to_char(d, 'IYYY-"W"IW-0ID')) AS weekv_differs,
       count(*) FILTER (WHERE vx_format(d, 'NLDATEWN.') <> to_char(d, 'FMDay')) AS weekday_differs,
       count(*) FILTER (WHERE vx_format(d, 'NLDATE20.') <> vx_format(d - date '1960-01-01', 'NLDATE20.')) AS day_number_differs
FROM generate_series(date '1900-01-01', date '2100-12-31', interval '1 day') AS g(t), LATERAL (SELECT t::date) AS x(d);

-- A datetime every 7919 seconds over six years, fractions included. The locale data puts a
-- narrow no-break space before AM and PM where to_char writes a blank.
SELECT count(*) AS datetimes,
       count(*) FILTER (WHERE replace(vx_format(t, 'NLDATM.'), U&'\202F', ' ') <> to_char(t, 'Mon FMDD, YYYY, FMHH12:MI:SS AM')) AS nldatm_differs,
       count(*) FILTER (WHERE vx_format(t, 'TOD.') <> to_char(t, 'HH24:MI:SS')) AS tod_differs,
       count(*) FILTER (WHERE vx_format(t, 'NLDATE20.') <> vx_format(t::date, 'NLDATE20.')) AS date_of_datetime_differs
FROM generate_series(timestamp '1998-06-01 00:00:00.25', timestamp '2004-06-01', interval '7919 seconds') AS g(t);

-- One value through each overload and each kind of format: a date is its day number or its
-- midnight, a timestamp its seconds, its day or its time of day.
SELECT spec,
       vx_format(date '2022-12-21', spec) AS from_date,
       vx_format(timestamp '2022-12-21 10:30:15.25', spec) AS from_timestamp,
       vx_format(23000::numeric, spec) AS from_numeric
FROM (VALUES ('NLDATE20.'), ('NLDATM30.2'), ('NLTIME.'), ('WEEKU.'), ('BEST12.')) AS s(spec);

-- The families, one row each, with the locale spelt as environments spell it.
SELECT spec, locale, vx_format(value, spec, locale) AS text
FROM (VALUES (23000, 'NLDATEW.', 'de_DE.UTF-8'),
             (1987243815, 'NLDATMZ.', 'fr-FR'),
             (37815, 'NLTIMAP.', 'en_US'),
             (23000, 'YYWEEKW.', 'en_US'),
             (3, 'NLSTRMON.', 'it_IT'),
             (1234567.891, 'NLNUM14.2', 'de_DE'),
             (-1234.567, 'NLMNY16.2', 'de_DE@euro'),
             (1234.5, 'NLMNIEUR16.2', 'de_DE'),
             (0.125, 'NLPCT10.2', 'fr_FR'),
             (1234567.891, 'COMMA12.2', 'en_US'),
             (37815, 'TIME8.', 'en_US')) AS v(value, spec, locale);

-- NULL in, NULL out; infinite dates have no day number; a NaN is the missing value's text.
SELECT vx_format(NULL::date, 'NLDATE20.') IS NULL AS null_date,
       vx_format(1, NULL) IS NULL AS null_spec,
       vx_format(1, 'NLDATE20.', NULL) IS NULL AS null_locale,
       vx_format('infinity'::date, 'NLDATE20.') IS NULL AS infinite_date,
       vx_format('-infinity'::timestamp, 'NLDATM.') IS NULL AS infinite_timestamp,
       vx_format('NaN'::float8, 'NLDATE12.') AS nan,
       vx_format('NaN'::numeric, 'BEST6.') AS nan_numeric;
