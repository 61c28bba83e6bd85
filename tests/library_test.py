"""The built library as a file: what it exports and imports, how it is hardened, which instructions
it holds, how much stack it takes, and whether the prototypes in the tree are those of the generator.
Run with --help for the arguments; what follows them goes to unittest, such as -k imports."""

import argparse
import collections
import csv
import graphlib
import json
import os
import re
import shutil
import subprocess
import sys
import unittest


def symbols(condition):
    """Of the functions that have a property."""
    return {function["symbol"] for function in options.interface if condition(function)}


def is_kernel(function):
    return "Source" in function["roles"] and function["first"] == function["last"]


def is_entry(function):
    return {"Source", "Selector"} <= set(function["roles"])


def is_planned(function):
    return {"Source", "Plan"} <= set(function["roles"])


# The kernels that do not come from the generator. Those of many passes have loops and take memory.
def is_one_pass(function):
    return is_kernel(function) and function["family"] == "Wht" and function["first"] <= 7


def has_many_passes(function):
    return is_kernel(function) and function["family"] == "Wht" and function["first"] > 7


def is_generated(function):
    return is_kernel(function) and function["family"] != "Wht"


WARNINGS = "-Wall -Wextra -Wpedantic -Wconversion -Werror".split()


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


class TestCase(unittest.TestCase):
    def expect_none(self, found, what):
        """Fails with a readable part of a set that should be empty."""
        if found:
            self.fail(f"{len(found)} {what}, such as {', '.join(sorted(found)[:5])}")


class Header(TestCase):
    def test_kernel_prototypes_are_current(self):
        with open(os.path.join(options.include, "zvxg_kernels.h"), encoding="utf-8") as file:
            current = file.read() == output_of(options.kernelgen, "header")
        self.assertTrue(current, "run: kernelgen header > include/zvxg_kernels.h")

    def test_ledger_is_current(self):
        with open(options.ledger, encoding="utf-8") as file:
            current = file.read() == output_of(options.kernelgen, "counts")
        self.assertTrue(current, "run: kernelgen counts > tools/kernelgen/ledger.csv")

    def test_products_are_those_of_the_table(self):
        """What a real or Hartley kernel multiplies shows which blocks it is made of. Blocks share products
        beyond what the table counts at the lengths of certain Rader steps, or multiples of them, and on
        the way back at those of 13 and of parts of a power of two."""
        forward = {29, 37, 41, 53, 58, 59, 61}
        others = {13, 26, 29, 31, 37, 39, 41, 48, 52, 53, 58, 59, 60, 61, 62, 64}
        with open(options.ledger, encoding="utf-8") as file:
            ledger = {row["symbol"]: row for row in csv.DictReader(file)}
        for kernel in filter(is_generated, options.interface):
            if kernel["family"] == "Complex":
                continue
            row, length = ledger[kernel["symbol"]], kernel["first"]
            with self.subTest(kernel["symbol"]):
                is_forward = kernel["family"] == "Real" and kernel["direction"] == "Forward"
                stated = int(row["stated"])
                fewer = stated // 5 if length in (forward if is_forward else others) else 0
                self.assertIn(int(row["products"]), range(stated - fewer, stated + 1))
                self.assertEqual(int(row["scales"]), length)

    def test_it_compiles_without_a_warning(self):
        """The headers by each compiler and standard."""
        here = os.path.dirname(os.path.abspath(__file__))
        cases = [("header.c", "c", ("c11", "c17")), ("header.cpp", "c++", ("c++17", "c++20", "c++2b")),
                 ("companion_header.cpp", "c++", ("c++20", "c++2b"))]
        for compiler in ("gcc", "clang"):
            if not shutil.which(compiler):
                self.skipTest(f"{compiler} is not installed")
            for file, language, standards in cases:
                for standard in standards:
                    with self.subTest(f"{compiler} -std={standard} {file}"):
                        output_of(compiler, "-fsyntax-only", f"-std={standard}", *WARNINGS,
                                  *(["-Wstrict-prototypes"] if language == "c" else []),
                                  "-I", options.include, "-include", os.path.join(here, file),
                                  "-x", language, "/dev/null")


# Provided by libzvxcore, or by the program.
CORE = {"zvxMalloc", "zvxFree"}

