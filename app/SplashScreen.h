// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

namespace zorvekan {

struct ScreenContext;
class PlotSurface;

// Form1: the start-up screen with the program title, a diagnostic-plot picture and a
// credit line. Its timer Timer1 fires once, 1500 ms after the screen is made; then the
// screen hides and the input screen opens.
class SplashScreen : public QWidget {
    Q_OBJECT

public:
    static constexpr int kShowMilliseconds = 1500;

    explicit SplashScreen(ScreenContext& context, QWidget* parent = nullptr);

private:
    void timerFired();

    ScreenContext& m_ctx;
    QTimer* m_timer;
    PlotSurface* m_picture;
};

} // namespace zorvekan
