#!/usr/bin/env python3
"""Reference values for the distribution views, worked out from the fit formulas alone.

Usage:  python3 make_reference.py > reference.txt

Every sample value is an exact double. Moments, fits, percentiles, the correlation and
the curve heights are computed with mpmath at 60 digits from those doubles: Average and
Stdev (divisor n - 1), the Weibull fixed point for exactly 50 rounds with the shape capped
at 100 in each round and the scale one round behind, Gamma, log-normal, Beta and Pareto
moment fits; observed percentiles (mid-rank + 1) * 100 / N; expected percentiles from the
distribution functions (erfc, the regularised incomplete gamma and beta integrals).
Texts are Round(v, 3) (halves away from zero) in their shortest form; the script stops
when a caption's value lies within 1e-9 of a rounding half, where a double could round
either way. The shown figures of the Q-Q records are this script's own choice of input
and may sit on a half.
Grid points of the theoretical curve are computed in double arithmetic exactly as the
program forms them (Python floats are IEEE doubles); the heights there are exact.

Records, one a line, fields separated by blanks; a text follows a '|':
  sample NAME v1 ... vn                     the sample as the window receives it
  refuse NAME DIST KIND                     KIND: SIZE NEG NEGZERO UNIT POSITIVE CONSTANT NOESTIMATE
  fit NAME DIST N mean sd p1 p2 | caption   p1 p2: Normal mean sd; Exponential rate 0;
                                            Weibull sigma zeta; Uniform min max; Gama beta gama;
                                            LogNormal miu sigma; Beta alpha beta; Pareto min alpha
                                            caption '-' where Text1 is hidden
  r NAME DIST r | text                      the correlation and the text "r=..."
  pp NAME DIST i sorted observed expected detrended
  qq NAME DEC shownMean shownSd i expectedValue      Normal, shown figures at DEC decimals
  qqb NAME DEC shownMin shownMax low high
  curve NAME DIST i x y                     points of the theoretical view
  curvemeta NAME DIST points curveMax axisLow axisHigh
"""
import struct
from decimal import Decimal, ROUND_HALF_UP

import mpmath as mp

mp.mp.dps = 60

DISTS = ["Normal", "Exponential", "Weibull", "Uniform", "Gama", "LogNormal", "Beta", "Pareto"]

SAMPLES = [
    ("unit8", [0.47, 0.12, 0.78, 0.25, 0.55, 0.31, 0.62, 0.4]),   # every distribution fits
    ("ties9", [4, 1.5, 2, 9, 2, 3.25, 7.5, 2, 4]),                 # ties; Beta refused
    ("zeros7", [0, 0.5, 1.25, 2, 3, 0, 4.5]),                      # zeros: Exp/Weibull/Gama go
    ("neg6", [2, -3.5, 0.25, -1, 6, 2.75]),                        # negatives
    ("four", [4, 3, 2, 1]),                                        # the smallest sample
    ("three", [1, 2, 3]),                                          # refused for size
    ("const5", [0.5] * 5),                                         # constant
    ("unitends", [0, 0.2, 0.5, 0.9, 1, 0.35]),                     # Beta takes 0 and 1
    ("unitover", [0.1, 0.5, 1.0001, 0.3]),                         # Beta refuses 1.0001
    ("betaneg", [0, 0, 0, 1, 1, 1]),                               # Beta estimates negative
    ("weibneg", [0, 0, 0, 0.5]),                                   # Weibull shape negative
    ("wcap", [100, 100.1, 100.2, 100.3, 100.05]),                  # Weibull shape held at 100
    ("gama4", [2, 2, 2, 2, 4, 6, 6, 6, 6]),                        # mean 4, sd 2
    ("beta15", [0.25] * 4 + [0.5] + [0.75] * 4),                   # mean 0.5, sd 0.25
    ("pareto2", [1, 3, 1, 3]),                                     # minimum 1, mean 2
    ("wide", [0.003, 12.5, 1e3, 47.25, 0.8, 260, 3.5, 8e3]),       # tails of the cdfs
]


def mean_sd(xs):
    n = len(xs)
    m = mp.fsum(xs) / n
    s = mp.sqrt(mp.fsum((x - m) ** 2 for x in xs) / (n - 1))
    return m, s


def round_half_away(v, digits, strict=True):
    d = Decimal(mp.nstr(v, 50, strip_zeros=False, min_fixed=-mp.inf, max_fixed=mp.inf))
    q = Decimal(1).scaleb(-digits)
    scaled = abs(d) * (Decimal(10) ** digits)
    frac = scaled - scaled.to_integral_value(rounding="ROUND_FLOOR")
    # An exact half (an exact double worked out exactly, -0.625) rounds away from zero as
    # the spreadsheet does; only a value near a half but not on it is ambiguous.
    if strict and frac != Decimal("0.5") and abs(frac - Decimal("0.5")) < Decimal("1e-9"):
        raise SystemExit("value %s lies on a rounding half at %d decimals" % (d, digits))
    return d.quantize(q, rounding=ROUND_HALF_UP)


