// SPDX-License-Identifier: MIT
#pragma once

#include "core/canvas.h"
#include "core/plot_frame.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QPainter;

namespace zorvekan {

// The picture box of every plot. Drawing code addresses it through Canvas in plot
// units; each primitive is kept in a display list and painted into a persistent image
// (kept while the window is hidden, used for printing) with one painter for all that
// was drawn since the last paint. The display list paints the picture again at a new
// size and writes it as SVG. Mouse presses and moves are reported in plot units.
//
// What every plot gets from it:
// - square units (setSquareUnits): one pixel factor for both axes, so a log-log
//   plot's decades are square whatever the surface's shape;
// - text kept whole inside the surface, tick labels that would cover an earlier
//   one left out, axis titles turned to read upwards (verticalText);
// - a cursor readout (setReadout): the data under the cursor as text, for a status
//   line, sent with readoutChanged.
class PlotSurface : public QWidget, public Canvas {
    Q_OBJECT

public:
    explicit PlotSurface(QWidget* parent = nullptr);

    void setUserWindow(double left, double top, double width, double height) override;
    void setSquareUnits(bool square) override;
    void clear() override;
    void setPenColor(Rgb colour) override;
    void setPenWidth(int width) override;
    void setDashed(bool dashed) override;
    void line(double x1, double y1, double x2, double y2) override;
    void dot(double x, double y) override;
    void text(double x, double y, std::string_view text) override;
    void tickLabel(double x, double y, std::string_view label) override;
    void verticalText(double x, double y, std::string_view text) override;
    void beginTransient() override { m_transient = true; }
    void endTransient() override { m_transient = false; }

    // Paints the picture again from what it keeps, dropping transient drawing (the
    // rubber band of a line given up).
    void dropTransient();

    // The persistent picture as it stands, at the surface's current size.
    const QImage& picture() const;

    // Where each text of the picture landed, in widget pixels (tick labels left out
    // for lack of room are absent).
    struct PaintedText {
        QString text;
        QRectF box;
        bool tickLabel = false;
    };
    std::vector<PaintedText> paintedTexts() const;

    // Plot units of a point of the widget.
    double toUserX(double px) const;
    double toUserY(double py) const;
    // The widget point of a position in plot units (where a click lands on it).
    QPointF toDevice(double x, double y) const;

    // The data under the cursor, as text from a position in plot units; an empty text
    // shows nothing. Sent with readoutChanged as the mouse moves.
    using Readout = std::function<std::string(double x, double y)>;
    void setReadout(Readout readout) { m_readout = std::move(readout); }

    // The picture alone, as PNG (the image) or SVG (the display list), by extension.
    // Returns an error text, empty when written.
    QString writePicture(const QString& path) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void mouseDown(Qt::MouseButton button, double x, double y);
    void mouseMove(Qt::MouseButtons buttons, double x, double y);
    // The cursor readout at the mouse, empty when the mouse leaves the surface.
    void readoutChanged(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    enum class Kind { Line, Dot, Text, TickLabel, VerticalText };
    struct Op {
        Kind kind;
        bool transient;
        UserWindow window;
        QColor colour;
        int width;
        bool dashed;
        double x1, y1, x2, y2;
        QString text;
    };
    struct Pass; // one painter over one picture

    void record(Op op);
    void recordText(Kind kind, double x, double y, std::string_view text);
    void paintOp(Pass& pass, const Op& op) const;
    void paintText(Pass& pass, const Op& op, QPointF anchor) const;
    void flush() const;
    void rebuildImage() const;
    PlotFrame frame() const;

    UserWindow m_window{0, 0, 100, 100};
    QColor m_colour = Qt::black;
    int m_penWidth = 1;
    bool m_dashed = false;
    std::vector<Op> m_ops;             // the picture
    bool m_transient = false;          // painted, not kept in m_ops
    mutable std::vector<Op> m_pending; // drawn, not yet painted into m_image
    mutable bool m_stale = true;       // m_image must be painted anew from m_ops
    mutable QImage m_image;            // follows the size lazily: a hidden widget is not resized
    mutable std::vector<PaintedText> m_painted;
    Readout m_readout;
};

} // namespace zorvekan
