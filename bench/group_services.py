"""The server services against what a user would pick instead, in files on one disk."""
import shutil

import google
import urls


def rows(build):
    folder = build / "services"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    yield from google.pairs(build / "bench" / "services_bench", {
        "log-flushed": "spdlog",
        "trace-off": "spdlog",
        "registry-read": "sqlite",
        "config": None,
        "access-cycle": "bare-io",
    }, env={"VEMRA_REGISTRY": str(folder / "registry.db")})
    pools = google.medians(build / "bench" / "pool_bench")
    for row in ("pool-1", "pool-2", "pool-4"):
        yield from google.time_rows(pools, row, ["asio", "tbb"])
    yield from google.time_rows(pools, "pool-latency", ["asio"])
    urls.prepare(folder / "urls.txt")
    yield from google.pairs(build / "bench" / "url_bench", {"url": "uriparser"},
                            env={"VEMRA_BENCH_URLS": str(folder / "urls.txt")})
