#!/usr/bin/env python3
"""Reference tables for the numeric tests, computed with mpmath at 60 digits.

Usage:  python3 make_tables.py [--check] [table.txt ...]

Every argument is an exact double, written with repr() so that it reads back to the
same bits; every expected value is printed to 32 significant digits from a computation
carried at 60 (80 or more where cancellation needs it), so at least 30 are correct.
Naming tables (normal.txt, ...) remakes only those.
--check recomputes the incomplete gamma and beta rows at 90 digits and, where mpmath's
own incomplete gamma and beta functions converge, compares them with the series and
fractions used here; it reports the largest disagreement and writes nothing.

Each table is plain text, one case per line:  Name arg1 [arg2 ...] expected  [# note]
Name is the function of the library the case is meant for; the arguments are its own,
in its own order (truth values as 0 or 1); the note says what the row exercises.

The incomplete gamma and beta functions are computed here from their textbook forms
(DLMF 8.7.1 series and 8.9.2 continued fraction for the gamma function; DLMF 8.17.22
continued fraction for the beta function), always on the side where the function is
small, the other side as 1 minus it at 60 digits.
"""
import math
import random
import sys

import mpmath as mp
from mpmath import mpf

DPS = 60
HERE = __file__.rsplit('/', 1)[0] if '/' in __file__ else '.'
CHECK = '--check' in sys.argv
mp.mp.dps = 90 if CHECK else DPS
# Smallest positive normal double: below it only absolute accuracy exists.
DBL_MIN = 2.2250738585072014e-308


def out(v):
    return mp.nstr(v, 32, min_fixed=-4, max_fixed=6)


# --- reference functions --------------------------------------------------------------

def eps():
    return mpf(2) ** (-mp.mp.prec)


def lower_gamma_series(a, x):
    """P(a, x) = x^a e^-x / Gamma(a + 1) sum_n x^n / ((a+1)...(a+n))."""
    term = mpf(1)
    s = mpf(1)
    n = 0
    while True:
        n += 1
        term *= x / (a + n)
        s += term
        if term < s * eps():
            break
    return mp.exp(a * mp.log(x) - x - mp.loggamma(a + 1)) * s


def upper_gamma_fraction(a, x):
    """Q(a, x) = x^a e^-x / Gamma(a) / (x + 1 - a - 1(1 - a) / (x + 3 - a - ...)),
    by the modified Lentz method."""
    tiny = mpf(10) ** (-2 * mp.mp.dps)
    b = x + 1 - a
    c = 1 / tiny
    d = 1 / b
    h = d
    i = 0
    while True:
        i += 1
        an = -i * (i - a)
        b += 2
        d = an * d + b
        if d == 0:
            d = tiny
        c = b + an / c
        if c == 0:
            c = tiny
        d = 1 / d
        delta = d * c
        h *= delta
        if abs(delta - 1) < eps():
            break
    return mp.exp(a * mp.log(x) - x - mp.loggamma(a)) * h


def gamma_pq(a, x):
    """(P, Q) at exact doubles a, x; the smaller one computed directly."""
    a = mpf(a)
    x = mpf(x)
    if x < a + 1:
        p = lower_gamma_series(a, x)
        return p, 1 - p
    q = upper_gamma_fraction(a, x)
    return 1 - q, q


def beta_fraction(x, xc, a, b):
    """I(x; a, b) for x below the mean, xc = 1 - x exactly (DLMF 8.17.22)."""
    tiny = mpf(10) ** (-2 * mp.mp.dps)
    front = mp.exp(a * mp.log(x) + b * mp.log(xc) - mp.log(a)
                   - (mp.loggamma(a) + mp.loggamma(b) - mp.loggamma(a + b)))
    c = mpf(1)
    d = 1 - (a + b) * x / (a + 1)
    if d == 0:
        d = tiny
    d = 1 / d
    h = d
    m = 0
    while True:
        m += 1
        m2 = 2 * m
        aa = m * (b - m) * x / ((a + m2 - 1) * (a + m2))
        d = 1 + aa * d
        d = tiny if d == 0 else d
        c = 1 + aa / c
        c = tiny if c == 0 else c
        d = 1 / d
        h *= d * c
        aa = -(a + m) * (a + b + m) * x / ((a + m2) * (a + m2 + 1))
        d = 1 + aa * d
        d = tiny if d == 0 else d
        c = 1 + aa / c
        c = tiny if c == 0 else c
        d = 1 / d
        delta = d * c
        h *= delta
        if abs(delta - 1) < eps():
            break
    return front * h


