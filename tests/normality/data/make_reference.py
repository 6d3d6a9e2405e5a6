#!/usr/bin/env python3
"""Reference values for the normality tests, worked out from the tests' definitions.

Usage:  python3 make_reference.py > reference.txt

Written from the formulas alone (the papers and the window's own rules), not from the
program: Shapiro-Wilk (AS R94 as the window runs it), Jarque-Bera and Lilliefors are
computed with mpmath at 50 digits, so their raw figures are exact to far more digits than
a double holds. Anderson-Darling is held in 32 bits on purpose; it is emulated here
figure by figure (each value worked out at 50 digits, rounded to double, then to float
where the test stores it), and its exact 50-digit A is given beside it.

Every sample value is an exact double (repr). Box texts are rounded as the spreadsheet's
TEXT does: the value at 15 significant digits, halves away from zero. The script stops if
a text of an exact value lies within 1e-12 (relative) of a rounding half, where a double computation
could legitimately round the other way.

Output, one record a line (fields separated by blanks):
  sample NAME v1 v2 ... vn                   the sample, ascending
  SW NAME rawW rawP heldW heldP TestStat Pval bell@0.05
  AD NAME A_float Astar_float p_float skipped TestStat Pval bell A_exact
  LF NAME D critical TestStat CriticalBox bell
  JB NAME JB p4 TestStat CriticalBox Pval bell@0.05      (n >= 31)
  ADP Astar_float p_float                    the p formula at its branch points
  JBC level critical                         JBCriticalValue
float fields are written as the double of the float (repr); bell is Yes or No.
"""
import math
import random
import struct
import sys
from decimal import Decimal, ROUND_HALF_UP, ROUND_HALF_EVEN

import mpmath as mp
from mpmath import mpf

mp.mp.dps = 50


def f32(x):
    """The float nearest to the double x, as a Python float."""
    return struct.unpack('<f', struct.pack('<f', float(x)))[0]


def d(x):
    """An mpf rounded to the nearest double."""
    return float(x)


def text(x, places, check=True):
    """TEXT(x, "0.000..."): 15 significant digits, halves away from zero, no -0."""
    if check:
        scaled = mpf(x) * mpf(10) ** places
        frac = scaled - mp.floor(scaled)
        if abs(frac - mpf('0.5')) < mpf('1e-12') * max(1, abs(scaled)):
            raise SystemExit('rounding half too close: %s at %d places' % (mp.nstr(x, 30), places))
    v = Decimal('%.15g' % float(x)) if not isinstance(x, Decimal) else x
    q = v.quantize(Decimal(1).scaleb(-places), rounding=ROUND_HALF_UP)
    s = format(q, 'f')
    if s.startswith('-') and q == 0:
        s = s[1:]
    return s


def exact_text(x, places):
    """TEXT of an exact (50-digit) value."""
    text(x, places)  # the check
    v = Decimal(mp.nstr(x, 40, strip_zeros=False, min_fixed=-50, max_fixed=50))
    q = v.quantize(Decimal(1).scaleb(-places), rounding=ROUND_HALF_UP)
    s = format(q, 'f')
    return s[1:] if s.startswith('-') and q == 0 else s


def mean_sd(xs):
    n = len(xs)
    m = mp.fsum(mpf(x) for x in xs) / n
    ss = mp.fsum((mpf(x) - m) ** 2 for x in xs)
    return m, mp.sqrt(ss / (n - 1))


def poly(c, x):
    return mp.fsum(mpf(ci) * mpf(x) ** i for i, ci in enumerate(c))


def qnorm(p):
    return mp.sqrt(2) * mp.erfinv(2 * mpf(p) - 1)


# ---- Shapiro-Wilk, AS R94 (Royston 1995) as the window runs it ------------------------
C1 = ['0', '0.221157', '-0.147981', '-2.07119', '4.434685', '-2.706056']
C2 = ['0', '0.042981', '-0.293762', '-1.752461', '5.682633', '-3.582633']
C3 = ['0.544', '-0.39978', '0.025054', '-0.0006714']
C4 = ['1.3822', '-0.77857', '0.062767', '-0.0020322']
C5 = ['-1.5861', '-0.31082', '-0.083751', '0.0038915']
C6 = ['-0.4803', '-0.082676', '0.0030302']
G = ['-2.273', '0.459']


