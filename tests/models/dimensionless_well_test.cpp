// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "models/dimensionless_well.h"
#include "models/response_table.h"
#include "models/well_models.h"

#include "../support/raised.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zorvekan {
namespace {

using K = WellModelKind;

DimensionlessWell well(K kind, double storage, double skin = 0, double outer = 0, double omega = 1,
                       double lambda = 0) {
    DimensionlessWell w;
    w.kind = kind;
    w.storage = storage;
    w.skin = skin;
    w.outerRadius = outer;
    w.omega = omega;
    w.lambda = lambda;
    return w;
}

double logDerivative(const DimensionlessWell& w, double t) {
    const double h = 0.01;
    return (w.pressure(t * std::exp(h)) - w.pressure(t * std::exp(-h))) / (2 * h);
}

// Each model against an independent solution or a flow regime it must reach: a wrong
// admittance, a lost factor in a Bessel or strip-source term, or a storage group on the wrong
// length shows as a departure.
//  - homogeneous: the branch-cut integral of the type-curve library (an exact inversion);
//  - fractures with negligible storage: the closed-form time solution of Gringarten, Ramey
//    and Raghavan read at x/xf = 0.732 and at 0;
//  - closed circle: infinite-acting first, then pseudo-steady state
//    pD = 2 tD / (reD^2 + 2 CD) + ln reD - 3/4 (storage adds 2 CD to the drained volume);
//  - double porosity: the radial well of total storativity at late time, and for transient
//    interporosity flow the half-slope derivative 0.25 of the transition (de Swaan).
TEST(DimensionlessWell, AgreesWithIndependentSolutionsAndFlowRegimes) {
    for (const double c : {0.3, 100.0, 1e4, 1e10})
        for (const double t : {1e-2, 1.0, 30.0, 1e4})
            EXPECT_NEAR(well(K::Radial, c).pressure(t) / radialStoragePressure(c, t), 1.0, 2e-5)
                << "CDe2s " << c << " T " << t;
    for (const double tdxf : {1e-3, 0.05, 1.0, 100.0, 1e4}) {
        const double storage = 1e-9; // ends before tDxf = 1e-7
        EXPECT_NEAR(well(K::FractureInfinite, storage).pressure(tdxf / storage) /
                        fracturePressure(kInfiniteReservoir, tdxf),
                    1.0, 1e-6);
        EXPECT_NEAR(well(K::FractureUniform, storage).pressure(tdxf / storage) /
                        fracturePressure(kInfiniteReservoir, tdxf, 0.0),
                    1.0, 1e-6);
    }
    const DimensionlessWell closed = well(K::RadialClosed, 10, 0, 1000);
    EXPECT_NEAR(closed.pressure(100) / well(K::Radial, 10).pressure(100), 1.0, 1e-6);
    for (const double t : {1e6, 1e7}) {
        const double td = t * 10;
        EXPECT_NEAR(closed.pressure(t) / (2 * td / (1e6 + 20) + std::log(1000.0) - 0.75), 1.0,
                    1e-5);
    }
    for (const K kind : {K::DualPss, K::DualTransient})
        EXPECT_NEAR(well(kind, 1, 0, 0, 1e-3, 1e-8).pressure(1e11) /
                        well(K::Radial, 1).pressure(1e11),
                    1.0, 1e-5);
    EXPECT_NEAR(logDerivative(well(K::DualTransient, 1, 0, 0, 1e-3, 1e-8), 1e7), 0.25, 2e-3);
}

// The tables the fit reads agree with the inversion they tabulate to 1e-6 between their nodes
// for every model, and fall back to the inversion outside their range.
TEST(ResponseTable, InterpolatesEveryModelWithinAMillionth) {
    const DimensionlessWell wells[] = {
        well(K::Radial, 1e4),
        well(K::RadialClosed, 100, 0, 3000),
        well(K::FractureInfinite, 0.02, 0.3),
        well(K::FractureUniform, 0.5, 2),
        well(K::DualPss, 1e3, 0, 0, 0.01, 1e-7),
        well(K::DualTransient, 1e3, 0, 0, 0.01, 1e-7),
    };
    for (const DimensionlessWell& w : wells) {
        const ResponseTable table(w, 1e-3, 1e7);
        double worst = 0;
        for (double x = -3; x <= 7; x += 0.0137) {
            const double t = std::pow(10.0, x);
            worst = std::max(worst, std::fabs(table.pressure(t) / w.pressure(t) - 1));
        }
        EXPECT_LT(worst, 1e-6) << "model " << static_cast<int>(w.kind);
        EXPECT_EQ(table.pressure(1e9), w.pressure(1e9));
    }
}

// Wells outside a model's domain are run-time faults, never NaN: a closed circle inside the
// well, a negative fracture-face skin, omega above 1.
TEST(DimensionlessWell, WellsOutsideTheirDomainAreFaults) {
    const DimensionlessWell bad[] = {
        well(K::RadialClosed, 10, 0, 1.2),
        well(K::FractureInfinite, 0.1, -0.5),
        well(K::DualPss, 10, 0, 0, 1.5, 1e-6),
        well(K::Radial, 0),
    };
    for (const DimensionlessWell& w : bad)
        EXPECT_EQ(testing::raised([&] { return w.pressure(1.0); }).fault, Fault::InvalidArgument);
}

} // namespace
} // namespace zorvekan
