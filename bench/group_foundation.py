"""The foundation against what a user would pick instead: settings files, fingerprints, wildcards and
reading by lines, on real paths and texts of this machine."""
import os
import random

import google

PATHS = 100_000
TEXT_SIZE = 64 << 20  # bytes
LIST_SIZE = 4 << 20  # bytes
SECTIONS = 125
KEYS = ["Name", "SourceFolder", "IndexFolder", "Enabled", "Extensions", "MaxSize", "LastRun",
        "Title"]


def real_paths():
    paths = []
    for folder, folders, files in os.walk("/usr"):
        folders.sort()
        paths += (folder + "/" + name for name in sorted(files) if name.isascii())
    random.Random(1).shuffle(paths)
    # A small machine has fewer files; some then come more than once.
    return [paths[i % len(paths)] for i in range(PATHS)]


def real_text():
    parts, size = [], 0
    for root in ("/usr/share/doc", "/usr/share/perl", "/usr/lib/python3", "/usr/include"):
        for folder, folders, files in os.walk(root):
            folders.sort()
            for name in sorted(files):
                if name.endswith((".html", ".txt", ".h", ".py")) and size < TEXT_SIZE:
                    with open(os.path.join(folder, name), "rb") as source:
                        parts.append(source.read())
                    size += len(parts[-1])
    text = b"".join(parts)
    return (text * (TEXT_SIZE // len(text) + 1))[:TEXT_SIZE]


def settings(paths):
    choose = random.Random(7)
    for section in range(SECTIONS):
        values = ["library%d" % section, choose.choice(paths), choose.choice(paths),
                  choose.choice("01"), "htm,html,txt,pdf,doc", str(choose.randrange(100000)),
                  str(1700000000 + choose.randrange(10000000)), "Documents of part %d" % section]
        yield "[Index %d]\n%s\n" % (
            section, "".join("%s=%s\n" % pair for pair in zip(KEYS, values)))


def index_list(paths):
    size = 0
    for path in paths:
        line = "Z:%s,HTML\r\n" % path.replace("/", "\\")
        size += len(line)
        if size > LIST_SIZE:
            return
        yield line


def prepare(folder):
    folder.mkdir(parents=True, exist_ok=True)
    paths = real_paths()
    (folder / "paths.txt").write_text("\n".join(paths) + "\n")
    (folder / "settings.ini").write_text("\n".join(settings(paths)))
    (folder / "text.bin").write_bytes(real_text())
    with open(folder / "list.txt", "w", newline="") as out:
        out.writelines(index_list(paths))


def rows(build):
    inputs = build / "foundation"
    prepare(inputs)
    yield from google.pairs(build / "bench" / "foundation_bench", {
        "settings-load": "simpleini",
        "settings-save": "gkeyfile",
        "settings-lookup": "gkeyfile",
        "settings-batched": "gkeyfile",
        "fingerprint-long": "zlib-crc32",
        "fingerprint-word": "zlib-crc32",
        "wildcard-suffix": "fnmatch",
        "wildcard-stars": "fnmatch",
        "wildcard-hard": "re2",
        "profile-lines": "getline",
    }, env={"VEMRA_BENCH_INPUTS": str(inputs)})
