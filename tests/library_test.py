"""The built library as a file: what it exports and imports, how it is hardened, which instructions
it holds, how much stack it takes, and whether the prototypes in the tree are those of the generator.
Run with --help for the arguments; what follows them goes to unittest, such as -k imports."""

import argparse
import collections
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


class Symbols(TestCase):
    # Provided by libzvxcore, or by the program.
    CORE = {"zvxMalloc", "zvxFree"}

    def dynamic(self, kind):
        lines = output_of("nm", "-D", f"--{kind}-only", options.library).splitlines()
        return [line.split()[-2:] for line in lines]

    def declared(self):
        text = ""
        for name in "zvxg.h", "zvxg_kernels.h":
            with open(os.path.join(options.include, name), encoding="utf-8") as file:
                text += file.read()
        return set(re.findall(r"^ZVXG_API [^(;]*?(\w+)\s*\(", text, re.MULTILINE)) - self.CORE

    def test_exports_are_the_declared_functions(self):
        expected = symbols(lambda function: True)
        self.assertEqual(len(expected), 1193)
        for what, found in (
            ("declared", self.declared()),
            ("exported", {name for _, name in self.dynamic("defined")}),
        ):
            self.expect_none(expected - found, f"functions not {what}")
            self.expect_none(found - expected, f"functions {what} beyond the list")
        kinds = {kind for kind, _ in self.dynamic("defined")}
        self.assertEqual(kinds, {"T"}, "only functions are exported")

    def test_imports_are_memory_and_the_c_library(self):
        # Nothing else, nor weak hooks: nothing of the C++ library, no file, no lock, no message.
        trigonometry = {name + type for name in ("cos", "sin", "sincos") for type in ("", "f")}
        allowed = self.CORE | trigonometry | {"memcpy", "memmove", "memset"}
        imported = {name.split("@")[0] for _, name in self.dynamic("undefined")}
        self.expect_none(imported - allowed, "imports beyond the list")
        self.assertLessEqual(self.CORE, imported)

    def test_own_functions_are_bound(self):
        # By address: there is no stub and no look-up between an entry and its kernel.
        relocations = output_of("readelf", "-rW", options.library)
        self.assertIn("R_X86_64_RELATIVE", relocations)
        looked_up = set(re.findall(r"\b(zvx\w+)", relocations)) - self.CORE
        self.expect_none(looked_up, "functions looked up by the loader")

    def test_needs_only_system_libraries_and_has_its_soname(self):
        dynamic = output_of("readelf", "-dW", options.library)
        needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic))
        self.assertLessEqual(needed, {"libc.so.6", "libm.so.6", "libzvxcore.so.6"})
        self.assertIn("libzvxcore.so.6", needed)
        self.assertEqual(re.findall(r"\(SONAME\).*\[(.*)\]", dynamic), ["libzvxg.so.6"])


class ManySymbols(TestCase):
    """libzvxgmany, which is linked with the other libraries."""

    def symbols(self, kind):
        lines = output_of("nm", "-D", f"--{kind}-only", options.many_library).splitlines()
        return {line.split()[-1].split("@")[0]: line.split()[-2] for line in lines}

    def test_exports_are_the_declared_functions(self):
        expected = {function["symbol"] for function in options.many}
        self.assertEqual(len(expected), 22 + 2)
        with open(os.path.join(options.include, "zvxg_many.h"), encoding="utf-8") as file:
            declared = set(re.findall(r"^ZVXG_API [^(;]*?(\w+)\s*\(", file.read(), re.MULTILINE))
        self.assertEqual(declared, expected)
        self.assertEqual(self.symbols("defined"), dict.fromkeys(expected, "T"))

    def test_imports_are_single_transforms_memory_and_copies(self):
        allowed = symbols(is_entry) | symbols(is_planned) | Symbols.CORE
        allowed |= {"memcpy", "memmove", "memset"}
        self.expect_none(self.symbols("undefined").keys() - allowed, "imports beyond the list")

    def test_needs_only_the_other_libraries_and_has_its_soname(self):
        dynamic = output_of("readelf", "-dW", options.many_library)
        needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic))
        self.assertLessEqual(needed, {"libc.so.6", "libzvxg.so.6", "libzvxcore.so.6"})
        self.assertIn("libzvxg.so.6", needed)
        self.assertEqual(re.findall(r"\(SONAME\).*\[(.*)\]", dynamic), ["libzvxgmany.so.6"])


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


