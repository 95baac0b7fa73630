// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

namespace zorvekan {

// Pseudo-skins of the completion geometry. Lengths in the units the engineer types
// them on the skin screen: net pay and intervals in ft, wellbore radius and
// perforation length and radius in inches; `ratio` is kv/kh.

// Slant-hole skin of Cinco-Ley, Miller and Ramey:
//   thw' = atan(sqrt(kv/kh) * tan(thw)),  hD = (12 h / rw) * sqrt(kh/kv),
//   s_theta = -(thw'/41)^2.06 - (thw'/56)^1.865 * log10(hD/100),   angles in degrees,
// converted with 3.14159/180 both ways.
double slantHoleSkin(double angleDegrees, double netPay, double wellboreRadius, double ratio);

// G(b) of Brons and Marting, linear between the tabulated points b = 0.1, 0.2, 0.4,
// 0.6, 0.8 on the segment lower <= b < upper; 0 outside them, so also at b = 0.8.
double bronsMartingG(double b);

// Brons-Marting pseudo-skin of an open interval that is the fraction b of the net pay:
//   s = (1/b - 1) * (ln hD - G(b)),  hD = (12 * thickness / rw) * sqrt(kh/kv);
// none outside 0.1 <= b <= 0.8, where the correlation does not reach.
std::optional<double> bronsMartingSkin(double b, double thickness, double wellboreRadius,
                                       double ratio);

// Partial penetration: b = hp/h, hD from the whole net pay h.
std::optional<double> partialPenetrationSkin(double penetrated, double netPay,
                                             double wellboreRadius, double ratio);

// Partial completion: b = hc/h, hD from half the production interval, hc/2 (the
// completed interval drains above and below its middle).
std::optional<double> partialCompletionSkin(double completed, double netPay, double wellboreRadius,
                                            double ratio);

// The perforation phasings of Karakas and Tariq, in the order of the phasing options.
inline constexpr int kPhasingCount = 6;
inline constexpr std::array<int, kPhasingCount> kPhasingDegrees = {0, 45, 60, 90, 120, 180};

// Karakas-Tariq constants of one phasing.
struct PerforationConstants {
    double alpha; // effective-radius factor a_theta (0 deg: not used, r'we = lp/4)
    double a1, a2, b1, b2, c1, c2;
};

// The constants of phasing index 1..6 (0, 45, 60, 90, 120, 180 deg).
const PerforationConstants& karakasTariqConstants(int phasingIndex);

// Phasing index 1..6 of an angle in degrees; none for any other angle.
std::optional<int> phasingIndexOf(int degrees);

struct PerforationSkin {
    double horizontal = 0; // sH = ln(rw / r'we)
    double wellbore = 0;   // sWb = c1 * exp(c2 * rw/(lp + rw))
    double vertical = 0;   // sV = 10^a * hD^(b-1) * rpD^b
    double total() const { return horizontal + wellbore + vertical; }
};

// Karakas-Tariq perforation skin, all lengths in inches except the shot density
// (shots/ft): r'we = lp/4 at 0 deg, else a_theta (rw + lp); perforation spacing
// h = 12/n; hD = (h/lp) sqrt(kh/kv); rpD = (rp/(2h)) (1 + sqrt(kv/kh));
// a = a1 log10(rpD) + a2; b = b1 rpD + b2.
PerforationSkin perforationSkin(int phasingIndex, double wellboreRadius, double shotsPerFoot,
                                double perforationLength, double perforationRadius, double ratio);

} // namespace zorvekan
