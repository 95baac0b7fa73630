// SPDX-License-Identifier: MIT
// The property calculator's oil test: a 35 API oil with 500 scf/STB of a 0.75 gas at
// 3000 psia and 200 F, in a 20 % porosity rock with 70 % oil and 30 % water.
#pragma once

#include "properties/property_calculator.h"

namespace zorvekan::testing {

inline PropertyInputs oilPropertyInputs() {
    PropertyInputs in;
    in.gasGravity = 0.75;
    in.temperature = 200;
    in.pressure = 3000;
    in.api = 35;
    in.gor = 500;
    in.porosity = 0.2;
    in.oilSaturation = 0.7;
    in.waterSaturation = 0.3;
    return in;
}

} // namespace zorvekan::testing
