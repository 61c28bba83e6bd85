"""Lines that no fault is seeded into, with the reason: no test could find it, or should. A file, a part
of the line, and why."""

EXEMPT = [
    ("dct4/execute.cpp", "kCollectFrom", "a size at which speed changes"),
    ("dct4/execute.cpp", "kStreamFrom", "a size at which speed changes"),
    ("wht/kernels.cpp", "points() < 4 *", "a size at which speed changes"),
    ("wht/passes.h", "kCompetingBytes = ", "sizes of the cache, for speed"),
    ("wht/passes.h", "kRowBytes", "which of two ways, of the same bits, is the faster"),
    ("wht/passes.h", "reinterpret_cast<std::uintptr_t>(src) -", "likewise"),
]

# Faults that are known to stay unfound: a file, a part of the line before, and why.
SURVIVORS = [
    (
        "wht/blocking.h",
        "{64, 1, 1}",
        "no fault: one pass without an inner factor goes number by number, to the same bits",
    ),
    (
        "dct4/plan.cpp",
        ".state = 0,",
        "no fault: the record's init() writes it before anybody reads it",
    ),
    (
        "dct4/plan.cpp",
        "combine->state != 0",
        "no fault: 1 is a split by 2, which no length of a plan has",
    ),
    (
        "kernelgen/exports.cpp",
        "[[gnu::always_inline]]",
        "no fault of a result: only where the body is compiled",
    ),
    (
        "zvxg/mdct.hpp",
        "sum += besselI0",
        "no fault: all sums are negated, and only their ratios are used",
    ),
    (
        "zvxgDFTFwd_CToC_60_32fc",
        "c0_1_c7_10pp",
        "no fault: a blend takes only the other lanes of that product",
    ),
    (
        "zvxgDFTFwd_RToPerm_23_64f",
        "ntwore8of23",
        "so small that its last bit is mostly rounded away; two of three other seeds find it",
    ),
]
