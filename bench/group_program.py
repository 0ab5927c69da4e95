"""Whole programs over one folder of real HTML pages: vemra index beside omindex, swish-e and plain
FTS5, and queries on what it made beside plain FTS5."""
import itertools
import os
import pathlib
import shutil
import subprocess
import sys

from report import Row

RUNS = int(os.environ.get("BENCH_RUNS", "5"))
# Installed by scripts/bench; the first pages of all of them are one corpus.
PAGE_FOLDERS = ["/usr/share/doc/postgresql-doc-15/html", "/usr/share/doc/python3.11-doc/html",
                "/usr/share/doc/sqlite3", "/usr/share/cppreference/doc/html"]
PAGES = 4000


def corpus(folder):
    """Copies the pages below folder, numbered, and returns (files, bytes)."""
    shutil.rmtree(folder, ignore_errors=True)
    files = size = 0
    for source in PAGE_FOLDERS:
        pages = (p for p in pathlib.Path(source).rglob("*.html") if p.is_file())
        for page in itertools.islice(sorted(pages), PAGES - files):
            target = folder / ("%03d" % (files // 200)) / ("%05d-%s" % (files, page.name))
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(page, target)
            files += 1
            size += target.stat().st_size
    if not files:
        sys.exit("no HTML pages under %s" % ", ".join(PAGE_FOLDERS))
    return files, size


def run(command, env):
    """(seconds, peak MB) of one run, which must succeed. Pinned to one core, so that a peer with
    more threads gains nothing from them and neither do we."""
    core = str((os.cpu_count() or 1) - 1)
    timed = ["taskset", "-c", core, "/usr/bin/time", "-f", "%e %M"] + command
    done = subprocess.run(timed, env=env, capture_output=True, text=True, errors="replace")
    if done.returncode:
        sys.exit("%s failed (%d):\n%s" % (command, done.returncode, done.stderr[-2000:]))
    seconds, kilobytes = done.stderr.split()[-2:]
    return float(seconds), float(kilobytes) / 1024


def remove(path):
    if path.is_dir():
        shutil.rmtree(path)
    else:
        path.unlink(missing_ok=True)


def best(runs):
    """The best time and the worst memory of several runs."""
    return min(seconds for seconds, _ in runs), max(megabytes for _, megabytes in runs)


def query_rows(build, definition, direct, env):
    lines = subprocess.run([str(build / "bench" / "query_bench"), definition, str(direct)],
                           env=env, check=True, capture_output=True, text=True).stdout.splitlines()
    for words, line in enumerate(lines, start=1):
        ours, peer, ours_p99, peer_p99 = (float(figure) for figure in line.split())
        for name, figures in (("query-%d", (ours, peer)), ("query-%d-p99", (ours_p99, peer_p99))):
            yield Row(name % words, figures[0], "us", "fts5-direct", figures[1],
                      more_is_better=False)


def rows(build):
    work = build / "program"
    shutil.rmtree(work, ignore_errors=True)
    pages = work / "pages"
    files, size = corpus(pages)
    print("corpus: %d HTML pages, %.1f MB" % (files, size / 1e6), file=sys.stderr)

    env = dict(os.environ, VEMRA_REGISTRY=str(work / "registry.db"), NO_COLOR="1")
    vemra = str(build / "programs" / "vemra")
    definition = str(work / "pages.cfg")
    subprocess.run([vemra, "create", definition, "--folder", str(pages), "--filter", "*.html"],
                   env=env, check=True, stdout=subprocess.DEVNULL)
    commands = {
        "vemra": [vemra, "index", definition],
        "omindex": ["omindex", "--db", str(work / "omega"), "--overwrite", "--url", "/",
                    "--mime-type=html:text/html", "--stemmer=none", str(pages)],
        "swish-e": ["swish-e", "-v", "0", "-c", str(work / "swish.conf"), "-i", str(pages),
                    "-f", str(work / "swish.index")],
        "fts5-direct": [str(build / "bench" / "fts5_direct"), str(pages), str(work / "direct.db")],
    }
    (work / "swish.conf").write_text("IndexContents HTML2 .html\nMinWordLimit 1\n")
    indexes = [work / "pages.vix", work / "omega", work / "swish.index",
               work / "swish.index.prop", work / "direct.db"]
    measured = {name: [] for name in commands}
    for _ in range(RUNS):  # interleaved, so that a noisy minute hits everybody
        for index in indexes:  # everybody starts from nothing
            remove(index)
        for name, command in commands.items():
            measured[name].append(run(command, env))
    rate = {name: size / 1e6 / best(runs)[0] for name, runs in measured.items()}
    for peer in ("omindex", "swish-e", "fts5-direct"):
        yield Row("index", rate["vemra"], "MB/s", peer, rate[peer])
    yield Row("index-memory", best(measured["vemra"])[1], "MB")
    yield from query_rows(build, definition, work / "direct.db", env)