def beta_i(x, a, b):
    """(I(x; a, b), 1 - I(x; a, b)) at exact doubles, both with full relative accuracy."""
    x = mpf(x)
    a = mpf(a)
    b = mpf(b)
    xc = mp.fsub(1, x, exact=True)
    if x < (a + 1) / (a + b + 2):
        v = beta_fraction(x, xc, a, b)
        return v, 1 - v
    v = beta_fraction(xc, x, b, a)
    return 1 - v, v


def stirling_error(x):
    """ln Gamma(x + 1) - (x + 0.5) ln(x + 1) + (x + 1) - ln sqrt(2 pi)."""
    z = mpf(x) + 1
    if z > 1000:
        # Stirling's series, sum B_2k / (2k (2k - 1) z^(2k - 1)): mpmath's loggamma loses
        # the small difference for very large z
        with mp.workdps(mp.mp.dps + 20):
            return +mp.fsum(mp.bernoulli(2 * k) / (2 * k * (2 * k - 1) * z ** (2 * k - 1))
                            for k in range(1, 30))
    # ln Gamma and (z - 1/2) ln z cancel to 1 / (12 z): carry the digits that cancel
    with mp.workdps(mp.mp.dps + 40):
        z = mpf(x) + 1
        return +(mp.loggamma(z) - (z - mpf(1) / 2) * mp.log(z) + z - mp.log(2 * mp.pi) / 2)


def stirling_derivative(n, x):
    """n-th derivative of stirling_error at x, from the polygamma functions."""
    with mp.workdps(mp.mp.dps + 40 + int(max(0, mp.log10(abs(x) + 1)))):
        z = mpf(x) + 1
        zlogz = mp.log(z) + 1 if n == 1 else (-1) ** n * mp.factorial(n - 2) / z ** (n - 1)
        logz = (-1) ** (n - 1) * mp.factorial(n - 1) / z ** n
        v = mp.polygamma(n - 1, z) - zlogz + logz / 2
        if n == 1:
            v += 1
        return +v


def log1p_minus_x(x):
    with mp.workdps(mp.mp.dps + 700):
        x = mpf(x)
        return +(mp.log1p(x) - x)


def inverse_normal(p):
    """x with Phi(x) = p, by Newton's method on ln Phi from below (it is concave)."""
    if p == 0.5:
        return mpf(0)
    with mp.workdps(mp.mp.dps + 20):
        p = mpf(p)
        lower = p < 0.5
        pp = p if lower else 1 - p
        x = -mp.sqrt(-2 * mp.log(pp))
        target = mp.log(pp)
        for _ in range(200):
            phi = mp.npdf(x)
            cdf = mp.ncdf(x)
            dx = (mp.log(cdf) - target) * cdf / phi
            x -= dx
            if abs(dx) < mpf(10) ** (-mp.mp.dps + 5) * (1 + abs(x)):
                break
        return x if lower else -x


# --- argument grids ----------------------------------------------------------------

def nextafter(x, toward):
    return math.nextafter(x, toward)


def bisect(f, lo, hi, target, steps=200):
    """Solves f(v) = target for increasing f on [lo, hi], in doubles."""
    for _ in range(steps):
        mid = 0.5 * (lo + hi)
        if mid in (lo, hi):
            break
        if f(mid) < target:
            lo = mid
        else:
            hi = mid
    return 0.5 * (lo + hi)


