// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorvekan {

// Formation (pore-volume) compressibility by the correlation and rock class chosen on
// the correlation dialog, both recognised by their first three letters.
struct FormationCompressibility {
    std::optional<double> value; // 1/psi
    std::string remark;          // why there is no value, or which fit was used
};

// porosity as a fraction. Hall: all rocks; Newman: consolidated sands and carbonates
// (Newman fitted no curve to his friable and unconsolidated samples); Van der Knaap
// and Yale et al.: no coefficients are held by this program.
FormationCompressibility formationCompressibility(std::string_view formation,
                                                  std::string_view rockClass, double porosity);

} // namespace zorvekan
