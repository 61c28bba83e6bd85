"""Writes the sources of the site: the documents of the tree with links that lead to pages, and the
reference, which is made from the list of functions, the headers and the ledger.

`./dev site` builds what this reads, and has Sphinx read what this writes.
"""

import collections
import csv
import json
import os
import pathlib
import re
import shutil
import subprocess
import xml.etree.ElementTree as xml

import measured

DOCUMENTS = ("*.md", "docs/*.md", "examples/*.md", "fuzz/*.md", "tools/*/*.md", "site/guide.md",
             "site/figures.md")
LANGUAGES = {".c": "c", ".h": "cpp", ".cpp": "cpp", ".hpp": "cpp", ".py": "python"}
# What `./dev demo` draws, by the program that draws it.
DRAWN = {"examples/spectrogram.cpp": ("spectrogram.png", "Its picture of a recording of speech:"),
         "examples/photo.cpp": ("comparison.png", "A photograph before and after coding:")}
FAMILIES = {"Complex": "complex", "Real": "real", "Hartley": "hartley", "Wht": "wht", "Dct4": "dct4"}


TREE = pathlib.Path(__file__).resolve().parents[1]
BUILD = TREE / "build/release"
PICTURES = TREE / "build/site/pictures"
OUTPUT = TREE / "build/site/pages"


