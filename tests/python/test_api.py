"""The Python API: every kind of value, shapes and types, missing values, errors, the catalog."""
import datetime as dt

import numpy as np
import pandas as pd
import pytest

import vxlocfmt

# (SPEC, the library's number, objects users hold that mean the same): the README's pairs.
EQUIVALENTS = [
    ("NLDATE20.", 23000, [dt.date(2022, 12, 21), dt.datetime(2022, 12, 21, 23, 59, 59), np.datetime64("2022-12-21"),
                          np.datetime64("2022-12-21T12:00:00.5"), pd.Timestamp("2022-12-21 08:00", tz="Asia/Tokyo")]),
    ("NLDATM30.", 2_000_000_000, [dt.datetime(2023, 5, 18, 3, 33, 20), np.datetime64("2023-05-18T03:33:20"),
                                  pd.Timestamp("2023-05-18 03:33:20+02:00")]),
    ("NLDATM30.", 23000 * 86400, [dt.date(2022, 12, 21), np.datetime64("2022-12-21")]),
    ("NLTIME11.", 37800.5, [dt.time(10, 30, 0, 500000), dt.timedelta(hours=10, seconds=0.5, minutes=30),
                            np.timedelta64(37800500, "ms"), dt.datetime(1999, 1, 1, 10, 30, 0, 500000)]),
    ("WEEKV.", 23000, [dt.date(2022, 12, 21)]),
    ("NLNUM14.2", 1234.5, [np.float32(1234.5), 1234.5, np.int64(1234) + 0.5]),
]


@pytest.mark.parametrize("spec,number,objects", EQUIVALENTS, ids=[f"{e[0]}-{e[1]}" for e in EQUIVALENTS])
def test_dates_and_times_convert_by_the_formats_kind(spec, number, objects):
    expected = vxlocfmt.format(number, spec, locale="de_DE")
    assert [vxlocfmt.format(o, spec, locale="de_DE") for o in objects] == [expected] * len(objects)
    assert list(vxlocfmt.format(objects, spec, locale="de_DE")) == [expected] * len(objects)
    as_array = np.array(objects[:1] * 3)  # a typed array where NumPy makes one (datetime64, float)
    assert list(vxlocfmt.format(as_array, spec, locale="de_DE")) == [expected] * 3


def test_shapes_and_types():
    assert vxlocfmt.format(23000, "NLDATE20.", locale="fr_FR") == "21 décembre 2022"
    grid = vxlocfmt.format(np.full((2, 3), 23000.0), "NLDATE20.", locale="fr_FR")
    assert grid.shape == (2, 3) and grid[1, 2] == "21 décembre 2022"
    assert vxlocfmt.format(1234.5, "NLMNIEUR16.2", locale="de_DE", encoding="UTF-8") == b"    1.234,50 EUR"
    assert vxlocfmt.format([], "NLDATE20.").shape == (0,)
    # No 29 February in years divisible by 4000: the conversions keep the texts on the dates.
    assert list(vxlocfmt.format(np.array(["4000-03-01", "9999-12-31"], "datetime64[D]"), "NLDATE20.")) == \
        ["March 1, 4000", "December 31, 9999"]
    assert vxlocfmt.format(dt.datetime(9999, 12, 31, 23, 59), "NLDATM30.") == \
        vxlocfmt.format(np.datetime64("9999-12-31T23:59"), "NLDATM30.")
    series = pd.Series(pd.to_datetime(["2022-12-21", None]), index=[7, 9], name="d")
    texts = series.vx.format("NLDATE20.", locale="fr_FR")
    assert texts.index.tolist() == [7, 9] and texts.name == "d" and texts[7] == "21 décembre 2022"
    tokyo = series.dt.tz_localize("UTC").dt.tz_convert("Asia/Tokyo") + pd.Timedelta(hours=20)
    assert tokyo.vx.format("NLDATE20.", locale="en_US")[7] == "December 22, 2022"  # its wall clock
    assert vxlocfmt.read("$1,234.50", "DOLLAR") == 1234.5
    assert isinstance(vxlocfmt.read(["1"], "DOLLAR"), np.ndarray)


ISO_DATES = ["2022-12-21", "1582-10-15", "2020-03-04x", "9999-12-31", "4000-03-01", "2020-03-04T10:30:00.25"]

# (SPEC, texts, what as_datetime gives): NumPy's own reading of the texts is the oracle.
AS_DATETIME = [
    ("ANYDATE", ISO_DATES, np.array([t if "x" not in t else "NaT" for t in ISO_DATES], "datetime64[us]")),
    ("B8601DA", ISO_DATES[:5], np.array([t if "x" not in t else "NaT" for t in ISO_DATES[:5]], "datetime64[D]")),
    ("TIME", ["10:30", "23:59:59.5", "x"], np.array([37800_000_000, 86399_500_000, "NaT"], "timedelta64[us]")),
    ("DOLLAR", ["$1.5", "x"], np.array([1.5, np.nan])),
]


@pytest.mark.parametrize("spec,texts,expected", AS_DATETIME, ids=[row[0] for row in AS_DATETIME])
def test_read_as_datetime(spec, texts, expected):
    ours = vxlocfmt.read(texts, spec, as_datetime=True)
    assert ours.dtype == expected.dtype
    np.testing.assert_array_equal(ours, expected)
    # pandas holds nanoseconds: what it cannot hold (1582, 9999) is NaT when coercing.
    series = pd.Series(texts, index=range(10, 10 + len(texts))).vx.read(spec, as_datetime=True)
    if expected.dtype.kind in "mM":
        expected = expected.astype(f"{expected.dtype.kind}8[us]")
        if expected.dtype.kind == "M":
            low, high = np.datetime64("1677-09-22", "us"), np.datetime64("2262-04-11", "us")  # pandas' span
            expected = np.where((expected >= low) & (expected <= high), expected, np.datetime64("NaT"))
        expected = expected.astype(f"{expected.dtype.kind}8[ns]")
    np.testing.assert_array_equal(series.to_numpy(), expected)
    assert series.index[0] == 10


