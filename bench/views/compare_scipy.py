#!/usr/bin/python3
"""Times the array distribution functions against SciPy's and R's on the same points.

Usage:  /usr/bin/python3 bench/views/compare_scipy.py [path/to/bench_views]

One run: our figures come from bench_views (its ArrayCdf benchmarks, 2^20 points each),
SciPy's from its vectorised ndtr, gammainc, betainc (and -expm1 for the exponential) on
the same grids, R's from pnorm, pgamma, pbeta, pexp through Rscript when R is installed.
Each figure is the best wall-clock time of several repetitions, in milliseconds. SciPy and
R come from Debian's python3-scipy and r-base-core (scripts/install-deps --bench).
Targets: the normal within 1.5x SciPy's time, every function ahead of R's.
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

N = 1048576
REPS = 7
# name: (benchmark, lo, hi, SciPy expression, R expression) on x = lo + (hi - lo) i / (n - 1)
CASES = [
    ("normal", "BM_ArrayCdfNormal", -8, 8, "special.ndtr(x)", "pnorm(x)"),
    ("exponential", "BM_ArrayCdfExponential", 0, 10, "-np.expm1(-1.3 * x)", "pexp(x, 1.3)"),
    ("gamma", "BM_ArrayCdfGamma", 0, 20, "special.gammainc(2.5, x / 1.5)",
     "pgamma(x, shape = 2.5, scale = 1.5)"),
    ("beta", "BM_ArrayCdfBeta", 0, 1, "special.betainc(2.5, 3.5, x)", "pbeta(x, 2.5, 3.5)"),
]


def find_bench():
    if len(sys.argv) > 1:
        return sys.argv[1]
    here = os.path.dirname(os.path.abspath(__file__))
    root = os.path.dirname(os.path.dirname(here))
    for d in sorted(os.listdir(root)):
        p = os.path.join(root, d, "bench", "views", "bench_views")
        if d.startswith("build") and os.path.exists(p):
            return p
    sys.exit("bench_views not found: build it (cmake --build <dir> --target bench_views) "
             "or pass its path")


def ours(bench):
    out = subprocess.run([bench, "--benchmark_filter=ArrayCdf", "--benchmark_format=json",
                          "--benchmark_repetitions=%d" % REPS, "--benchmark_min_time=0.05"],
                         check=True, capture_output=True, text=True).stdout
    best = {}
    for b in json.loads(out)["benchmarks"]:
        if b.get("run_type") != "iteration":
            continue
        name = b["run_name"].split("/")[0]
        ms = b["real_time"] * {"ms": 1, "us": 1e-3, "ns": 1e-6, "s": 1e3}[b["time_unit"]]
        best[name] = min(best.get(name, float("inf")), ms)
    return best


def scipy_times():
    try:
        import numpy as np
        from scipy import special
    except ImportError:
        return None
    res = {}
    i = np.arange(N, dtype=np.float64)
    for name, _, lo, hi, expr, _ in CASES:
        x = lo + (hi - lo) * i / (N - 1)
        f = eval("lambda x: " + expr, {"np": np, "special": special})
        f(x)
        best = float("inf")
        for _ in range(REPS):
            t = time.perf_counter()
            f(x)
            best = min(best, time.perf_counter() - t)
        res[name] = best * 1e3
    return res


def r_times():
    rscript = shutil.which("Rscript")
    if not rscript:
        return None
    lines = ["i <- 0:%d" % (N - 1)]
    for name, _, lo, hi, _, expr in CASES:
        lines += ["x <- %r + (%r - %r) * i / %d" % (float(lo), float(hi), float(lo), N - 1),
                  "b <- Inf", "for (k in 1:%d) { t <- proc.time()[['elapsed']]; y <- %s; "
                  "b <- min(b, proc.time()[['elapsed']] - t) }" % (REPS, expr),
                  "cat('%s', b * 1000, '\\n')" % name]
    with tempfile.NamedTemporaryFile("w", suffix=".R", delete=False) as f:
        f.write("\n".join(lines) + "\n")
    try:
        out = subprocess.run([rscript, f.name], check=True, capture_output=True, text=True).stdout
    finally:
        os.unlink(f.name)
    return {w[0]: float(w[1]) for w in (l.split() for l in out.splitlines()) if len(w) == 2}


def main():
    bench = find_bench()
    q = ours(bench)
    s = scipy_times()
    r = r_times()
    print("2^20 points, best of %d, wall-clock ms (load average %.2f)" % (REPS, os.getloadavg()[0]))
    print("%-12s %10s %10s %10s %12s %10s" % ("function", "ours", "SciPy", "R", "ours/SciPy", "ours/R"))
    failed = []
    for name, bm, *_ in CASES:
        o = q.get(bm)
        sv = s.get(name) if s else None
        rv = r.get(name) if r else None
        fmt = lambda v: "%10.2f" % v if v is not None else "%10s" % "-"
        ratio = lambda a, b: "%10.2f" % (a / b) if a is not None and b else "%10s" % "-"
        print("%-12s %s %s %s   %s %s" % (name, fmt(o), fmt(sv), fmt(rv), ratio(o, sv), ratio(o, rv)))
        if name == "normal" and sv and o > 1.5 * sv:
            failed.append("normal slower than 1.5x SciPy")
        if rv and o >= rv:
            failed.append("%s not ahead of R" % name)
    if s is None:
        print("SciPy not installed: scripts/install-deps --bench")
    if r is None:
        print("R not installed: scripts/install-deps --bench")
    print("targets: " + ("met" if not failed else "missed: " + "; ".join(failed)))


if __name__ == "__main__":
    main()