class Site:
    def __init__(self):
        self.written = set()

    def write(self, name, text):
        """Leaves a page that is the same alone, so that Sphinx does not read it again."""
        path = OUTPUT / name
        self.written.add(path)
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def copy(self, path, name):
        target = OUTPUT / name
        self.written.add(target)
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.exists() or target.stat().st_mtime < path.stat().st_mtime:
            shutil.copy(path, target)

    def remove_the_rest(self):
        for path in OUTPUT.rglob("*"):
            if path.is_file() and path not in self.written:
                path.unlink()

    # ---- The documents of the tree

    def documents(self):
        sources = set()
        for path in (path for pattern in DOCUMENTS for path in sorted(TREE.glob(pattern))):
            name = path.relative_to(TREE).as_posix().removeprefix("site/")
            text = re.sub(r"\]\(([^)#\s]+)", lambda link: "](" + self.linked(name, link[1], sources),
                          path.read_text(encoding="utf-8"))
            if name == "README.md":
                name, text = "index.md", text + "\n" + self.contents()
            self.write(name, text)
        headers = {path.relative_to(TREE).as_posix() for path in TREE.glob("include/**/*.h*")}
        for source in sorted(sources | headers):
            self.source_page(source)

    def linked(self, page, link, sources):
        if "://" in link:
            return link
        target = os.path.normpath(os.path.join(os.path.dirname(page), link))
        if target.endswith(".md"):
            return link.replace("README.md", "index.md") if target == "README.md" else link
        if target.endswith(".svg"):
            self.write(target, slim((TREE / target).read_text(encoding="utf-8")))
            return link
        if target.endswith(".png"):
            self.copy(TREE / target, target)
            return link
        sources.add(target)
        return link + ".md"

    def contents(self):
        """The table of contents, with the documents that it does not name at the end of the guide."""
        text = (TREE / "site/contents.md").read_text(encoding="utf-8")
        others = [f"docs/{path.stem}" for path in sorted(TREE.glob("docs/*.md"))]
        others = "".join(f"{name}\n" for name in others if not re.search(f"^{name}$", text, re.M))
        return text.replace("examples/README\n", f"{others}examples/README\n")

    def source_page(self, name):
        path = TREE / name
        picture = ""
        if name in DRAWN:
            file, caption = DRAWN[name]
            self.copy(PICTURES / file, f"examples/{file}")
            picture = f"{caption}\n\n![{caption[:-1]}]({file})\n\n"
        language = LANGUAGES.get(path.suffix, "text")
        text = path.read_text(encoding="utf-8")
        # Doxygen refers to a file by a name without special characters.
        label = path.name.replace("_", "__").replace(".", "_8")
        self.write(f"{name}.md", f"---\norphan: true\n---\n\n({label})=\n({label}_source)=\n\n# {name}\n\n"
                                 f"{picture}````{language}\n{text}````\n")

    # ---- The reference

    def reference(self):
        functions = json.loads((BUILD / "tools/interface/interface.json").read_text())
        with open(TREE / "tools/kernelgen/ledger.csv", encoding="utf-8") as file:
            self.ledger = {row["symbol"]: row for row in csv.DictReader(file)}
        headers = "".join((TREE / "include" / name).read_text(encoding="utf-8")
                          for name in ("zvxg.h", "zvxg_kernels.h"))
        self.prototypes = {
            match[2]: re.sub(r"\s+", " ", match[1])
            for match in re.finditer(r"^ZVXG_API (\w+ (\w+)\([^)]*\))", headers, re.M)}
        pages = [self.page_of_header(name) for name in ("frame", "entries")]
        pages.append(self.types())
        for family, group in FAMILIES.items():
            pages.append(self.family(group, [f for f in functions
                                             if (f["library"], f["family"]) == ("zvxg", family)]))
        pages.append(self.many([f["symbol"] for f in functions if f["library"] == "zvxgmany"]))
        self.write("reference/index.md", "# C functions\n\n```{toctree}\n:maxdepth: 2\n\n"
                   + "\n".join(pages) + "\n```\n")
        self.cpp()
        self.write("reference/python.md", "# Python functions\n\n"
                   "[The manual](../docs/python.md) says what they have in common.\n\n"
                   "```{eval-rst}\n.. automodule:: zvxg\n   :members:\n   :imported-members:\n```\n")

    def compound(self, name):
        return xml.parse(BUILD / f"docs/xml/{name}.xml").getroot().find("compounddef")

    def page_of_header(self, name):
        self.write(f"reference/{name}.md", f"# {self.compound(name).findtext('title')}\n\n"
                   + directive("doxygenpage", name, "content-only"))
        return name

    def types(self):
        """What the header declares outside of all groups."""
        header = self.compound("zvxg_8h")
        kernels = {name for group in FAMILIES.values() for name in members(self.compound(f"group__{group}"))}
        text = "# Types, status codes, flags, memory, version\n\n"
        for kind in ("struct", "enum", "function"):
            names = ([item.text for item in header.findall("innerclass")] if kind == "struct" else
                     [name for name in members(header, kind) if name not in kernels])
            for name in names:
                text += directive(f"doxygen{kind}", name, *["members"] if kind == "struct" else [])
        self.write("reference/types.md", text)
        return "types"

    def family(self, group, functions):
        title = self.compound(f"group__{group}").findtext("title")
        text = f"# {title}\n\n" + directive("doxygengroup", group, "desc-only")
        kernels = collections.defaultdict(list)
        for function in functions:
            if function["first"] == function["last"]:
                kernels[without_length(function["symbol"])].append(function)
        if kernels:
            text += "## Kernels\n\n```{toctree}\n:maxdepth: 1\n\n"
            text += "".join(f"{self.kernels(name, group, title, of)}\n" for name, of in kernels.items())
            text += "```\n\n## By length\n\n"
        for name in members(self.compound(f"group__{group}"), "typedef"):
            text += directive("doxygentypedef", name)
        for function in functions:
            if function["first"] != function["last"]:
                text += directive("doxygenfunction", function["symbol"])
        self.write(f"reference/{group}.md", text)
        return group

    def kernels(self, name, group, title, kernels):
        """The page of the kernels that differ in length only."""
        prototype = self.prototypes[kernels[0]["symbol"]].replace(kernels[0]["symbol"], name)
        entry = name.replace("_<N>_", "_")
        text = f"# {name.replace('<N>', chr(92) + '<N>')}\n\n```c\n{prototype};\n```\n\n"
        text += f"[{title}]({group}.md) says what it computes, {{c:func}}`{entry}` takes the length as "
        text += "an argument. A name below leads to the text of the kernel.\n\n" if group != "wht" else "an argument.\n\n"
        rows = []
        for kernel in kernels:
            row = self.ledger.get(kernel["symbol"])
            cells = [str(kernel["first"]), f"{{kernel}}`{kernel['symbol']}`",
                     f"{kernel['source']}, {kernel['destination']}"]
            if row:
                cells += [row["row"], row["width"] if row["width"] != "0" else "scalar", row["adds"],
                          row["products"], row["shuffles"], row["bound"]]
            rows.append(cells)
        head = ["N", "kernel", "elements in, out", "algorithm", "bits", "additions", "products",
                "shuffles", "bound, cycles"]
        if group == "wht":
            head = ["order"] + head[1:3]
        text += table(head, rows)
        self.write(f"reference/{page_of(name)}.md", text)
        return page_of(name)

    def many(self, symbols):
        text = "# Many transforms at a time\n\n" + directive("doxygenpage", "many", "content-only")
        text += "## Functions\n\n"
        for name in members(self.compound("group__many"), "enum"):
            text += directive("doxygenenum", name)
        text += "".join(directive("doxygenfunction", symbol) for symbol in symbols)
        self.write("reference/many.md", text)
        return "many"

    def cpp(self):
        self.write("reference/cpp.md", "# C++ functions and classes\n\n"
                   "[The manual](../docs/cpp.md) says what they have in common.\n\n"
                   + directive("doxygennamespace", "zvxg", "content-only", "members"))

    # ---- The printed kernels

    def printed(self):
        kernelgen = BUILD / "tools/kernelgen/kernelgen"
        changed = max(path.stat().st_mtime for path in (kernelgen, pathlib.Path(__file__)))
        for symbol in self.ledger:
            path = OUTPUT / f"extra/kernels/{symbol}.html"
            self.written.add(path)
            if path.exists() and path.stat().st_mtime > changed:
                continue
            text = subprocess.run([kernelgen, "text", symbol], check=True, capture_output=True,
                                  text=True).stdout
            path.parent.mkdir(parents=True, exist_ok=True)
            group = without_length(symbol)
            path.write_text(KERNEL.format(symbol=symbol, page=page_of(group), group=escaped(group),
                                          text=escaped(text)), encoding="utf-8")


    # ---- The figures

    def figures(self):
        data = measured.of_directory(TREE / "docs/figures")
        columns = ("adds", "products", "scales", "shuffles", "converts", "bound")
        data["kernels"] = {
            symbol: [row["row"], int(row["width"]), *(measured.number(row[column]) for column in columns)]
            for symbol, row in self.ledger.items()}
        text = json.dumps(data, separators=(",", ":"))
        self.write("extra/figures-data.js", f"globalThis.zvxgFigures = {text};\n")
        # In the page itself: browsers do not fetch modules for a page from a disk.
        script = (TREE / "site/figures.js").read_text(encoding="utf-8")
        self.write("figures.html", (TREE / "site/figures.html").read_text(encoding="utf-8")
                   + f'<script src="figures-data.js"></script>\n<script type="module">\n{script}</script>\n')