def shapiro_wilk(xs):
    x = sorted(mpf(v) for v in xs)
    n = len(x)
    n2 = n // 2
    m = [qnorm((mpf(i) - mpf('0.375')) / (n + mpf('0.25'))) for i in range(1, n2 + 1)]
    summ2 = 2 * mp.fsum(v * v for v in m)
    ssumm2 = mp.sqrt(summ2)
    rsn = 1 / mp.sqrt(n)
    a = [None] * (n2 + 1)  # 1-based
    a1 = poly(C1, rsn) - m[0] / ssumm2
    if n < 6:
        first = 2
        fac = mp.sqrt((summ2 - 2 * m[0] ** 2) / (1 - 2 * a1 ** 2))
    else:
        first = 3
        a2 = poly(C2, rsn) - m[1] / ssumm2
        fac = mp.sqrt((summ2 - 2 * m[0] ** 2 - 2 * m[1] ** 2) / (1 - 2 * a1 ** 2 - 2 * a2 ** 2))
        a[2] = a2
    a[1] = a1
    for i in range(first, n2 + 1):
        a[i] = -m[i - 1] / fac
    # Full weights: -a(i) below the middle, a(n+1-i) above, 0 in the middle.
    w = []
    for i in range(1, n + 1):
        j = n + 1 - i
        w.append(mpf(0) if i == j else (a[i] * -1 if i < j else a[j]))
    rng = x[-1] - x[0]
    sx = mp.fsum(v / rng for v in x) / n
    sa = mp.fsum(w) / n
    ssa = mp.fsum((wi - sa) ** 2 for wi in w)
    ssx = mp.fsum((v / rng - sx) ** 2 for v in x)
    sax = mp.fsum((wi - sa) * (v / rng - sx) for wi, v in zip(w, x))
    w1 = 1 - sax ** 2 / (ssx * ssa)
    y = mp.log(w1)
    if n <= 11:
        gamma = poly(G, n)
        y = -mp.log(gamma - y)
        mu = poly(C3, n)
        sigma = mp.exp(poly(C4, n))
    else:
        lnn = mp.log(n)
        mu = poly(C5, lnn)
        sigma = mp.exp(poly(C6, lnn))
    p = 1 - mp.ncdf((y - mu) / sigma)
    return 1 - w1, p


def sw_record(name, xs):
    W, p = shapiro_wilk(xs)
    heldW = Decimal(exact_text(W, 4))
    heldP = Decimal(exact_text(p, 5))
    return W, p, 'SW %s %s %s %s %s %s %s %s' % (
        name, mp.nstr(W, 25), mp.nstr(p, 25), heldW, heldP, heldW,
        text(heldP, 4, check=False), 'Yes' if heldP > Decimal('0.05') else 'No')


# ---- Anderson-Darling in 32 bits ---------------------------------------------------------
def ad_pvalue(astar):
    a = mpf(astar)
    if f32(0.6) <= astar < f32(13):
        v = mp.exp(mpf('1.2937') - mpf('5.709') * a + mpf('0.0186') * a * a)
    elif f32(0.34) <= astar < f32(0.6):
        v = mp.exp(mpf('0.9177') - mpf('4.279') * a - mpf('1.38') * a * a)
    elif f32(0.2) <= astar < f32(0.34):
        v = 1 - mp.exp(mpf('-8.318') + mpf('42.796') * a - mpf('59.938') * a * a)
    elif astar < f32(0.2):
        v = 1 - mp.exp(mpf('-13.436') + mpf('101.14') * a - mpf('223.73') * a * a)
    else:
        v = 0
    return f32(d(v))


def anderson_darling(xs):
    n = len(xs)
    x = sorted(xs)
    m_exact, s_exact = mean_sd(xs)
    nf, mf, sf = f32(n), f32(d(m_exact)), f32(d(s_exact))
    F = [f32(d(mp.ncdf(mpf((v - mf) / sf)))) for v in x]   # z formed in double
    H = sorted(f32(1.0 - Fi) for Fi in F)
    terms, skipped = [], 0
    for i in range(n):
        if H[i] == 0.0 or F[i] == 0.0:
            skipped += 1
            continue
        terms.append(f32(d((2 * (i + 1) - 1) * (mp.log(H[i]) + mp.log(F[i])))))
    total = f32(math.fsum(terms))
    A = f32(-total / nf - nf)
    Astar = f32(A * (1.0 + 0.75 / nf + 2.25 / (nf * nf)))
    p = ad_pvalue(Astar)
    # Exact statistic, for comparison only.
    z = [(mpf(v) - m_exact) / s_exact for v in x]
    Fe = [mp.ncdf(v) for v in z]
    Ae = -n - mp.fsum((2 * (i + 1) - 1) * (mp.log(Fe[i]) + mp.log(1 - Fe[n - 1 - i]))
                      for i in range(n) if 0 < Fe[i] < 1 and 0 < Fe[n - 1 - i] < 1) / n
    return A, Astar, p, skipped, Ae