def text3(v):
    r = round_half_away(v, 3)
    if r == 0:
        return "0"
    t = format(r.normalize(), "f")
    return t


def f32(x):
    return struct.unpack("f", struct.pack("f", x))[0]


def cdf(dist, p, x):
    if dist == "Normal":
        return mp.ncdf((x - p["mean"]) / p["sd"])
    if dist == "Exponential":
        return 1 - mp.exp(-p["rate"] * x)
    if dist == "Weibull":
        return 1 - mp.exp(-((x / p["sigma"]) ** p["zeta"]))
    if dist == "Uniform":
        return (x - p["a"]) / (p["b"] - p["a"])
    if dist == "Gama":
        return mp.gammainc(p["gama"], 0, x / p["beta"], regularized=True)
    if dist == "LogNormal":
        return mp.ncdf((mp.log(x) - p["miu"]) / p["lsigma"])
    if dist == "Beta":
        return mp.betainc(p["alpha"], p["beta"], 0, x, regularized=True)
    if dist == "Pareto":
        return 1 - (p["min"] / x) ** p["alpha"]


def height(dist, p, x, rng):
    """The theoretical view's height; None where it has no value."""
    if dist == "Normal":
        return mp.npdf(x, p["mean"], p["sd"])
    if dist == "Exponential":
        return p["rate"] * mp.exp(-p["rate"] * x)
    if dist == "Uniform":
        return 1 / rng
    if dist == "Weibull":
        return 1 - mp.exp(-((x / p["sigma"]) ** p["zeta"]))
    if dist == "Gama":
        a, s = p["gama"], p["beta"]
        if x == 0:
            return None if a < 1 else (100 / s if a == 1 else mp.mpf(0))
        return 100 * x ** (a - 1) * mp.exp(-x / s) / (mp.gamma(a) * s ** a)
    if dist == "LogNormal":
        return mp.exp(-(mp.log(x) - p["miu"]) ** 2 / (2 * p["lsigma"] ** 2)) / (
            x * p["lsigma"] * mp.sqrt(mp.mpf("6.28")))
    if dist == "Beta":
        a, b = p["alpha"], p["beta"]
        if (x == 0 and a < 1) or (x == 1 and b < 1):
            return None
        return x ** (a - 1) * (1 - x) ** (b - 1) / mp.beta(a, b)
    if dist == "Pareto":
        return p["alpha"] * p["min"] ** p["alpha"] / x ** (p["alpha"] + 1)


def weibull(xs):
    n = len(xs)
    zeta = mp.mpf(1)
    sigma = None
    s3 = mp.fsum(mp.log(x) for x in xs if x > 0)
    for _ in range(50):
        s1 = mp.fsum(x ** zeta for x in xs)
        s2 = mp.fsum(mp.log(x) * x ** zeta for x in xs if x > 0)
        sigma = (s1 / n) ** (1 / zeta)
        den = s2 / s1 - s3 / n
        if not den > 0:  # no positive shape (a zero denominator has none either)
            return None
        nxt = 1 / den
        zeta = min(nxt, mp.mpf(100))
    return sigma, zeta


def mid_rank_percentiles(xs):
    n = len(xs)
    out = []
    i = 0
    while i < n:
        j = i
        while j < n and xs[j] == xs[i]:
            j += 1
        rank = mp.mpf(i + j - 1) / 2 + 1
        out += [(rank + 1) * 100 / n] * (j - i)
        i = j
    return out


def correl(a, b):
    n = len(a)
    ma, mb = mp.fsum(a) / n, mp.fsum(b) / n
    sab = mp.fsum((x - ma) * (y - mb) for x, y in zip(a, b))
    saa = mp.fsum((x - ma) ** 2 for x in a)
    sbb = mp.fsum((y - mb) ** 2 for y in b)
    return sab / mp.sqrt(saa * sbb)


def g(v):
    return mp.nstr(v, 25, min_fixed=-mp.inf, max_fixed=mp.inf) if isinstance(v, mp.mpf) else repr(v)


