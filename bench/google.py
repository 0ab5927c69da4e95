"""Rows from Google Benchmark programs whose benchmarks are called ROW/ours and ROW/PEER."""
import json
import os
import subprocess

from report import Row


def medians(program, env=None, repetitions=9):
    """What the program says of each benchmark by name, times in nanoseconds. All of them run in
    turn, in one process, and the median counts."""
    output = subprocess.run(
        [str(program), "--benchmark_format=json", "--benchmark_min_time=0.1",
         "--benchmark_repetitions=%d" % repetitions,
         "--benchmark_enable_random_interleaving=true",
         "--benchmark_report_aggregates_only=true"],
        check=True, stdout=subprocess.PIPE, env={**os.environ, **(env or {})}).stdout
    found, failed = {}, []
    for run in json.loads(output)["benchmarks"]:
        if run.get("error_occurred"):
            failed.append("%s: %s" % (run["name"], run["error_message"]))
        elif run.get("aggregate_name") == "median":
            # What follows ROW/SIDE tells how it was timed.
            found["/".join(run["run_name"].split("/")[:2])] = run
    if failed:
        raise SystemExit("\n".join(failed))
    return found


def time_rows(found, name, peers):
    """One row for each peer; one without a ratio when there is none."""
    ours = found[name + "/ours"]["real_time"]
    if not peers:
        yield Row(name, ours, "ns")
    for peer in peers:
        theirs = found[name + "/" + peer]["real_time"]
        yield Row(name, ours, "ns", peer, theirs, more_is_better=False)


def pairs(program, peers, env=None):
    """The rows of a program whose benchmarks have at most one peer each, called ROW/peer, and
    named by {row name: peer's name}."""
    found = medians(program, env)
    for name, peer in peers.items():
        ours = found[name + "/ours"]["real_time"]
        theirs = found[name + "/peer"]["real_time"] if peer else None
        yield Row(name, ours, "ns", peer, theirs, more_is_better=False)
