"""Shared fixtures: the CLI as an oracle and one Dask cluster per session."""
import logging
import math
import os
import subprocess

import pytest


def _cli_path():
    path = os.environ.get("VXLOCFMT_CLI")
    if not path:
        pytest.fail("VXLOCFMT_CLI is not set: run these tests through ctest")
    return path


def run_cli(*arguments, lines=()):
    """The CLI's bulk mode: one input a line on stdin, one output a line. Returns (lines, stderr, exit)."""
    done = subprocess.run([_cli_path(), *arguments], input="".join(f"{line}\n" for line in lines),
                          capture_output=True, text=True)
    return done.stdout.split("\n")[:-1], done.stderr.strip(), done.returncode


def cli_numbers(texts):
    """Values the CLI printed, its '.' as NaN."""
    return [math.nan if text == "." else float(text) for text in texts]


@pytest.fixture(scope="session")
def cli():
    return run_cli


@pytest.fixture(scope="session")
def dask_client():
    import distributed
    with distributed.LocalCluster(n_workers=2, threads_per_worker=2, processes=True, dashboard_address=None,
                                  silence_logs=logging.ERROR) as cluster, distributed.Client(cluster) as client:
        yield client
