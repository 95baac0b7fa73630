// SPDX-License-Identifier: MIT
#include "core/hall_yarborough.h"

#include "core/checked_math.h"
#include "core/runtime_error.h"

#include <cmath>
#include <cstdio>

namespace zorvekan {

HallYarboroughCoefficients hallYarboroughCoefficients(double t) {
    const double t2 = t * t;
    const double t3 = t2 * t;
    HallYarboroughCoefficients c{};
    c.a = 0.06125 * t * std::exp(-1.2 * (1.0 - t) * (1.0 - t));
    c.b = 14.7 * t - 9.76 * t2 + 4.58 * t3;
    c.c = 90.7 * t - 242.2 * t2 + 42.2 * t3;
    c.d = 2.18 + 2.82 * t;
    c.bPrime = 29.52 * t - 19.52 * t2 + 9.16 * t3;
    return c;
}

double hallYarboroughZ(const HallYarboroughCoefficients& c, double t, double ppr, double p) {
    const double dMinusOne = 1.18 + 2.82 * t;
    auto fault = [p](const char* what) {
        char detail[112];
        std::snprintf(detail, sizeof detail, "z-factor iteration %s at p = %.6g psia", what, p);
        throw RuntimeError(Fault::InvalidArgument, detail);
    };
    // A Newton step may overshoot to y >= 1 on the way to the root (heavy, cold gas);
    // the iteration carries on from there. Only a density at or below 0, whose power
    // y^D has no value, stops it, and only a converged density outside 0 < y < 1 is
    // not a gas.
    double y = 0.001;
    for (int pass = 0; pass < 100; ++pass) {
        if (!(y > 0.0))
            fault("reached a density at or below 0");
        const double y2 = y * y;
        const double y3 = y2 * y;
        const double y4 = y3 * y;
        const double oneMinusY = 1.0 - y;
        const double om3 = oneMinusY * oneMinusY * oneMinusY;
        const double f =
            -c.a * ppr + divide(y + y2 + y3 - y4, om3) - c.b * y2 + c.c * std::pow(y, c.d);
        const double df = divide(1.0 + 4.0 * y + 4.0 * y2 - 4.0 * y3 + y4, om3 * oneMinusY) -
                          c.bPrime * y + c.c * c.d * std::pow(y, dMinusOne);
        const double next = y - divide(f, df);
        if (std::fabs(next - y) < 0.00001)
            break;
        y = next;
    }
    if (!(y > 0.0 && y < 1.0))
        fault("settled outside the physical range 0 < y < 1");
    return divide(c.a * ppr, y);
}

} // namespace zorvekan
