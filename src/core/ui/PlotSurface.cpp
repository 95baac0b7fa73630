// SPDX-License-Identifier: MIT
#include "core/ui/PlotSurface.h"

#include <QFileInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgGenerator>

#include <cmath>

namespace zorvekan {

namespace {

constexpr double kPlotFontPoints = 8.0;

QPen penFor(const QColor& colour, int width, bool dashed) {
    QPen pen(colour, width);
    pen.setCapStyle(Qt::FlatCap);
    if (dashed)
        pen.setStyle(Qt::DashLine);
    return pen;
}

} // namespace

PlotSurface::PlotSurface(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setMinimumSize(160, 120);
    QFont f = font();
    f.setPointSizeF(kPlotFontPoints);
    setFont(f);
    rebuildImage();
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
    m_window = {left, top, width, height};
}

void PlotSurface::clear() {
    m_ops.clear();
    rebuildImage();
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
    record({Kind::Line, m_window, m_colour, m_penWidth, m_dashed, x1, y1, x2, y2, {}});
}

void PlotSurface::dot(double x, double y) {
    record({Kind::Dot, m_window, m_colour, m_penWidth, false, x, y, x, y, {}});
}

void PlotSurface::text(double x, double y, std::string_view t) {
    if (t.empty())
        return;
    record({Kind::Text, m_window, m_colour, m_penWidth, false, x, y, x, y,
            QString::fromUtf8(t.data(), static_cast<qsizetype>(t.size()))});
}

const QImage& PlotSurface::picture() const {
    fitImageToSize();
    return m_image;
}

void PlotSurface::fitImageToSize() const {
    const QSize logical = size().expandedTo(QSize(1, 1));
    if (m_image.deviceIndependentSize().toSize() != logical ||
        m_image.devicePixelRatio() != devicePixelRatioF())
        rebuildImage();
}

void PlotSurface::record(Op op) {
    fitImageToSize();
    QPainter painter(&m_image);
    painter.setFont(font());
    paintOp(painter, op, width(), height());
    if (!m_transient)
        m_ops.push_back(std::move(op));
    update();
}

void PlotSurface::paintOp(QPainter& painter, const Op& op, double deviceWidth,
                          double deviceHeight) const {
    const PlotFrame f(op.window, deviceWidth, deviceHeight);
    const QPointF a(f.toDeviceX(op.x1), f.toDeviceY(op.y1));
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
        painter.setPen(op.colour);
        painter.drawText(QRectF(a, QSizeF(deviceWidth, deviceHeight)),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, op.text);
        break;
    }
}

void PlotSurface::rebuildImage() const {
    const qreal ratio = devicePixelRatioF();
    const QSize logical = size().expandedTo(QSize(1, 1));
    m_image = QImage(logical * ratio, QImage::Format_RGB32);
    m_image.setDevicePixelRatio(ratio);
    m_image.fill(Qt::white);
    QPainter painter(&m_image);
    painter.setFont(font());
    for (const Op& op : m_ops)
        paintOp(painter, op, logical.width(), logical.height());
}

void PlotSurface::paintEvent(QPaintEvent*) {
    fitImageToSize();
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), m_image);
}

void PlotSurface::resizeEvent(QResizeEvent*) {
    rebuildImage();
}

void PlotSurface::mousePressEvent(QMouseEvent* event) {
    const QPointF p = event->position();
    Q_EMIT mouseDown(event->button(), toUserX(p.x()), toUserY(p.y()));
}

void PlotSurface::mouseMoveEvent(QMouseEvent* event) {
    const QPointF p = event->position();
    Q_EMIT mouseMove(event->buttons(), toUserX(p.x()), toUserY(p.y()));
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
    for (const Op& op : m_ops)
        paintOp(painter, op, width(), height());
    painter.end();
    return {};
}

} // namespace zorvekan
