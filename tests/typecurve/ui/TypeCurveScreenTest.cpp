// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/ui/PlotSurface.h"
#include "input/test_file.h"
#include "typecurve/library_file.h"
#include "typecurve/ui/TypeCurveScreen.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <numbers>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class TypeCurveScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    TypeCurveScreen* kv2 = nullptr;

    // Opens an example test and the type-curve screen as the navigation list does.
    void openExample(const QString& file) {
        const OpenResult r =
            openTestFile(t->state, std::string(SOURCE_DIR) + "/examples/" + file.toStdString());
        QVERIFY2(r.ok, r.error.message().c_str());
        t->show("inp");
        clickItem(t->screen("inp"), "List1", u"Type Curve Analysis"_s);
        kv2 = t->screen<TypeCurveScreen>("kv2");
        QVERIFY(kv2 && kv2->isVisible());
    }

    PlotSurface* tcrv() { return child<PlotSurface>(kv2, "tcrv"); }

    // A click on tcrv at a position in plot units.
    void clickAt(double x, double y) {
        QTest::mouseClick(tcrv(), Qt::LeftButton, {}, tcrv()->toDevice(x, y).toPoint());
    }

    // Where a prepared point (log time, log value) is drawn now.
    QPointF drawnAt(double logTime, double logValue) const {
        const TypeCurveGrid g = kv2->grid();
        const DataPlacement& p = kv2->view().placement;
        return {p.sx + g.scale * (logTime - p.xd0), p.sy + g.scale * (logValue - p.yd0)};
    }

    // Shift Data by two clicks the given distance apart, around the middle of the grid.
    void shiftBy(double dx, double dy) {
        clickItem(kv2, "List1", u"Shift Data"_s);
        clickAt(50 - dx / 2, 30 - dy / 2);
        QVERIFY(shown(kv2, "Label4"));
        clickAt(50 + dx / 2, 30 + dy / 2);
        QVERIFY(!shown(kv2, "Label4"));
    }

    // As the engineer does: a click on the point, then ever further above and below it
    // until the nearest curve is hit; true when one was.
    bool clickNearestCurve(QPointF at, const std::function<bool()>& picked) {
        for (double d = 0; d <= 4; d += 0.25)
            for (double sign : {1.0, -1.0}) {
                clickAt(at.x(), at.y() + sign * d);
                if (picked())
                    return true;
            }
        return false;
    }

    double resultValue(const QString& caption) {
        const QString text = child<QPlainTextEdit>(kv2, "Picture1")->toPlainText();
        const QRegularExpression re(QRegularExpression::escape(caption) +
                                    u" (-?[0-9.]+(E-?[0-9]+)?)"_s);
        const auto m = re.match(text);
        if (!m.hasMatch())
            qFatal("no result line %s in\n%s", qPrintable(caption), qPrintable(text));
        return m.captured(1).toDouble();
    }

    // Slides the data as an engineer lines them up: the radial-flow derivative on pD' 0.5
    // (its flattest stretch for a fracture, the last points otherwise), then the first point
    // on the unit slope pD = tD/CD, or on the fracture's linear flow pD = sqrt(pi tDxf).
    void lineUpData(bool fracture) {
        const AnalysisState& s = t->state;
        const int n = s.DerivativeCount;
        double level = 0;
        if (fracture) {
            int flattest = 3;
            for (int k = 3; k <= n - 2; ++k)
                if (std::fabs(s.LogDerivative[k + 2] - s.LogDerivative[k - 2]) <
                    std::fabs(s.LogDerivative[flattest + 2] - s.LogDerivative[flattest - 2]))
                    flattest = k;
            level = s.LogDerivative[flattest];
        } else {
            for (int k = n - 4; k <= n; ++k)
                level += s.LogDerivative[k] / 5;
        }
        const double oy = std::log10(0.5) - level; // decades from data to grid
        const double firstPd = s.LogDeltaP[1] + oy;
        const double firstT = fracture ? 2 * firstPd - std::log10(std::numbers::pi) : firstPd;
        const double ox = firstT - s.LogTime[1];
        const TypeCurveGrid g = kv2->grid();
        const QPointF now = drawnAt(s.LogTime[1], s.LogDeltaP[1]);
        shiftBy(g.scale * (s.LogTime[1] + ox - g.xOrigin) - now.x(),
                g.scale * (s.LogDeltaP[1] + oy - g.yOrigin) - now.y());
    }

    // Slides the data sideways until the first point lies on the picked curve's pD block.
    void slideFirstPointOntoTheCurve() {
        const LibraryFile file = familyFile(kv2->view().model);
        LibraryReader reader(t->state.ApplicationDirectory + "/" + libraryFileName(file), file);
        CurveBlock b;
        while (reader.next(b) && b.number < *kv2->view().selectedCurve) {
        }
        const TypeCurveGrid g = kv2->grid();
        const QPointF first = drawnAt(t->state.LogTime[1], t->state.LogDeltaP[1]);
        const double y = first.y() / g.scale + g.yOrigin;
        for (int j = 2; j <= b.pointCount; ++j)
            if (b.y[j - 1] <= y && y <= b.y[j]) {
                const double x =
                    b.x[j - 1] + (y - b.y[j - 1]) * (b.x[j] - b.x[j - 1]) / (b.y[j] - b.y[j - 1]);
                shiftBy(g.scale * (x - g.xOrigin) - first.x(), 0);
                return;
            }
        QFAIL("the first point lies beside the curve's pD range");
    }

    // The last pressure (or derivative) point inside the axis box.
    QPointF lastPointOnGrid(bool derivative) const {
        const AnalysisState& s = t->state;
        for (int i = derivative ? s.DerivativeCount : s.TestPointCount; i >= 1; --i) {
            const QPointF p = derivative ? drawnAt(s.DerivativeLogTime[i], s.LogDerivative[i])
                                         : drawnAt(s.LogTime[i], s.LogDeltaP[i]);
            if (p.x() < 99 && p.y() < 59)
                return p;
        }
        return {};
    }

    // The pressure (or derivative) point drawn nearest to type-curve time x (log10).
    QPointF pointNear(double x, bool derivative) const {
        const AnalysisState& s = t->state;
        const TypeCurveGrid g = kv2->grid();
        QPointF best;
        const int count = derivative ? s.DerivativeCount : s.TestPointCount;
        for (int k = 1; k <= count; ++k) {
            const QPointF p = derivative ? drawnAt(s.DerivativeLogTime[k], s.LogDerivative[k])
                                         : drawnAt(s.LogTime[k], s.LogDeltaP[k]);
            if (best.isNull() || std::fabs(p.x() - g.scale * (x - g.xOrigin)) <
                                     std::fabs(best.x() - g.scale * (x - g.xOrigin)))
                best = p;
        }
        return best;
    }