def normal_rows():
    rows = []
    rng = random.Random(241)
    xs = [k / 8 for k in range(-38 * 8, 8 * 8 + 1)]
    xs += [rng.uniform(-38, 8) for _ in range(400)]
    xs += [rng.uniform(-1.5, 1.5) for _ in range(100)]
    xs += [1.5, -1.5, nextafter(1.5, 0), nextafter(-1.5, 0), 40.0, -40.0,
           nextafter(40.0, 0), nextafter(-40.0, 0), 41.0, -41.0, -37.5, -37.52, 1e-300,
           -1e-300, 5e-324, 1e-8, -1e-8]
    # the far lower tail, where exp(-x^2 / 2) is most sensitive to the rounding of x^2
    far = random.Random(3830)
    xs += [far.uniform(-38, -30) for _ in range(300)]
    for x in xs:
        note = 'subnormal' if mp.ncdf(x) < DBL_MIN else ''
        rows.append(('CdfNormal', [x], mp.ncdf(mpf(x)), note))
    ps = [float('1e-%d' % k) for k in range(1, 301)]
    ps += [1 - float('1e-%d' % k) for k in range(1, 11)]
    ps += [10 ** rng.uniform(-300, math.log10(0.5)) for _ in range(300)]
    ps += [rng.uniform(0, 1) for _ in range(300)]
    ps += [1 - 10 ** rng.uniform(-10, math.log10(0.5)) for _ in range(100)]
    # the break points of AS 241: |q| = 0.425 and r = 5
    ps += [0.075, 0.925, nextafter(0.075, 0), nextafter(0.925, 1), math.exp(-25),
           nextafter(math.exp(-25), 0), nextafter(math.exp(-25), 1), 1 - math.exp(-25),
           0.5, nextafter(0.5, 0), nextafter(0.5, 1), 1e-300, 5e-324, 2.2250738585072014e-308]
    for p in ps:
        if 0 < p < 1:
            rows.append(('InverseNormal', [p], inverse_normal(p), ''))
    return rows


def elementary_rows():
    rows = []
    rng = random.Random(51)
    xs = [2.0, 1.999, -2.0, -1.999, nextafter(2.0, 0), 1e-300, -1e-300, 1e-20, 1e-8, -1e-8,
          0.5, -0.5, 5e-324]
    xs += [rng.uniform(-2, 2) for _ in range(100)]
    xs += [rng.uniform(-700, 700) for _ in range(40)]
    xs += [(-1) ** k * 10 ** rng.uniform(-300, 0) for k in range(60)]
    for x in xs:
        with mp.workdps(mp.mp.dps + 20):
            rows.append(('ExpMinusOne', [x], +mp.expm1(mpf(x)), ''))
    xs = [0.5, -0.5, nextafter(0.5, 1), nextafter(-0.5, -1), 1e-300, -1e-300, 1e-10, 3.0,
          -0.99, 1e300, 5e-324]
    xs += [rng.uniform(-0.5, 0.5) for _ in range(100)]
    xs += [(-1) ** k * 10 ** rng.uniform(-300, -0.31) for k in range(60)]
    xs += [rng.uniform(-1, 100) for _ in range(30)]
    for x in xs:
        with mp.workdps(mp.mp.dps + 700):
            rows.append(('LogOnePlus', [x], +mp.log1p(mpf(x)), ''))
    xs = [0.01, 0.0099, nextafter(0.01, 0), -0.01, -0.0099, 1.0, nextafter(1.0, 2), 1.5,
          -0.79149064, nextafter(-0.79149064, -1), -0.9, -0.999999, 1e-300, -1e-300, 1e-8,
          -1e-8, 1e300, 10.0, 5e-324]
    xs += [rng.uniform(-0.01, 0.01) for _ in range(60)]
    xs += [rng.uniform(-0.8, 1) for _ in range(100)]
    xs += [(-1) ** k * 10 ** rng.uniform(-300, -2) for k in range(60)]
    xs += [rng.uniform(1, 1000) for _ in range(20)]
    xs += [-1 + 10 ** rng.uniform(-15, -0.7) for _ in range(30)]
    for x in xs:
        rows.append(('LogOnePlusMinusX', [x], log1p_minus_x(x), ''))
    xs = [0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 5.5, 6.5, nextafter(6.0, 0), 1e10,
          nextafter(1e10, 0), 1e12, 1e15, 1e300, -0.5, -0.999, -0.9999999, 1e-300, 0.25,
          100.5, 30.0]
    xs += [rng.uniform(-1, 6) for _ in range(100)]
    xs += [rng.uniform(6, 100) for _ in range(40)]
    xs += [10 ** rng.uniform(2, 12) for _ in range(40)]
    for x in xs:
        rows.append(('StirlingError', [x], stirling_error(x), ''))
        if x < 1e200:
            for n, name in ((1, 'StirlingD1'), (3, 'StirlingD3'), (5, 'StirlingD5'),
                            (7, 'StirlingD7')):
                rows.append((name, [x], stirling_derivative(n, x), ''))
        if -1 < x < 1e200:
            rows.append(('StirlingStep', [x], stirling_error(x) - stirling_error(mpf(x) + 1), ''))
    pairs = [(0.5, 0.5), (0.01, 100.0), (1.0, 1.0), (0.9, 30.0), (0.3, 10.0), (0.03, 0.0),
             (0.2, 5.0), (0.02, 0.6), (0.6, 0.02), (0.001, 1e5), (0.95, 1e4), (0.5, 6.0),
             (0.999, 0.999), (0.05, 0.5)]
    pairs += [(rng.uniform(0, 1), 10 ** rng.uniform(-2, 5)) for _ in range(80)]
    for a, b in pairs:
        with mp.workdps(mp.mp.dps + 40):
            aa, bb = mpf(a), mpf(b)
            z = aa + bb + 1
            z0 = bb + 1
            full = (mp.loggamma(z) - (z - 0.5) * mp.log(z) + z
                    - (mp.loggamma(z0) - (z0 - 0.5) * mp.log(z0) + z0))
        rows.append(('StirlingDifference', [a, b], +full, ''))
    xs = [1e-300, 1e-20, 1e-8, 0.5, nextafter(1.0, 0), 0.01, 0.1, 0.99]
    xs += [rng.uniform(0, 1) for _ in range(100)]
    xs += [10 ** rng.uniform(-300, 0) for _ in range(40)]
    for a in xs:
        with mp.workdps(mp.mp.dps + 320):
            rows.append(('LogGammaOnePlus', [a], +mp.loggamma(1 + mpf(a)), ''))
    return rows