def test_round_trip_through_text():
    days = np.arange(-138061, 2936550, 997, dtype=float)  # the any-date reader takes four-digit years
    texts = vxlocfmt.format(days, "NLDATE20.", locale="en_US")
    np.testing.assert_array_equal(vxlocfmt.read(texts, "ANYDATE") / 86400, days)
    dates = (days - 3653).astype("datetime64[D]")
    assert (vxlocfmt.read(texts[:50], "ANYDATE", as_datetime=True) == dates[:50]).all()


def test_missing_values_both_ways(cli):
    missing_text = cli("format", "NLDATE20.", lines=["."])[0][0]
    missing = [np.nan, None, pd.NaT, pd.NA, np.datetime64("NaT"), float("nan")]
    assert list(vxlocfmt.format(missing, "NLDATE20.")) == [missing_text] * len(missing)
    assert list(vxlocfmt.format(pd.Series([np.nan, 1.0]), "NLNUM8.")) == [cli("format", "NLNUM8.", lines=["."])[0][0],
                                                                          "       1"]
    special = [vxlocfmt.missing(code) for code in ("._", ".A", ".z")]
    assert list(vxlocfmt.format(special, "NLDATE20.")) == cli("format", "NLDATE20.", lines=["._", ".A", ".z"])[0]
    read = vxlocfmt.read(missing + [""], "DOLLAR", errors="raise")
    assert np.isnan(read).all()
    assert np.isnat(vxlocfmt.read([None, ""], "ANYDATE", as_datetime=True)).all()


# Refusals: the same text as the CLI's message for the same request.
REFUSALS = [
    (["format", "NLDATE500."], lambda: vxlocfmt.format(1, "NLDATE500.")),
    (["format", "NLNUM12.40"], lambda: vxlocfmt.format(1, "NLNUM12.40")),
    (["format", "NOSUCH12."], lambda: vxlocfmt.format(1, "NOSUCH12.")),
    (["format", "NLDATE20.x"], lambda: vxlocfmt.format(1, "NLDATE20.x")),
    (["format", "NLDATE20.", "-l", "fr_FX"], lambda: vxlocfmt.format(1, "NLDATE20.", locale="fr_FX")),
    (["format", "NLDATE20.", "--encoding", "FOO"], lambda: vxlocfmt.format(1, "NLDATE20.", encoding="FOO")),
    (["read", "NOSUCH"], lambda: vxlocfmt.read("1", "NOSUCH")),
]


@pytest.mark.parametrize("arguments,call", REFUSALS, ids=[" ".join(r[0]) for r in REFUSALS])
def test_refusals_say_what_the_cli_says(cli, arguments, call):
    _, stderr, status = cli(*arguments, "1")
    assert status == 2
    with pytest.raises(vxlocfmt.RequestError) as refused:
        call()
    assert f"vxlocfmt: {refused.value}" == stderr
    assert isinstance(refused.value, ValueError)


def test_read_errors():
    with pytest.raises(vxlocfmt.ReadError, match=r"^DOLLAR cannot read 'zz' at position 2 \(status 0x00000001\)$") as e:
        vxlocfmt.read(["1", None, "zz", "yy"], "DOLLAR", errors="raise")
    assert (e.value.text, e.value.position, e.value.status) == ("zz", 2, 1)
    with pytest.raises(vxlocfmt.ReadError, match=r"ANYDATE cannot read 'soon' at position 0 \(no template fits\)"):
        vxlocfmt.read("soon", "ANYDATE", errors="raise")
    np.testing.assert_array_equal(vxlocfmt.read(["1", "zz"], "DOLLAR"), [1.0, np.nan])
    with pytest.raises(ValueError, match="errors must be 'coerce' or 'raise'"):
        vxlocfmt.read("1", "DOLLAR", errors="ignore")
    with pytest.raises(vxlocfmt.RequestError, match="gives bytes or characters"):
        vxlocfmt.read("1", "UUID")
    with pytest.raises(vxlocfmt.RequestError, match=r"'\.AB' is not a missing-value code"):
        vxlocfmt.missing(".AB")
    with pytest.raises(TypeError, match="item 1 is int"):
        vxlocfmt.read(["1", 2], "DOLLAR")
    with pytest.raises(TypeError, match="not texts"):
        vxlocfmt.format(np.array(["1"]), "NLNUM8.")
    with pytest.raises(TypeError, match="number format takes numbers; item 0 is date"):
        vxlocfmt.format([dt.date(2020, 1, 1)], "NLNUM8.")


def test_catalog_matches_the_cli(cli):
    classic = [line.split("\t") for line in cli("list", "classic")[0]]
    assert vxlocfmt.formats() == cli("list", "formats")[0] + [name for name, kind, _ in classic if kind == "format"]
    registry = cli("list", "informats")[0]
    assert vxlocfmt.informats()[:len(registry)] == registry
    assert {"ANYDATE", "B8601DA", "DOLLAR", "HEX"} <= set(vxlocfmt.informats())
    assert vxlocfmt.locales() == cli("list", "locales")[0]
