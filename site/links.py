"""Checks a site as it was written: every link and every anchor in it leads somewhere, and no page asks
another host for anything.

usage: links.py DIRECTORY
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse

# What a browser fetches by itself, as opposed to what a reader follows.
FETCHED = {("link", "href"), ("script", "src"), ("img", "src"), ("source", "srcset"), ("iframe", "src")}


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.followed, self.fetched = set(), set(), set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.anchors |= {attributes[name] for name in ("id", "name") if attributes.get(name)}
        if tag == "a" and attributes.get("href"):
            self.followed.add(attributes["href"])
        # Relations such as the next page are for readers.
        rel = attributes.get("rel", "stylesheet")
        for name, value in attributes.items():
            if (tag, name) in FETCHED and value and rel in ("stylesheet", "icon", "preload"):
                self.fetched.add(value)


def main(directory):
    root = pathlib.Path(directory).resolve()
    pages = {path: Page(path) for path in sorted(root.rglob("*.html"))}
    complaints = []
    for path, page in pages.items():
        for link in page.followed | page.fetched:
            url = urllib.parse.urlsplit(link)
            if url.scheme or url.netloc:
                if link in page.fetched and url.scheme != "data":
                    complaints.append((path, link, "is on another host"))
                continue
            target = (path.parent / urllib.parse.unquote(url.path)).resolve() if url.path else path
            if not target.is_file() or root not in target.parents:
                complaints.append((path, link, "does not exist"))
            elif url.fragment and target in pages and (
                    urllib.parse.unquote(url.fragment) not in pages[target].anchors):
                complaints.append((path, link, "has no such anchor"))
    for path in sorted(root.rglob("*.css")):
        for link in re.findall(r"url\(\"?'?([^)\"']+)", path.read_text(encoding="utf-8")):
            if not link.startswith("data:") and not (path.parent / link).is_file():
                complaints.append((path, link, "is not on this site"))
    for path, link, complaint in complaints:
        print(f"{path.relative_to(root)}: {link} {complaint}", file=sys.stderr)
    if complaints or not pages:
        sys.exit(f"links.py: {len(complaints)} complaints about {len(pages)} pages")
    print(f"{len(pages)} pages, {sum(len(page.followed) for page in pages.values())} links")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
