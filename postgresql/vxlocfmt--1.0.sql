-- The formats and informats of libvxlocfmt.so as SQL functions (see docs/postgresql.md).
\echo Use "CREATE EXTENSION vxlocfmt" to load this file. \quit

-- Value to text. A date is handed to the format as a day number, a timestamp as seconds since
-- 1960-01-01 (or the other way round, by what the format shows); the text is the field as the
-- format wrote it, blanks included.
CREATE FUNCTION vx_format(value double precision, spec text, locale text DEFAULT 'en_US') RETURNS text
    AS 'MODULE_PATHNAME', 'vx_format_float8' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_format(value numeric, spec text, locale text DEFAULT 'en_US') RETURNS text
    AS 'MODULE_PATHNAME', 'vx_format_numeric' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_format(value date, spec text, locale text DEFAULT 'en_US') RETURNS text
    AS 'MODULE_PATHNAME', 'vx_format_date' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_format(value timestamp, spec text, locale text DEFAULT 'en_US') RETURNS text
    AS 'MODULE_PATHNAME', 'vx_format_timestamp' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;

-- Text to value: NULL when the informat cannot read the text; the _strict functions raise
-- SQLSTATE 22007 instead.
CREATE FUNCTION vx_read(input text, spec text, locale text DEFAULT 'en_US') RETURNS double precision
    AS 'MODULE_PATHNAME', 'vx_read_float8' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_read_strict(input text, spec text, locale text DEFAULT 'en_US') RETURNS double precision
    AS 'MODULE_PATHNAME', 'vx_read_float8_strict' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_read_date(input text, spec text, locale text DEFAULT 'en_US') RETURNS date
    AS 'MODULE_PATHNAME', 'vx_read_date' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_read_date_strict(input text, spec text, locale text DEFAULT 'en_US') RETURNS date
    AS 'MODULE_PATHNAME', 'vx_read_date_strict' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_read_timestamp(input text, spec text, locale text DEFAULT 'en_US') RETURNS timestamp
    AS 'MODULE_PATHNAME', 'vx_read_timestamp' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
CREATE FUNCTION vx_read_timestamp_strict(input text, spec text, locale text DEFAULT 'en_US') RETURNS timestamp
    AS 'MODULE_PATHNAME', 'vx_read_timestamp_strict' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE;
