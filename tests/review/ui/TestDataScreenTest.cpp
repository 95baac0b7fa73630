// SPDX-License-Identifier: MIT
#include "../../support/pss_drawdown.h"
#include "../../support/ui/FakeServices.h"

#include "core/ui/PlotSurface.h"
#include "review/ui/TestDataScreen.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <numbers>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class TestDataScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    TestDataScreen* inpsho = nullptr;

    void open() {
        inpsho = t->show<TestDataScreen>("inpsho");
        QVERIFY(inpsho && inpsho->isVisible());
    }
    QTableWidget* grid(const char* name) { return child<QTableWidget>(inpsho, name); }
    QString cell(const char* name, int row, int column) {
        return grid(name)->item(row, column)->text();
    }
    void clickCell(const char* name, int row, int column) {
        QTableWidget* g = grid(name);
        g->scrollToItem(g->item(row, column));
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {},
                          g->visualItemRect(g->item(row, column)).center());
    }
    // Click a cell, type a value into the edit box and accept it.
    void correct(const char* name, int row, int column, const QString& value) {
        clickCell(name, row, column);
        typeInto(inpsho, "Text1", value);
        click(inpsho, "Command1");
    }
    void clickPlot(double x, double y) {
        auto* cart = child<PlotSurface>(inpsho, "cart");
        QTest::mouseClick(cart, Qt::LeftButton, {}, cart->toDevice(x, y).toPoint());
    }
    QPointF plotPoint(int i) {
        const CartesianScales& sc = inpsho->scales();
        return {sc.xs * t->state.TestTime[i],
                sc.ys * (t->state.TestPressure[i] - t->state.PlotPressureMin)};
    }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        t->state = pssDrawdown(40);
    }
    void cleanup() { t.reset(); }

    // Activation: the options list only for a single-rate drawdown or injectivity test,
    // the phase-rate grid only for two or more phases, the m(p) column only for gas in
    // pseudopressure; the grids hold two header rows and one row per entry.
    void activationRules() {
        const struct {
            std::int16_t shutIn, rates, fluids;
            bool carto, phases;
            int pointColumns;
        } rows[] = {{0, 1, kOil, true, false, 2},
                    {0, 2, kOil, false, false, 2},
                    {1, 1, kOil, false, false, 2},
                    {0, 1, kOilGas, true, true, 2},
                    {0, 1, kGasPseudopressure, true, false, 3}};
        for (const auto& row : rows) {
            init();
            t->state.ShutInFlag = row.shutIn;
            t->state.RateCount = row.rates;
            t->state.FluidFlags = row.fluids;
            for (int i = 1; i <= 50; ++i)
                t->state.TestPseudoPressure[i] = 1000 - i;
            open();
            QCOMPARE(inpsho->windowTitle(), u"Test Data"_s);
            QCOMPARE(shown(inpsho, "carto"), row.carto);
            QCOMPARE(shown(inpsho, "MSFlexGrid3"), row.phases);
            QCOMPARE(grid("MSFlexGrid1")->columnCount(), row.pointColumns);
            QCOMPARE(grid("MSFlexGrid1")->rowCount(), 52);
            QCOMPARE(grid("MSFlexGrid2")->rowCount(), row.rates + 2);
            QVERIFY(!shown(inpsho, "Frame1") && !shown(inpsho, "Label4"));
            QVERIFY(t->messages.messages.isEmpty());
        }
    }

    // One point corrected through the edit frame: the value reaches the state and the
    // plot; Cancel writes nothing; a click on header row 0 and OK is a subscript fault
    // in a message box, with nothing written.
    void correctOnePoint() {
        open();
        clickCell("MSFlexGrid1", 4, 1);
        QVERIFY(shown(inpsho, "Frame1") && shown(inpsho, "Label4"));
        typeInto(inpsho, "Text1", u"3999.94"_s);
        click(inpsho, "Command1");
        QCOMPARE(t->state.TestPressure[3], 3999.94);
        QCOMPARE(t->state.PlotPressureMax, 3999.94);
        QCOMPARE(cell("MSFlexGrid1", 4, 1), u"3999.9"_s);
        QVERIFY(!shown(inpsho, "Frame1"));

        clickCell("MSFlexGrid1", 5, 0);
        typeInto(inpsho, "Text1", u"77"_s);
        click(inpsho, "Command2");
        QCOMPARE(t->state.TestTime[4], 4.0);
        QVERIFY(!shown(inpsho, "Frame1"));

        const AnalysisState before = t->state;
        correct("MSFlexGrid1", 0, 1, u"1234"_s);
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(t->messages.lastText().startsWith(u"Subscript out of range"_s));
        QVERIFY(t->state.TestPressure == before.TestPressure);
    }

    // INSERT gives an empty row at the clicked row and waits for both values (the
    // DELETE/INSERT hint is not shown again for the second); DELETE removes the point
    // and redraws. On the rate grid the insert refill, the cell edit and the full refill
    // write a duration of 12.345 h with their own masks.
    void insertAndDeleteRows() {
        open();
        clickCell("MSFlexGrid1", 2, 0);
        QTest::keyClick(grid("MSFlexGrid1"), Qt::Key_Insert);
        QCOMPARE(inpsho->insertState(), 1);
        QCOMPARE(t->state.TestPointCount, 51);
        QCOMPARE(cell("MSFlexGrid1", 3, 0), u"1."_s);
        correct("MSFlexGrid1", 2, 0, u"0.5"_s);
        QCOMPARE(inpsho->insertState(), 2);
        QVERIFY(shown(inpsho, "Label1"));
        QVERIFY(shown(inpsho, "Frame1"));
        clickCell("MSFlexGrid1", 2, 1);
        QVERIFY(!shown(inpsho, "Label4"));
        typeInto(inpsho, "Text1", u"3921"_s);
        click(inpsho, "Command1");
        QCOMPARE(inpsho->insertState(), 0);
        QCOMPARE(t->state.TestTime[1], 0.5);
        QCOMPARE(t->state.PlotPressureMax, 3921.0);

        clickCell("MSFlexGrid1", 52, 0);
        QTest::keyClick(grid("MSFlexGrid1"), Qt::Key_Delete);
        QCOMPARE(t->state.TestPointCount, 50);
        QCOMPARE(t->state.TestTime[50], 49.0);
        QCOMPARE(grid("MSFlexGrid1")->rowCount(), 52);

        t->state.RateTime[1] = 12.345;
        clickCell("MSFlexGrid2", 2, 0);
        QTest::keyClick(grid("MSFlexGrid2"), Qt::Key_Insert);
        QCOMPARE(t->state.RateCount, 2);
        QCOMPARE(cell("MSFlexGrid2", 3, 0), u"12.35"_s); // insert refill "###.##"
        correct("MSFlexGrid2", 2, 0, u"12.345"_s);
        QCOMPARE(cell("MSFlexGrid2", 2, 0), u"12.3"_s); // cell edit "####.#"
        choose(inpsho, "carto", u"Redraw"_s);
        QCOMPARE(cell("MSFlexGrid2", 2, 0), u"12.35"_s); // full refill "####.##"
        QCOMPARE(t->state.FlowRate, 500.0);
    }

    // The pseudosteady-state line clicked on the plot (with the rubber band between the
    // clicks) gives the radius of the 40-acre area, sqrt(A/pi) = 744.7 ft (746 with the
    // program's constant), prints it and stores it; the transient and PSS marks store
    // their values; a horizontal line is a message, not a crash.
    void pssLineGivesTheDrainageRadius() {
        open();
        choose(inpsho, "carto", u"End of Transient"_s);
        clickPlot(20, 40);
        QVERIFY(std::fabs(t->state.EndOfTransientTime - 10) < 0.2);
        choose(inpsho, "carto", u"Start PSS"_s);
        clickPlot(30, 30);
        QVERIFY(std::fabs(t->state.StartPssValue -
                          (t->state.PlotPressureMin + 30 / inpsho->scales().ys)) < 0.5);
        choose(inpsho, "carto", u"PSS Straight Line"_s);
        QVERIFY(shown(inpsho, "Label2"));
        clickPlot(plotPoint(45).x(), plotPoint(45).y());
        auto* cart = child<PlotSurface>(inpsho, "cart");
        QTest::mouseMove(cart, cart->toDevice(50, 30).toPoint());
        clickPlot(plotPoint(5).x(), plotPoint(5).y());
        const double expected = std::sqrt(40 * kAcre / std::numbers::pi) * 1.0016;
        QVERIFY2(std::fabs(t->state.PssDrainageRadius / expected - 1) < 0.01,
                 qPrintable(QString::number(t->state.PssDrainageRadius)));
        QVERIFY(!shown(inpsho, "Label2"));
        QVERIFY(shown(inpsho, "Picture1"));
        QVERIFY(child<QPlainTextEdit>(inpsho, "Picture1")->toPlainText().startsWith(u"Drainage"_s));

        clickPlot(20, 30);
        clickPlot(60, 30);
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(t->messages.lastText().contains(u"horizontal"_s));
    }

    // Ctrl+V pastes a 3-row spreadsheet clipboard from the clicked row on and redraws;
    // Ctrl+C copies the selection as tab-separated values at full precision.
    void pasteAndCopy() {
        open();
        QGuiApplication::clipboard()->setText(
            u"Time\tPressure\n50\t3855.5\n51\t3854\n52\t3853\n"_s);
        clickCell("MSFlexGrid1", 51, 0);
        QTest::keySequence(grid("MSFlexGrid1"), QKeySequence::Paste);
        QCOMPARE(t->state.TestPointCount, 52);
        QCOMPARE(t->state.TestPressure[50], 3855.5);
        QCOMPARE(inpsho->scales().tmax, 52.0);

        grid("MSFlexGrid1")->clearSelection();
        grid("MSFlexGrid1")->setRangeSelected(QTableWidgetSelectionRange(2, 0, 3, 1), true);
        QTest::keySequence(grid("MSFlexGrid1"), QKeySequence::Copy);
        const QString copied = QGuiApplication::clipboard()->text();
        QCOMPARE(copied.count(u'\n'), 2);
        QCOMPARE(copied.section(u'\t', 1, 1).section(u'\n', 0, 0).toDouble(),
                 t->state.TestPressure[1]);
    }

    // The batch export writes the page of a test never shown.
    void exportWritesThePage() {
        QTemporaryDir dir;
        const std::string path = (dir.path() + u"/inpsho.png"_s).toStdString();
        QVERIFY(t->program->exportPages({{"inpsho", path}}).isEmpty());
        QVERIFY(!QImage(QString::fromStdString(path)).isNull());
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::TestDataScreenTest)
#include "TestDataScreenTest.moc"
