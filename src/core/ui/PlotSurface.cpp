// SPDX-License-Identifier: MIT
#include "core/ui/PlotSurface.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgGenerator>

#include <cmath>

namespace zorvekan {

namespace {

constexpr double kPlotFontPoints = 8.0;
constexpr double kLabelGap = 2.0; // pixels kept free between two tick labels

QPen penFor(const QColor& colour, int width, bool dashed) {
    QPen pen(colour, width);
    pen.setCapStyle(Qt::FlatCap);
    if (dashed)
        pen.setStyle(Qt::DashLine);
    return pen;
}

// Moves a text box inside the area, right and bottom edges first so that a box wider
// than the area keeps its start.
QRectF keptInside(QRectF box, const QRectF& area) {
    if (box.right() > area.right())
        box.moveRight(area.right());
    if (box.left() < area.left())
        box.moveLeft(area.left());
    if (box.bottom() > area.bottom())
        box.moveBottom(area.bottom());
    if (box.top() < area.top())
        box.moveTop(area.top());
    return box;
}

} // namespace

struct PlotSurface::Pass {
    QPainter& painter;
    QSizeF device;
    QFontMetricsF metrics;
    std::vector<PaintedText>& texts;
};

PlotSurface::PlotSurface(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setMinimumSize(160, 120);
    QFont f = font();
    f.setPointSizeF(kPlotFontPoints);
    setFont(f);
}

QSize PlotSurface::sizeHint() const {
    return {520, 340};
}

PlotFrame PlotSurface::frame() const {
    return PlotFrame(m_window, width(), height());
}

double PlotSurface::toUserX(double px) const {
    return frame().toUserX(px);
}

double PlotSurface::toUserY(double py) const {
    return frame().toUserY(py);
}

QPointF PlotSurface::toDevice(double x, double y) const {
    const PlotFrame f = frame();
    return {f.toDeviceX(x), f.toDeviceY(y)};
}

void PlotSurface::setUserWindow(double left, double top, double width, double height) {
    m_window = {left, top, width, height, m_window.square};
}

void PlotSurface::setSquareUnits(bool square) {
    m_window.square = square;
}

void PlotSurface::clear() {
    m_ops.clear();
    m_pending.clear();
    m_stale = true;
    update();
}

void PlotSurface::dropTransient() {
    std::erase_if(m_pending, [](const Op& op) { return op.transient; });
    m_stale = true;
    update();
}

void PlotSurface::setPenColor(Rgb c) {
    m_colour = QColor(c.r, c.g, c.b);
}

void PlotSurface::setPenWidth(int width) {
    m_penWidth = std::max(1, width);
}

void PlotSurface::setDashed(bool dashed) {
    m_dashed = dashed;
}

void PlotSurface::line(double x1, double y1, double x2, double y2) {
    record({Kind::Line, m_transient, m_window, m_colour, m_penWidth, m_dashed, x1, y1, x2, y2, {}});
}

void PlotSurface::dot(double x, double y) {
    record({Kind::Dot, m_transient, m_window, m_colour, m_penWidth, false, x, y, x, y, {}});
}

void PlotSurface::text(double x, double y, std::string_view t) {
    recordText(Kind::Text, x, y, t);
}

void PlotSurface::tickLabel(double x, double y, std::string_view label) {
    recordText(Kind::TickLabel, x, y, label);
}

void PlotSurface::verticalText(double x, double y, std::string_view t) {
    recordText(Kind::VerticalText, x, y, t);
}

void PlotSurface::recordText(Kind kind, double x, double y, std::string_view t) {
    if (t.empty())
        return;
    record({kind, m_transient, m_window, m_colour, m_penWidth, false, x, y, x, y,
            QString::fromUtf8(t.data(), static_cast<qsizetype>(t.size()))});
}

void PlotSurface::record(Op op) {
    if (!op.transient)
        m_ops.push_back(op);
    m_pending.push_back(std::move(op));
    update();
}

const QImage& PlotSurface::picture() const {
    flush();
    return m_image;
}

std::vector<PlotSurface::PaintedText> PlotSurface::paintedTexts() const {
    flush();
    return m_painted;
}

void PlotSurface::flush() const {
    const QSize logical = size().expandedTo(QSize(1, 1));
    if (m_stale || m_image.deviceIndependentSize().toSize() != logical ||
        m_image.devicePixelRatio() != devicePixelRatioF()) {
        rebuildImage();
        return;
    }
    if (m_pending.empty())
        return;
    QPainter painter(&m_image);
    painter.setFont(font());
    Pass pass{painter, QSizeF(logical), QFontMetricsF(font(), &m_image), m_painted};
    for (const Op& op : m_pending)
        paintOp(pass, op);
    m_pending.clear();
}

void PlotSurface::rebuildImage() const {
    const qreal ratio = devicePixelRatioF();
    const QSize logical = size().expandedTo(QSize(1, 1));
    m_image = QImage(logical * ratio, QImage::Format_RGB32);
    m_image.setDevicePixelRatio(ratio);
    m_image.fill(Qt::white);
    m_painted.clear();
    m_stale = false;
    QPainter painter(&m_image);
    painter.setFont(font());
    Pass pass{painter, QSizeF(logical), QFontMetricsF(font(), &m_image), m_painted};
    for (const Op& op : m_ops)
        paintOp(pass, op);
    // A rubber band drawn since the last paint still shows over the picture.
    for (const Op& op : m_pending)
        if (op.transient)
            paintOp(pass, op);
    m_pending.clear();
}

void PlotSurface::paintOp(Pass& pass, const Op& op) const {
    const PlotFrame f(op.window, pass.device.width(), pass.device.height());
    const QPointF a(f.toDeviceX(op.x1), f.toDeviceY(op.y1));
    QPainter& painter = pass.painter;
    switch (op.kind) {
    case Kind::Line:
        painter.setPen(penFor(op.colour, op.width, op.dashed));
        painter.drawLine(a, QPointF(f.toDeviceX(op.x2), f.toDeviceY(op.y2)));
        break;
    case Kind::Dot: {
        // A dot as wide as the pen, centred on the point.
        const double side = op.width;
        painter.fillRect(QRectF(a.x() - side / 2, a.y() - side / 2, side, side), op.colour);
        break;
    }
    case Kind::Text:
    case Kind::TickLabel:
    case Kind::VerticalText:
        paintText(pass, op, a);
        break;
    }
}

// A text whose anchor lies on the surface is kept whole inside it; a tick label that
// would cover one already painted, or whose tick is off the surface, is left out.
void PlotSurface::paintText(Pass& pass, const Op& op, QPointF anchor) const {
    const double w = pass.metrics.horizontalAdvance(op.text);
    const double h = pass.metrics.height();
    const bool vertical = op.kind == Kind::VerticalText;
    const bool tick = op.kind == Kind::TickLabel;
    QRectF box =
        vertical ? QRectF(anchor.x(), anchor.y() - w / 2, h, w) : QRectF(anchor, QSizeF(w, h));
    const QRectF area(QPointF(0, 0), pass.device);
    if (area.contains(anchor)) {
        box = keptInside(box, area);
    } else if (tick) {
        return;
    }
    if (tick) {
        const QRectF spaced = box.adjusted(-kLabelGap, 0, kLabelGap, 0);
        for (const PaintedText& other : pass.texts)
            if (other.tickLabel && other.box.intersects(spaced))
                return;
    }
    QPainter& painter = pass.painter;
    painter.setPen(op.colour);
    if (vertical) {
        painter.save();
        painter.translate(box.left(), box.bottom());
        painter.rotate(-90);
        painter.drawText(QRectF(0, 0, w, h), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                         op.text);
        painter.restore();
    } else {
        painter.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, op.text);
    }
    pass.texts.push_back({op.text, box, tick});
}

