"""Dask on a distributed cluster of two worker processes gives the columns pandas gives."""
import dask.dataframe as dd
import numpy as np
import pandas as pd

import vxlocfmt

frame = pd.DataFrame({
    "d": pd.date_range("1999-12-25", periods=4000, freq="37h"),
    "amount": np.linspace(-5e5, 5e5, 4000),
})
frame.loc[::97, "d"] = pd.NaT
frame["s"] = frame["d"].vx.format("NLDATE20.", locale="en_US")


def test_dask_columns_match_pandas(dask_client):
    ddf = dd.from_pandas(frame, npartitions=8)
    texts = vxlocfmt.dask_format(ddf["d"], "NLDATE20.", locale="fr_FR").compute()
    pd.testing.assert_series_equal(texts, frame["d"].vx.format("NLDATE20.", locale="fr_FR"))
    # The recipe without the helpers: the accessor inside map_partitions.
    money = ddf.map_partitions(lambda part: part["amount"].vx.format("NLMNY16.2", locale="de_DE"),
                               meta=("amount", object)).compute()
    pd.testing.assert_series_equal(money, frame["amount"].vx.format("NLMNY16.2", locale="de_DE"))
    dates = vxlocfmt.dask_read(ddf["s"], "ANYDATE", locale="de_DE", as_datetime=True).compute()
    pd.testing.assert_series_equal(dates, frame["d"].dt.normalize().rename("s"))
    # The work ran in the workers, each of which loaded the library itself.
    loaded = dask_client.run(lambda: "vxlocfmt._native" in __import__("sys").modules)
    assert len(loaded) == 2 and all(loaded.values())