private Q_SLOTS:
    void init() { t = std::make_unique<TestProgram>(); }
    void cleanup() { t.reset(); }

    // The screen as it opens without estimates: its lists and prompts, the spacing, the
    // single-porosity family with the first point at the grid's corner and no curve picked.
    void opensWithTheFamilyAndTheDataAtTheCorner() {
        openExample(u"two-rate-drawdown.zvt"_s);
        QCOMPARE(kv2->windowTitle(), u"Type Curve Analysis"_s);
        auto* models = child<QListWidget>(kv2, "List2");
        auto* operations = child<QListWidget>(kv2, "List1");
        QCOMPARE(models->count(), 3);
        QCOMPARE(models->item(2)->text(), u"Vertical Fracture"_s);
        QCOMPARE(models->currentRow(), 0);
        QCOMPARE(operations->item(0)->text(), u"Shift Data"_s);
        QCOMPARE(operations->item(3)->text(), u"Redraw"_s);
        QCOMPARE(child<QLabel>(kv2, "Label2")->text(), u"Click on  Type Curve"_s);
        QCOMPARE(child<QLabel>(kv2, "Label3")->text(), u"Click on Shift Point"_s);
        QCOMPARE(child<QLabel>(kv2, "Label4")->text(), u"Move Mouse & Click to Shift"_s);
        QCOMPARE(child<QLabel>(kv2, "Label1")->text(), u"Derivative Spacing"_s);
        QCOMPARE(child<QLabel>(kv2, "Label5")->text(), u"Well Test: Type Curve Results"_s);
        QCOMPARE(child<QLineEdit>(kv2, "spin")->text(), u"0.2"_s);
        QCOMPARE(t->state.TypeCurveModel, kSinglePorosityModel);
        QVERIFY(!kv2->view().selectedCurve);
        const QPointF first = drawnAt(t->state.LogTime[1], t->state.LogDeltaP[1]);
        QCOMPARE(first, QPointF(0, 0));
        clickItem(kv2, "List1", u"Select Type Curve"_s);
        QVERIFY(shown(kv2, "Label2"));
        QVERIFY(child<QLabel>(kv2, "Label2")->styleSheet().contains(u"rgb(0, 255, 0)"_s));
        // A match point before any curve is picked asks for the curve.
        clickItem(kv2, "List1", u"Select Match Point"_s);
        clickAt(50, 30);
        QVERIFY(t->messages.lastText().contains(u"Select Type Curve"_s));
        QVERIFY(!kv2->results());
    }

    // Two Shift Data clicks 30 units apart move every point 30 units right, in the picture
    // too; the grid stays where it was.
    void shiftMovesTheDataNotTheGrid() {
        openExample(u"two-rate-drawdown.zvt"_s);
        clickItem(kv2, "List1", u"Shift Data"_s);
        QVERIFY(shown(kv2, "Label3"));
        Q_EMIT tcrv()->mouseDown(Qt::LeftButton, 20, 10);
        QVERIFY(!shown(kv2, "Label3"));
        Q_EMIT tcrv()->mouseDown(Qt::LeftButton, 50, 10);
        QCOMPARE(kv2->view().placement.sx, 30.0);
        QCOMPARE(kv2->view().placement.sy, 0.0);
        const auto blueNear = [&](QPointF at) {
            const QImage& image = tcrv()->picture();
            const QPoint c = tcrv()->toDevice(at.x(), at.y()).toPoint();
            for (int dx = -1; dx <= 1; ++dx)
                for (int dy = -1; dy <= 1; ++dy)
                    if (image.pixelColor(c + QPoint(dx, dy)) == QColor(0, 0, 255))
                        return true;
            return false;
        };
        QVERIFY(blueNear({30, 0}));
        QVERIFY(!blueNear({0.5, 0.5}));
        QCOMPARE(kv2->grid().xOrigin, -1.0);
    }

    // Hand matches on the examples made from the library's models: the data lined up by
    // their unit slope (or linear flow) and radial-flow derivative, the nearest curve
    // picked, a match point anywhere: the generator's k within 5 %, C within 10 %, skin
    // within 0.5 and the fracture half-length within 10 %.
    void handMatchRecoversTheReservoir_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("model");
        QTest::addColumn<double>("k");
        QTest::addColumn<double>("storage"); // 0: not a storage model
        QTest::addColumn<double>("skin");
        QTest::addColumn<double>("xf");
        QTest::newRow("two rates")
            << u"two-rate-drawdown.zvt"_s << u"Single Porosity"_s << 60.0 << 0.005 << 4.0 << 0.0;
        QTest::newRow("gas") << u"gas-drawdown.zvt"_s << u"Single Porosity"_s << 10.0 << 0.01 << 2.0
                             << 0.0;
        QTest::newRow("fracture") << u"fractured-drawdown.zvt"_s << u"Vertical Fracture"_s << 5.0
                                  << 0.0 << 0.0 << 100.0;
    }
    void handMatchRecoversTheReservoir() {
        QFETCH(QString, file);
        QFETCH(QString, model);
        QFETCH(double, k);
        QFETCH(double, storage);
        QFETCH(double, skin);
        QFETCH(double, xf);
        openExample(file);
        clickItem(kv2, "List2", model);
        lineUpData(xf > 0);
        clickItem(kv2, "List1", u"Select Type Curve"_s);
        // Late data, where the curves part: radial flow of the pressure, or the boundary in
        // the fracture's derivative.
        QVERIFY(clickNearestCurve(lastPointOnGrid(xf > 0), [&] { return !shown(kv2, "Label2"); }));
        slideFirstPointOntoTheCurve();
        clickItem(kv2, "List1", u"Select Match Point"_s);
        clickAt(50, 30);
        QVERIFY(kv2->results());
        const double kFound = resultValue(u"Permeability ="_s);
        QVERIFY2(std::fabs(kFound / k - 1) < 0.05, qPrintable(QString::number(kFound)));
        if (storage > 0) {
            QVERIFY2(std::fabs(kv2->results()->storage / storage - 1) < 0.10,
                     qPrintable(QString::number(kv2->results()->storage)));
            const double sFound = resultValue(u"Skin Factor ="_s);
            QVERIFY2(std::fabs(sFound - skin) < 0.5, qPrintable(QString::number(sFound)));
        } else {
            const double xfFound = resultValue(u"Fracture Half Length ="_s);
            QVERIFY2(std::fabs(xfFound / xf - 1) < 0.10, qPrintable(QString::number(xfFound)));
            QCOMPARE(t->state.FractureHalfLength, *kv2->results()->fractureHalfLength);
            QVERIFY(child<QPlainTextEdit>(kv2, "Picture1")
                        ->toPlainText()
                        .startsWith(u"xe/xf = 10.\n"_s));
        }
    }

    // The dual-porosity sequence by hand on the dual-porosity buildup: after the match the
    // prompt asks for a descending curve and refuses an ascending one, then asks for an
    // ascending one; omega and lambda come out within a factor of 2 of the generator's 0.1
    // and 9.1E-8, with their lines in order.
    void dualPorositySequence() {
        openExample(u"dual-porosity-buildup.zvt"_s);
        clickItem(kv2, "List2", u"Dual Porosity"_s);
        lineUpData(false);
        clickItem(kv2, "List1", u"Select Type Curve"_s);
        // On the storage hump of the derivative, where the curves stand apart.
        QVERIFY(clickNearestCurve(pointNear(0.85, true), [&] { return !shown(kv2, "Label2"); }));
        QCOMPARE(kv2->view().selectedCurve, std::optional<int>(5)); // CDe2s(frac) 1E2
        clickItem(kv2, "List1", u"Select Match Point"_s);
        clickAt(50, 30);
        auto* prompt = child<QLabel>(kv2, "Label2");
        QVERIFY(shown(kv2, "Label2"));
        QVERIFY(prompt->styleSheet().contains(u"rgb(255, 223, 87)"_s));
        QVERIFY(prompt->text().contains(u"Descending"_s));
        // An ascending curve first is refused.
        QVERIFY(clickNearestCurve(pointNear(3.7, true),
                                  [&] { return prompt->text().startsWith(u"That curve"_s); }));
        QVERIFY(clickNearestCurve(pointNear(2.7, true),
                                  [&] { return prompt->text().contains(u"Ascending"_s); }));
        QVERIFY(clickNearestCurve(pointNear(3.7, true), [&] { return !shown(kv2, "Label2"); }));
        const DualPorosityResults& d = *kv2->results()->dual;
        QVERIFY2(d.omega > 0.05 && d.omega < 0.2, qPrintable(QString::number(d.omega)));
        QVERIFY2(d.lambda > 4.5e-8 && d.lambda < 1.8e-7, qPrintable(QString::number(d.lambda)));
        const QStringList lines =
            child<QPlainTextEdit>(kv2, "Picture1")->toPlainText().split(u'\n');
        QCOMPARE(lines.size(), 7);
        QVERIFY(lines[0].startsWith(u"CDe2s(frac) ="_s));
        QVERIFY(lines[2].startsWith(u"Omega ="_s));
        QVERIFY(lines[6].startsWith(u"Le-2s ="_s));
    }

    // A click on a dashed derivative curve picks the solid curve of the same number.
    void derivativeCurvePicksItsPressureCurve() {
        openExample(u"oil-buildup.zvt"_s);
        LibraryReader reader(t->program->context().state.ApplicationDirectory + "/ONETYPE",
                             LibraryFile::OneType);
        CurveBlock block;
        while (reader.next(block) && block.number < 32) {
        }
        const TypeCurveGrid g = kv2->grid();
        clickItem(kv2, "List1", u"Select Type Curve"_s);
        clickAt(g.scale * (block.x[30] - g.xOrigin), g.scale * (block.y[30] - g.yOrigin));
        QCOMPARE(kv2->view().selectedCurve, std::optional<int>(16));
        QVERIFY(!shown(kv2, "Label2"));
    }

    // Handed over from the semilog screen with its estimates, the screen preselects a curve
    // and places the data where the estimates put them: any match point gives the semilog
    // permeability back.
    void semilogHandOverPlacesTheDataOnTheEstimates() {
        const OpenResult r = openTestFile(t->state, SOURCE_DIR "/examples/oil-buildup.zvt");
        QVERIFY(r.ok);
        t->show("inp");
        clickItem(t->screen("inp"), "List1", u"Semilog Analysis"_s);
        t->state.Permeability = 99.3;
        t->state.SkinFactor = 2.92;
        t->state.WellboreStorage = 0.0101;
        child<QPushButton>(t->screen("kv1"), "Command1")->click();
        kv2 = t->screen<TypeCurveScreen>("kv2");
        QVERIFY(kv2->isVisible());
        QCOMPARE(kv2->view().selectedCurve, std::optional<int>(7)); // CD e^2s 1.6E5
        clickItem(kv2, "List1", u"Select Match Point"_s);
        clickAt(40, 35);
        QVERIFY(std::fabs(kv2->results()->permeability / 99.3 - 1) < 1e-9);
        QVERIFY(std::fabs(kv2->results()->storage / 0.0101 - 1) < 1e-9);
    }

    // A damaged library in the application directory is a named message, not a crash; the
    // batch export writes the screen's page.
    void damagedLibraryIsAMessageAndTheExportWritesThePage() {
        QTemporaryDir dir;
        QFile damaged(dir.filePath(u"ONETYPE"_s));
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write("1\n61\n");
        damaged.close();
        t->state.ApplicationDirectory = dir.path().toStdString();
        const OpenResult r = openTestFile(t->state, SOURCE_DIR "/examples/oil-buildup.zvt");
        QVERIFY(r.ok);
        const QString page = dir.filePath(u"kv2.png"_s);
        QVERIFY(!t->program->exportPages({{"kv2", page.toStdString()}}).isEmpty());
        t->state.ApplicationDirectory = (dir.path() + u"/elsewhere"_s).toStdString();
        QCOMPARE(t->program->exportPages({{"kv2", page.toStdString()}}), QStringList());
        QVERIFY(QImage(page).width() > 800);
        t->state.ApplicationDirectory = dir.path().toStdString();
        t->program->screens().show(u"kv2"_s);
        QVERIFY(t->messages.lastText().contains(u"ONETYPE"_s));
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::TypeCurveScreenTest)
#include "TypeCurveScreenTest.moc"