Instruction = collections.namedtuple("Instruction", "address mnemonic operands")


def disassembly(library):
    """The functions of a library: name -> its instructions."""
    functions = {}
    for line in output_of("objdump", "-d", "--no-show-raw-insn", library).splitlines():
        if label := re.match(r"[0-9a-f]+ <(.+)>:$", line):
            body = functions.setdefault(label.group(1), [])
        elif parts := re.match(r"\s+([0-9a-f]+):\s+(\S+)\s*(.*)", line):
            body.append(Instruction(int(parts.group(1), 16), parts.group(2), parts.group(3)))
    return functions


# In no level: fused products, half precision, and what processors of a level may lack or the builds do
# not ask for. tzcnt is bsf where it is not known.
NEVER = re.compile(
    r"vfn?m(add|sub)|v4fn?madd|vcvtph2ps|vcvtps2ph|(andn|bextr|bls(i|r|msk)|bzhi|mulx|pdep|pext|rorx)$"
    r"|(sar|shl|shr)x$|lzcnt|movbe|vperm(b|[it]2b)|vpmultishift|vpmadd52|vpdp|vpopcnt|vp2intersect"
    r"|vp(compress|expand)[bw]|vpsh[lr]d|v?gf2p8|vdpbf16|vcvtne|vpconflict|vplzcnt|v(exp2|rcp28|rsqrt28)"
)
# New in AVX-512 and in AVX2 by the name alone.
AVX512_NAME = re.compile(
    r"vpermt2|vpermi2|vp?scatter|v(extract|insert)[fi](32|64)x|v(broadcast|shuf)[fi](32|64)x"
    r"|vpternlog|vp(and|or|xor)n?[dq]$|vrndscale|vmovdq[au](8|16|32|64)|vblendm|vpblendm|valign|vcompress"
    r"|vexpand|k(mov|and|or|xor|unpck|ortest|not|shift)"
)
AVX2_NAME = re.compile(
    r"vpbroadcast|vbroadcasti|vperm(d|q|ps|pd)$|v(extract|insert)i128|vperm2i128|vpblendd|vp?gather"
    r"|vpmaskmov|vps[lr][la]v"
)
# 256-bit integer instructions that AVX has already.
WIDE_INTEGER = re.compile(r"vptest|vpermil|vperm2f128")
# Instructions that read or change the floating-point control word.
CONTROL = re.compile(r"v?(ld|st)mxcsr|fldcw|fn?stcw|fxrstor|xrstor|fesetenv")
WIDEST = {"base": "xmm", "v3": "ymm", "v4": "zmm"}  # vectors of what is written by hand for a level


def foreign(instruction, level):
    """Why this instruction is not of the level, or None."""
    name, operands = instruction.mnemonic, instruction.operands
    if NEVER.match(name):
        return "in no level"
    if CONTROL.match(name):
        return "touches the control word"
    if level == "v4":
        return None
    if AVX512_NAME.match(name) or re.search(r"%zmm|%[xy]mm(1[6-9]|2\d|3[01])|\{", operands):
        return "AVX-512"
    if level == "v3":
        return None
    if AVX2_NAME.match(name):
        return "AVX2"
    if "%ymm" in operands and re.match(r"vp|vmpsadbw|vmovntdqa", name):
        if not WIDE_INTEGER.match(name):
            return "256-bit integer instruction"
    if name.startswith("vbroadcasts") and "(" not in operands:
        return "broadcast from a register"
    return None


def packed_arithmetic(instruction):
    """Whether it computes on several lanes; moves, and the zero of a logical one, do not."""
    operation = r"v?(add|sub|mul|div|sqrt|min|max|h(add|sub)|addsub|dp|fn?m(add|sub)\w*)p[sd]"
    return re.match(operation, instruction.mnemonic) is not None


def control_flow(name, body):
    """The graph of the instructions of a function, and where it jumps or calls outside itself."""
    successors, others = {}, set()
    for instruction, following in zip(body, body[1:] + [None]):
        after = successors.setdefault(instruction.address, [])
        if re.match("j|call", instruction.mnemonic):
            target = re.fullmatch(r"([0-9a-f]+) <([^>+]+)(?:\+0x[0-9a-f]+)?>", instruction.operands)
            if target and target.group(2) == name:
                after.append(int(target.group(1), 16))
            else:
                others.add(target.group(2) if target else instruction.operands)
        if following and instruction.mnemonic not in ("jmp", "ret"):
            after.append(following.address)
    return successors, others


