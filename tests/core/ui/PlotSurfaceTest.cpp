// SPDX-License-Identifier: MIT
#include "core/ui/PlotSurface.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class PlotSurfaceTest : public QObject {
    Q_OBJECT

private:
    // A 200 x 120 surface showing x 0..100 and y 0..100 upward: 2 px per unit across,
    // 1.2 px per unit down.
    static void frame(PlotSurface& s) {
        s.resize(200, 120);
        s.setUserWindow(0, 100, 100, -100);
    }
    static QRgb at(const PlotSurface& s, int x, int y) {
        const QImage& img = s.picture();
        const qreal r = img.devicePixelRatio();
        return img.pixel(int(x * r), int(y * r));
    }

private Q_SLOTS:
    // Lines and dots must land where the user coordinates say, with y upward; a flipped
    // or offset mapping moves every data point of every plot.
    void drawsInUserCoordinates() {
        PlotSurface s;
        frame(s);
        s.setPenColor({0, 0, 255});
        s.line(0, 50, 100, 50); // device y = 60
        QCOMPARE(at(s, 100, 60), qRgb(0, 0, 255));
        QCOMPARE(at(s, 100, 40), qRgb(255, 255, 255));
        s.setPenColor({255, 0, 0});
        s.setPenWidth(3);
        s.dot(25, 25); // device (50, 90)
        QCOMPARE(at(s, 50, 90), qRgb(255, 0, 0));
        QCOMPARE(at(s, 50, 30), qRgb(255, 255, 255));
    }

    // Erasing is drawing over in white: the pixels must come back exactly white, with
    // no antialiased residue of the erased line (the rubber band depends on it).
    void whiteLineErases() {
        PlotSurface s;
        frame(s);
        s.line(10, 10, 90, 70);
        s.setPenColor({255, 255, 255});
        s.line(10, 10, 90, 70);
        const QImage& img = s.picture();
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                QCOMPARE(img.pixel(x, y), qRgb(255, 255, 255));
    }

    // The picture is kept while hidden and redrawn at a new size from what was drawn;
    // a rubber band (transient drawing) shows but is not kept, so a resized plot does
    // not bring back every band drawn since the last redraw; clear removes it all.
    void pictureKeptWhileHiddenAndResized() {
        PlotSurface s;
        frame(s);
        s.show();
        s.line(0, 50, 100, 50); // device y = 60
        s.beginTransient();
        s.line(0, 20, 100, 20); // device y = 96
        s.endTransient();
        QCOMPARE(at(s, 100, 96), qRgb(0, 0, 0));
        s.hide();
        s.resize(400, 240);
        QCOMPARE(at(s, 300, 120), qRgb(0, 0, 0)); // the kept line, twice the size
        QCOMPARE(at(s, 300, 192), qRgb(255, 255, 255));
        s.clear();
        QCOMPARE(at(s, 300, 120), qRgb(255, 255, 255));
    }

    // Mouse positions must come back in plot units so picks invert the axes.
    void mouseInPlotUnits() {
        PlotSurface s;
        frame(s);
        s.show();
        QSignalSpy down(&s, &PlotSurface::mouseDown);
        QTest::mouseClick(&s, Qt::LeftButton, {}, QPoint(50, 90));
        QCOMPARE(down.count(), 1);
        QCOMPARE(down.first().at(0).value<Qt::MouseButton>(), Qt::LeftButton);
        QCOMPARE(down.first().at(1).toDouble(), 25.0);
        QCOMPARE(down.first().at(2).toDouble(), 25.0);
    }

    // Labels are kept whole inside the surface (a "100000" at the right edge must not
    // read "10000"), a tick label that would cover another or whose tick is off the
    // surface is left out, and an axis title stands turned, taller than wide.
    void labelsStayWholeAndApart() {
        PlotSurface s;
        frame(s);
        s.tickLabel(95, 50, "100000");
        s.tickLabel(96, 50, "99999");  // covers the first
        s.tickLabel(150, 50, "1E+06"); // tick beyond the right edge
        s.text(96, 45, "Transient -->");
        s.verticalText(2, 50, "Pressure psi");
        const QRectF area(QPointF(0, 0), QSizeF(s.size()));
        QStringList painted;
        for (const auto& t : s.paintedTexts()) {
            painted << t.text;
            QVERIFY2(area.contains(t.box), qPrintable(t.text));
            if (t.text == u"Pressure psi"_s)
                QVERIFY(t.box.height() > 3 * t.box.width());
        }
        QCOMPARE(painted, (QStringList{u"100000"_s, u"Transient -->"_s, u"Pressure psi"_s}));
    }

    // A plot picture can go into a report as SVG or PNG; other extensions are refused.
    void writesPicture() {
        PlotSurface s;
        frame(s);
        s.line(0, 0, 100, 100);
        s.text(10, 90, "Semilog Plot");
        QTemporaryDir dir;
        QVERIFY(s.writePicture(dir.filePath(QStringLiteral("p.png"))).isEmpty());
        QVERIFY(!QImage(dir.filePath(QStringLiteral("p.png"))).isNull());
        QVERIFY(s.writePicture(dir.filePath(QStringLiteral("p.svg"))).isEmpty());
        QFile svg(dir.filePath(QStringLiteral("p.svg")));
        QVERIFY(svg.open(QIODevice::ReadOnly));
        const QByteArray text = svg.readAll();
        QVERIFY(text.contains("<svg"));
        QVERIFY(text.contains("Semilog Plot"));
        QVERIFY(!s.writePicture(dir.filePath(QStringLiteral("p.bmp"))).isEmpty());
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::PlotSurfaceTest)
#include "PlotSurfaceTest.moc"
