-- What a format writes, an informat reads back: dates and datetimes through the any-date
-- reader (in the locales whose texts it reads), amounts through the classic informats, over a
-- generated table.
CREATE TABLE generated AS
SELECT i,
       date '1600-01-01' + (i * 7919) % 3000000 AS day,
       timestamp '1960-01-01' + (i * 7919.0) * interval '1 second' + (i % 40) * interval '1 year' AS moment,
       round(((i * 7001) % 2000003 - 1000001) / 100.0, 2)::float8 AS amount
FROM generate_series(1, 20000) AS i;

SELECT count(*) AS values,
       count(*) FILTER (WHERE vx_read_date(vx_format(day, 'NLDATE20.'), 'ANYDATE') IS DISTINCT FROM day) AS nldate,
       count(*) FILTER (WHERE vx_read_date(vx_format(day, 'NLDATMDT.', 'en_GB'), 'ANYDATE') IS DISTINCT FROM day) AS nldatmdt,
       count(*) FILTER (WHERE vx_read_timestamp(vx_format(moment, 'NLDATMS.', 'sv_SE'), 'ANYDATE') IS DISTINCT FROM moment) AS nldatms,
       count(*) FILTER (WHERE vx_read(vx_format(moment, 'TOD.'), 'TIME') IS DISTINCT FROM extract(epoch FROM moment::time)::float8) AS tod,
       count(*) FILTER (WHERE vx_read(vx_format(amount, 'DOLLAR16.2'), 'DOLLAR') IS DISTINCT FROM amount) AS dollar,
       count(*) FILTER (WHERE vx_read(vx_format(amount, 'NLNUM16.2', 'de_DE'), 'COMMAX') IS DISTINCT FROM amount) AS nlnum_commax,
       -- the percentage is read as hundredths: equal to the last bit or so
       count(*) FILTER (WHERE abs(vx_read(vx_format(amount / 100, 'PERCENT16.2'), 'PERCENT') - amount / 100) > 1e-12 * greatest(1, abs(amount))) AS percent
FROM generated;
DROP TABLE generated;
