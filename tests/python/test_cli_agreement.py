"""The module and the CLI give the same text and the same values for the same inputs."""
import numpy as np
import pytest

import vxlocfmt
from conftest import cli_numbers

COUNT = 3000
rng = np.random.default_rng(19)
days = np.concatenate([[0, -1, -138061, 6589335, np.nan], rng.integers(-138061, 6589336, COUNT)]).astype(float)
seconds = np.concatenate([[0, -0.5, np.nan], rng.uniform(-2e9, 3e9, COUNT)])
of_day = np.concatenate([[0, 86399.5, np.nan], rng.uniform(0, 86400, COUNT)])
amounts = np.concatenate([[0, -0.005, 1e15, np.nan], rng.normal(0, 1e6, COUNT).round(3)])

# (SPEC, locale, encoding, values): one row a family; dates, datetimes, times, weeks, names,
# numbers, money, the classic formats.
FORMATS = [
    ("NLDATE20.", "de_DE", None, days),
    ("NLDATEW40.", "ja_JP", None, days),
    ("NLDATES10.", "fr_FR", "ISO-8859-1", days),
    ("NLDATM30.", "en_US", None, seconds),
    ("NLTIME11.", "ar_EG", None, of_day),
    ("WEEKV.", "en_US", None, days),
    ("NLSTRMON20.", "ru_RU", None, np.arange(1, COUNT) % 12 + 1.0),
    ("NLNUM14.2", "de_DE", None, amounts),
    ("NLPCT12.1", "fr_FR", None, amounts / 1e6),
    ("NLMNY16.2", "de_DE", None, amounts),
    ("NLMNIEUR16.2", "de_DE", "UTF-8", amounts),
    ("COMMA16.2", "en_US", None, amounts),
    ("TIME10.", "en_US", None, of_day),
]


def _cli_value(value):
    return "." if np.isnan(value) else repr(float(value))


@pytest.mark.parametrize("spec,locale,encoding,values", FORMATS, ids=[row[0] for row in FORMATS])
def test_format_agrees_with_cli(cli, spec, locale, encoding, values):
    ours = vxlocfmt.format(values, spec, locale=locale, encoding=encoding)
    arguments = ["format", spec, "-l", locale] + (["--encoding", encoding] if encoding else [])
    theirs, stderr, _ = cli(*arguments, lines=map(_cli_value, values))  # exit 1: a status such as 0x803fe816
    if encoding:
        ours = [text.decode(encoding) for text in ours]
    assert list(ours) == theirs


# Texts to read come from formats, so every reader sees a few thousand realistic shapes; the
# readers take four-digit years.
read_days = rng.integers(-138061, 2936549, COUNT).astype(float)

def _texts(spec, locale, values):
    return [str(text).strip() for text in vxlocfmt.format(values, spec, locale=locale)]


READS = [
    ("ANYDATE", "en_US", _texts("NLDATE20.", "en_US", read_days[:COUNT // 2]) + list(np.datetime_as_string((seconds[3:COUNT // 2] - 315619200).astype("datetime64[s]")))),
    ("ANYDATE", "de_DE", _texts("NLDATES10.", "en_US", read_days) + _texts("NLTIME11.", "en_US", of_day)),
    ("B8601DA", "en_US", [str(d) for d in (read_days - 3653).astype("datetime64[D]")]),
    ("DOLLAR", "en_US", _texts("DOLLAR20.2", "en_US", amounts) + ["", "zz", "$", "1e3"]),
    ("MMDDYY10.", "en_US", _texts("NLDATES10.", "en_US", read_days)),
    ("PERCENT", "en_US", _texts("PERCENT12.1", "en_US", amounts / 1e6)),
]


@pytest.mark.parametrize("spec,locale,texts", READS, ids=[f"{row[0]}-{row[1]}" for row in READS])
def test_read_agrees_with_cli(cli, spec, locale, texts):
    ours = vxlocfmt.read(texts, spec, locale=locale)
    theirs, stderr, _ = cli("read", spec, "-l", locale, "--keep-going", lines=texts)
    np.testing.assert_array_equal(ours, cli_numbers(theirs), err_msg=stderr)
    assert np.count_nonzero(~np.isnan(ours)) >= 0.9 * len(texts)  # agreement on values, not on failures