Library = collections.namedtuple("Library", "name file headers functions imports needs may_need")


def libraries():
    """Both, with what they may import beside copies of memory, and need to be loaded."""
    trigonometry = {name + type for name in ("cos", "sin", "sincos") for type in ("", "f")}
    yield Library("zvxg", options.library, ("zvxg.h", "zvxg_kernels.h"), symbols(lambda function: True),
                  CORE | trigonometry, {"libzvxcore.so.6"}, {"libm.so.6"})
    if options.many_library:
        yield Library("zvxgmany", options.many_library, ("zvxg_many.h",),
                      {function["symbol"] for function in options.many},
                      CORE | symbols(is_entry) | symbols(is_planned), {"libzvxg.so.6"},
                      {"libzvxcore.so.6"})


class Symbols(TestCase):
    def dynamic(self, library, kind):
        lines = output_of("nm", "-D", f"--{kind}-only", library.file).splitlines()
        return {line.split()[-1].split("@")[0]: line.split()[-2] for line in lines}

    def declared(self, library):
        text = ""
        for name in library.headers:
            with open(os.path.join(options.include, name), encoding="utf-8") as file:
                text += file.read()
        return set(re.findall(r"^ZVXG_API [^(;]*?(\w+)\s*\(", text, re.MULTILINE)) - CORE

    def test_exports_are_the_declared_functions(self):
        counts = {"zvxg": 1193, "zvxgmany": 22 + 2}
        for library in libraries():
            exported = self.dynamic(library, "defined")
            self.assertEqual(len(library.functions), counts[library.name])
            for what, found in ("declared", self.declared(library)), ("exported", exported.keys()):
                self.expect_none(library.functions - found, f"functions not {what}")
                self.expect_none(found - library.functions, f"functions {what} beyond the list")
            self.assertEqual(set(exported.values()), {"T"}, "only functions are exported")

    def test_imports_are_memory_and_the_c_library(self):
        # Nothing else, nor weak hooks: nothing of the C++ library, no file, no lock, no message.
        for library in libraries():
            imported = self.dynamic(library, "undefined").keys()
            self.expect_none(imported - library.imports - {"memcpy", "memmove", "memset"},
                             "imports beyond the list")
            self.assertLessEqual(CORE, imported)

    def test_own_functions_are_bound(self):
        # By address: there is no stub and no look-up between an entry and its kernel.
        for library in libraries():
            relocations = output_of("readelf", "-rW", library.file)
            self.assertIn("R_X86_64_RELATIVE", relocations)
            looked_up = set(re.findall(r"\b(zvx\w+)", relocations)) & library.functions
            self.expect_none(looked_up, "functions looked up by the loader")

    def test_needs_only_system_libraries_and_has_its_soname(self):
        for library in libraries():
            dynamic = output_of("readelf", "-dW", library.file)
            needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic))
            self.assertLessEqual(needed, library.needs | library.may_need | {"libc.so.6"})
            self.assertLessEqual(library.needs, needed)
            self.assertEqual(re.findall(r"\(SONAME\).*\[(.*)\]", dynamic), [f"lib{library.name}.so.6"])


