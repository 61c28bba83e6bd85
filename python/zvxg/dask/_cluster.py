"""Workers on this machine."""

import contextlib
import tempfile

import dask
import distributed

SETTINGS = {
    # Looks at what runs every 10 ms, which takes a tenth of the processor.
    "distributed.worker.profile.enabled": False,
    # A worker makes no chunk ahead while another one is in its memory.
    "distributed.scheduler.worker-saturation": 1.0,
}


@contextlib.contextmanager
def local_cluster(workers, memory, **options):
    with (dask.config.set(SETTINGS), tempfile.TemporaryDirectory(prefix="zvxg-dask-") as place,
          distributed.LocalCluster(workers, threads_per_worker=1, memory_limit=memory,
                                   local_directory=place, **options) as cluster):
        yield cluster
