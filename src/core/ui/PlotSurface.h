// SPDX-License-Identifier: MIT
#pragma once

#include "core/canvas.h"
#include "core/plot_frame.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QString>
#include <QWidget>

#include <vector>

class QPainter;

namespace zorvekan {

// The picture box of every plot. Drawing code addresses it through Canvas in plot
// units; each primitive is painted at once into a persistent image (kept while the
// window is hidden, used for printing) and also kept in a display list, so the
// picture can be painted again at a new size and written as SVG.
// Mouse presses and moves are reported in plot units.
class PlotSurface : public QWidget, public Canvas {
    Q_OBJECT

public:
    explicit PlotSurface(QWidget* parent = nullptr);

    void setUserWindow(double left, double top, double width, double height) override;
    void clear() override;
    void setPenColor(Rgb colour) override;
    void setPenWidth(int width) override;
    void setDashed(bool dashed) override;
    void line(double x1, double y1, double x2, double y2) override;
    void dot(double x, double y) override;
    void text(double x, double y, std::string_view text) override;
    void beginTransient() override { m_transient = true; }
    void endTransient() override { m_transient = false; }

    // The persistent picture as it stands, at the surface's current size.
    const QImage& picture() const;

    // Plot units of a point of the widget.
    double toUserX(double px) const;
    double toUserY(double py) const;
    // The widget point of a position in plot units (where a click lands on it).
    QPointF toDevice(double x, double y) const;

    // The picture alone, as PNG (the image) or SVG (the display list), by extension.
    // Returns an error text, empty when written.
    QString writePicture(const QString& path) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void mouseDown(Qt::MouseButton button, double x, double y);
    void mouseMove(Qt::MouseButtons buttons, double x, double y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    enum class Kind { Line, Dot, Text };
    struct Op {
        Kind kind;
        UserWindow window;
        QColor colour;
        int width;
        bool dashed;
        double x1, y1, x2, y2;
        QString text;
    };

    void record(Op op);
    void paintOp(QPainter& painter, const Op& op, double deviceWidth, double deviceHeight) const;
    void rebuildImage() const;
    void fitImageToSize() const;
    PlotFrame frame() const;

    UserWindow m_window{0, 0, 100, 100};
    QColor m_colour = Qt::black;
    int m_penWidth = 1;
    bool m_dashed = false;
    std::vector<Op> m_ops;
    bool m_transient = false; // painted, not kept in m_ops
    mutable QImage m_image;   // follows the size lazily: a hidden widget gets no resize event
};

} // namespace zorvekan
