"""Single faults as changes of a text. kernel_faults() and code_faults() list what may go wrong in the
text of a generated kernel and in C++ written by hand; pick() takes some of them. A change that keeps
the meaning, such as exchanging the operands of a sum, is not made."""

import collections
import math
import re
import struct

# The text from `start` to `end` of a file is replaced.
Fault = collections.namedtuple("Fault", "kind start end text")


def apply(text, fault):
    return text[: fault.start] + fault.text + text[fault.end :]


def described(text, fault):
    """The kind of a fault, the number of its line, and that line before and after."""
    begin = text.rfind("\n", 0, fault.start) + 1
    end = text.find("\n", fault.end)
    after = text[begin : fault.start] + fault.text + text[fault.end : end]
    return fault.kind, text.count("\n", 0, begin) + 1, text[begin:end].strip(), after.strip()


def pick(faults, random, count=1):
    """Some of the faults, kind by kind, so that rare kinds are not lost among frequent ones."""
    by_kind = collections.defaultdict(list)
    for fault in faults:
        by_kind[fault.kind].append(fault)
    picked = []
    while by_kind and len(picked) < count:
        for kind in random.sample(sorted(by_kind), len(by_kind)):
            picked.append(by_kind[kind].pop(random.randrange(len(by_kind[kind]))))
            if not by_kind[kind]:
                del by_kind[kind]
    return picked[:count]


# ---- Generated kernels ---------------------------------------------------------------------------


def neighbour(literal, single_results):
    """The literal changed in the last bit. Where results are single, but computed in double, that is
    the last bit of single precision: finer ones are rounded away but for rare luck."""
    value = float(literal.rstrip("f"))
    if literal.endswith("f"):
        bits = struct.unpack("<i", struct.pack("<f", value))[0]
        return f"{struct.unpack('<f', struct.pack('<i', bits + 1))[0]:.9g}f"
    return repr(value * (1 + 2**-23) if single_results else math.nextafter(value, math.inf))


def kernel_faults(kernel):
    single_results = re.search(r"^// \w+_32fc?:", kernel) is not None
    types = {name: kind for kind, name in re.findall(r"const (\w+) ([tx]\d\w*) =", kernel)}
    order = list(types)
    faults = []

    def add(kind, match, text, group=0):
        faults.append(Fault(kind, match.start(group), match.end(group), text))

    for m in re.finditer(r"= (\w+) ([+-]) (\w+);", kernel):
        add("sign of a sum", m, "-" if m[2] == "+" else "+", 2)
        if m[2] == "-":
            add("operands exchanged", m, f"= {m[3]} - {m[1]};")
    for m in re.finditer(r"= (t\d+) [-+*] (\w+);", kernel):
        # The value before in the text, unless it is the other operand.
        other = order[order.index(m[1]) - 1]
        if other != m[2] and types[other] == types[m[1]]:
            add("other operand", m, other, 1)
    places = collections.defaultdict(list)
    for m in re.finditer(r"([\w:]+\((?:\w+ \+ \d+, )?(?:src|dst) \+ |\b(?:src|dst)\[)(\d+)", kernel):
        places[re.sub(r"\d+,", ",", m[1])].append(m)
    for matches in places.values():
        for m, other in zip(matches, matches[1:] + matches[:1]):
            if m[2] != other[2]:
                add("index", m, other[2], 2)
    # Constants by name, those of a set or a broadcast, and the rows of a table of constants.
    for line in re.finditer(r"^ *(?:const \w+ (?!signs|[tx]\d)\w+ = .*;|[-{\d].*,  // \w+$)", kernel, re.M):
        for m in re.finditer(r"(?<![\w.])\d+\.\d+(?:e-\d+)?f?", line[0]):
            if float(m[0].rstrip("f")) != 0:
                at = line.start()
                text = neighbour(m[0], single_results)
                faults.append(Fault("last bit of a constant", at + m.start(), at + m.end(), text))
    for m in re.finditer(r"( \* scale);|= (scale \* )", kernel):
        add("scale dropped", m, "", 1 if m[1] else 2)
    for m in re.finditer(r"_mm\w*_(?:shuffle|permute|blend|permute2f128)_p[sd]\(.*, (\d+)\)", kernel):
        add("lane", m, str(int(m[1]) ^ 1), 1)
    for m in re.finditer(r"unpack(lo|hi)", kernel):
        add("lane", m, {"lo": "hi", "hi": "lo"}[m[1]], 1)
    for m in re.finditer(r"(forward|inverse)Factors\(", kernel):
        add("order of the flags", m, {"forward": "inverse", "inverse": "forward"}[m[1]], 1)
    for m in re.finditer(r"Factors\((\S+?), (\S+?)\)", kernel):
        for group in 1, 2:
            add("last bit of a factor", m, neighbour(m[group], False), group)
    return faults