void PlotSurface::paintEvent(QPaintEvent*) {
    flush();
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), m_image);
}

void PlotSurface::resizeEvent(QResizeEvent*) {
    m_stale = true;
}

void PlotSurface::mousePressEvent(QMouseEvent* event) {
    const QPointF p = event->position();
    Q_EMIT mouseDown(event->button(), toUserX(p.x()), toUserY(p.y()));
}

void PlotSurface::mouseMoveEvent(QMouseEvent* event) {
    const QPointF p = event->position();
    const double x = toUserX(p.x()), y = toUserY(p.y());
    Q_EMIT mouseMove(event->buttons(), x, y);
    if (!m_readout)
        return;
    std::string text;
    try {
        text = m_readout(x, y);
    } catch (...) {
        text.clear(); // a position with no data value (beyond an axis' range) reads nothing
    }
    Q_EMIT readoutChanged(QString::fromStdString(text));
}

void PlotSurface::leaveEvent(QEvent*) {
    if (m_readout)
        Q_EMIT readoutChanged({});
}

QString PlotSurface::writePicture(const QString& path) const {
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QStringLiteral("png")) {
        if (!picture().save(path, "PNG"))
            return QStringLiteral("Cannot write the picture to %1.").arg(path);
        return {};
    }
    if (suffix != QStringLiteral("svg"))
        return QStringLiteral("A picture is written as .svg or .png, not %1.").arg(path);
    QSvgGenerator svg;
    svg.setFileName(path);
    svg.setSize(size());
    svg.setViewBox(QRect(QPoint(0, 0), size()));
    svg.setTitle(QStringLiteral("Zorvekan plot"));
    QPainter painter;
    if (!painter.begin(&svg))
        return QStringLiteral("Cannot write the picture to %1.").arg(path);
    painter.fillRect(rect(), Qt::white);
    painter.setFont(font());
    std::vector<PaintedText> texts;
    Pass pass{painter, QSizeF(size()), QFontMetricsF(font(), &svg), texts};
    for (const Op& op : m_ops)
        paintOp(pass, op);
    painter.end();
    return {};
}

} // namespace zorvekan