GAMMA_SHAPES = [0.01, 0.1, 0.3, 0.5, 0.9, 0.999, 1.0, 1.5, 2.0, 3.5, 5.0, 10.0, 20.0, 21.0,
                22.0, 22.5, 30.0, 50.0, 100.0, 500.0, 1000.0, 12345.5, 1e4, 1e5]


def gamma_route(x, a):
    """Which kernel GammaLower hands the case to (mirrors its tests)."""
    if a < 1:
        return 'small-shape' if x < 1 else 'lower-tail-shifted'
    k, y, d = a - 1, x, x - a + 1
    if 0.3 * k > abs(d) and k >= 21:
        return 'expansion-below' if d < 0 else 'expansion-above'
    if y > k and y >= 1:
        return 'lower-tail'
    return 'upper-fraction'


def gamma_rows():
    rows = []
    for a in GAMMA_SHAPES:
        lg1 = float(mp.loggamma(a + 1))
        # rough tail logarithms, good to a few units in the deep tails
        def log_p(lx):
            x = math.exp(lx)
            return a * lx - x - lg1 - math.log1p(-min(x / (a + 1), 0.999999))

        def log_q(x):
            return (a - 1) * math.log(x) - x - (lg1 - math.log(a)) \
                - math.log1p(max(-(a - 1) / x, -0.999999))

        xs = set()
        for t in (1e-300, 1e-200, 1e-100, 1e-30, 1e-10, 1e-3):
            lx = bisect(log_p, math.log(1e-300), math.log(a), math.log(t))
            xs.add(float(repr(math.exp(lx))))
            hi = a + 1000 + 100 * math.sqrt(a)
            x = bisect(lambda v: -log_q(v), max(a, 1.0), hi, -math.log(t))
            xs.add(x)
        for z in (-3, -1, -0.25, 0, 0.25, 1, 3):
            x = a + z * math.sqrt(a)
            if x > 0:
                xs.add(x)
        xs.update([a, 1.0, nextafter(1.0, 0), nextafter(1.0, 2), 0.5, 2.0, 1e-300, 1e-10])
        k = a - 1
        if k >= 21:
            # the 0.3 k boundary of the expansion, on both sides
            for s in (-1, 1):
                x = k + s * 0.3 * k
                xs.update([x, nextafter(x, 0), nextafter(x, 1e300)])
        for x in sorted(xs):
            if not (x > 0 and math.isfinite(x)):
                continue
            p, q = gamma_pq(a, x)
            if p < DBL_MIN:
                continue
            route = gamma_route(x, a)
            rows.append(('GammaLower', [x, a], p, route))
            if route == 'lower-tail' and q >= DBL_MIN:
                k, d = a - 1, x - a + 1
                if mpf(x) - mpf(k) == mpf(d):
                    rows.append(('PoissonLowerTail', [k, x, d], q, 'upper gamma Q(a, x)'))
            if route == 'lower-tail-shifted' and q >= DBL_MIN:
                rows.append(('PoissonLowerTail', [-a, x, 0.0], q, 'upper gamma Q(a, x)'))
    return rows


