// SPDX-License-Identifier: MIT
#pragma once

namespace zorvekan {

inline constexpr const char* kProgramName = "Zorvekan";
inline constexpr const char* kProgramTitle = "ZORVEKAN"; // window captions use the capitals
inline constexpr const char* kProgramVersion = "0.1.0";
inline constexpr const char* kProgramPurpose = "Pressure-Transient Analysis of Well Tests";

} // namespace zorvekan
