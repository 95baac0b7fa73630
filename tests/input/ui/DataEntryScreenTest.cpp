// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/ui/EventGuard.h"
#include "input/ui/DataEntryScreen.h"
#include "input/ui/InputScreen.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <cmath>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class DataEntryScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    InputScreen* inp = nullptr;

    // Opens Datin as the input screen's buttons do.
    DataEntryScreen* open(int mode) {
        t->state.DatinMode = static_cast<std::int16_t>(mode);
        return t->show<DataEntryScreen>("Datin");
    }
    void row(DataEntryScreen* d, std::initializer_list<const char*> values) {
        const char* boxes[] = {"conv", "conv2", "conv3", "conv4"};
        int i = 0;
        for (const char* v : values)
            typeInto(d, boxes[i++], QString::fromUtf8(v));
        click(d, "Command1");
    }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        inp = t->show<InputScreen>("inp");
    }
    void cleanup() { t.reset(); }

    void layoutByMode_data() {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("fluid");
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QStringList>("labels"); // "" = hidden
        const QString none;
        QTest::newRow("points, hours")
            << 0 << 1 << 0 << u"Enter Well Test Values"_s
            << QStringList{u"Time           hrs."_s, u"Pressure    psia"_s, none, none};
        QTest::newRow("points, minutes")
            << 0 << 1 << 1 << u"Enter Well Test Values"_s
            << QStringList{u"Time           min."_s, u"Pressure    psia"_s, none, none};
        QTest::newRow("rates, oil, days")
            << 1 << 1 << 1 << u"Enter Rates and Flow Duration"_s
            << QStringList{u"Duration     days"_s, u"Oil Rate STB/day"_s, none, none};
        QTest::newRow("rates, gas in m(p)")
            << 1 << 0 << 0 << u"Enter Rates and Flow Duration"_s
            << QStringList{u"Duration      hrs."_s, u"Gas Rate MCF/day"_s, none, none};
        QTest::newRow("rates, water")
            << 1 << 3 << 0 << u"Enter Rates and Flow Duration"_s
            << QStringList{u"Duration      hrs."_s, u"Wtr Rate STB/day"_s, none, none};
        QTest::newRow("rates, oil and gas")
            << 1 << 4 << 0 << u"Enter Rates and Flow Duration"_s
            << QStringList{u"Duration      hrs."_s, u"Oil Rate STB/day"_s, u"Gas Rate MCF/day"_s,
                           none};
        QTest::newRow("rates, gas and water")
            << 1 << 6 << 0 << u"Enter Rates and Flow Duration"_s
            << QStringList{u"Duration      hrs."_s, none, u"Gas Rate MCF/day"_s,
                           u"Wtr Rate STB/day"_s};
        QTest::newRow("rates, all three")
            << 1 << 7 << 0 << u"Enter Rates and Flow Duration"_s
            << QStringList{u"Duration      hrs."_s, u"Oil Rate STB/day"_s, u"Gas Rate MCF/day"_s,
                           u"Wtr Rate STB/day"_s};
    }
    // The engineer types into the boxes the captions name: a wrong caption or a missing
    // phase box puts a rate in the wrong array.
    void layoutByMode() {
        QFETCH(int, mode);
        QFETCH(int, fluid);
        QFETCH(int, unit);
        QFETCH(QString, heading);
        QFETCH(QStringList, labels);
        t->state.FluidFlags = static_cast<std::int16_t>(fluid);
        t->state.TestTimeUnit = t->state.RateTimeUnit = static_cast<std::int16_t>(unit);
        DataEntryScreen* d = open(mode);
        QCOMPARE(d->windowTitle(), QStringLiteral("Data Input"));
        QCOMPARE(child<QLabel>(d, "lyrlab")->text(), heading);
        const char* boxes[] = {"conv", "conv2", "conv3", "conv4"};
        const char* names[] = {"Label2", "Label1", "Label3", "Label4"};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(shown(d, boxes[i]), !labels[i].isEmpty());
            QCOMPARE(shown(d, names[i]), !labels[i].isEmpty());
            if (!labels[i].isEmpty())
                QCOMPARE(child<QLabel>(d, names[i])->text(), labels[i]);
        }
        QCOMPARE(child<QLineEdit>(d, "conv")->text(), QStringLiteral(" "));
        QCOMPARE(int(t->state.EntryCounter), 1);
    }

    // Two oil rates in a buildup: tp is the cumulative reservoir volume over the last
    // rate, (10*1.2*200 + 20*1.2*100) / (1.2*100) = 40 h; durations typed in days must
    // become hours; q is the last rate; the derivative spacing returns to 0.2.
    void ratesGiveFlowRateAndProducingTime() {
        AnalysisState& s = t->state;
        s.FluidFlags = 1;
        s.ShutInFlag = 1;
        s.OilFvf = 1.2;
        s.DerivativeSpan = 0.5;
        DataEntryScreen* d = open(1);
        row(d, {"10", "200"});
        row(d, {"20", "100"});
        QCOMPARE(int(s.RateCount), 0); // counts change only when entry is finished
        click(d, "Command2");
        QCOMPARE(int(s.RateCount), 2);
        QCOMPARE(s.FlowRate, 100.0);
        QVERIFY(std::fabs(s.ProducingTime - 40.0) < 1e-9);
        QCOMPARE(s.DerivativeSpan, 0.2);
        QVERIFY(!d->isVisible());
        QCOMPARE(child<QLabel>(inp, "rateSummary")->text(),
                 QStringLiteral("2 rates, q = 100. STB/day, tp = 40. hrs."));

        s.RateTimeUnit = 1;
        d = open(1);
        row(d, {"2", "500"});
        click(d, "Command2");
        QCOMPARE(s.RateTime[1], 48.0);
        QCOMPARE(s.FlowRate, 500.0);
        QCOMPARE(s.ProducingTime, 48.0);

        s.ShutInFlag = 0; // a drawdown is itself the flow period
        d = open(1);
        row(d, {"10", "200"});
        row(d, {"20", "100"});
        click(d, "Command2");
        QCOMPARE(s.ProducingTime, 0.0);
    }

    // Gas in pseudopressure has no FVF: tp must be Horner's cumulative volume over the
    // last rate, never 0/0.
    void pseudopressureGasProducingTime() {
        AnalysisState& s = t->state;
        s.FluidFlags = 0;
        s.ShutInFlag = 1;
        s.OilFvf = 0;
        DataEntryScreen* d = open(1);
        row(d, {"10", "2000"});
        row(d, {"20", "1000"});
        click(d, "Command2");
        QVERIFY(t->messages.messages.isEmpty());
        QVERIFY(std::fabs(s.ProducingTime - 40.0) < 1e-9);
    }

    // Minutes must become hours; a row at time 0 is the start of the test: its pressure
    // becomes the start pressure (shown on the input screen) and it is not a point.
    void testPointsInMinutesAndStartRow() {
        AnalysisState& s = t->state;
        s.TestTimeUnit = 1;
        DataEntryScreen* d = open(0);
        row(d, {"0", "3000"});
        QCOMPARE(s.StartPressure, 3000.0);
        QCOMPARE(child<QLineEdit>(inp, "psin")->text(), QStringLiteral("3000."));
        QCOMPARE(int(s.EntryCounter), 1);
        row(d, {"60", "3100"});
        row(d, {"120", "3150"});
        click(d, "Command2");
        QCOMPARE(int(s.TestPointCount), 2);
        QCOMPARE(s.TestTime[1], 1.0);
        QCOMPARE(s.TestTime[2], 2.0);
        QCOMPARE(s.TestPressure[2], 3150.0);
        QVERIFY(shown(inp, "List1")); // there is something to analyse now
    }

    // A half-typed row must not be finishable: typing into the time box hides Finish
    // until the row is stored.
    void finishHiddenWhileRowHalfTyped() {
        DataEntryScreen* d = open(0);
        QVERIFY(shown(d, "Command2"));
        typeInto(d, "conv", QStringLiteral("5"));
        QVERIFY(!shown(d, "Command2"));
        typeInto(d, "conv2", QStringLiteral("3100"));
        click(d, "Command1");
        QVERIFY(shown(d, "Command2"));
        QCOMPARE(child<QLineEdit>(d, "conv")->text(), QStringLiteral(" "));
    }

    // The arrays end at 25 rates and 500 points: the next row must be refused with the
    // message exactly as the program has always worded it.
    void limits() {
        AnalysisState& s = t->state;
        s.FluidFlags = 1;
        DataEntryScreen* d = open(1);
        for (int i = 1; i <= 25; ++i)
            row(d, {"1", "100"});
        QVERIFY(t->messages.messages.isEmpty());
        row(d, {"1", "100"});
        QCOMPARE(t->messages.lastText(), QStringLiteral("Maximum of  25 Rates Allowed"));
        click(d, "Command2");
        QCOMPARE(int(s.RateCount), 25);

        d = open(0);
        s.EntryCounter = 501; // 500 rows already stored
        row(d, {"1", "3000"});
        QCOMPARE(t->messages.lastText(), QStringLiteral("Maximum of  500Test Points Allowed"));
        QCOMPARE(int(s.EntryCounter), 501);
    }

    // Reopening starts again at row 1, so a new entry overwrites the old from the top.
    void reopeningStartsAtRowOne() {
        DataEntryScreen* d = open(0);
        row(d, {"1", "3000"});
        row(d, {"2", "3050"});
        QCOMPARE(int(t->state.EntryCounter), 3);
        d = open(0);
        QCOMPARE(int(t->state.EntryCounter), 1);
        QCOMPARE(child<QLineEdit>(d, "conv2")->text(), QStringLiteral(" "));
    }

    // A run-time fault while finishing (a last rate of zero gives no producing time)
    // must be reported and leave the screen usable.
    void faultWhileFinishingIsReported() {
        AnalysisState& s = t->state;
        s.FluidFlags = 1;
        s.ShutInFlag = 1;
        s.OilFvf = 1.2;
        DataEntryScreen* d = open(1);
        row(d, {"10", "200"});
        row(d, {"5", "0"});
        click(d, "Command2");
        QCOMPARE(t->messages.lastTitle(), kRuntimeErrorTitle);
        QVERIFY(!t->endCode);
        d = open(1);
        row(d, {"10", "200"});
        click(d, "Command2");
        QCOMPARE(s.ProducingTime, 10.0);
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::DataEntryScreenTest)
#include "DataEntryScreenTest.moc"
