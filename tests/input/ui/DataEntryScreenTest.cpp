// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/ui/EventGuard.h"
#include "input/test_file.h"
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
    // Types the rate rows of an oil buildup (Bo 1.2) and finishes entry unless told not to.
    DataEntryScreen* oilBuildupRates(std::initializer_list<std::initializer_list<const char*>> rows,
                                     bool finish = true) {
        t->state.FluidFlags = 1;
        t->state.ShutInFlag = 1;
        t->state.OilFvf = 1.2;
        DataEntryScreen* d = open(1);
        for (const auto& r : rows)
            row(d, r);
        if (finish)
            click(d, "Command2");
        return d;
    }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        inp = t->show<InputScreen>("inp");
    }
    void cleanup() { t.reset(); }

    // The engineer types into the boxes the captions name: a wrong caption or a missing
    // phase box puts a rate in the wrong array.
    void layoutByMode() {
        struct Row {
            int mode, fluid, unit;
            const char* labels; // of conv..conv4, "|"-separated; "" = hidden
        };
        const Row rows[] = {
            {0, 1, 0, "Time           hrs.|Pressure    psia||"},
            {0, 1, 1, "Time           min.|Pressure    psia||"},
            {1, 1, 1, "Duration     days|Oil Rate STB/day||"},
            {1, 0, 0, "Duration      hrs.|Gas Rate MCF/day||"},
            {1, 2, 0, "Duration      hrs.|Gas Rate MCF/day||"},
            {1, 3, 0, "Duration      hrs.|Wtr Rate STB/day||"},
            {1, 4, 0, "Duration      hrs.|Oil Rate STB/day|Gas Rate MCF/day|"},
            {1, 6, 0, "Duration      hrs.||Gas Rate MCF/day|Wtr Rate STB/day"},
            {1, 7, 0, "Duration      hrs.|Oil Rate STB/day|Gas Rate MCF/day|Wtr Rate STB/day"},
        };
        const char* boxes[] = {"conv", "conv2", "conv3", "conv4"};
        const char* names[] = {"Label2", "Label1", "Label3", "Label4"};
        for (const Row& r : rows) {
            t->state.FluidFlags = static_cast<std::int16_t>(r.fluid);
            t->state.TestTimeUnit = t->state.RateTimeUnit = static_cast<std::int16_t>(r.unit);
            DataEntryScreen* d = open(r.mode);
            QCOMPARE(d->windowTitle(), u"Data Input"_s);
            QCOMPARE(child<QLabel>(d, "lyrlab")->text(),
                     r.mode ? u"Enter Rates and Flow Duration"_s : u"Enter Well Test Values"_s);
            const QStringList labels = QString::fromUtf8(r.labels).split(u'|');
            for (int i = 0; i < 4; ++i) {
                QCOMPARE(shown(d, boxes[i]), !labels[i].isEmpty());
                QCOMPARE(shown(d, names[i]), !labels[i].isEmpty());
                if (!labels[i].isEmpty())
                    QCOMPARE(child<QLabel>(d, names[i])->text(), labels[i]);
            }
            QCOMPARE(child<QLineEdit>(d, "conv")->text(), u" "_s);
            QCOMPARE(int(t->state.EntryCounter), 1);
        }
    }

    // Two oil rates in a buildup: tp is the cumulative reservoir volume over the last
    // rate, (10*1.2*200 + 20*1.2*100) / (1.2*100) = 40 h; durations typed in days must
    // become hours; q is the last rate; the derivative spacing returns to 0.2.
    void ratesGiveFlowRateAndProducingTime() {
        AnalysisState& s = t->state;
        s.DerivativeSpan = 0.5;
        DataEntryScreen* d = oilBuildupRates({{"10", "200"}, {"20", "100"}}, false);
        QCOMPARE(int(s.RateCount), 0); // counts change only when entry is finished
        click(d, "Command2");
        QCOMPARE(int(s.RateCount), 2);
        QCOMPARE(s.FlowRate, 100.0);
        QVERIFY(std::fabs(s.ProducingTime - 40.0) < 1e-9);
        QCOMPARE(s.DerivativeSpan, 0.2);
        QVERIFY(!d->isVisible());
        QCOMPARE(child<QLabel>(inp, "rateSummary")->text(),
                 u"2 rates, q = 100. STB/day, tp = 40. hrs."_s);

        s.RateTimeUnit = 1;
        oilBuildupRates({{"2", "500"}});
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
        QCOMPARE(child<QLineEdit>(inp, "psin")->text(), u"3000."_s);
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
        typeInto(d, "conv", u"5"_s);
        QVERIFY(!shown(d, "Command2"));
        typeInto(d, "conv2", u"3100"_s);
        click(d, "Command1");
        QVERIFY(shown(d, "Command2"));
        QCOMPARE(child<QLineEdit>(d, "conv")->text(), u" "_s);
    }

    // The arrays end at 25 rates and 500 points: the next row must be refused with the
    // message exactly as the program has always worded it, and the refused row cleared
    // with Finish back, so the 25 rates already typed can still be finished.
    void limits() {
        AnalysisState& s = t->state;
        s.FluidFlags = 1;
        DataEntryScreen* d = open(1);
        for (int i = 1; i <= 25; ++i)
            row(d, {"1", "100"});
        QVERIFY(t->messages.messages.isEmpty());
        row(d, {"1", "100"});
        QCOMPARE(t->messages.lastText(), u"Maximum of  25 Rates Allowed"_s);
        QCOMPARE(child<QLineEdit>(d, "conv")->text(), u" "_s);
        QVERIFY(shown(d, "Command2"));
        QCOMPARE(child<QLabel>(d, "rowNumber")->text(), u"All 25 rows stored; Finish keeps them"_s);
        click(d, "Command2");
        QCOMPARE(int(s.RateCount), 25);

        d = open(0);
        s.EntryCounter = 501; // 500 rows already stored
        row(d, {"1", "3000"});
        QCOMPARE(t->messages.lastText(), u"Maximum of  500Test Points Allowed"_s);
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
        QCOMPARE(child<QLineEdit>(d, "conv2")->text(), u" "_s);
    }

    // A buildup typed with the shut-in as a last, zero-rate step flowed at 200 STB/day
    // for 10 h, and the summary says which step is the shut-in.
    void zeroRateStepsWhileFinishing() {
        oilBuildupRates({{"10", "200"}, {"5", "0"}});
        QCOMPARE(t->state.FlowRate, 200.0);
        QCOMPARE(t->state.ProducingTime, 10.0);
        QCOMPARE(child<QLabel>(inp, "rateSummary")->text(),
                 u"2 rates (last: shut-in), q = 200. STB/day, tp = 10. hrs."_s);
    }

    // Entry is all or nothing: closed without Finish, or finished into a fault (a history
    // with no flow at all gives no producing time, which must be reported), it must leave
    // the rate history, the test points and their counts exactly as they were, while the
    // input screen still shows them.
    void abandonedEntryChangesNothing() {
        AnalysisState& s = t->state;
        oilBuildupRates({{"10", "200"}, {"20", "100"}});
        DataEntryScreen* d = open(0);
        row(d, {"1", "3000"});
        row(d, {"2", "3050"});
        click(d, "Command2");
        const std::string before = testFileText(s);
        for (int mode : {1, 0}) {
            d = open(mode);
            row(d, {"5", "999"});
            d->close();
        }
        oilBuildupRates({{"10", "0"}, {"5", "0"}});
        QCOMPARE(t->messages.lastTitle(), kRuntimeErrorTitle);
        QCOMPARE(t->messages.lastText(), u"Division by zero"_s);
        QVERIFY(!t->endCode);
        QCOMPARE(testFileText(s), before);
        QVERIFY(std::fabs(s.ProducingTime - 40.0) < 1e-9);
        QCOMPARE(child<QLabel>(inp, "rateSummary")->text(),
                 u"2 rates, q = 100. STB/day, tp = 40. hrs."_s);
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::DataEntryScreenTest)
#include "DataEntryScreenTest.moc"
