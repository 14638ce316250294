"""pandas and Dask: the `.vx` accessor on a Series, and the same on a column of a Dask frame.

    df["d"].vx.format("NLDATE20.", locale="fr_FR")         # a Series of str, same index
    df["s"].vx.read("ANYDATE", as_datetime=True)           # a Series of datetime64[ns]
    vxlocfmt.dask_format(ddf["d"], "NLDATE20.", locale="de_DE").compute()

The Dask helpers are map_partitions over the accessor: every worker process imports vxlocfmt,
loads the library and keeps its own warm formatters, one per thread.
"""
import functools

import numpy as np

try:
    import pandas as pd
except ImportError:  # the package works on NumPy alone
    pd = None


def _format_series(series, spec, locale=None, encoding=None, threads=1):
    from . import format as format_values
    texts = format_values(series, spec, locale=locale, encoding=encoding, threads=threads)
    return pd.Series(texts.astype(object), index=series.index, name=series.name)


# What nanoseconds in 64 bits hold, whole days inside, in microseconds.
_NANOSECOND_DATES = np.datetime64("1677-09-22", "us"), np.datetime64("2262-04-11", "us")
_NANOSECOND_SPAN = np.timedelta64(106751, "D").astype("timedelta64[us]")


def _in_nanoseconds(values, errors):
    """datetime64 or timedelta64 as pandas holds them (nanoseconds, years 1677 to 2262): what
    falls outside is NaT when coercing, else pandas' OutOfBoundsDatetime."""
    values = values.astype(f"{values.dtype.kind}8[us]")  # every value the library gives fits microseconds
    if values.dtype.kind == "M":
        low, high = _NANOSECOND_DATES
    else:
        low, high = -_NANOSECOND_SPAN, _NANOSECOND_SPAN
    outside = (values < low) | (values > high)
    if outside.any():
        if errors == "raise":
            pd.Series(values[outside][:1])  # raises, naming the first value
        values = values.copy()
        values[outside] = np.datetime64("NaT") if values.dtype.kind == "M" else np.timedelta64("NaT")
    return values.astype(f"{values.dtype.kind}8[ns]")


def _read_series(series, spec, locale=None, as_datetime=False, errors="coerce", threads=1):
    from . import read
    values = read(series, spec, locale=locale, as_datetime=as_datetime, errors=errors, threads=threads)
    if values.dtype.kind in "mM":
        values = _in_nanoseconds(values, errors)
    return pd.Series(values, index=series.index, name=series.name)


def _read_dtype(spec, locale, as_datetime):
    from . import _native
    _, kind = _native.informat_of(spec, locale or "")
    if not as_datetime or kind == "number":
        return np.dtype("float64")
    return np.dtype("timedelta64[ns]" if kind == "time" else "datetime64[ns]")


def dask_format(column, spec, locale=None, encoding=None):
    """A Dask Series of texts: `format` on every partition of `column` (a Dask Series)."""
    from . import _native
    _native.format_of(spec, locale or "", encoding or "")  # a bad SPEC fails here, not on a worker
    return column.map_partitions(functools.partial(_format_series, spec=spec, locale=locale, encoding=encoding),
                                 meta=(column.name, object))


def dask_read(column, spec, locale=None, as_datetime=False, errors="coerce"):
    """A Dask Series of float64 (or datetime64[ns] with `as_datetime`): `read` on every partition."""
    dtype = _read_dtype(spec, locale, as_datetime)
    return column.map_partitions(functools.partial(_read_series, spec=spec, locale=locale, as_datetime=as_datetime,
                                                   errors=errors), meta=(column.name, dtype))


if pd is not None:
    @pd.api.extensions.register_series_accessor("vx")
    class SeriesAccessor:
        """`series.vx.format(spec, ...)` and `series.vx.read(spec, ...)`: see vxlocfmt.format and read."""

        def __init__(self, series):
            self._series = series

        def format(self, spec, locale=None, encoding=None, threads=1):
            return _format_series(self._series, spec, locale=locale, encoding=encoding, threads=threads)

        def read(self, spec, locale=None, as_datetime=False, errors="coerce", threads=1):
            return _read_series(self._series, spec, locale=locale, as_datetime=as_datetime, errors=errors,
                                threads=threads)