class Hardening(TestCase):
    """Holds for all libraries."""

    def each(self, *command):
        """The libraries, and what a command says about them."""
        directory = os.path.dirname(options.library)
        # A variant has the other one where its RUNPATH leads.
        cores = [os.path.join(directory, place, "libzvxcore.so") for place in ("", "../..")]
        core = next(core for core in cores if os.path.exists(core))
        for name in filter(None, (options.library, core, options.many_library)):
            yield os.path.basename(name), output_of(*command, name)

    def extent(self, segment):
        address, size = int(segment[2], 16), int(segment[5], 16)
        return address, address + size

    def test_nothing_stays_writable_or_is_executable_as_data(self):
        # type, offset, virtual and physical address, sizes in file and memory, flags
        segment = re.compile(r"^  (\w+) +" + r"(0x\S+) " * 5 + "(.{3}) ", re.MULTILINE)
        for name, output in self.each("readelf", "-lW"):
            segments = segment.findall(output)
            self.expect_none({s[0] for s in segments if "W" in s[-1] and "E" in s[-1]}, "W and E")
            self.assertEqual([s[-1] for s in segments if s[0] == "GNU_STACK"], ["RW "], name)
            # What is writable for the loader is the part that it protects afterwards: no variables.
            writable = [s for s in segments if s[0] == "LOAD" and "W" in s[-1]]
            protected = [s for s in segments if s[0] == "GNU_RELRO"]
            self.assertEqual((len(writable), len(protected)), (1, 1), name)
            start, end = self.extent(writable[0])
            self.assertEqual(self.extent(protected[0])[0], start, name)
            # libzvxgmany keeps the level in use, in one word.
            state = 8 if name.startswith("libzvxgmany") else 0
            self.assertGreaterEqual(self.extent(protected[0])[1] + state, end, name)

    def test_loading_binds_all_and_runs_nothing(self):
        for name, dynamic in self.each("readelf", "-dW"):
            self.assertRegex(dynamic, r"\(FLAGS_1\) .*NOW", name)
            self.assertNotRegex(dynamic, r"TEXTREL|\((?:INIT|FINI)", name)
            self.assertIn(re.findall(r"\(RUNPATH\).*\[(.*)\]", dynamic),
                          ([], ["$ORIGIN"], ["$ORIGIN:$ORIGIN/../.."]), name)

    def test_indirect_jumps_have_marked_targets(self):
        for name, notes in self.each("readelf", "-nW"):
            self.assertRegex(notes, "x86 feature: IBT, SHSTK", name)

    def test_the_loader_is_told_the_level(self):
        notes = output_of("readelf", "-nW", options.library)
        needed = [] if options.level == "base" else [f"x86-64-{options.level}"]
        self.assertEqual(re.findall("x86 ISA needed: (.*)", notes), needed)


class Instruction(collections.namedtuple("Instruction", "address mnemonic operands")):
    def __str__(self):
        return f"{self.mnemonic} {self.operands}"


def disassembly(library):
    """The functions of a library: name -> its instructions."""
    functions = {}
    for line in output_of("objdump", "-d", "--no-show-raw-insn", library).splitlines():
        if line.endswith(">:"):
            body = functions.setdefault(line.partition("<")[2][:-2], [])
        elif line.startswith(" "):
            address, _, text = line.partition(":\t")
            mnemonic, _, operands = text.partition("#")[0].partition(" ")
            body.append(Instruction(int(address, 16), mnemonic, operands.strip()))
    return functions


# What the assembler takes at a level, beside the instructions that every processor has.
EXTENSIONS = {"base": ".avx", "v3": ".avx2", "v4": ".avx512f .avx512vl .avx512dq .avx512bw"}
# In no level, although AVX-512 has them: fused products and half precision; and what reads or changes
# the floating-point control word.
NEVER = r"vfn?m(add|sub)|vcvtph2ps|vcvtps2ph|v?(ld|st)mxcsr|fldcw|fn?stcw|fxrstor|xrstor"
# Not assembled again: jumps, padding, and tzcnt, which is bsf where it is not known.
NOT_ASSEMBLED = r"((bnd|notrack) )?(j|call)|data16|tzcnt"
WIDEST = {"base": "xmm", "v3": "ymm", "v4": "zmm"}  # vectors of what is written by hand for a level


def foreign(instructions, level):
    """Those of the texts that are not instructions of the level."""
    texts = [text for text in instructions if not re.match(NOT_ASSEMBLED, text)]
    known = [f".arch {name}" for name in f"generic64 .ibt {EXTENSIONS[level]}".split()]
    done = subprocess.run(["as", "-o", os.devnull, "-"], input="\n".join(known + texts) + "\n",
                          stderr=subprocess.PIPE, text=True)
    refused = {int(line) - 1 for line in re.findall(r":(\d+): Error", done.stderr)}
    assert bool(refused) == bool(done.returncode), done.stderr
    return {text for line, text in enumerate(texts, len(known))
            if line in refused or re.match(NEVER, text)}


def packed_arithmetic(instruction):
    """Whether it computes on several lanes; moves, and the zero of a logical one, do not."""
    operation = r"v?(add|sub|mul|div|sqrt|min|max|h(add|sub)|addsub|dp|fn?m(add|sub)\w*)p[sd]"
    return re.match(operation, instruction.mnemonic) is not None


