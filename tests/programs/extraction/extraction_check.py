#!/usr/bin/env python3
"""Compares the text that the HTML parser takes from pages with what libxml2 takes from them.

Usage: extraction_check.py PAGE_RUNS [LIMIT] FOLDER...

Both texts of every page below the folders (at most LIMIT pages, if given) are cut into words of
letters and digits, and at the same boundaries of elements, and their words compared in order. Prints each difference, the
pages and words read, and how many words differ; fails when they are 1 in 10,000 or more.
"""
import pathlib
import subprocess
import sys
import unicodedata

sys.path.append("/usr/lib/python3/dist-packages")  # Debian's modules, whichever Python this is
import lxml.etree  # noqa: E402
import lxml.html  # noqa: E402

# Elements that do not part the words that they stand between or within.
INLINE = set("""a abbr acronym b bdi bdo big cite code data del dfn em font i ins kbd mark nobr q s
samp small span strike strong sub sup time tt u var wbr""".split())
SILENT = {"script", "style", "iframe", "noembed"}
LIMIT_OF_DIFFERENCES = 1e-4
BATCH = 200  # pages per call of the program
LOOK_AHEAD = 60  # words; a longer difference is taken to reach to the end of the page


def code_page_character(c):
    """What of a character decides where words end and which they are, in windows-1252."""
    if c.isascii():
        return c if c.isalnum() else " "
    category = unicodedata.category(c)
    if category in ("Cf", "Mn") and c != "\u200b":
        return ""  # seen by nobody
    if category[0] not in "LN":
        return " "
    if 0xFB00 <= ord(c) <= 0xFB06:
        return unicodedata.normalize("NFKC", c)
    return c if c.encode("cp1252", "ignore") else " "


class Words(dict):
    """A table for str.translate that learns characters as they come."""

    def __missing__(self, code):
        self[code] = code_page_character(chr(code))
        return self[code]


WORDS = Words()


def decode(data):
    """Pages say UTF-8 by being it; nearly all others here are windows-1252 or its subset."""
    for mark, encoding in ((b"\xef\xbb\xbf", "utf-8-sig"), (b"\xff\xfe", "utf-16")):
        if data.startswith(mark):
            return data.decode(encoding, "replace")
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("cp1252", "replace")


def append_text(element, parts):
    """The text of an element and what is in it, in order; not recursive, pages nest deeply."""
    for event, node in lxml.etree.iterwalk(element, events=("start", "end", "comment", "pi")):
        if event in ("comment", "pi"):
            parts.append(node.tail or "")
            continue
        cuts = node.tag not in INLINE
        if cuts:
            parts.append("\n")
        if event == "start" and node.tag not in SILENT:
            parts.append(node.text or "")
        if event == "end" and node is not element:
            parts.append(node.tail or "")


def words_of_libxml2(path):
    text = decode(path.read_bytes()).replace("\x00", " ")
    parser = lxml.html.HTMLParser(huge_tree=True, encoding="utf-8")
    document = lxml.html.document_fromstring(text.encode("utf-8"), parser=parser)
    parts = []
    append_text(document, parts)
    return "".join(parts).translate(WORDS).split()


def words_of_parser(program, paths):
    """For each page its words."""
    done = subprocess.run([program], input="".join(f"{p}\n" for p in paths).encode(),
                          capture_output=True, check=True)
    pages = done.stdout.decode("cp1252", "replace").split("\f\n")
    assert len(pages) == len(paths) + 1, "a page is missing"
    return [page.translate(WORDS).split() for page in pages[:-1]]


def find_again(ours, i, theirs, j):
    """The nearest places from which both go on with the same three words."""
    for distance in range(1, 2 * LOOK_AHEAD):
        for k in range(max(0, distance - LOOK_AHEAD), min(distance, LOOK_AHEAD) + 1):
            if ours[i + k:i + k + 3] == theirs[j + distance - k:j + distance - k + 3]:
                return i + k, j + distance - k
    return len(ours), len(theirs)


def differences(ours, theirs):
    """(stretch of ours, stretch of theirs) wherever the words are not the same."""
    i = j = 0
    while i < len(ours) or j < len(theirs):
        if ours[i:i + 1] == theirs[j:j + 1]:
            i, j = i + 1, j + 1
            continue
        next_i, next_j = find_again(ours, i, theirs, j)
        yield ours[i:next_i], theirs[j:next_j]
        i, j = next_i, next_j


def main():
    program, *rest = sys.argv[1:]
    limit = int(rest.pop(0)) if rest[0].isdigit() else None
    paths = sorted(path for folder in rest for path in pathlib.Path(folder).rglob("*.html")
                   if path.is_file() and 0 < path.stat().st_size < 4 << 20)[:limit]
    words = different = 0
    for first in range(0, len(paths), BATCH):
        batch = paths[first:first + BATCH]
        for path, ours in zip(batch, words_of_parser(program, batch)):
            theirs = words_of_libxml2(path)
            words += len(theirs)
            if ours == theirs:
                continue
            for mine, other in differences(ours, theirs):
                different += max(len(mine), len(other))
                print(f"{path}: {' '.join(mine)[:120]!r} for {' '.join(other)[:120]!r}")
    print(f"{len(paths)} pages, {words} words, {different} different")
    return 1 if not words or different >= words * LIMIT_OF_DIFFERENCES else 0


sys.exit(main())
