"""The generalised ufuncs behind the functions of zvxg, for code that works on ufuncs.

Their names are those of the functions, then the layout but for "ccs", then the norm but for
"backward": fft, fft_ortho, rfft_pack_forward. They have the signature (n)->(n), and (n)->(m) between
real numbers and bins, where NumPy cannot tell m: it needs `out=`.
"""

from ._core import ufuncs as _ufuncs

globals().update(_ufuncs)
