"""Dates, datetimes and times as the library counts them, and back.

A date is a day number (days since 1960-01-01), a datetime seconds since 1960-01-01T00:00:00,
a time seconds since midnight. Zone-aware datetimes are taken at their wall clock, as they print.
The library's calendar has no 29 February in years divisible by 4000, where Python and NumPy
have one: from 1 March 4000 on, a day number is one less than NumPy's count of days (two from
8000, and so on), and the conversions here shift by that much so that the texts match the dates.

    to_numbers([datetime.date(2022, 12, 21)], "date")    # array([23000.])
    from_numbers(np.array([23000.0]), "date")             # array(['2022-12-21'], dtype='datetime64[D]')
"""
import datetime
import numbers

import numpy as np

DAYS_1960_TO_1970 = 3653  # 1960, 1964 and 1968 are leap years
SECONDS_1960_TO_1970 = DAYS_1960_TO_1970 * 86400
_EPOCH_DATE = datetime.date(1960, 1, 1)
_MICROSECONDS = 1_000_000
_DAY = 86400

# 1 March of the years whose 29 February the library's calendar does not have, as NumPy's days
# since 1960 (up to the library's last year, 20000), and as the library's day numbers.
_DROPPED_AFTER = np.array([(np.datetime64(f"{year}-03-01") - np.datetime64("1960-01-01")).astype(np.int64)
                           for year in (4000, 8000, 12000, 16000)], dtype=np.float64)
_DROPPED_AFTER_LIBRARY = _DROPPED_AFTER - np.arange(1, len(_DROPPED_AFTER) + 1)


def _library_days(days):
    """NumPy's (proleptic Gregorian) days since 1960 as the library's day numbers."""
    return days - np.searchsorted(_DROPPED_AFTER, days, side="right")


def _numpy_days(days):
    """The library's day numbers as NumPy's days since 1960."""
    return days + np.searchsorted(_DROPPED_AFTER_LIBRARY, days, side="right")


def _library_seconds(seconds):
    days = np.floor(seconds / _DAY)
    return seconds + (_library_days(days) - days) * _DAY


def _numpy_seconds(seconds):
    days = np.floor(seconds / _DAY)
    return seconds + (_numpy_days(days) - days) * _DAY


def _is_missing(item):
    if item is None:
        return True
    try:
        return bool(item != item)  # NaN, NaT
    except TypeError:  # pandas.NA answers NA, whose truth is undefined
        return type(item).__name__ == "NAType"


def _wall_clock(moment):
    return moment.replace(tzinfo=None) if moment.tzinfo is not None else moment


def _one(item, kind, position):
    """One object of a sequence as the library's number for `kind`."""
    if _is_missing(item):
        return np.nan
    if isinstance(item, np.datetime64) or isinstance(item, np.timedelta64):
        return _from_numpy(np.array([item]), kind)[0]
    if isinstance(item, (bool, np.bool_)) or not isinstance(item, (numbers.Real, datetime.date,
                                                                     datetime.time, datetime.timedelta)):
        raise TypeError(f"a {kind} format takes numbers or dates; item {position} is "
                        f"{type(item).__name__}: {item!r}")
    if isinstance(item, numbers.Real):
        return float(item)
    if kind == "number":
        raise TypeError(f"a number format takes numbers; item {position} is {type(item).__name__}: {item!r}")
    if isinstance(item, datetime.datetime):  # pandas.Timestamp is one too
        moment = _wall_clock(item)
        days = float(_library_days(float(moment.date().toordinal() - _EPOCH_DATE.toordinal())))
        if kind == "date":
            return days
        midnight = moment.replace(hour=0, minute=0, second=0, microsecond=0)
        of_day = (moment - midnight).total_seconds() + getattr(item, "nanosecond", 0) / 1e9
        return of_day if kind == "time" else days * _DAY + of_day
    if isinstance(item, datetime.date):
        days = float(_library_days(float(item.toordinal() - _EPOCH_DATE.toordinal())))
        if kind == "date":
            return days
        if kind == "datetime":
            return days * _DAY
    if isinstance(item, datetime.time) and kind == "time":
        return item.hour * 3600.0 + item.minute * 60.0 + item.second + item.microsecond / 1e6
    if isinstance(item, datetime.timedelta) and kind == "time":
        return item.total_seconds()
    raise TypeError(f"a {kind} format does not take {type(item).__name__}: {item!r} (item {position})")


def _from_numpy(array, kind):
    """A datetime64 or timedelta64 array as the library's numbers for `kind`, NaT as NaN."""
    missing = np.isnat(array)
    if array.dtype.kind == "M":
        if kind == "number":
            raise TypeError("a number format takes numbers, not datetime64 values")
        if kind == "date":
            numbers_ = _library_days(array.astype("datetime64[D]").astype(np.int64) + float(DAYS_1960_TO_1970))
        else:
            microseconds = array.astype("datetime64[us]").astype(np.int64)
            if kind == "time":
                numbers_ = (microseconds % (_DAY * _MICROSECONDS)) / _MICROSECONDS
            else:
                numbers_ = _library_seconds(microseconds / _MICROSECONDS + SECONDS_1960_TO_1970)
    else:
        if kind != "time":
            raise TypeError(f"a {kind} format does not take timedelta64 values")
        numbers_ = array.astype("timedelta64[us]").astype(np.int64) / _MICROSECONDS
    result = numbers_.astype(np.float64)
    result[missing] = np.nan
    return result


def _pandas_values(values):
    """A pandas Series or Index as a NumPy array; zone-aware datetimes at their wall clock."""
    dtype = getattr(values, "dtype", None)
    if getattr(dtype, "tz", None) is not None:
        values = values.dt.tz_localize(None) if hasattr(values, "dt") else values.tz_localize(None)
    return values.to_numpy()


def to_numbers(values, kind):
    """A sequence of numbers, dates, datetimes or times as a float64 array for a `kind` format."""
    if hasattr(values, "to_numpy") and not isinstance(values, np.ndarray):
        values = _pandas_values(values)
    array = values if isinstance(values, np.ndarray) else np.asarray(values)
    if array.dtype.kind in "biuf":
        return array.astype(np.float64, copy=False).ravel()
    if array.dtype.kind in "mM":
        return _from_numpy(array.ravel(), kind)
    if array.dtype.kind in "US":
        raise TypeError(f"format takes numbers or dates, not texts (dtype {array.dtype}); read them first")
    return np.fromiter((_one(item, kind, i) for i, item in enumerate(array.ravel())), np.float64, array.size)


def from_numbers(numbers_, kind):
    """The library's numbers as datetime64 (dates: days, datetimes: microseconds) or timedelta64
    (times: microseconds); NaN becomes NaT. Numbers of no date kind stay float64."""
    missing = np.isnan(numbers_)
    filled = np.where(missing, 0.0, numbers_)
    if kind == "date":
        result = (_numpy_days(np.floor(filled)).astype(np.int64) - DAYS_1960_TO_1970).astype("datetime64[D]")
    elif kind == "datetime":
        microseconds = np.round((_numpy_seconds(filled) - SECONDS_1960_TO_1970) * _MICROSECONDS).astype(np.int64)
        result = microseconds.astype("datetime64[us]")
    elif kind == "time":
        result = np.round(filled * _MICROSECONDS).astype(np.int64).astype("timedelta64[us]")
    else:
        return numbers_
    result[missing] = np.datetime64("NaT") if kind != "time" else np.timedelta64("NaT")
    return result
