-- A database in another encoding: results are converted into it and texts out of it; a
-- character it lacks is PostgreSQL's own conversion error.
CREATE DATABASE vxlocfmt_latin1 ENCODING 'LATIN1' LC_COLLATE 'C' LC_CTYPE 'C' TEMPLATE template0;
\c vxlocfmt_latin1
CREATE EXTENSION vxlocfmt;
SET client_encoding = 'UTF8';
SELECT vx_format(date '2022-12-21', 'NLDATE20.', 'fr_FR') AS french,
       octet_length(vx_format(date '2022-12-21', 'NLDATE20.', 'fr_FR')) AS latin1_bytes,
       vx_read_date(vx_format(date '2022-12-21', 'NLDATE20.'), 'ANYDATE') AS read_back;
SELECT vx_format(1234.5, 'NLMNY16.2', 'de_DE') AS euro_sign;
\c vxlocfmt_regress
DROP DATABASE vxlocfmt_latin1;
