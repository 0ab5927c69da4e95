"""The database definition against what a user would pick instead: sets of bits, a field definition in
settings files, and the walk over a tree of files."""
import google

FIELDS = 125
FOLDERS = 500
FILES = 100  # in each folder
ENDINGS = [".htm", ".txt", ".HTM", ".pdf", ".doc", ".gif", ".html", ""]


def field(number):
    return ["[FIELD%d]" % number, "NAME=field %d" % number, "TITLE=Title of field %d" % number,
            "FIELDRULES=WILDCARD,PROXIMITY,AddToGeneral",
            "INDEX=0,%d" % ((number + 1) % FIELDS), "Parent Field=0", "CHARSET=67699721"]


def markup(number):
    lines = ["[Field%d]" % number, "Tag Number=4"]
    patterns = ["<html>*<section%d>*" % number, "*<h%d>" % (number % 6 + 1),
                "<html><head>*<meta%d>*" % number, "*<p%d>*<em>*" % number]
    for tag, pattern in enumerate(patterns, 1):
        lines += ["Tag Path %d=%s" % (tag, pattern), "Ignore Parent Fields %d=%d" % (tag, tag % 2),
                  "Add to Tag Field %d=0" % tag]
    lines.append("Attribute Number=2")
    for attribute, name in enumerate(("title", "alt"), 1):
        lines += ["Attribute Path %d=*<section%d>*" % (attribute, number),
                  "Attribute Name %d=%s" % (attribute, name),
                  "Add to Attribute Field %d=1" % attribute]
    return lines


def write_settings(path, lines):
    path.write_bytes("".join(line + "\r\n" for line in lines).encode())


def make_tree(root):
    for number in range(FOLDERS):
        folder = root / ("part %d" % (number % 10)) / ("chapter %d" % (number % 100)) / str(number)
        folder.mkdir(parents=True, exist_ok=True)
        for i in range(FILES):
            (folder / ("document-%03d%s" % (i, ENDINGS[i % len(ENDINGS)]))).touch()


def prepare(folder):
    folder.mkdir(parents=True, exist_ok=True)
    write_settings(folder / "fields.ini", [line for i in range(FIELDS) for line in field(i)])
    write_settings(folder / "markup.ftd", [line for i in range(FIELDS) for line in markup(i)])
    make_tree(folder / "tree")


def rows(build):
    folder = build / "definition"
    prepare(folder)
    yield from google.pairs(build / "bench" / "definition_bench", {
        "bits-and": "std-bitset",
        "bits-or": "std-bitset",
        "bits-andnot": "std-bitset",
        "bits-count": "std-bitset",
        "bits-walk-2": "boost-dynamic-bitset",
        "bits-walk-64": "boost-dynamic-bitset",
        "fields-load": "gkeyfile",
        "fields-save": "gkeyfile",
        "dirscan": "find",
        "check-fields": None,
    }, env={"VEMRA_BENCH_INPUTS": str(folder)})
