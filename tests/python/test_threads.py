"""Many threads on one locale: each keeps its own warm call record, the library none shared."""
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest

import vxlocfmt

days = np.arange(-1000, 59000, 7, dtype=float)
amounts = np.linspace(-1e6, 1e6, days.size)


def _work(chunk):
    # A fixed-currency format first: the instance's conventions are built by whichever thread
    # comes first, and must not be built by two at once.
    money = vxlocfmt.format(amounts[chunk], "NLMNLEUR16.2", locale="de_DE")
    texts = vxlocfmt.format(days[chunk], "NLDATE20.", locale="de_DE")
    return money, texts, vxlocfmt.read(vxlocfmt.format(days[chunk], "NLDATE20.", locale="en_US"), "ANYDATE",
                                       locale="de_DE")


def test_threads_agree_with_one_thread():
    chunks = [slice(start, start + 500) for start in range(0, days.size, 500)]
    with ThreadPoolExecutor(max_workers=8) as pool:
        results = list(pool.map(_work, chunks * 3))
    money = vxlocfmt.format(amounts, "NLMNLEUR16.2", locale="de_DE")
    texts = vxlocfmt.format(days, "NLDATE20.", locale="de_DE")
    values = vxlocfmt.read(vxlocfmt.format(days, "NLDATE20.", locale="en_US"), "ANYDATE", locale="de_DE")
    for chunk, (their_money, their_texts, their_values) in zip(chunks * 3, results):
        assert list(their_money) == list(money[chunk])
        assert list(their_texts) == list(texts[chunk])
        np.testing.assert_array_equal(their_values, values[chunk])
    np.testing.assert_array_equal(values / 86400, days)


def test_slices_over_threads_agree():
    long = np.resize(days, 3 * 65536 + 5)
    texts = vxlocfmt.format(long, "NLDATE20.", locale="en_US")
    for threads in (3, 0):  # 0: one per core
        assert (vxlocfmt.format(long, "NLDATE20.", locale="en_US", threads=threads) == texts).all()
    np.testing.assert_array_equal(vxlocfmt.read(texts, "ANYDATE", threads=3), vxlocfmt.read(texts, "ANYDATE"))
    spoiled = list(texts)
    spoiled[100_000] = spoiled[190_000] = "never"  # in the second and third slices: the first is named
    with pytest.raises(vxlocfmt.ReadError, match="'never' at position 100000"):
        vxlocfmt.read(spoiled, "ANYDATE", errors="raise", threads=3)
