"""The examples of many points where the test of the build does not reach: a cluster, and what is no count."""

import json
import subprocess
import sys
import time

import pytest
from conftest import ROOT

EXAMPLE, ROAD = ROOT / "examples/bulk", ROOT / "examples/roads/trafikverket-crossover.road"
PATIENCE = 60  # s


def test_workers_of_a_cluster_need_nothing_of_this_folder(tmp_path):
    pytest.importorskip("distributed")
    (tmp_path / "elsewhere").mkdir()
    known = tmp_path / "scheduler.json"
    started = []

    def start(module, *options):
        started.append(subprocess.Popen([sys.executable, "-B", "-m", f"distributed.cli.{module}", *options,
                                         "--scheduler-file", str(known)], cwd=tmp_path / "elsewhere",
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    try:
        start("dask_scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard")
        start("dask_worker", "--nthreads", "1", "--no-dashboard", "--no-nanny")
        ended = time.monotonic() + PATIENCE
        while not known.exists() or not known.read_text().endswith("}"):
            assert time.monotonic() < ended and started[0].poll() is None
            time.sleep(0.1)
        address = json.loads(known.read_text())["address"]
        run = subprocess.run([sys.executable, "-B", EXAMPLE / "dask_workers.py", ROAD, "--points", "3000",
                              "--partition", "1000", "--scheduler", address], timeout=PATIENCE, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        assert run.returncode == 0, run.stdout
        assert "3000 points, 3000 located" in run.stdout and "on 1 workers" in run.stdout
    finally:
        for each in reversed(started):
            each.terminate()
            each.wait(PATIENCE)


@pytest.mark.parametrize("points", ["0", "-5", "many"])
def test_no_points_is_told(points):
    run = subprocess.run([sys.executable, "-B", EXAMPLE / "one_core.py", ROAD, "--points", points], text=True,
                         stderr=subprocess.PIPE, check=False)
    assert run.returncode == 2 and "--points" in run.stderr
