"""Rows from a Google Benchmark program whose benchmarks are called ROW/ours and ROW/peer."""
import json
import os
import subprocess

from report import Row

REPETITIONS = 9


def pairs(program, peers, env=None):
    """One row for each {row name: peer's name}. Both sides run in turn, in one process, and the
    median of each counts."""
    output = subprocess.run(
        [str(program), "--benchmark_format=json", "--benchmark_min_time=0.1",
         "--benchmark_repetitions=%d" % REPETITIONS,
         "--benchmark_enable_random_interleaving=true",
         "--benchmark_report_aggregates_only=true"],
        check=True, stdout=subprocess.PIPE, env={**os.environ, **(env or {})}).stdout
    medians, failed = {}, []
    for run in json.loads(output)["benchmarks"]:
        if run.get("error_occurred"):
            failed.append("%s: %s" % (run["name"], run["error_message"]))
        elif run.get("aggregate_name") == "median":
            medians[run["run_name"]] = run["real_time"]
    if failed:
        raise SystemExit("\n".join(failed))
    for name, peer in peers.items():
        ours = medians[name + "/ours"]
        theirs = medians[name + "/peer"] if peer else None
        yield Row(name, ours, "ns", peer, theirs, more_is_better=False)
