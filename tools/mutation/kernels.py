"""Faults in the text of the generated kernels."""

import os
import random
import re

import faults
from checks import failure, symbols
from copies import compiled, linked_library, sources
from outcomes import MADE, Outcome, parallel

# Tests that do not ask the generator, which is the unchanged one in the test programs.
DEFINED = "--gtest_filter=ByHand.*:Definition.*"


def kernels_of(text):
    """What is before the first kernel of a generated file, then each kernel."""
    return re.split(r"^(?=// zvxg)", text, flags=re.M)


def kernels(options):
    """One fault in every kernel of one copy of the library, or of as many shares of the kernels as
    have the number asked for: no kernel calls another, so a test of one kernel finds its fault."""
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
    named = symbols(failure("hashes", library))

    def found(symbol):
        ways = ["hashes"] if symbol in named else []
        others = ("tests", DEFINED), ("reliability", "--gtest_filter=Values.*")
        ways += [program for program, tests in others if failure(program, library, symbol, (tests,))]
        return " ".join(ways)

    found_by = parallel(found, seeded)
    return [Outcome(symbol, *seeded[symbol], ways) for symbol, ways in zip(seeded, found_by)]
