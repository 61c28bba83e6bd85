"""Sphinx's configuration of the site. pages.py writes the sources; `./dev site` calls both."""

import pathlib
import re
import sys

import furo
from docutils import nodes

tree = pathlib.Path(__file__).resolve().parents[1]
build = tree / "build/release"
pages = tree / "build/site/pages"
sys.path.insert(0, str(build / "python"))

project = "zvxg"
version = release = re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.*)", (build / "CMakeCache.txt").read_text(),
                              re.M)[1]
extensions = ["breathe", "myst_parser", "sphinx.ext.autodoc"]
html_theme = "furo"
html_title = f"zvxg {version}"
html_copy_source = html_show_sphinx = html_show_copyright = False
html_show_search_summary = False  # would be fetched, which browsers refuse for files
html_static_path = ["static"]
html_extra_path = [str(pages / "extra")]
html_favicon = "static/icon.svg"
html_css_files = ["site.css"]
html_theme_options = {"navigation_with_keys": True}
highlight_language = "none"  # of code that does not name its language
pygments_style = "friendly"
pygments_dark_style = "monokai"
myst_heading_anchors = 4
autodoc_member_order = "groupwise"
breathe_projects = {"zvxg": str(build / "docs/xml")}
breathe_default_project = "zvxg"
breathe_domain_by_extension = {"h": "c"}
breathe_show_include = False
nitpick_ignore_regex = [
    ("c:identifier", r"u?int\d+_t|ptrdiff_t"),
    # Parameters of templates, concepts, what the header keeps to itself, and names of the C header.
    ("cpp:identifier", r"std(::.*)?|u?int\d+_t|zvxg|[Zz]vx\w+|(zvxg::)?detail(::.*)?|k[A-Z]\w*|Real|Numbers"
                       r"|Pairs|Signals<.*>|Steps"),
]


def kernel_role(name, rawtext, symbol, line, inliner, options=None, content=None):
    """A kernel where it is listed: the search finds it there, and if it is printed, this is a link."""
    env = inliner.document.settings.env
    env.get_domain("std").note_object("kernel", symbol, symbol, location=inliner.parent)
    text = nodes.literal("", symbol)
    if (pages / f"extra/kernels/{symbol}.html").exists():
        text = nodes.reference("", "", text, refuri=f"../kernels/{symbol}.html")
    return [nodes.inline("", "", text, ids=[symbol])], []


OLD = ("jquery.js", "underscore.js", "_sphinx_javascript_frameworks_compat.js")


def without_jquery(app):
    """Neither Sphinx 5 nor the theme needs what Sphinx keeps for old extensions."""
    app.builder.script_files = [script for script in app.builder.script_files
                                if script.filename not in [f"_static/{name}" for name in OLD]]


def later(app, page, template, context, doctree):
    """Pictures below the first screen are fetched when the reader comes near them."""
    if "body" in context:
        context["body"] = context["body"].replace("<img ", '<img loading="lazy" ')


def beside_all(app, env):
    """Every page has the table of contents beside it, and is written again when that changes."""
    titles = {name: title.astext() for name, title in env.titles.items()}
    contents = titles, {name: list(names) for name, names in env.toctree_includes.items()}
    old, env.contents = getattr(env, "contents", None), contents
    return [] if old == contents else sorted(env.found_docs)


def complete_theme(app, failure):
    """Debian's furo takes a style sheet from another package, by an absolute path, and imports a script
    from another, which needs a server; here all of it is in the files of the site. And it has lost what
    makes it dark where the system is dark."""
    theme = pathlib.Path(furo.__file__).parent / "theme/furo/static"
    static = pathlib.Path(app.outdir) / "_static"
    normal = pathlib.Path("/usr/share/javascript/normalize.css/normalize.css").read_text()
    sheet = (theme / "styles/furo.css").read_text()
    dark = re.findall(r'(?:html )?body\[data-theme="dark"\][^{}]*{[^}]*}', sheet)
    rules = "\n".join(rule for rule in dark if "icon" not in rule).replace(
        '[data-theme="dark"]', ':not([data-theme="light"])')
    (static / "styles/furo.css").write_text(
        sheet.replace("@import url(/javascript/normalize.css/normalize.css);", normal)
        + "@media screen and (prefers-color-scheme: dark) {\n" + rules + "\n}\n")
    script = (theme / "scripts/furo.js").read_text()
    (static / "scripts/furo.js").write_text(script.replace(
        'import Gumshoe from "./gumshoe-patched.js";', (theme / "scripts/gumshoe-patched.js").read_text()))
    for name in OLD:
        (static / name).unlink(missing_ok=True)


def as_written(app, what, name, item, options, lines):
    """The text of a Python function is plain: below its first sentence it stays as it is."""
    if what == "module":
        lines.clear()
    elif any(lines[1:]):
        lines[1:] = ["", "::", "", *("    " + line for line in lines[1:])]


def setup(app):
    app.add_object_type("kernel", "kernel-link", objname="kernel")
    app.add_role("kernel", kernel_role)
    app.connect("autodoc-process-docstring", as_written)
    app.connect("builder-inited", without_jquery)
    app.connect("html-page-context", later)
    app.connect("env-updated", beside_all)
    app.connect("build-finished", complete_theme)