def ad_record(name, xs):
    A, Astar, p, skipped, Ae = anderson_darling(xs)
    return 'AD %s %r %r %r %d %s %s %s %s' % (
        name, A, Astar, p, skipped, text(A, 4, check=False), text(p, 4, check=False),
        'Yes' if p > 0.05 else 'No', mp.nstr(Ae, 25))


# ---- Lilliefors ----------------------------------------------------------------------------
LF_TABLE = {4: '0.381', 5: '0.337', 6: '0.319', 7: '0.3', 8: '0.285', 9: '0.271', 10: '0.258',
            11: '0.249', 12: '0.242', 13: '0.234', 14: '0.227', 15: '0.22', 16: '0.213',
            17: '0.206', 18: '0.2', 19: '0.195', 20: '0.19', 21: '0.1866', 22: '0.1832',
            23: '0.1798', 24: '0.1764', 25: '0.173', 26: '0.1706', 27: '0.1682', 28: '0.1658',
            29: '0.1634', 30: '0.161'}


def lf_critical(n):
    return mpf(LF_TABLE[n]) if n <= 30 else mpf('0.886') / mp.sqrt(n)


def lf_steps(x):
    n = len(x)
    E = [mpf(i + 1) / n for i in range(n)]
    s = 0
    for i in range(1, n):
        if x[i] != x[i - 1]:
            e = i - 1
            for k in range(s, e - 1):       # E(s) .. E(e-2) take E(e-1)
                E[k] = E[e - 1]
            s = i
    return E


def lilliefors(xs):
    x = sorted(xs)
    n = len(x)
    m, s = mean_sd(x)
    E = lf_steps(x)
    z = [(mpf(v) - m) / s for v in x]
    D1 = [abs(mp.ncdf(z[i]) - E[i]) for i in range(n)]
    D2 = [abs(mp.ncdf(z[i + 1] - mpf('0.0001')) - E[i]) for i in range(n - 1)]
    return max(D1 + D2), lf_critical(n)


def lf_record(name, xs):
    D, c = lilliefors(xs)
    return 'LF %s %s %s %s %s %s' % (name, mp.nstr(D, 25), mp.nstr(c, 25), exact_text(D, 4),
                                      exact_text(c, 4), 'Yes' if D < c else 'No')


# ---- Jarque-Bera ---------------------------------------------------------------------------
def jarque_bera(xs):
    n = len(xs)
    m, s = mean_sd(xs)
    z = [(mpf(v) - m) / s for v in xs]
    s3 = mp.fsum(v ** 3 for v in z)
    s4 = mp.fsum(v ** 4 for v in z)
    return n * ((s3 / n) ** 2 / 6 + (s4 / n - 3) ** 2 / 24)


def jb_record(name, xs):
    jb = jarque_bera(xs)
    p4 = Decimal(exact_text(mp.exp(-jb / 2), 4))
    return jb, p4, 'JB %s %s %s %s 5.9900 %s %s' % (
        name, mp.nstr(jb, 25), p4, exact_text(jb, 4), text(p4, 3, check=False),
        'Yes' if p4 > Decimal('0.05') else 'No')


# ---- samples -------------------------------------------------------------------------------
def normal_sample(seed, n, mu=10.0, sigma=2.0, places=4):
    r = random.Random(seed)
    return sorted(round(r.gauss(mu, sigma), places) for _ in range(n))


def quantile_sample(n, t, places=6):
    """Normal quantiles bent by t z^2: a sample whose skewness grows with t."""
    out = []
    for i in range(1, n + 1):
        zq = qnorm((mpf(i) - mpf('0.5')) / n)
        out.append(round(d(zq + t * zq * zq), places))
    return sorted(out)


