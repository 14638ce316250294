"""Many threads on one locale: each keeps its own warm call record, the library none shared."""
from concurrent.futures import ThreadPoolExecutor

import numpy as np

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