BETA_SHAPES = [0.01, 0.1, 0.5, 0.9, 1.0, 1.5, 2.0, 5.0, 10.0, 50.5, 51.0, 60.0, 100.0, 1000.0,
               1e4, 1e5]


def beta_route(x, a, b):
    if a < 1 and b < 1:
        return 'rule1 small shapes'
    if (b + 1) * x <= 1 and a < 1:
        return 'rule2 small a, small x'
    if (a + 1) * x >= a and b < 1:
        return 'rule3 small b, large x'
    if a < 1:
        return 'rule4 binomial upper, shifted count'
    if b < 1:
        return 'rule5 binomial lower, shifted count'
    i, j, d = a - 1, b, (a + b - 1) * x - a + 1
    m = min(i, j)
    if 0.1 * m > abs(d) and m > 50:
        return 'rule6 expansion'
    return 'rule6 fraction'


def beta_rows():
    rows = []
    for a in BETA_SHAPES:
        for b in BETA_SHAPES:
            lb = float(mp.loggamma(a) + mp.loggamma(b) - mp.loggamma(a + b))
            mean = a / (a + b)

            def log_i(x):
                return a * math.log(x) + b * math.log1p(-x) - math.log(a) - lb \
                    - math.log(max(1 - (a + b) * x / (a + 1), 1e-6))

            xs = set([1e-10, 1e-3, 0.1, 0.5, nextafter(0.5, 1), 0.9, 0.999])
            for t in (1e-300, 1e-100, 1e-30, 1e-10, 1e-3):
                x = bisect(log_i, 1e-300, mean, math.log(t))
                if 1e-300 < x < mean:
                    xs.add(x)
            sd = math.sqrt(a * b / ((a + b) ** 2 * (a + b + 1)))
            for z in (-3, -1, -0.25, 0, 0.25, 1, 3):
                x = mean + z * sd
                if 0 < x < 1:
                    xs.add(x)
            for x in (1 / (b + 1), a / (a + 1)):
                xs.update([x, nextafter(x, 0), nextafter(x, 1)])
            i, j = a - 1, b
            m = min(i, j)
            if m > 50:
                for s in (-1, 1):
                    x = (a - 1 + s * 0.1 * m) / (a + b - 1)
                    xs.update([x, nextafter(x, 0), nextafter(x, 1)])
            for x in sorted(xs):
                if not 0 < x < 1:
                    continue
                v, _ = beta_i(x, a, b)
                if v < DBL_MIN:
                    continue
                rows.append(('BetaLower', [x, a, b], v, beta_route(x, a, b)))
    return rows


