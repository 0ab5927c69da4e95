#!/usr/bin/env python3
"""Runs benchmark groups and writes their rows. Usage: run.py BUILD_DIR [GROUP]...

A group is a module beside this file whose rows(build) yields one Row per comparison.
"""
import importlib
import json
import pathlib
import sys

import report

HERE = pathlib.Path(__file__).parent
GROUPS = sorted(p.stem[len("group_"):] for p in HERE.glob("group_*.py"))


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    wanted = sys.argv[2:] or GROUPS
    unknown = sorted(set(wanted) - set(GROUPS))
    if unknown:
        sys.exit("unknown group %s; there are: %s" % (", ".join(unknown), ", ".join(GROUPS)))
    results = []
    print(report.heading(), flush=True)
    for group in wanted:
        for row in importlib.import_module("group_" + group).rows(build):
            print(report.as_table(group, row), flush=True)
            results.append(report.as_json_object(group, row))
    out = build / "results.json"
    out.write_text(json.dumps(results, indent=1) + "\n")
    print("written: %s" % out, file=sys.stderr)


if __name__ == "__main__":
    main()
