#!/usr/bin/env python3
"""Checks the program against an independent cut of the same documents.

Usage: independent_check.py VEMRA [DOCUMENTS [WORDS]]

Copies real documents of this machine (HTML pages and plain text), indexes them with VEMRA, draws
words from them by a cut that shares no code with the library (Python's own HTML parser, codecs and
character data), and requires of every word that
- `vemra search` finds exactly the documents that contain it, and
- `vemra show` marks exactly its occurrences in every one of them.
"""
import collections
import glob
import html.parser
import json
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import unicodedata

# Elements that a reader does not see as a break inside a word.
INLINE = set("""abbr acronym b bdi bdo big cite code data dfn em font i ins kbd mark nobr q s samp
small span strike strong sub sup time tt u var wbr del""".split())
# Elements whose content is not text of the page.
SILENT = {"script", "style"}
# Fields of their own: where one begins or ends, so does a run of text.
META_FIELDS = {"author", "keywords", "description"}

BREAK = "\n"


class TextOfPage(html.parser.HTMLParser):
    """The text of a page as one string, with a break wherever two runs of text meet."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.parts = []
        self.silent = 0

    def handle_starttag(self, tag, attributes):
        if tag in SILENT:
            self.silent += 1
        if tag in INLINE:
            return
        self.parts.append(BREAK)
        values = {name: value or "" for name, value in reversed(attributes)}
        if tag == "meta" and values.get("name", "").lower() in META_FIELDS:
            self.parts += [values.get("content", ""), BREAK]
        if tag == "img":
            self.parts += [values.get("alt", ""), BREAK]

    def handle_startendtag(self, tag, attributes):
        self.handle_starttag(tag, attributes)
        if tag in SILENT:
            self.silent -= 1

    def handle_endtag(self, tag):
        if tag in SILENT and self.silent:
            self.silent -= 1
        if tag not in INLINE:
            self.parts.append(BREAK)

    def handle_data(self, data):
        if not self.silent:
            self.parts.append(data)

    def unknown_decl(self, data):
        pass


def decode(raw):
    try:
        return raw.decode("utf-8-sig")
    except UnicodeDecodeError:
        return raw.decode("cp1252", errors="replace")


def text_of(path):
    text = decode(path.read_bytes())
    if path.suffix == ".html":
        page = TextOfPage()
        page.feed(text)
        page.close()
        text = "".join(page.parts)
    return text


def in_windows_1252(character):
    try:
        character.encode("cp1252")
        return True
    except UnicodeEncodeError:
        return False


IS_WORD = {}


def is_word_character(character):
    known = IS_WORD.get(character)
    if known is None:
        known = IS_WORD[character] = character.isascii() and character.isalnum() or (
            unicodedata.category(character).startswith("L") and in_windows_1252(character))
    return known


def words_of(text):
    """How often each word occurs, in lower case: the maximal runs of letters and digits."""
    text = "".join(c if is_word_character(c) else " " for c in text.replace("\u00ad", ""))
    return collections.Counter(fold(word) for word in text.split())


def fold(word):
    return "".join(c.lower() if in_windows_1252(c.lower()) else c for c in word)


def gather(folder, wanted):
    """Copies real documents below folder; returns how many."""
    pages = sorted(glob.glob("/usr/share/doc/**/*.html", recursive=True))
    texts = sorted(glob.glob("/usr/share/doc/*/copyright") + glob.glob("/usr/share/common-licenses/*"))
    chooser = random.Random(1)
    chosen = []
    seen = set()
    for suffix, share, found in ((".txt", wanted // 3, texts), (".html", wanted, pages)):
        chooser.shuffle(found)
        for name in found:
            if len(chosen) >= (share if suffix == ".txt" else wanted):
                break
            real = os.path.realpath(name)
            if real in seen or not os.path.isfile(real) or os.path.getsize(real) > 200000:
                continue
            seen.add(real)
            chosen.append((real, suffix))
    for number, (source, suffix) in enumerate(chosen):
        shutil.copyfile(source, folder / ("%05d%s" % (number, suffix)))
    return len(chosen)


def draw(contains, count):
    """Words spread evenly over the logarithm of the number of documents that hold them."""
    by_size = collections.defaultdict(list)
    for word, documents in contains.items():
        if len(documents) <= 64 and len(word) <= 40:
            by_size[len(documents).bit_length()].append(word)
    chooser = random.Random(2)
    drawn = []
    pools = [sorted(pool) for _, pool in sorted(by_size.items())]
    while len(drawn) < count and any(pools):
        for pool in pools:
            if pool and len(drawn) < count:
                drawn.append(pool.pop(chooser.randrange(len(pool))))
    return drawn


class MarksOfPage(html.parser.HTMLParser):
    """The text inside each <mark> of a shown document."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.depth = 0
        self.marks = []

    def handle_starttag(self, tag, attributes):
        if tag == "mark":
            self.depth += 1
            self.marks.append("")

    def handle_endtag(self, tag):
        if tag == "mark":
            self.depth -= 1

    def handle_data(self, data):
        if self.depth:
            self.marks[-1] += data