def control_flow(name, body):
    """The jumps inside a function, by their places, and where it jumps or calls outside itself."""
    inside, others = {}, set()
    for instruction in body:
        if instruction.mnemonic.startswith(("j", "call")):
            target = re.fullmatch(r"([0-9a-f]+) <([^>+]+)(?:\+0x[0-9a-f]+)?>", instruction.operands)
            if target and target.group(2) == name:
                inside[instruction.address] = int(target.group(1), 16)
            else:
                others.add(target.group(2) if target else instruction.operands)
    return inside, others


def has_loop(body, jumps):
    """Whether an instruction can follow itself, which takes a jump back."""
    if all(target > place for place, target in jumps.items()):
        return False
    graph = {}
    for instruction, following in zip(body, body[1:] + [None]):
        place = instruction.address
        graph[place] = [jumps[place]] if place in jumps else []
        if following and instruction.mnemonic not in ("jmp", "ret"):
            graph[place].append(following.address)
    try:
        graphlib.TopologicalSorter(graph).prepare()
    except graphlib.CycleError:
        return True
    return False


class MachineCode(TestCase):
    @classmethod
    def setUpClass(cls):
        cls.functions = disassembly(options.library)
        # Function symbols in lower case are local: no import, no other kernel.
        symbols = [line.split()[-2:] for line in output_of("nm", options.library).splitlines()]
        cls.local = {name for kind, name in symbols if kind == "t"} & cls.functions.keys()

    def test_nothing_beyond_the_level(self):
        users = {str(i): name for name, body in self.functions.items() for i in body}
        found = {f"{users[text]}: {text}" for text in foreign(users, options.level)}
        self.expect_none(found, f"instructions beyond {options.level}")

    def with_bodies(self, kernels):
        """These functions and the local ones that they enter; a compiler may split a body off."""
        self.expect_none(kernels - self.functions.keys(), "kernels without code")
        waiting, reached = sorted(kernels), {}
        while waiting:
            name = waiting.pop()
            if name in reached:
                continue
            reached[name] = control_flow(name, self.functions[name])
            waiting += reached[name][1] & self.local
        return reached

    def ways_out(self, kernels):
        return {
            f"{name}: enters {other}"
            for name, (_, others) in self.with_bodies(kernels).items()
            for other in others - self.local
        }

    def test_kernels_have_no_loop_and_enter_only_their_own_bodies(self):
        straight = symbols(is_generated) | symbols(is_one_pass)
        found = self.ways_out(straight)
        found |= {f"{name}: loop" for name, (jumps, _) in self.with_bodies(straight).items()
                  if has_loop(self.functions[name], jumps)}
        self.expect_none(found, "ways out and loops")

    def test_kernels_of_many_passes_call_for_memory_only(self):
        for kernel in symbols(has_many_passes):
            called = {way.split()[-1] for way in self.ways_out({kernel})}
            self.assertEqual(called, {"zvxMalloc@plt", "zvxFree@plt"}, kernel)

    def test_hand_written_kernels_have_the_width_of_the_level_and_add_vertically(self):
        instructions = [i for name in self.with_bodies(symbols(is_one_pass) | symbols(has_many_passes))
                        for i in self.functions[name]]
        horizontal = {i.mnemonic for i in instructions if re.match("vh(add|sub)", i.mnemonic)}
        self.expect_none(horizontal, "horizontal instructions")
        registers = {name for i in instructions for name in re.findall("[xyz]mm", i.operands)}
        self.assertEqual(max(registers), WIDEST[options.level])

    def test_real_kernels_are_scalar(self):
        if options.level != "base":
            self.skipTest("they are packed")
        real = symbols(lambda function: is_generated(function) and function["family"] != "Complex")
        self.assertGreater(len(real), 0)
        found = {f"{name}: {i}" for name in self.with_bodies(real) for i in self.functions[name]
                 if packed_arithmetic(i)}
        self.expect_none(found, "vector operations in real kernels")

    def test_entries_compare_and_jump(self):
        # Entries with a buffer have one more argument to move.
        limits = {function["symbol"]: 14 if "Buffer" in function["roles"] else 10
                  for function in options.interface if is_entry(function)}
        self.expect_none(limits.keys() - self.functions.keys(), "entries without code")
        found = set()
        for name, limit in limits.items():
            body = self.functions[name]
            work = [i for i in body if not re.match("nop|data16|cs", i.mnemonic)]  # no padding
            jumps = [str(i) for i in work if re.match("j|call", i.mnemonic)]
            to_kernel = [jump for jump in jumps if jump.startswith("jmp *")]
            if len(jumps) != 2 or len(to_kernel) != 1 or len(work) > limit:
                found.add(f"{name}: {len(work)} instructions with the jumps {jumps}")
        self.expect_none(found, "entries that do more")

    def test_foreign_instructions_are_recognised(self):
        for levels, text in (
            ("base v3 v4", "vbroadcastss 0x10(%rip),%ymm1"),
            ("v3 v4", "vbroadcastss %xmm0,%ymm1"),
            ("v4", "vaddps %ymm1,%ymm2,%ymm17"),
            ("", "vfmadd231pd %ymm1,%ymm2,%ymm3"),
            ("", "shlx %rax,%rbx,%rcx"),
            ("", "vldmxcsr (%rax)"),
        ):
            having = [level for level in EXTENSIONS if not foreign([text], level)]
            self.assertEqual(" ".join(having), levels, text)


