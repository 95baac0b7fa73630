// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "core/ui/PlotSurface.h"
#include "input/test_file.h"
#include "input/ui/InputScreen.h"
#include "semilog/ui/SemilogScreen.h"

#include <QComboBox>
#include <QDate>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStatusBar>
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

    QString results() { return child<QPlainTextEdit>(kv1, "Picture1")->toPlainText(); }

    // Pixel positions of the black tick marks along one axis of a plot's picture: the
    // marks crossing the x axis (read in the row just above it) or the y axis (in the
    // column just right of it), the axis line itself left out.
    static QList<int> tickMarks(PlotSurface* plot, bool xAxis) {
        const QImage& img = plot->picture();
        const QPoint origin = plot->toDevice(0, 0).toPoint();
        const QPoint corner = plot->toDevice(100, 60).toPoint();
        QList<int> marks;
        const int from = xAxis ? origin.x() + 2 : corner.y();
        const int to = xAxis ? img.width() - 1 : origin.y() - 2;
        for (int i = from; i <= to; ++i) {
            const QRgb c = xAxis ? img.pixel(i, origin.y() - 2) : img.pixel(origin.x() + 2, i);
            if (c == qRgb(0, 0, 0) && (marks.isEmpty() || marks.last() != i - 1))
                marks << i;
        }
        return marks;
    }

    // True when a pure red pixel lies within a pixel of a position in plot units.
    static bool redNear(PlotSurface* plot, double x, double y) {
        const QImage& img = plot->picture();
        const QPoint at = plot->toDevice(x, y).toPoint();
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                if (img.pixel(at.x() + dx, at.y() + dy) == qRgb(255, 0, 0))
                    return true;
        return false;
    }

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
        // A new derivative spacing redraws the line, red across the whole plot, and keeps
        // its results.
        typeInto(kv1, "spin", u"0.3"_s);
        const StraightLine& line = kv1->semilogLine();
        QVERIFY(redNear(surface("semi"), 99,
                        line.y1 + (line.y2 - line.y1) * (99 - line.x1) / (line.x2 - line.x1)));
        QVERIFY(results().contains(u"Dp Skin ="_s));
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
        // A second aim replaces the first storage line.
        clickAt("Stor", storagePoint(4));
        QCOMPARE(results().count(u"Wellbore Storage ="_s), 1);
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
    // The heading names the test file and the date; no focus frame is on the page.
    void printShowsTheHeadingOnThePage() {
        auto* inp = t->screen<InputScreen>("inp");
        QVERIFY(inp->openFile(QStringLiteral(SOURCE_DIR "/examples/oil-buildup.zvt")).isEmpty());
        t->show("inp");
        clickItem(inp, "List1", u"Semilog Analysis"_s);
        kv1 = t->screen<SemilogScreen>("kv1");
        child<QLineEdit>(kv1, "spin")->setFocus();
        bool headingOnPage = false, toolbarOnPage = true;
        QWidget* focusOnPage = kv1;
        t->printer.whilePrinting = [&] {
            headingOnPage = shown(kv1, "Label5");
            toolbarOnPage = shown(kv1, "Toolbar1");
            focusOnPage = kv1->focusWidget();
        };
        kv1->runCommand(u"Print"_s);
        QCOMPARE(t->printer.pages.size(), 1);
        QVERIFY(headingOnPage);
        QVERIFY(!toolbarOnPage);
        QCOMPARE(child<QLabel>(kv1, "Label5")->text(), u"Well Test: Semilog Results"_s);
        QVERIFY(!shown(kv1, "Label5"));
        QVERIFY(shown(kv1, "Toolbar1"));
        QCOMPARE(focusOnPage, nullptr);
        QCOMPARE(child<QLabel>(kv1, "pageInfo")->text(),
                 u"File: oil-buildup.zvt    Date: "_s + QDate::currentDate().toString(Qt::ISODate));
    }

    // A log-log slope only looks true when a decade is as long up as across: measured on
    // the drawn tick marks of Stor at three window sizes (wide, default, maximised).
    void logLogDecadesAreSquare() {
        openExample("oil-buildup.zvt");
        for (const QSize size : {QSize(1000, 640), QSize(1360, 860), QSize(1920, 1040)}) {
            kv1->resize(size);
            kv1->centralWidget()->layout()->activate();
            QList<int> lengths;
            for (bool xAxis : {true, false}) {
                const QList<int> marks = tickMarks(surface("Stor"), xAxis);
                QVERIFY(marks.size() >= (xAxis ? 4 : 2)); // decades on this test
                for (qsizetype i = 1; i < marks.size(); ++i)
                    lengths << marks[i] - marks[i - 1];
            }
            const auto [lo, hi] = std::minmax_element(lengths.begin(), lengths.end());
            qInfo("Stor %dx%d: decade %d..%d px", size.width(), size.height(), *lo, *hi);
            QVERIFY(*hi - *lo <= 1);
        }
    }

    // No label is cut at the edge of its plot or covers another, on every plot of the
    // three examples at the default and the maximised size; the labels a truncation
    // used to falsify ("100000" read "10000", "1000" read "100") are there whole.
    void labelsWholeOnEveryPlot() {
        struct Case {
            const char* file;
            const char* plot;
            QString label;
        };
        const Case cases[] = {{"oil-buildup.zvt", "semi", u" 100000"_s},
                              {"gas-drawdown.zvt", "Stor", u" 100"_s},
                              {"two-rate-drawdown.zvt", "Stor", u" 1000"_s}};
        for (const Case& c : cases) {
            for (const QSize size : {QSize(1360, 860), QSize(1920, 1040)}) {
                t = std::make_unique<TestProgram>();
                QVERIFY(openTestFile(t->state, std::string(SOURCE_DIR) + "/examples/" + c.file).ok);
                kv1 = t->screen<SemilogScreen>("kv1");
                kv1->resize(size);
                QVERIFY(!kv1->printedPage().isNull()); // all four plots, as batch export draws them
                for (const char* plot : {"semi", "Stor", "sqrslp", "qtrslp"}) {
                    const auto texts = surface(plot)->paintedTexts();
                    const QRectF area(QPointF(0, 0), QSizeF(surface(plot)->size()));
                    for (std::size_t i = 0; i < texts.size(); ++i) {
                        QVERIFY2(area.contains(texts[i].box), qPrintable(texts[i].text));
                        for (std::size_t j = 0; j < i; ++j)
                            QVERIFY2(!texts[i].box.intersects(texts[j].box),
                                     qPrintable(texts[i].text));
                    }
                }
                const auto texts = surface(c.plot)->paintedTexts();
                QVERIFY2(std::any_of(texts.begin(), texts.end(),
                                     [&](const auto& p) { return p.text == c.label; }),
                         qPrintable(c.label));
            }
        }
    }

    // Hints come and go beside their plot without moving any plot (an aim taken before
    // the hint showed must still hit); "Redraw" hides the hint it disarms; Escape gives
    // up a line whose first end is placed, rubber band and all; the status line reads
    // the data under the cursor.
    void picksStaySteady() {
        openExample("oil-buildup.zvt");
        auto where = [&](const char* plot) {
            return QRect(surface(plot)->mapTo(kv1, QPoint(0, 0)), surface(plot)->size());
        };
        const QRect semi = where("semi"), stor = where("Stor");
        choose(kv1, "storpk", u"Unit Slope"_s);
        choose(kv1, "semipk", u"Straight Line"_s);
        QVERIFY(shown(kv1, "Label4") && shown(kv1, "Label2"));
        QCOMPARE(where("semi"), semi);
        QCOMPARE(where("Stor"), stor);
        choose(kv1, "storpk", u"Redraw"_s);
        QVERIFY(!shown(kv1, "Label4"));
        clickAt("semi", 20, 40);
        QTest::mouseMove(surface("semi"), surface("semi")->toDevice(60, 20).toPoint());
        const QString status = kv1->statusBar()->currentMessage();
        QVERIFY2(status.contains(u"(t+dt)/dt = "_s) && status.contains(u" psia"_s),
                 qPrintable(status));
        QTest::keyClick(kv1, Qt::Key_Escape);
        QVERIFY(kv1->semilogLine().clickState == 0 && !shown(kv1, "Label2"));
        const QPoint band = surface("semi")->toDevice(40, 30).toPoint();
        QCOMPARE(surface("semi")->picture().pixel(band), qRgb(255, 255, 255));
        clickAt("semi", 20, 40);
        clickAt("semi", 60, 20);
        QVERIFY(results().isEmpty());
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
