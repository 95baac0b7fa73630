// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace zorvekan {

struct Rgb {
    std::uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(Rgb, Rgb) = default;
};

// The colours the plots are drawn and erased with.
inline constexpr Rgb kBlack{0, 0, 0};
inline constexpr Rgb kWhite{255, 255, 255};
inline constexpr Rgb kNearWhite{250, 250, 250};  // erases a pick mark
inline constexpr Rgb kDataBlue{0, 0, 255};       // pressure points
inline constexpr Rgb kDerivativeRed{255, 0, 0};  // derivative points, line validity marks
inline constexpr Rgb kMarkGreen{0, 250, 0};      // flow-regime pick marks
inline constexpr Rgb kCurveGreen{0, 255, 0};     // type curves
inline constexpr Rgb kMagenta{255, 0, 255};      // the picked type curve
inline constexpr Rgb kPurple{140, 0, 140};       // pseudosteady-state picks
inline constexpr Rgb kLightBlue{100, 100, 255};  // derivative overlay on type curves
inline constexpr Rgb kFittedOrange{230, 120, 0}; // the model of the last regression

// A drawing surface in plot units. Every plot is drawn through this interface, so
// the same drawing code paints the screen, the printed page and a recording canvas
// in the tests. Coordinates are in the user system set by setUserWindow (a negative
// height makes y grow upward); text is placed with its top-left corner at (x, y).
class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void setUserWindow(double left, double top, double width, double height) = 0;
    // One pixel factor for both axes (the window fitted and centred), as a log-log
    // plot needs to keep its decades square; stays set until changed.
    virtual void setSquareUnits(bool /*square*/) {}
    // Drops the persistent picture and clears the drawing.
    virtual void clear() = 0;
    virtual void setPenColor(Rgb colour) = 0;
    virtual void setPenWidth(int width) = 0;
    virtual void setDashed(bool dashed) = 0;
    virtual void line(double x1, double y1, double x2, double y2) = 0;
    virtual void dot(double x, double y) = 0;
    virtual void text(double x, double y, std::string_view text) = 0;
    // The label of a tick, placed as text. A surface keeps it whole inside its edges and
    // leaves out one that would cover a label already drawn, so a crowded axis shows
    // the labels that fit rather than an unreadable or truncated pile.
    virtual void tickLabel(double x, double y, std::string_view label) { text(x, y, label); }
    // Text turned a quarter to read upwards, as an axis title stands beside a vertical
    // axis: its left edge at x, centred on y. Without rotation it is plain text.
    virtual void verticalText(double x, double y, std::string_view text) { this->text(x, y, text); }

    // Between these, drawing is transient (a rubber band and what it repaints): it shows
    // at once but is not part of the picture a resized or exported plot is drawn from.
    virtual void beginTransient() {}
    virtual void endTransient() {}
};

} // namespace zorvekan
