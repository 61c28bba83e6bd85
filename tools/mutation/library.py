"""Faults in what is written by hand: the parts of the library, and the companion headers."""

import collections
import re

from checks import failure, started
from copies import Workshop, linked, linked_library, sources
from outcomes import BUILD, seeds

# Where a part is, how many faults are seeded, which objects of the library it changes, the test
# programs that see it with the kernels that they are kept to, and one that compiles it itself.
Part = collections.namedtuple("Part", "directories count objects programs compiling")
# The library, the targets that compile it, and an archive that has the rest: of libzvxgmany not
# everything is compiled, and nothing for AVX-512.
LIBRARIES = collections.defaultdict(
    lambda: ("libzvxg.so", "zvxg_objects", ()),
    many=("libzvxgmany.so", "zvxgmany_objects|zvxgmany_avx", [f"{BUILD}/src/libzvxgmany.a"]),
)
PARTS = {
    # One share of the kernels stands for all of them.
    "frame": Part(
        ("src/frame/",), 25, "/(version|entries|source_base_v3_v4_0).cpp$",
        {"hashes": "", "tests": "", "reliability": ""}, None,
    ),
    "wht": Part(
        ("src/wht/",), 35, "/wht/", {"hashes": "WHT", "reliability": "WHT", "sizes": ""}, None
    ),
    "dct4": Part(
        ("src/dct4/",), 90, "/dct4/",
        {"hashes": "DCT4", "dct4": "", "sizes": "", "reliability": "DCT4"}, "dct4_body",
    ),
    # Of the kernels, those that take few seconds to compile.
    "many": Part(
        ("src/many/",), 90, r"/src/many/(many|many_short|level|dct4_strided|lanes_\w+).cpp$",
        {"hashes": "_Many_", "many": ""}, None,
    ),
    "companion": Part(("include/zvxg/",), 30, "^$", {}, "companion"),
}  # fmt: skip


class Library(Workshop):
    def __init__(self, name):
        self.part = part = PARTS[name]
        self.file, target, self.rest = LIBRARIES[name]
        self.tested = sources(f"zvxg_{part.compiling}_tests")
        self.own = [unit for unit in sources(target) if re.search(part.objects, unit)]
        super().__init__(name, self.own + self.tested)
        # The unchanged copy has to pass, or nothing would be found by what fails on another.
        own, tested = ([self.originals[u] for u in units] for units in (self.own, self.tested))
        library = own and linked_library(f"{self.tree}/{self.file}", own, self.rest)
        for program in part.programs:
            if output := failure(program, library, part.programs[program]):
                raise SystemExit(f"mutation: the unchanged copy fails {program}:\n{output[-3000:]}")
        if tested and self.fails(own + tested, self.tree):
            raise SystemExit(f"mutation: the unchanged copy fails the {part.compiling} tests")

    def found(self, file, tree):
        own, same = self.objects(self.own, file, tree)
        if not same:
            library = linked_library(f"{tree}/{self.file}", own, self.rest)
            for program, kernel in self.part.programs.items():
                if failure(program, library, kernel):
                    return program
        tested, sameTests = self.objects(self.tested, file, tree)
        if same and sameTests:
            return None
        return self.part.compiling if tested and self.fails(own + tested, tree) else ""

    @staticmethod
    def fails(objects, tree):
        program = linked(
            f"{tree}/tests", *objects,
            f"{BUILD}/tests/CMakeFiles/zvxg_harness.dir/harness.cpp.o",
            f"{BUILD}/tools/reference/libzvxg_reference.a",
            f"{BUILD}/tools/interface/libzvxg_interface.a",
            f"{BUILD}/tools/kernelgen/libzvxg_kernel_id.a", "-lzvxgmany", "-lgtest_main", "-lgtest",
        )  # fmt: skip
        return started([program], seconds=100).returncode != 0


def library(name, options):
    part, setting = PARTS[name], Library(name)
    files = [file for file in setting.files() if file.startswith(part.directories)]
    return setting.outcomes(seeds(files, options.count or part.count, options.seed))