def bisect(f, lo, hi, target, steps=80):
    for _ in range(steps):
        mid = (lo + hi) / 2
        if (f(mid) - target) * (f(lo) - target) > 0:
            lo = mid
        else:
            hi = mid
    return (lo + hi) / 2


samples = {}
# Shapiro and Wilk (1965), section 5: weights in pounds of 11 men; the paper gives W = 0.79.
samples['sw1965'] = [148.0, 154.0, 158.0, 160.0, 161.0, 162.0, 166.0, 170.0, 182.0, 195.0, 236.0]
for n in (4, 5, 6, 11, 12, 20, 30, 31, 50, 100, 500, 2000):
    samples['normal%d' % n] = normal_sample(1000 + n, n)
r = random.Random(7)
samples['exp40'] = sorted(round(r.expovariate(0.5), 4) for _ in range(40))
samples['exp2000'] = sorted(round(r.expovariate(0.5), 4) for _ in range(2000))
samples['unif100'] = sorted(round(r.uniform(0, 1), 5) for _ in range(100))
samples['ties60'] = normal_sample(60, 60, 5.0, 1.0, 1)
samples['ties13'] = [1.0, 2.0, 2.0, 2.0, 3.0, 4.0, 4.0, 5.0, 5.0, 5.0, 5.0, 6.0, 7.0]
samples['tiesend8'] = [1.0, 1.0, 1.0, 2.0, 3.0, 4.0, 4.0, 4.0]
samples['outlier101'] = sorted(normal_sample(101, 100, 0.0, 1.0) + [1.0e6])
samples['offset50'] = sorted(round(1.0e6 + v, 4) for v in normal_sample(50, 50, 0.0, 1.0, 6))

# Samples whose held p value is exactly the 5% level.
target_jb = -2 * mp.log(mpf('0.05'))
t = bisect(lambda t: jarque_bera(quantile_sample(40, t)), 0.0, 0.5, target_jb)
samples['jb_at_level'] = quantile_sample(40, t)
t = bisect(lambda t: -shapiro_wilk(quantile_sample(20, t))[1], 0.0, 0.5, mpf('-0.05'))
samples['sw_at_level'] = quantile_sample(20, t)
# Jarque-Bera p = 0.0010, shown as "0.001": the slider's last rule rejects it at level 0.
t = bisect(lambda t: jarque_bera(quantile_sample(40, t)), 0.0, 2.0, -2 * mp.log(mpf('0.001')))
samples['jb_p001'] = quantile_sample(40, t)

out = []
for name, xs in samples.items():
    xs = sorted(xs)
    out.append('sample %s %s' % (name, ' '.join(repr(v) for v in xs)))
    if len(xs) >= 4:
        out.append(sw_record(name, xs)[2])
        out.append(lf_record(name, xs))
    out.append(ad_record(name, xs))
    if len(xs) >= 31:
        out.append(jb_record(name, xs)[2])

_, p, _ = sw_record('sw_at_level', samples['sw_at_level'])
_, p4, _ = jb_record('jb_at_level', samples['jb_at_level'])
assert p4 == Decimal('0.0500'), p4
_, p4, _ = jb_record('jb_p001', samples['jb_p001'])
assert p4 == Decimal('0.0010'), p4

for a in (-0.1, 0.0, 0.1, 0.2, 0.34, 0.5, 0.6, 1.0, 5.0, 13.0, 20.0):
    af = f32(a)
    below = struct.unpack('<f', struct.pack('<I', struct.unpack('<I', struct.pack('<f', af))[0] - 1))[0] \
        if af > 0 else None
    for v in ([below] if below is not None and a in (0.2, 0.34, 0.6, 13.0) else []) + [af]:
        out.append('ADP %r %r' % (v, ad_pvalue(v)))

for level in (0.05, 0.01, 0.1, 0.15, 0.001, 0.0025, 1.0, math.exp(-2.9975), math.exp(-2.9925)):
    x = d(-2 * mp.log(mpf(level)))
    c = Decimal('%.15g' % x).quantize(Decimal('0.01'), rounding=ROUND_HALF_EVEN)
    out.append('JBC %r %s' % (level, c))
out.append('JBC 0.0 0.00')

print(__doc__.split('\n\n')[0].replace('\n', ' ').join(['# ', '']))
print('# Made by make_reference.py; see its header for the columns.')
print('\n'.join(out))