def binomial_rows():
    """Kernels of the binomial family, on cases chosen for their branches."""
    rows = []

    def below(i, j, p):
        # (P(X <= i), P(X > i)) for X binomial on i + j trials, real counts:
        # P(X <= i) = I(1 - p; j, i + 1)
        return beta_pair(1 - mpf(p), mpf(j), mpf(i) + 1)

    for i, j, p in [(3.0, 5.0, 0.3), (1000.0, 1000.0, 0.5), (0.0, 10.0, 0.25), (10.0, 0.5, 0.75),
                    (40.0, 60.0, 0.4), (2.5, 7.25, 0.125), (200.0, 30.0, 0.875), (1e4, 2e4, 0.25),
                    (60.0, 70.0, 0.5), (5.0, 1e5, 0.0001)]:
        q = 1 - p
        d = (i + j) * p - i
        if mpf(i + j) * mpf(p) - mpf(i) != mpf(d):
            continue
        for upper in (0, 1):
            rows.append(('BinomialFraction', [i, j, p, q, d, float(upper)], below(i, j, p)[upper],
                         'P(X <= i)' if not upper else 'P(X > i)'))
        with mp.workdps(mp.mp.dps + 20):
            t = mp.exp(mp.loggamma(i + j + 1) - mp.loggamma(i + 1) - mp.loggamma(j + 1)
                       + i * mp.log(p) + j * mp.log(mpf(q)))
        rows.append(('BinomialTerm', [i, j, p, q, d, 0.0], +t, ''))
    # the expansion for large counts: BinomialExpansion(a, b, d, upper) is the binomial
    # tail P(X <= b) (upper 0) on a + b + 1 trials of success probability (b + d) / (a + b + 1)
    for a, b, d in [(999.0, 1000.0, 0.0), (999.0, 1000.0, 5.0), (999.0, 1000.0, -5.0),
                    (4999.0, 20000.0, 100.0), (59.0, 60.0, 1.5), (1e5, 1e5, -300.0),
                    (1e5, 3e4, 2000.0), (2e4, 1e5, -25.0)]:
        n1 = mpf(a) + mpf(b) + 1
        p = (mpf(b) + mpf(d)) / n1
        v = beta_pair(1 - p, mpf(a) + 1, mpf(b) + 1)
        rows.append(('BinomialExpansion', [a, b, d, 0.0], v[0], ''))
        rows.append(('BinomialExpansion', [a, b, d, 1.0], v[1], ''))
    return rows


def beta_pair(x, a, b):
    """(I(x; a, b), 1 - I(x; a, b)) for mpf arguments (x need not be a double)."""
    xc = 1 - x
    if x < (a + 1) / (a + b + 2):
        v = beta_fraction(x, xc, a, b)
        return v, 1 - v
    v = beta_fraction(xc, x, b, a)
    return 1 - v, v


def density_rows():
    rows = []
    rng = random.Random(55)
    for x, lam in [(0.0, 1.0), (1.0, 1.0), (1e-300, 2.0), (1e-10, 3.0), (0.5, 0.25), (700.0, 1.0),
                   (40.0, 0.5), (1.5, 1.0), (2.0, 1.0), (1e-3, 1.0)] + \
            [(10 ** rng.uniform(-20, 2), 10 ** rng.uniform(-2, 2)) for _ in range(60)]:
        with mp.workdps(mp.mp.dps + 320):
            v = -mp.expm1(-mpf(lam) * mpf(x))
        if v == 0:
            continue
        rows.append(('CdfExponential', [x, lam], +v, ''))
    for x, a, s in [(1.0, 1.0, 1.0), (0.5, 2.0, 4.0), (3.0, 0.5, 1.0), (1e-300, 0.5, 1.0),
                    (1e5, 1e5, 1.0), (9e4, 1e5, 1.0), (50.0, 22.5, 2.0), (1e-5, 0.01, 1.0),
                    (700.0, 2.0, 1.0), (2.5, 3.0, 0.5), (8.0, 1e4, 1e-3), (12.0, 10.0, 1.0)] + \
            [(10 ** rng.uniform(-3, 3), 10 ** rng.uniform(-2, 3), 2.0 ** rng.randint(-3, 3))
             for _ in range(60)]:
        with mp.workdps(mp.mp.dps + 20):
            xx, aa, ss = mpf(x), mpf(a), mpf(s)
            v = mp.exp((aa - 1) * mp.log(xx / ss) - xx / ss - mp.loggamma(aa)) / ss
        if v < DBL_MIN:
            continue
        rows.append(('PdfGamma', [x, a, s], +v, ''))
    for x, a, b in [(0.3, 2.0, 3.0), (0.5, 0.5, 0.5), (1e-10, 0.5, 3.0), (0.999, 3.0, 0.5),
                    (0.5, 1e5, 1e5), (0.4985, 1e5, 1e5), (0.01, 1.0, 100.0), (0.7, 1.0, 1.0),
                    (0.25, 0.01, 0.01), (0.2, 20.0, 80.0), (1e-5, 0.01, 1e4)] + \
            [(rng.uniform(0, 1), 10 ** rng.uniform(-2, 3), 10 ** rng.uniform(-2, 3))
             for _ in range(60)]:
        with mp.workdps(mp.mp.dps + 20):
            xx, aa, bb = mpf(x), mpf(a), mpf(b)
            v = mp.exp((aa - 1) * mp.log(xx) + (bb - 1) * mp.log(1 - xx) - mp.loggamma(aa)
                       - mp.loggamma(bb) + mp.loggamma(aa + bb))
        if v < DBL_MIN:
            continue
        rows.append(('PdfBeta', [x, a, b], +v, ''))
    return rows