# ---- Code written by hand ------------------------------------------------------------------------

OPERATORS = {
    "+": "-", "-": "+", "*": "+", "/": "*", "%": "/", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
    "==": "!=", "!=": "==", "&&": "||", "||": "&&", "<<": ">>", ">>": "<<", "&": "|", "|": "&",
    "+=": "-=", "-=": "+=", "?": None, "=": None,
}  # fmt: skip
STATUSES = ("zvxOk", "zvxErrLength", "zvxErrNullPointer", "zvxErrScaleFlag", "zvxErrPlanState")


def blanked(text):
    """The text with spaces for what is no code that runs: comments, strings, directives,
    assertions, heads of templates and attributes."""
    pattern = (
        r"/\*(?s:.*?)\*/|//[^\n]*|\"(?:\\.|[^\"\n])*\"|^ *#(?:[^\n]*\\\n)*[^\n]*|\bstatic_assert\([^;]*;"
        r"|\btemplate <[^>{}]*>|\[\[.*?\]\]|\basm\([^;]*;|\busing [^;]*;|'.'"
    )
    return re.sub(pattern, lambda m: re.sub(r"[^\n]", " ", m[0]), text, flags=re.M)


def code_faults(text):
    code = blanked(text)
    faults = []

    def add(kind, match, text, group=0):
        faults.append(Fault(kind, match.start(group), match.end(group), text))

    for m in re.finditer(r"(?<= )([-+*/%<>=!&|]+)(?= )", code):
        if OPERATORS.get(m[1]):
            add("operator", m, OPERATORS[m[1]])
    for m in re.finditer(r"(?<![\w.])\d+(?=[uU]?\b)(?![.\w]*[.e])", code):
        number = int(m[0], 8) if m[0].startswith("0") else int(m[0])
        add("integer", m, str(number + 1))
        if number > 0:
            add("integer", m, str(number - 1))
    for m in re.finditer(r"\b(zvxg\w+|(?!const)\w+<[\w, ]*>),\s+(zvxg\w+|\w+<[\w, ]*>)(?=[,}])", code):
        if m[1] != m[2]:
            faults.append(Fault("cells exchanged", m.start(), m.end(), f"{m[2]}, {m[1]}"))
    for m in re.finditer(r"\b(true|false)\b", code):
        add("truth", m, {"true": "false", "false": "true"}[m[1]])
    for m in re.finditer(r"!(?=[\w(])", code):
        add("truth", m, "")
    for m in re.finditer(r"\b(" + "|".join(STATUSES) + r")\b", code):
        add("status", m, STATUSES[(STATUSES.index(m[1]) + 1) % len(STATUSES)])
    for m in re.finditer(r"\b\w+(?:<[\w, ]*>)?\((\w+), (\w+)[,)]", code):
        if m[1] != m[2] and not re.match(r"\d", m[1] + m[2]):
            faults.append(Fault("arguments exchanged", m.start(1), m.end(2), f"{m[2]}, {m[1]}"))
    for m in re.finditer(r"^ +((?:[\w.\[\]>:*-]+ [-+|]?= [^;{}]*|[\w.:<>-]+\([^;{}]*\));)$", code, re.M):
        if not m[1].startswith(("return", "case", "const ", "static ")):
            add("statement dropped", m, "", 1)
    for m in re.finditer(r"^ +(if \(.*\) (?:return|continue|break)\b[^;]*;)$", code, re.M):
        add("statement dropped", m, ";", 1)
    return faults
