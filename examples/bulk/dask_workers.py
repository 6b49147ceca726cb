"""The same points on Dask: on two local workers, or on those of a cluster by the address of its scheduler."""

import argparse
import sys
import time

import partition
from dask.distributed import Client, LocalCluster
from partition import arguments, locate_partition, read_partition, summary, worker_road


def work(project: bytes, number: int, count: int) -> tuple:
    """One task: reads a part of the points and answers them. A real one would write its answers to a file."""
    return summary(locate_partition(project, read_partition(project, number, count)))


def openings() -> int:
    """How often this worker has opened a road."""
    return worker_road.cache_info().misses


def run(client: Client, project: bytes, partitions: list[int]) -> int:
    """Answers the partitions on the client's workers and prints what came out."""
    client.upload_file(partition.__file__)  # the workers have kesto_road, but not this folder
    shared = client.scatter(project, broadcast=True)  # to every worker once, not with every task
    begin = time.perf_counter()
    tasks = client.map(work, [shared] * len(partitions), range(len(partitions)), partitions)
    results = client.gather(tasks)
    seconds = time.perf_counter() - begin
    opened = list(client.run(openings).values())
    located, offsets = (sum(column) for column in zip(*results))
    print(f"{sum(partitions)} points, {located} located, mean offset {offsets / located:+.3f} m")
    print(f"{sum(partitions) / seconds:,.0f} points a second, reading included, on {len(opened)} workers")
    print(f"the road was opened {max(opened)} time(s) in a worker")
    return 0 if max(opened) == 1 else 1


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--scheduler", help="address of a cluster's scheduler, tcp://HOST:PORT")
    given, project, partitions = arguments(parser)
    if given.scheduler:
        with Client(given.scheduler) as client:
            return run(client, project, partitions)
    with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster, Client(cluster) as client:
        return run(client, project, partitions)


if __name__ == "__main__":
    sys.exit(main())
