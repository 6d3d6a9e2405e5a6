#!/usr/bin/env bash
# Lilliefors here against R's nortest::lillie.test, on the same 1,048,576 values.
#
# Usage: bench/normality/compare_r.sh [build dir]      (default: build)
# Needs Rscript and the nortest package: scripts/install-deps --bench.
#
# Two samples: normal values (mean 50, deviation 8) rounded to 4 decimals so that many
# tie, and the same without rounding, where no two are equal. R draws the values, sorts them as the window's sample is sorted, and writes them with 17 significant
# digits, so both sides read the same doubles. R then times lillie.test on them, the
# benchmark (bench_normality, BM_LillieforsFile) times ours; each reports the median of
# its runs in wall-clock milliseconds, and its statistic. The two statistics are not the
# same figure: R takes the distance at each step exactly, the window's test takes the
# lower edge 0.0001 to the left in z and has its own steps for tied values.
set -euo pipefail

here=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$here/build}
bench=$build/bench/normality/bench_normality
runs=${RUNS:-11}
[ -x "$bench" ] || { echo "no $bench: build the target bench_normality first" >&2; exit 1; }
command -v Rscript >/dev/null || { echo "no Rscript: run scripts/install-deps --bench" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for digits in 4 none; do
values=$work/values-$digits.txt
echo "values rounded to: $digits"

Rscript --vanilla - "$values" "$runs" "$digits" <<'RCODE'
args <- commandArgs(trailingOnly = TRUE)
suppressPackageStartupMessages(library(nortest))
set.seed(20240501)
x <- rnorm(2^20, 50, 8)
if (args[3] != "none") x <- round(x, as.integer(args[3]))
x <- sort(x)
writeLines(sprintf("%.17g", x), args[1])
x <- as.numeric(readLines(args[1]))
runs <- as.integer(args[2])
invisible(lillie.test(x))  # once to warm up
ms <- numeric(runs)
for (k in seq_len(runs)) ms[k] <- system.time(r <- lillie.test(x))[["elapsed"]] * 1000
cat(sprintf("R nortest::lillie.test   n=%d  median %.1f ms  D=%.17g\n", length(x), median(ms), r$statistic))
RCODE

QV_LILLIEFORS_VALUES=$values "$bench" --benchmark_filter='^BM_LillieforsFile' \
  --benchmark_repetitions="$runs" --benchmark_report_aggregates_only=true 2>/dev/null |
  awk '/_median/ { for (i = 1; i <= NF; i++) if ($i == "ms") { t = $(i - 1); break }
                   lbl = $0; sub(/.*n=/, "n=", lbl)
                   printf "Quantavue Lilliefors    %s  median %s ms\n", lbl, t; exit }'
done
