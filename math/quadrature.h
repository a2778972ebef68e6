/// \file
/// Adaptive quadrature and its inverse. Private to the math library.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include <qevmath/root.h>

namespace math {

/// Value of an integral over one panel and the estimate of its error.
struct Panel {
    double value;
    double error;
};

/// The Gauss-Kronrod pair (7, 15) on [a, b] (Piessens et al., QUADPACK, 1983): the error is the difference
/// of the two rules, which bounds that of the larger one generously.
template <class F>
Panel GaussKronrod(const F& f, double a, double b) {
    static constexpr double kNodes[8] = {
        0.991455371120812639206854697526329, 0.949107912342758524526189684047851,
        0.864864423359769072789712788640926, 0.741531185599394439863864773280788,
        0.586087235467691130294144691693013, 0.405845151377397166906606412076961,
        0.207784955007898467600689403773245, 0.0};
    static constexpr double kKronrod[8] = {
        0.022935322010529224963732008058970, 0.063092092629978553290700663189204,
        0.104790010322250183839876322541518, 0.140653259715525918745189590510238,
        0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
        0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
    static constexpr double kGauss[4] = {
        0.129484966168869693270611432679082, 0.279705391489276667901467771423780,
        0.381830050505118944950369775488975, 0.417959183673469387755102040816327};
    const double middle = 0.5 * (a + b);
    const double half = 0.5 * (b - a);
    const double centre = f(middle);
    double kronrod = centre * kKronrod[7];
    double gauss = centre * kGauss[3];
    for (int i = 0; i < 7; ++i) {
        const double pair = f(middle - half * kNodes[i]) + f(middle + half * kNodes[i]);
        kronrod += pair * kKronrod[i];
        if (i % 2 == 1) gauss += pair * kGauss[i / 2];
    }
    return {kronrod * half, std::abs((kronrod - gauss) * half)};
}

/// A panel is good when its two rules agree to this part of the whole integral. The larger rule is then far
/// better on smooth integrands; near a kink it is not, and some tens of panels add up, within 1e-10.
inline constexpr double kQuadratureTolerance = 1e-12;
/// Halvings at most: a speed that vanishes inside (a cusp) takes about twenty.
inline constexpr int kQuadratureDepth = 40;
/// Panels at most, whatever the integrand: a cusp takes about a hundred, so only noise takes more.
inline constexpr int kQuadraturePanels = 400;
/// mm. Panels that agree to this are good, however small the integral: squares of lengths near 1e-154 mm are
/// subnormal numbers with few digits, so that a speed of that size is noise, which no halving resolves.
inline constexpr double kQuadratureFloor = 1e-150;

template <class F>
double Refine(const F& f, double a, double b, const Panel& panel, double tolerance, int depth, int& panels) {
    if (!(panel.error > tolerance) || depth == 0 || panels <= 0) return panel.value;
    panels -= 2;
    const double middle = 0.5 * (a + b);
    const double low = Refine(f, a, middle, GaussKronrod(f, a, middle), tolerance, depth - 1, panels);
    return low + Refine(f, middle, b, GaussKronrod(f, middle, b), tolerance, depth - 1, panels);
}

/// Integral of a function that is not negative, from a to b (negative when b lies below a). Panels that agree
/// to `floor` (mm) are good.
template <class F>
double Integrate(const F& f, double a, double b, double floor = kQuadratureFloor) {
    const Panel whole = GaussKronrod(f, a, b);
    const double tolerance = std::max(std::abs(whole.value) * kQuadratureTolerance, floor);
    int panels = kQuadraturePanels;
    return Refine(f, a, b, whole, tolerance, kQuadratureDepth, panels);
}

/// The parameter in [a, b] up to which the integral of `speed` is `target`.
template <class F>
double FindLength(const F& speed, double a, double b, double target) {
    double at = a;
    double length = 0;
    const auto excess = [&](double t) {
        length += Integrate(speed, at, t);
        at = t;
        return std::pair(length - target, speed(t));
    };
    return FindRoot(excess, a, b, true);
}

} // namespace math
