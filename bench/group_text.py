"""Cutting and encoding 64 MB of real text: the documents of this machine's packages."""
import html
import pathlib
import re

import google
from report import Row

TEXT_SIZE = 64 << 20  # bytes
SOURCES = {"*.html": ["/usr/share/doc/postgresql-doc-15", "/usr/share/doc/python3.11-doc",
                      "/usr/share/doc/sqlite3"],
           "*.txt": ["/usr/share/doc", "/usr/share/perl"],
           "copyright": ["/usr/share/doc"]}
MAX_PARAGRAPH = 4096  # characters
REPETITIONS = 3
PACK = pathlib.Path(__file__).parent.parent / "packs" / "Western.pack"


def visible_text(page):
    page = re.sub(r"(?is)<(script|style)\b.*?</\1>|<!--.*?-->", " ", page)
    page = re.sub(r"(?i)</?(p|div|h\d|li|tr|table|pre|ul|ol|dl|dt|dd|br)\b[^>]*>", "\n\n", page)
    return html.unescape(re.sub(r"<[^>]*>", "", page))


def pieces(paragraph):
    """A table or list of a whole file is no paragraph: it is cut at line ends."""
    while len(paragraph) > MAX_PARAGRAPH:
        end = paragraph.rfind("\n", 1, MAX_PARAGRAPH)
        end = MAX_PARAGRAPH if end < 0 else end
        yield paragraph[:end]
        paragraph = paragraph[end:].lstrip()
    yield paragraph


def paragraphs(text):
    found = (p.strip() for p in re.split(r"\n\s*\n", text))
    return "\n\n".join(piece for p in found if p for piece in pieces(p))


def documents():
    for pattern, folders in SOURCES.items():
        for folder in folders:
            for path in sorted(pathlib.Path(folder).rglob(pattern)):
                text = path.read_text("utf-8", "replace").replace("\0", " ")
                yield paragraphs(visible_text(text) if pattern == "*.html" else text)


def prepare(folder):
    """Each distinct document once; all of them again where a small machine has too few."""
    folder.mkdir(parents=True, exist_ok=True)
    parts = [text.encode() + b"\0" for text in dict.fromkeys(documents()) if text]
    size, at = 0, 0
    with open(folder / "text.bin", "wb") as out:
        while size < TEXT_SIZE:
            out.write(parts[at % len(parts)])
            size += len(parts[at % len(parts)])
            at += 1


def prepare_pages(folder):
    """Every tenth page keeps one run short."""
    pages = sorted(path for place in SOURCES["*.html"] for path in pathlib.Path(place).rglob("*.html"))
    with open(folder / "pages.bin", "wb") as out:
        for path in pages[::10]:
            out.write(path.read_bytes().replace(b"\0", b" ") + b"\0")


def rows(build):
    folder = build / "text"
    prepare(folder)
    prepare_pages(folder)
    found = google.medians(build / "bench" / "text_bench", repetitions=REPETITIONS, env={
        "VEMRA_BENCH_INPUTS": str(folder),
        "VEMRA_BENCH_PACK": str(PACK),
        "VEMRA_REGISTRY": str(folder / "registry.db"),
    })
    yield from google.time_rows(found, "parse", ["fts5-unicode61", "icu", "xapian",
                                                 "boost-tokenizer"])
    parse = found["parse/ours"]
    yield Row("parse-item", parse["real_time"] / parse["items"], "ns")
    yield Row("parse-item-alloc", parse["allocations"] / parse["items"], "each")
    yield from google.time_rows(found, "sink", ["fts5-unicode61"])
    yield from google.time_rows(found, "entity-encode", ["libxml2"])
    yield from google.time_rows(found, "pack-load", [])
    found = google.medians(build / "bench" / "formats_bench", repetitions=REPETITIONS,
                           env={"VEMRA_BENCH_INPUTS": str(folder)})
    yield from google.time_rows(found, "html", ["libxml2"])
    yield from google.time_rows(found, "highlight", ["fts5-highlight"])
