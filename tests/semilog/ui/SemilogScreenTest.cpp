// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "core/ui/PlotSurface.h"
#include "input/test_file.h"
#include "semilog/ui/SemilogScreen.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QToolBar>

#include <cmath>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class SemilogScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    SemilogScreen* kv1 = nullptr;

    // Opens an example test and the semilog screen as the navigation list does.
    void openExample(const char* file) {
        const OpenResult r = openTestFile(t->state, std::string(SOURCE_DIR) + "/examples/" + file);
        QVERIFY2(r.ok, r.error.message().c_str());
        t->show("inp");
        clickItem(t->screen("inp"), "List1", u"Semilog Analysis"_s);
        kv1 = t->screen<SemilogScreen>("kv1");
        QVERIFY(kv1 && kv1->isVisible());
    }

    PlotSurface* surface(const char* name) { return child<PlotSurface>(kv1, name); }

    // A click on a plot at a position in plot units.
    void clickAt(const char* plot, double x, double y) {
        PlotSurface* p = surface(plot);
        QTest::mouseClick(p, Qt::LeftButton, {}, p->toDevice(x, y).toPoint());
    }

    // Plot position of the semilog point whose time is nearest to `time`.
    QPointF semilogPoint(double time) {
        const AnalysisState& s = t->state;
        int best = 1;
        for (int i = 2; i <= s.PointCount; ++i)
            if (std::fabs(std::log(s.SemilogTime[i] / time)) <
                std::fabs(std::log(s.SemilogTime[best] / time)))
                best = i;
        const PlotScales& sc = kv1->semilogScales();
        return {sc.x * (s.SemilogX[best] - s.SemilogXMin),
                sc.y * (s.SemilogY[best] - s.SemilogYMin)};
    }

    // Plot position of change i on the log-log (storage) plot.
    QPointF storagePoint(int i) const {
        const AnalysisState& s = t->state;
        return {s.StorageScale * (s.LogTime[i] - s.StorageXMin),
                s.StorageScale * (s.LogDeltaP[i] - s.StorageYMin)};
    }

    void clickAt(const char* plot, QPointF at) { clickAt(plot, at.x(), at.y()); }

    double resultValue(const QString& caption) {
        const QString text = child<QPlainTextEdit>(kv1, "Picture1")->toPlainText();
        const QRegularExpression re(QRegularExpression::escape(caption) + u" (-?[0-9.]+)"_s);
        const auto m = re.match(text);
        if (!m.hasMatch())
            qFatal("no result line %s in\n%s", qPrintable(caption), qPrintable(text));
        return m.captured(1).toDouble();
    }

