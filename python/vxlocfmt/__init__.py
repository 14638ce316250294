"""vxlocfmt for Python: the library's formats (value to text) and informats (text to value) over
whole columns, named as on the command line.

    import vxlocfmt
    vxlocfmt.format(23000, "NLDATE20.", locale="fr_FR")            # '21 décembre 2022'
    vxlocfmt.format(np.arange(23000, 23003), "NLDATE20.", locale="de_DE")
    vxlocfmt.read(["$1,234.50", "x"], "DOLLAR")                     # array([1234.5, nan])
    vxlocfmt.read("Mar 4, 2020", "ANYDATE", as_datetime=True)       # numpy.datetime64('2020-03-04T00:00:00.000000')
    df["d"].vx.format("NLDATE20.", locale="fr_FR")                  # the pandas accessor

Dates, datetimes and times (datetime, NumPy datetime64, pandas Timestamp) are converted to day
numbers or seconds since 1960 by what the format takes; NaN, None and NaT are missing values.
"""
import numpy as np

from . import _native
from ._native import RequestError

RequestError.__module__ = __name__  # vxlocfmt.RequestError, as users catch it
from ._values import from_numbers, to_numbers

__all__ = ["format", "read", "formats", "informats", "locales", "missing", "RequestError", "ReadError"]


class ReadError(ValueError):
    """A text an informat could not read, with errors="raise"."""

    def __init__(self, informat, text, position, status):
        self.informat, self.text, self.position, self.status = informat, text, position, status
        what = f"status 0x{status:08x}" if status else "no template fits"
        super().__init__(f"{informat} cannot read {text!r} at position {position} ({what})")


def _is_scalar(values):
    return isinstance(values, (str, bytes)) or np.ndim(values) == 0


def _missing_test(item):
    try:
        return bool(item != item)  # NaN, NaT
    except TypeError:  # pandas.NA
        return type(item).__name__ == "NAType"


def format(values, spec, locale=None, encoding=None, threads=1):  # noqa: A001 - the name users look for
    """Formats a number, date or datetime (a str) or a sequence of them (an array of str).

    `spec` is NAME, NAMEw. or NAMEw.d as on the command line ("NLDATE20.", "NLNUM12.2").
    `locale` defaults to the environment's ($LC_ALL, $LANG), else en_US. With `encoding`, texts
    come back as bytes in that encoding, as the host receives them. With `threads` above 1 (0:
    one per core), a long column (from 65,536 values a thread) is cut into slices formatted side
    by side; the texts are the same."""
    locale, encoding = locale or "", encoding or ""
    _, kind, _, _ = _native.format_of(spec, locale, encoding)
    numbers_ = to_numbers([values] if _is_scalar(values) else values, kind)
    texts = _native.format_values(numbers_, spec, locale, encoding, threads)
    if _is_scalar(values):
        return texts[0].item()
    return texts.reshape(np.shape(values)) if isinstance(values, np.ndarray) else texts


def read(texts, spec, locale=None, as_datetime=False, errors="coerce", threads=1):
    """Reads a text (a float) or a sequence of texts (a float64 array); NaN where nothing was read.

    With `as_datetime`, a date, datetime or any-date informat gives datetime64 (and a time
    informat timedelta64), NaT where nothing was read. `errors="raise"` raises ReadError naming
    the first text that could not be read, its position and the informat's status; None, NaN and
    empty texts are missing values either way. `threads` as for `format`."""
    if errors not in ("coerce", "raise"):
        raise ValueError(f"errors must be 'coerce' or 'raise', not {errors!r}")
    locale = locale or ""
    name, kind = _native.informat_of(spec, locale)
    scalar = _is_scalar(texts)
    items = [texts] if scalar else texts
    if isinstance(items, np.ndarray) or hasattr(items, "to_numpy"):
        items = items.tolist()
    values, position, status = _native.read_texts(items, spec, locale, errors == "raise", _missing_test, threads)
    if position >= 0:
        raise ReadError(name, items[position], position, status)
    if as_datetime:
        values = from_numbers(values, kind)
    return values[0] if scalar else values


def missing(code="."):
    """The missing value of a code as the CLI writes it: ".", "._", ".A" to ".Z". A NaN whose
    bits carry the code: formats write its letter."""
    return _native.missing(code)


def formats():
    """Every format name `format` takes: the registry's, then the classic formats."""
    return _native.formats()


def informats():
    """Every informat name `read` takes: the registry's ("@NLDATE"), the classic informats with a
    numeric result, then ANYDATE and the any-date reader's template names."""
    return _native.informats()


def locales():
    """The locales the host holds data for ("de_DE", ...)."""
    return _native.locales()


from . import _frames  # noqa: E402,F401 - registers the pandas accessor when pandas is there
from ._frames import dask_format, dask_read  # noqa: E402

__all__ += ["dask_format", "dask_read"]
