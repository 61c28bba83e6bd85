"""dask worker --preload zvxg.dask.preload: the backend of scipy.fft for all tasks of a worker."""

import scipy.fft
from distributed import WorkerPlugin

import zvxg.scipy


class Backend(WorkerPlugin):
    """The backend on each worker; a plugin of the same name is registered only once."""

    name = "zvxg"

    def setup(self, worker):
        dask_setup(worker)

    def teardown(self, worker):
        scipy.fft.set_global_backend("scipy")


def dask_setup(worker):
    # A context of set_backend() would hold for one thread, and tasks run in others.
    scipy.fft.set_global_backend(zvxg.scipy)