class MachineCode(TestCase):
    @classmethod
    def setUpClass(cls):
        cls.functions = disassembly(options.library)
        # Function symbols in lower case are local: no import, no other kernel.
        symbols = [line.split()[-2:] for line in output_of("nm", options.library).splitlines()]
        cls.local = {name for kind, name in symbols if kind == "t"} & cls.functions.keys()

    def test_nothing_beyond_the_level(self):
        found = {
            f"{name}: {i.mnemonic} {i.operands} ({reason})"
            for name, body in self.functions.items()
            for i in body
            if (reason := foreign(i, options.level))
        }
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
        for name, (successors, _) in self.with_bodies(straight).items():
            try:
                graphlib.TopologicalSorter(successors).prepare()
            except graphlib.CycleError as error:
                found.add(f"{name}: loop at {min(error.args[1]):x}")
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

    def expect_no_real_instruction(self, unwanted, what):
        real = symbols(lambda function: is_generated(function) and function["family"] != "Complex")
        self.assertGreater(len(real), 0)
        found = {
            f"{name}: {i.mnemonic} {i.operands}"
            for name in self.with_bodies(real)
            for i in self.functions[name]
            if unwanted(i)
        }
        self.expect_none(found, what)

    def test_real_kernels_are_scalar(self):
        if options.level != "base":
            self.skipTest("they are packed")
        self.expect_no_real_instruction(packed_arithmetic, "vector operations in real kernels")

    def test_real_kernels_call_nothing(self):
        self.expect_no_real_instruction(
            lambda i: i.mnemonic.startswith("call"), "calls in real kernels"
        )

    def test_entries_compare_and_jump(self):
        # Entries with a buffer have one more argument to move.
        limits = {function["symbol"]: 14 if "Buffer" in function["roles"] else 10
                  for function in options.interface if is_entry(function)}
        self.expect_none(limits.keys() - self.functions.keys(), "entries without code")
        found = set()
        for name, limit in limits.items():
            body = self.functions[name]
            work = [i for i in body if not re.match("nop|data16|cs", i.mnemonic)]  # no padding
            jumps = [f"{i.mnemonic} {i.operands}" for i in work if re.match("j|call", i.mnemonic)]
            to_kernel = [jump for jump in jumps if jump.startswith("jmp *")]
            if len(jumps) != 2 or len(to_kernel) != 1 or len(work) > limit:
                found.add(f"{name}: {len(work)} instructions with the jumps {jumps}")
        self.expect_none(found, "entries that do more")

    def test_foreign_instructions_are_recognised(self):
        for first, *instruction in (  # the first level that has it
            ("base", "vbroadcastss", "0x10(%rip),%ymm1"),
            ("base", "vpermilps", "$0x4e,%ymm1,%ymm2"),
            ("base", "vpxor", "%xmm1,%xmm2,%xmm3"),
            ("v3", "vpaddd", "%ymm1,%ymm2,%ymm3"),
            ("v3", "vbroadcastss", "%xmm0,%ymm1"),
            ("v3", "vpermpd", "$0x4e,%ymm1,%ymm2"),
            ("v4", "vpermt2ps", "%ymm1,%ymm2,%ymm3"),
            ("v4", "vaddps", "%zmm1,%zmm2,%zmm3"),
            ("v4", "vaddps", "%ymm1,%ymm2,%ymm17"),
            (None, "vfmadd231pd", "%ymm1,%ymm2,%ymm3"),
            (None, "shlx", "%rax,%rbx,%rcx"),
        ):
            having = [level for level in WIDEST if not foreign(Instruction(0, *instruction), level)]
            self.assertEqual(having[0] if having else None, first, instruction)
            self.assertEqual(having, sorted(WIDEST)[3 - len(having):], instruction)


class ManyMachineCode(TestCase):
    def test_each_machine_gets_its_own_instructions(self):
        """By the namespace in the names of functions."""
        found, wide = set(), 0
        for name, body in disassembly(options.many_library).items():
            level = "v4" if "6avx512" in name else "base"
            for i in body:
                wide += "%zmm" in i.operands
                if reason := foreign(i, level):
                    found.add(f"{name}: {i.mnemonic} {i.operands} ({reason})")
        self.expect_none(found, "instructions that a machine lacks")
        self.assertGreater(wide, 1000)

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