class ManyMachineCode(TestCase):
    def test_each_machine_gets_its_own_instructions(self):
        """By the namespace in the names of functions."""
        users = {"v4": {}, "base": {}}
        for name, body in disassembly(options.many_library).items():
            users["v4" if "6avx512" in name else "base"].update({str(i): name for i in body})
        for level, names in users.items():
            found = {f"{names[text]}: {text}" for text in foreign(names, level)}
            self.expect_none(found, "instructions that a machine lacks")
        self.assertGreater(len([text for text in users["v4"] if "%zmm" in text]), 1000)

    def test_no_name_is_shared_by_machines(self):
        """Of two equal inline functions a linker keeps one, which the lesser processor may not run."""
        shared = set()
        for file in options.many_objects.split(";"):
            for line in output_of("nm", "--defined-only", "-g", file).splitlines():
                if "6avx512" not in line:
                    shared.add(line.split()[-1])
        self.expect_none(shared, "names")


class Frames(TestCase):
    KERNEL_LIMIT = 3584  # bytes
    PLAN_LIMIT = 34 * 1024  # stages of a plan collect their results on the stack

    def test_stack_frames_are_small(self):
        # By the compiler, -fstack-usage: place:function, tab, bytes, tab, how it is allocated.
        frames, large = {}, set()
        for file in options.objects.split(";"):
            with open(re.sub(r"\.o$", ".su", file), encoding="utf-8") as report:
                for line in report:
                    function, size, kind = line.rstrip("\n").split("\t")
                    name = re.sub(r"\(.*", "", function.split(":")[-1]).split()[-1]
                    self.assertIn(kind, ("static", "dynamic,bounded"), function)
                    limit = self.PLAN_LIMIT if "/dct4/" in function else self.KERNEL_LIMIT
                    if int(size) > limit:
                        large.add(f"{name}: {size} of {limit}")
                    frames[name] = max(frames.get(name, 0), int(size))
        kernels = symbols(is_kernel)
        self.expect_none(kernels - frames.keys(), "kernels not reported")
        largest = max(kernels, key=frames.get)
        print(f"largest frame of a kernel: {frames[largest]} bytes of {largest}")
        self.expect_none(large, "frames above their limit")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Tests the built library as a file.")
    parser.add_argument("--library", required=True, help="libzvxg.so")
    parser.add_argument("--level", choices=WIDEST, default="base", help="that the library is of")
    parser.add_argument("--objects", default="", help="its object files, joined by ;")
    parser.add_argument("--kernelgen", required=True, help="the generator")
    parser.add_argument("--include", required=True, help="directory of zvxg.h")
    parser.add_argument("--ledger", help="operation counts kept in the tree")
    parser.add_argument("--interface", type=lambda name: json.load(open(name, encoding="utf-8")),
                        required=True, help="the list of exported functions")
    parser.add_argument("--many-library", help="libzvxgmany.so")
    parser.add_argument("--many-objects", help="its object files for AVX-512, joined by ;")
    options, rest = parser.parse_known_args()
    options.many = [function for function in options.interface if function["library"] != "zvxg"]
    options.interface = [function for function in options.interface if function["library"] == "zvxg"]
    unittest.main(argv=sys.argv[:1] + rest)
