"""Faults in the text of the generated kernels."""

import collections
import os
import random
import re

import faults
from checks import failure, symbols
from copies import compiled, linked_library, sources
from outcomes import MADE, Outcome, parallel, say

# Tests that look at one kernel at a time; others compare two, both of which have a fault here.
ALONE = {
    "hashes": (),
    "tests": ("--gtest_filter=ByHand.*:Definition.*",),
}


def kernels_of(text):
    """What is before the first kernel of a generated file, then each kernel."""
    return re.split(r"^(?=// zvxg)", text, flags=re.M)


def kernels(options):
    """One fault in every kernel of one copy of the library, or of as many shares of the kernels as
    have the number asked for: no kernel calls another, so the tests tell the faults apart by the
    names of the kernels that fail."""
    directory = f"{MADE}/kernels"
    os.makedirs(directory, exist_ok=True)
    seeded, texts = {}, {}
    shares = [s for s in sources("zvxg_objects") if re.search(r"/(source|long)_\w+\.cpp$", s)]
    for source in random.Random(options.seed).sample(shares, len(shares)):
        if options.count and len(seeded) >= options.count:
            break
        with open(source, encoding="utf-8") as file:
            parts = kernels_of(file.read())
        for i, text in enumerate(parts[1:], 1):
            symbol = re.match(r"// (\w+):", text)[1]
            chance = random.Random(f"{options.seed} {symbol}")
            (fault,) = faults.pick(faults.kernel_faults(text), chance)
            seeded[symbol] = faults.described(text, fault)
            parts[i] = faults.apply(text, fault)
        texts[source] = "".join(parts)

    def make(source):
        output = f"{directory}/{os.path.basename(source)}.o"
        compiled(source, output, text=texts[source])
        return output

    library = linked_library(f"{directory}/libzvxg.so", parallel(make, texts))
    found = collections.defaultdict(list)
    for program, arguments in ALONE.items():
        named = symbols(failure(program, library, arguments=arguments)) & set(seeded)
        say(f"{program}: {len(named)} of {len(seeded)} kernels fail")
        for symbol in named:
            found[symbol].append(program)
    for symbol in seeded.keys() - found.keys():
        if failure("reliability", library, symbol, ("--gtest_filter=Values.*:State.R*",)):
            found[symbol].append("reliability")
    return [Outcome(symbol, *told, " ".join(found[symbol])) for symbol, told in seeded.items()]
