-- Refusals raise errors with their SQLSTATE: 22023 for what names a format, informat, width,
-- decimals or locale the library does not have, 22007 for a strict read of an unreadable text,
-- 58P01 for a library that cannot be loaded.
CREATE FUNCTION error_of(query text) RETURNS text LANGUAGE plpgsql AS $$
BEGIN
    EXECUTE query;
    RETURN 'no error';
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE || ': ' || SQLERRM;
END $$;

-- First, before this backend has loaded the library: a library that cannot be loaded, and a
-- corrected setting taken by the next call.
SET vxlocfmt.library = '/nonexistent/libvxlocfmt.so';
SELECT error_of($q$SELECT vx_format(1, 'NLDATE20.')$q$) AS bad_library;
RESET vxlocfmt.library;
SELECT vx_format(1, 'NLDATE20.') AS after_reset;

SELECT query, error_of(query) AS error
FROM (VALUES ($q$SELECT vx_format(1, 'NLDATX20.')$q$),             -- unknown format
             ($q$SELECT vx_format(1, '@NLDATE20.')$q$),            -- an informat's name
             ($q$SELECT vx_format(1, 'NLDATE20')$q$),              -- no period
             ($q$SELECT vx_format(1, 'NLDATE500.')$q$),            -- width above the limit
             ($q$SELECT vx_format(1, 'NLDATE5.')$q$),              -- width below the limit
             ($q$SELECT vx_format(1, 'NLNUM12.40')$q$),            -- decimals above the limit
             ($q$SELECT vx_format(1, 'NLDATE20.', 'xx_YY')$q$),    -- unknown locale
             ($q$SELECT vx_format(1, 'NLDATE20.', '')$q$),         -- empty locale
             ($q$SELECT vx_read('1', 'NOSUCH')$q$),                -- unknown informat
             ($q$SELECT vx_read('1', 'UUID')$q$),                  -- no numeric result
             ($q$SELECT vx_read('1', 'DOLLAR', 'xx_YY')$q$),       -- unknown locale
             ($q$SELECT vx_read_date('1', 'DOLLAR')$q$),           -- a number is no date
             ($q$SELECT vx_read_timestamp('10:30', 'TIME')$q$),    -- nor is a time of day
             ($q$SELECT vx_read_strict('abc', 'DOLLAR')$q$),
             ($q$SELECT vx_read_date_strict('not a date', 'ANYDATE')$q$),
             ($q$SELECT vx_read_timestamp_strict('', 'E8601DT')$q$)) AS q(query);

-- Ambiguous literals need a cast; the error says so.
SELECT error_of($q$SELECT vx_format('2022-12-21', 'NLDATE20.')$q$) AS untyped_literal;
DROP FUNCTION error_of(text);