TABLES = [
    ('normal.txt', normal_rows,
     'Standard normal distribution function and its inverse (Phi by mpmath ncdf; the\n'
     '# inverse by Newton iteration on ln Phi). "subnormal" marks a value below 2.2e-308.'),
    ('elementary.txt', elementary_rows,
     'Elementary forms and Stirling corrections: expm1, log1p, log1p(x) - x,\n'
     '# StirlingError(x) = lnGamma(x+1) - (x+0.5)ln(x+1) + x+1 - ln sqrt(2pi), its odd\n'
     '# derivatives (polygamma), the step StirlingError(x) - StirlingError(x+1),\n'
     '# StirlingDifference(a, b) = StirlingError(a+b) - StirlingError(b), lnGamma(1+a).'),
    ('gamma.txt', gamma_rows,
     'Regularised incomplete gamma function: GammaLower x a P(a, x); and\n'
     '# PoissonLowerTail k y d Q(k+1, y) where GammaLower takes 1 - PoissonLowerTail\n'
     '# (k = -a in (-1, 0) stands for the count a - 1). The note names the route.'),
    ('beta.txt', beta_rows,
     'Regularised incomplete beta function: BetaLower x a b I(x; a, b).\n'
     '# The note names the rule of BetaLower that answers.'),
    ('binomial.txt', binomial_rows,
     'Binomial kernels with real counts: BinomialFraction i j p q d upper gives P(X <= i)\n'
     '# (upper 0) or P(X > i) (upper 1) on i + j trials; BinomialTerm i j p q d logAdd;\n'
     '# BinomialExpansion a b d upper is P(X <= b) (upper 0) or P(X > b) (upper 1) on\n'
     '# a + b + 1 trials of probability (b + d) / (a + b + 1).'),
    ('densities.txt', density_rows,
     'Entry points: CdfExponential x lambda; PdfGamma x shape scale; PdfBeta x a b.'),
]


def main():
    if CHECK:
        return check()
    only = [a for a in sys.argv[1:] if not a.startswith('--')]
    for name, make, about in TABLES:
        if only and name not in only:
            continue
        rows = make()
        with open(HERE + '/' + name, 'w') as f:
            f.write('# %s\n' % about)
            f.write('# Made by make_tables.py (mpmath %s, %d digits): Name args... expected.\n'
                    % (mp.__version__, DPS))
            for fn, args, v, note in rows:
                line = ' '.join([fn] + [repr(float(a)) for a in args] + [out(v)])
                f.write(line + ('  # ' + note if note else '') + '\n')
        print('%s: %d rows' % (name, len(rows)), file=sys.stderr)


def check():
    """Recomputes each table at 90 digits; compares with mpmath's own functions."""
    worst = mpf(0)
    crossed = rows = 0
    for name, _, _ in TABLES:
        for line in open(HERE + '/' + name):
            if line.startswith('#'):
                continue
            parts = line.split('#')[0].split()
            fn, args, v = parts[0], [float(t) for t in parts[1:-1]], mpf(parts[-1])
            if fn == 'GammaLower':
                ref = gamma_pq(args[1], args[0])[0]
                try:
                    other = mp.gammainc(args[1], 0, args[0], regularized=True)
                    worst = max(worst, abs(other / ref - 1))
                    crossed += 1
                except mp.libmp.NoConvergence:
                    pass
            elif fn == 'BetaLower':
                ref = beta_i(*args)[0]
                if max(args[1], args[2]) <= 100:
                    try:
                        other = mp.betainc(args[1], args[2], 0, args[0], regularized=True)
                        worst = max(worst, abs(other / ref - 1))
                        crossed += 1
                    except mp.libmp.NoConvergence:
                        pass
            else:
                continue
            worst = max(worst, abs(mpf(out(ref)) / v - 1))
            rows += 1
    print('%d rows recomputed, %d also by mpmath gammainc/betainc; largest relative '
          'disagreement: %s' % (rows, crossed, mp.nstr(worst, 5)))


if __name__ == '__main__':
    main()