class Program:
    def __init__(self, binary, work):
        self.binary = binary
        self.definition = str(work / "check.cfg")
        self.env = dict(os.environ, VEMRA_REGISTRY=str(work / "registry.db"))

    def __call__(self, *arguments, allowed=(0,)):
        done = subprocess.run([self.binary, *arguments], env=self.env, capture_output=True)
        if done.returncode not in allowed:
            sys.exit("%s: exit code %d\n%s" % (
                arguments, done.returncode, done.stderr.decode(errors="replace")))
        return done.stdout.decode("utf-8")

    def found(self, word):
        """{document name: text number} for a word."""
        answer = json.loads(self("search", self.definition, word, "--count", "100000", "--json",
                                 allowed=(0, 1)))
        return {pathlib.PurePosixPath(hit["path"]).name: hit["number"] for hit in answer["hits"]}

    def marks(self, number, word):
        page = MarksOfPage()
        page.feed(self("show", self.definition, str(number), "--query", word, "--html"))
        page.close()
        return page.marks


def check(program, contains, counts, words):
    faults = []
    shown = 0
    for word in words:
        found = program.found(word)
        if set(found) != contains[word]:
            faults.append("search %r: not found %s, found beside %s" % (
                word, sorted(contains[word] - set(found))[:5], sorted(set(found) - contains[word])[:5]))
        for name in sorted(set(found) & contains[word]):
            marks = program.marks(found[name], word)
            wrong = [mark for mark in marks if word not in words_of(mark)]
            if wrong or len(marks) != counts[name][word]:
                faults.append("show %s %r: %d marks, %d occurrences, wrong marks %s" % (
                    name, word, len(marks), counts[name][word], wrong[:5]))
            shown += 1
    return shown, faults


def main():
    binary = os.path.abspath(sys.argv[1])
    wanted_documents = int(sys.argv[2]) if len(sys.argv) > 2 else 510
    wanted_words = int(sys.argv[3]) if len(sys.argv) > 3 else 50
    with tempfile.TemporaryDirectory(prefix="vemra-check-") as folder:
        work = pathlib.Path(folder)
        documents = work / "documents"
        documents.mkdir()
        copied = gather(documents, wanted_documents)
        if copied < wanted_documents:
            sys.exit("only %d documents on this machine, %d wanted" % (copied, wanted_documents))
        counts = {path.name: words_of(text_of(path)) for path in documents.iterdir()}
        contains = collections.defaultdict(set)
        for name, words in counts.items():
            for word in words:
                contains[word].add(name)

        program = Program(binary, work)
        program("create", program.definition, "--folder", str(documents))
        program("index", program.definition)
        words = draw(contains, wanted_words)
        if len(words) < wanted_words:
            sys.exit("only %d words to draw" % len(words))
        shown, faults = check(program, contains, counts, words)
    for fault in faults:
        print(fault)
    print("%d documents, %d words, %d documents shown: %d differences" % (
        copied, len(words), shown, len(faults)))
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
