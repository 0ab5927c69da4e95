"""The list of URLs that the URL benchmark reads: the links of this machine's documentation."""
import html
import pathlib
import re
from urllib.parse import urljoin

COUNT = 46000
# Where each package's pages lie, and an address for them that relative links are joined to.
SITES = {"/usr/share/doc/python3.11-doc/html": "https://python.example/3.11/",
         "/usr/share/doc/postgresql-doc-15/html": "https://postgresql.example/docs/15/",
         "/usr/share/doc/sqlite3": "https://sqlite.example/",
         "/usr/share/cppreference/doc/html": "https://cppreference.example/"}
LINK = re.compile(r'(?i)\b(?:href|src)="([^"#\s][^"\s]*)"')


def links():
    for folder, site in SITES.items():
        for page in sorted(pathlib.Path(folder).rglob("*.html")):
            base = site + page.relative_to(folder).as_posix()
            for link in LINK.findall(page.read_text("utf-8", "replace")):
                yield base, html.unescape(link)


def distinct():
    found = {}
    for base, link in links():
        try:
            found[urljoin(base, link)] = True
        except ValueError:  # as with a bracket that does not close
            continue
        if len(found) == COUNT:
            return list(found)
    raise SystemExit("only %d links in the documentation of this machine" % len(found))


def prepare(path):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("".join(url + "\n" for url in distinct()), "utf-8")