KERNEL = """<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<link rel="icon" href="../_static/icon.svg">
<title>{symbol}</title>
<a href="../reference/{page}.html#{symbol}">{group}</a>
<pre style="overflow-x: auto">{text}</pre>
</html>
"""


def slim(svg):
    """Without the groups that gnuplot leaves empty, and what it says although it is the default."""
    svg = re.sub(r' stroke-(width="1.00"|linecap="butt"|linejoin="miter")', "", svg)
    return re.sub(r"<g [^>]*>\s*</g>\s*", "", svg)


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def without_length(symbol):
    return re.sub(r"_\d+_", "_<N>_", symbol)


def page_of(group):
    return group.replace("<N>", "N")


def directive(name, argument, *options):
    return f"```{{{name}}} {argument}\n" + "".join(f":{option}:\n" for option in options) + "```\n\n"


def members(compound, kind="function"):
    """Names in the order of the header, overloads once."""
    return list(dict.fromkeys(member.findtext("name") for member in compound.iter("memberdef")
                              if member.get("kind") == kind))


def table(head, rows):
    return "".join("| " + " | ".join(cells) + " |\n" for cells in [head, ["---"] * len(head), *rows])


def main():
    site = Site()
    site.documents()
    site.reference()
    site.printed()
    site.figures()
    site.remove_the_rest()
    (OUTPUT / "index.md").touch()  # Sphinx copies other files only if it has a page to write


if __name__ == "__main__":
    main()