private Q_SLOTS:
    void init() { t = std::make_unique<TestProgram>(); }
    void cleanup() { t.reset(); }

    // The navigation list opens kv1 on the semilog plot for one rate (no plot-kind list)
    // and on the superposition plot for two rates; the flow plots start hidden and
    // semipk appears once the semilog plot is drawn. Choosing the semilog kind on a
    // two-rate test redraws with the equivalent time.
    void opensWithThePlotKindOfTheRateHistory() {
        openExample("oil-buildup.zvt");
        QCOMPARE(kv1->windowTitle(), u"Semilog Analysis"_s);
        QCOMPARE(t->state.SemilogPlotKind, kSemilogPlot);
        QVERIFY(!shown(kv1, "ddpk"));
        QVERIFY(shown(kv1, "semipk"));
        QVERIFY(!shown(kv1, "sqrslp"));
        QVERIFY(!shown(kv1, "qtrslp"));
        QVERIFY(!shown(kv1, "Command1"));
        QCOMPARE(child<QLineEdit>(kv1, "spin")->text(), u"0.2"_s);
        QCOMPARE(child<QLabel>(kv1, "Label3")->text(), QString::fromStdString(t->state.TestTitle));
        t = std::make_unique<TestProgram>();
        openExample("two-rate-drawdown.zvt");
        QCOMPARE(t->state.SemilogPlotKind, kSuperpositionPlot);
        QVERIFY(shown(kv1, "ddpk"));
        QCOMPARE(child<QComboBox>(kv1, "ddpk")->currentText(), u"Superposition Plot"_s);
        choose(kv1, "ddpk", u"Semilog Plot"_s);
        QCOMPARE(t->state.SemilogPlotKind, kSemilogPlot);
        QCOMPARE(t->state.SemilogX[1], t->state.LogTime[1]);
    }

    // Two clicks on the radial-flow part of the Horner plot give the reservoir back
    // (k 100 md, skin 3 within 3 % and 0.3), print the result lines and store them.
    void straightLinePickGivesPermeabilityAndSkin() {
        openExample("oil-buildup.zvt");
        choose(kv1, "semipk", u"Straight Line"_s);
        QVERIFY(shown(kv1, "Label2"));
        const QPointF b = semilogPoint(50);
        clickAt("semi", semilogPoint(10));
        QTest::mouseMove(surface("semi"), surface("semi")->toDevice(40, 30).toPoint());
        clickAt("semi", b);
        QVERIFY(!shown(kv1, "Label2"));
        QVERIFY(kv1->semilogLine().complete);
        QVERIFY(std::fabs(resultValue(u"Permeability ="_s) - 100) < 3);
        QVERIFY(std::fabs(resultValue(u"Skin Factor ="_s) - 3) < 0.3);
        QVERIFY(std::fabs(t->state.Permeability - 100) < 3);
        QVERIFY(std::fabs(t->state.SkinFactor - 3) < 0.3);
        QVERIFY(shown(kv1, "Command1"));
        // The pixel rounding of a click moves the line by a fraction of a unit only.
        QVERIFY(std::fabs(kv1->semilogLine().x2 - b.x()) < 0.5);
        // Handing over to type curves marks the estimates as there to use.
        click(kv1, "Command1");
        QCOMPARE(t->state.TypeCurveEstimateFlag, 1);
        t->program->screens().show(u"kv1"_s);
        QCOMPARE(t->state.TypeCurveEstimateFlag, 0);
    }

    // A click on the unit-slope storage line gives C = q*B*dt/(24*dp): the example's
    // 0.01 bbl/psi within 10 %.
    void unitSlopePickGivesWellboreStorage() {
        openExample("oil-buildup.zvt");
        choose(kv1, "storpk", u"Unit Slope"_s);
        QVERIFY(shown(kv1, "Label4"));
        const AnalysisState& s = t->state;
        clickAt("Stor", storagePoint(3)); // an early point, on the unit slope
        QVERIFY2(std::fabs(s.WellboreStorage - 0.01) < 0.001,
                 qPrintable(QString::number(s.WellboreStorage)));
        QVERIFY(std::fabs(resultValue(u"Wellbore Storage ="_s) - 0.01) < 0.001);
    }

    // Half-slope picks in either order select the earlier time as the lower bound, mark
    // the later end, and show the linear-flow plot of that interval with its list; a
    // line on it stores a positive slope.
    void halfSlopeIntervalAndLinearFlowLine() {
        openExample("oil-buildup.zvt");
        choose(kv1, "storpk", u"Half Slope"_s);
        clickAt("Stor", storagePoint(40));
        clickAt("Stor", storagePoint(10));
        QVERIFY(shown(kv1, "sqrslp"));
        QVERIFY(shown(kv1, "sqrpk"));
        QVERIFY(kv1->linearInterval().lower < kv1->linearInterval().upper);
        QVERIFY(std::fabs(std::log(kv1->linearInterval().lower / t->state.TimeFunction[10])) <
                0.05);
        QVERIFY(kv1->linearFrame().pointCount >= 25);
        choose(kv1, "sqrpk", u"Select Half Slope"_s);
        clickAt("sqrslp", 10, 10);
        clickAt("sqrslp", 90, 50);
        QVERIFY(kv1->linearSlope() > 0);
        QVERIFY(!shown(kv1, "sqrpk"));
    }

    // Expand doubles the semilog plot and Reduce brings it back; twice returns the
    // caption to "Expand" and the plot to its size, with the stored line drawn again.
    void expandTwiceRestoresThePlot() {
        openExample("oil-buildup.zvt");
        auto* button = child<QPushButton>(kv1, "Command2");
        const QSize before = surface("semi")->size();
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(button->text(), u"Reduce"_s);
        QTRY_VERIFY(surface("semi")->width() > 1.6 * before.width());
        QVERIFY(!shown(kv1, "Stor"));
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(button->text(), u"Expand"_s);
        QTRY_COMPARE(surface("semi")->size(), before);
        QVERIFY(shown(kv1, "Stor"));
    }

    // A spacing above 0 recomputes the derivative; 0 is stored and recomputes nothing.
    void derivativeSpacing() {
        openExample("oil-buildup.zvt");
        const int before = t->state.DerivativeCount;
        typeInto(kv1, "spin", u"0.5"_s);
        QCOMPARE(t->state.DerivativeSpan, 0.5);
        QVERIFY(t->state.DerivativeCount < before);
        const int at05 = t->state.DerivativeCount;
        typeInto(kv1, "spin", u"0"_s);
        QCOMPARE(t->state.DerivativeSpan, 0.0);
        QCOMPARE(t->state.DerivativeCount, at05);
        QVERIFY(t->messages.messages.isEmpty());
    }

    // Print: the toolbar is hidden and the heading shown on the page, then restored.
    void printShowsTheHeadingOnThePage() {
        openExample("oil-buildup.zvt");
        bool headingOnPage = false, toolbarOnPage = true;
        t->printer.whilePrinting = [&] {
            headingOnPage = shown(kv1, "Label5");
            toolbarOnPage = shown(kv1, "Toolbar1");
        };
        kv1->runCommand(u"Print"_s);
        QCOMPARE(t->printer.pages.size(), 1);
        QVERIFY(headingOnPage);
        QVERIFY(!toolbarOnPage);
        QCOMPARE(child<QLabel>(kv1, "Label5")->text(), u"Well Test: Semilog Results"_s);
        QVERIFY(!shown(kv1, "Label5"));
        QVERIFY(shown(kv1, "Toolbar1"));
    }

    // A test without points cannot be plotted: the fault is reported and nothing crashes.
    void noPointsIsReportedNotACrash() {
        t->program->screens().show(u"kv1"_s);
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(t->messages.lastText().contains(u"No data"_s));
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::SemilogScreenTest)
#include "SemilogScreenTest.moc"