def run(name, raw, dist, out):
    n = len(raw)
    if n < 4:
        return out.append("refuse %s %s SIZE" % (name, dist))
    lo, hi = min(raw), max(raw)
    if dist in ("Exponential", "Weibull", "Gama", "Pareto") and lo < 0:
        return out.append("refuse %s %s NEG" % (name, dist))
    if dist == "LogNormal" and lo <= 0:
        return out.append("refuse %s %s NEGZERO" % (name, dist))
    if dist == "Beta" and (lo < 0 or hi > 1):
        return out.append("refuse %s %s UNIT" % (name, dist))
    if dist == "Pareto" and lo == 0:
        return out.append("refuse %s %s POSITIVE" % (name, dist))
    if lo == hi:
        return out.append("refuse %s %s CONSTANT" % (name, dist))
    srt = sorted(raw)
    xs = [mp.mpf(x) for x in srt]
    m, s = mean_sd(xs)
    p = {"mean": m, "sd": s}
    if dist == "Normal":
        p1, p2, cap = m, s, "-"
    elif dist == "Exponential":
        p["rate"] = 1 / m
        p1, p2, cap = p["rate"], 0, "-"
    elif dist == "Weibull":
        w = weibull(xs)
        if w is None:
            return out.append("refuse %s %s NOESTIMATE" % (name, dist))
        p["sigma"], p["zeta"] = w
        p1, p2 = w
        cap = "Sigma=%s , Zeta/c=%s" % (text3(w[0]), text3(w[1]))
    elif dist == "Uniform":
        p["a"], p["b"] = xs[0], xs[-1]
        p1, p2, cap = xs[0], xs[-1], "-"
    elif dist == "Gama":
        p["beta"], p["gama"] = s * s / m, (m / s) ** 2
        p1, p2 = p["beta"], p["gama"]
        cap = "Beta=%s , Gama=%s" % (text3(p1), text3(p2))
    elif dist == "LogNormal":
        p["miu"], p["lsigma"] = mean_sd([mp.log(x) for x in xs])
        p1, p2 = p["miu"], p["lsigma"]
        cap = "Miu=%s , Sigma=%s" % (text3(p1), text3(p2))
    elif dist == "Beta":
        a = m * m * ((1 - m) / (s * s) - 1 / m)
        b = a * (1 / m - 1)
        if not (a > 0 and b > 0):
            return out.append("refuse %s %s NOESTIMATE" % (name, dist))
        p["alpha"], p["beta"] = a, b
        p1, p2 = a, b
        cap = "Alpha=%s , Beta=%s" % (text3(a), text3(b))
    elif dist == "Pareto":
        p["min"], p["alpha"] = xs[0], m / (m - xs[0])
        p1, p2 = xs[0], p["alpha"]
        cap = "Alpha=%s" % text3(p2)
    out.append("fit %s %s %d %s %s %s %s | %s" % (name, dist, n, g(m), g(s), g(p1), g(p2), cap))
    obs = mid_rank_percentiles(srt)
    exp_ = [100 * cdf(dist, p, x) for x in xs]
    r = correl(obs, exp_)
    out.append("r %s %s %s | r=%s" % (name, dist, g(r), text3(r)))
    for i in range(n):
        out.append("pp %s %s %d %r %s %s %s" % (name, dist, i, srt[i], g(obs[i]), g(exp_[i]),
                                              g(obs[i] - exp_[i])))
    if dist == "Normal":
        for dec in (0, 2, 4):
            sm = float(round_half_away(m, dec, False))
            ss = float(round_half_away(s, dec, False))
            for i in range(n):
                pr = (mp.mpf(i + 1) - mp.mpf(0.5)) / n
                ev = mp.sqrt(2) * mp.erfinv(2 * pr - 1) * ss + sm
                out.append("qq %s %d %r %r %d %s" % (name, dec, sm, ss, i, g(ev)))
            vmin = float(round_half_away(xs[0], dec, False))
            vmax = float(round_half_away(xs[-1], dec, False))
            out.append("qqb %s %d %r %r %s %s" % (name, dec, vmin, vmax,
                                                 g(mp.mpf(vmin) - mp.mpf(0.03) * vmin),
                                                 g(mp.mpf(vmax) + mp.mpf(0.03) * vmax)))
    # The theoretical view: grid in double arithmetic, heights exact.
    rng = srt[-1] - srt[0]
    heights = []
    for i in range(101):
        x = srt[0] + rng * i / 100
        y = height(dist, p, mp.mpf(x), mp.mpf(rng))
        if y is None:
            continue
        heights.append(y)
        out.append("curve %s %s %d %r %s" % (name, dist, i, x, g(y)))
    top = max(heights)
    cmax = float(round_half_away(top, 5)) * 1.05555
    lo_ax = f32(float(round_half_away(m - 3 * s, 2)))
    hi_ax = f32(float(round_half_away(m + 3 * s, 2)))
    out.append("curvemeta %s %s %d %r %r %r" % (name, dist, len(heights), cmax, lo_ax, hi_ax))


def main():
    out = []
    for name, raw in SAMPLES:
        raw = [float(v) for v in raw]
        out.append("sample %s %s" % (name, " ".join(repr(v) for v in raw)))
        for dist in DISTS:
            run(name, raw, dist, out)
    print("# Made by make_reference.py; see its docstring for the records.")
    print("\n".join(out))


if __name__ == "__main__":
    main()
