// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace zorvekan {

// Formats a number with a display mask in the manner of BASIC's Format:
//   '#'  a digit when there is one ("#.###" shows 0.5 as ".5", never a leading zero);
//   '0'  a digit always, padding with zeros ("0.##" shows 0.5 as "0.5");
//   '.'  the decimal point, always printed when the mask has one ("##." shows 12 as "12.");
//   '%'  multiplies by 100 and prints the sign;
//   "E-00" / "E+00" after the digits: scientific form with the exponent sign shown
//        only when negative (E-) or always (E+), padded to the number of '0's
//        ("#.0E-00" shows 12345 as "1.2E04" and 0.00012 as "1.2E-04").
// Integer digits beyond the placeholders are all printed ("#." shows 1234 as "1234.").
// Rounding is half away from zero on the 15-significant-digit decimal form of the
// value, so 1.005 under "#.##" is "1.01". Negative values get a leading "-".
// A mask may have sections "positive;negative;zero" as in BASIC.
std::string Format(double value, std::string_view mask);

// Number-to-text as BASIC's Str: up to 15 significant digits, a leading blank
// in place of the sign of a non-negative number, no zero before the decimal point
// (" .5"), and the exponent form for magnitudes below 1E-4 or from 1E15 on
// (" 1E-05", " 1.5E+15").
std::string Str(double value);

} // namespace zorvekan
