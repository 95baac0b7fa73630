// SPDX-License-Identifier: MIT
// A canvas that records what drawing code does, so tests can check which lines,
// points and labels a plot draws and in which colour.
#pragma once

#include "core/canvas.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zorvekan::testing {

struct RecordingCanvas : Canvas {
    struct Text {
        double x, y;
        std::string text;
        Rgb colour;
        bool vertical = false; // turned to read upwards
    };
    struct Line {
        double x1, y1, x2, y2;
        Rgb colour;
        int width;
        bool dashed;
    };
    struct Dot {
        double x, y;
        Rgb colour;
    };
    std::vector<Text> texts;
    std::vector<Line> lines;
    std::vector<Dot> dots;
    double left = 0, top = 0, width = 0, height = 0;
    Rgb colour;
    int penWidth = 1;
    bool dashed = false;
    int clears = 0;

    void setUserWindow(double l, double t, double w, double h) override {
        left = l, top = t, width = w, height = h;
    }
    void clear() override {
        texts.clear();
        lines.clear();
        dots.clear();
        ++clears;
    }
    void setPenColor(Rgb c) override { colour = c; }
    void setPenWidth(int w) override { penWidth = w; }
    void setDashed(bool d) override { dashed = d; }
    void line(double x1, double y1, double x2, double y2) override {
        lines.push_back({x1, y1, x2, y2, colour, penWidth, dashed});
    }
    void dot(double x, double y) override { dots.push_back({x, y, colour}); }
    void text(double x, double y, std::string_view t) override {
        texts.push_back({x, y, std::string(t), colour});
    }

    void verticalText(double x, double y, std::string_view t) override {
        texts.push_back({x, y, std::string(t), colour, true});
    }

    const Text* findText(std::string_view t) const {
        const auto it =
            std::find_if(texts.begin(), texts.end(), [&](const Text& x) { return x.text == t; });
        return it == texts.end() ? nullptr : &*it;
    }
    int dotsIn(Rgb c) const {
        return static_cast<int>(
            std::count_if(dots.begin(), dots.end(), [&](const Dot& d) { return d.colour == c; }));
    }
};

} // namespace zorvekan::testing
