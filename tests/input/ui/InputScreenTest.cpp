// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/ui/EventGuard.h"
#include "input/ui/InputScreen.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include <cmath>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class InputScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    InputScreen* inp = nullptr;

    void setRates(std::initializer_list<std::pair<double, double>> oilAndGas) {
        int n = 0;
        for (const auto& [oil, gas] : oilAndGas) {
            ++n;
            t->state.Rate[n] = oil;
            t->state.GasRate[n] = gas;
            t->state.RateTime[n] = 10;
        }
        t->state.RateCount = static_cast<std::int16_t>(n);
    }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        inp = t->show<InputScreen>("inp");
    }
    void cleanup() { t.reset(); }

    // A wrong caption, a missing item or a list in the wrong order would mislead the
    // engineer and break the prefix navigation; the boxes that need a choice first
    // must start hidden.
    void startsWithCaptionListsAndHiddenControls() {
        QCOMPARE(inp->objectName(), QStringLiteral("inp"));
        QCOMPARE(inp->windowTitle(), QStringLiteral("ZORVEKAN -- Input Data"));
        auto* list1 = child<QListWidget>(inp, "List1");
        QCOMPARE(list1->count(), 3);
        QCOMPARE(list1->item(0)->text(), QStringLiteral("Show/Edit Test Data"));
        QCOMPARE(list1->item(1)->text(), QStringLiteral("Semilog Analysis"));
        QCOMPARE(list1->item(2)->text(), QStringLiteral("Type Curve Analysis"));
        auto* list2 = child<QListWidget>(inp, "List2");
        QCOMPARE(list2->count(), 1);
        QCOMPARE(list2->item(0)->text(), QStringLiteral("Skin Factor Evaluation"));
        for (const char* hidden : {"ggin", "trin", "gginLabel", "trinLabel", "List1", "gaspk",
                                   "Command2", "Command3", "Label4", "Label18"})
            QVERIFY2(!shown(inp, hidden), hidden);
        QCOMPARE(child<QPushButton>(inp, "Command1")->text(), QStringLiteral("PVT Correlations"));
        QCOMPARE(child<QPushButton>(inp, "Command2")->text(), QStringLiteral("Input Rate Data"));
        QCOMPARE(child<QPushButton>(inp, "Command3")->text(), QStringLiteral("Input Test Data"));
        QCOMPARE(child<QLabel>(inp, "Label4")->text(), QStringLiteral("Well Test: Input Data"));
        QCOMPARE(t->state.ApplicationDirectory, QDir::currentPath().toStdString());
        auto* test = child<QComboBox>(inp, "test");
        QCOMPARE(test->count(), 4);
        QCOMPARE(test->itemText(3), QStringLiteral("Falloff"));
        QCOMPARE(child<QComboBox>(inp, "ttime")->itemText(0), QStringLiteral("Test Times: min."));
    }

    void convertsTypedUnits_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("label");
        QTest::addColumn<double>("stored");
        QTest::newRow("rw 7 in") << u"rwin"_s << u"7"_s << u"Well Radius        in."_s << 0.58333;
        QTest::newRow("phi 20 %") << u"phin"_s << u"20"_s << u"Porosity     %"_s << 0.2;
        QTest::newRow("ct 15 microsips")
            << u"ctin"_s << u"15"_s << u"Total Compressibility            msips"_s << 1.5e-5;
        QTest::newRow("area 40 acres")
            << u"rein"_s << u"40"_s << u"Drainage Area        acres"_s << 1742400.0;
        QTest::newRow("p0") << u"psin"_s << u"3000"_s << u"Pressure @ start            psia"_s
                            << 3000.0;
        QTest::newRow("h lenient") << u"hin"_s << u"35ft"_s << u"Net Pay        ft."_s << 35.0;
        QTest::newRow("empty mu") << u"muin"_s << u""_s << u"Viscosity      cp."_s << 0.0;
    }
    // A conversion missed or applied twice, or a label without its unit, stores a
    // property off by 12, 100, 1e6 or 43560 without the engineer noticing.
    void convertsTypedUnits() {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, label);
        QFETCH(double, stored);
        const QByteArray name = box.toUtf8();
        typeInto(inp, "muin", QStringLiteral("9")); // so that the empty row really clears
        typeInto(inp, name.constData(), typed);
        QCOMPARE(child<QLabel>(inp, (box + QStringLiteral("Label")).toUtf8().constData())->text(),
                 label);
        const double values[] = {t->state.WellboreRadius,       t->state.Porosity,
                                 t->state.TotalCompressibility, t->state.DrainageArea,
                                 t->state.StartPressure,        t->state.Thickness,
                                 t->state.OilViscosity};
        const QStringList order = {QStringLiteral("rwin"), QStringLiteral("phin"),
                                   QStringLiteral("ctin"), QStringLiteral("rein"),
                                   QStringLiteral("psin"), QStringLiteral("hin"),
                                   QStringLiteral("muin")};
        const double value = values[order.indexOf(box)];
        QVERIFY2(std::fabs(value - stored) <= 1e-5 * std::max(1.0, std::fabs(stored)),
                 qPrintable(QString::number(value)));
    }

    // The drainage radius uses 3.1416, not full-precision pi, and follows each change
    // of the area box.
    void showsDrainageRadius() {
        typeInto(inp, "rein", QStringLiteral("40"));
        QVERIFY(std::fabs(t->state.DrainageRadius - 744.73) < 0.005);
        QCOMPARE(child<QLabel>(inp, "drainageRadius")->text(), QStringLiteral("744.73"));
        typeInto(inp, "rein", QStringLiteral("160"));
        QCOMPARE(child<QLabel>(inp, "drainageRadius")->text(), QStringLiteral("1489.46"));
    }

    void fluidCodeByClicks_data() {
        QTest::addColumn<bool>("oil");
        QTest::addColumn<bool>("gas");
        QTest::addColumn<bool>("water");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<int>("code");
        QTest::addColumn<QStringList>("visible");
        QTest::addColumn<QStringList>("hidden");
        const auto L = [](std::initializer_list<const char*> names) {
            QStringList l;
            for (const char* n : names)
                l.append(QString::fromUtf8(n));
            return l;
        };
        QTest::newRow("gas, pseudopressure")
            << false << true << false << u"Pseudopressure"_s << 0
            << L({"gaspk", "ggin", "trin", "muin", "ctin"}) << L({"boin", "bgin", "rsin"});
        QTest::newRow("oil") << true << false << false << u"Pseudopressure"_s << 1
                             << L({"boin", "muin"}) << L({"gaspk", "ggin", "bgin", "bwin", "rsin"});
        QTest::newRow("gas, pressure")
            << false << true << false << u"Pressure"_s << 2 << L({"gaspk", "boin", "muin", "ctin"})
            << L({"ggin", "trin", "bgin"});
        QTest::newRow("water") << false << false << true << u"Pseudopressure"_s << 3
                               << L({"boin", "muin"}) << L({"bwin", "gaspk"});
        QTest::newRow("oil and gas")
            << true << true << false << u"Pressure"_s << 4
            << L({"gaspk", "boin", "bgin", "mgin", "rsin"}) << L({"bwin", "ggin"});
        QTest::newRow("oil and water") << true << false << true << u"Pseudopressure"_s << 5
                                       << L({"bwin", "mwin", "boin"}) << L({"bgin", "rsin"});
        QTest::newRow("gas and water")
            << false << true << true << u"Pseudopressure"_s << 6
            << L({"bgin", "mgin", "bwin", "mwin"}) << L({"ggin", "rsin"});
        QTest::newRow("all three")
            << true << true << true << u"Pseudopressure"_s << 7
            << L({"bgin", "mgin", "bwin", "mwin", "rsin"}) << L({"ggin", "trin"});
    }
    // The fluid code decides every analysis (pressure or pseudopressure, which rates
    // are asked for); a wrong code or a box missing for a flowing phase spoils the test.
    void fluidCodeByClicks() {
        QFETCH(bool, oil);
        QFETCH(bool, gas);
        QFETCH(bool, water);
        QFETCH(QString, mode);
        QFETCH(int, code);
        QFETCH(QStringList, visible);
        QFETCH(QStringList, hidden);
        t->state.FluidFlags = 99;
        if (gas) {
            click(inp, "Check2");
            choose(inp, "gaspk", mode);
        }
        if (oil)
            click(inp, "Check1");
        if (water)
            click(inp, "Check3");
        QCOMPARE(int(t->state.FluidFlags), code);
        for (const QString& v : visible) {
            QVERIFY2(shown(inp, v.toUtf8().constData()), qPrintable(v));
            if (v != QStringLiteral("gaspk"))
                QVERIFY2(shown(inp, (v + QStringLiteral("Label")).toUtf8().constData()),
                         qPrintable(v));
        }
        for (const QString& h : hidden)
            QVERIFY2(!shown(inp, h.toUtf8().constData()), qPrintable(h));
        if (!gas)
            QCOMPARE(child<QLabel>(inp, "boinLabel")->text(), QStringLiteral("   FVF    RVB/STB"));
    }

    // "Pressure" chosen while oil also flows must not turn the test into gas alone.
    void gasAnalysisModeOnlyForGasAlone() {
        click(inp, "Check1");
        click(inp, "Check2");
        choose(inp, "gaspk", QStringLiteral("Pressure"));
        QCOMPARE(int(t->state.FluidFlags), 4);
        click(inp, "Check1");
        QCOMPARE(int(t->state.FluidFlags), 2);
        choose(inp, "gaspk", QStringLiteral("Pseudopressure"));
        QCOMPARE(int(t->state.FluidFlags), 0);
    }

    // A shut-in or injection flag set wrongly reverses every time function.
    void testTypeSetsFlags() {
        choose(inp, "test", QStringLiteral("Falloff"));
        QCOMPARE(int(t->state.ShutInFlag), 1);
        QCOMPARE(int(t->state.InjectionFlag), 1);
        choose(inp, "test", QStringLiteral("Drawdown"));
        QCOMPARE(int(t->state.ShutInFlag), 0);
        QCOMPARE(int(t->state.InjectionFlag), 0);
        choose(inp, "test", QStringLiteral("Injectivity"));
        QCOMPARE(int(t->state.InjectionFlag), 1);
    }

    // Without an FVF the producing time cannot be computed from reservoir volumes: the
    // flow-time unit must be refused with the input-error box and rate entry stay shut.
    void flowTimeUnitNeedsFvf() {
        click(inp, "Check1");
        choose(inp, "rtime", QStringLiteral("Flow Times: days"));
        QCOMPARE(t->messages.messages.size(), 1);
        QCOMPARE(t->messages.lastTitle(), QStringLiteral("ZORVEKAN Input Error"));
        QCOMPARE(t->messages.lastText(), QStringLiteral("Enter FVF & Reselect Flow Time"));
        QVERIFY(!shown(inp, "Command2"));
        QCOMPARE(int(t->state.RateTimeUnit), 0);
        QCOMPARE(child<QComboBox>(inp, "rtime")->currentIndex(), -1);

        typeInto(inp, "boin", QStringLiteral("1.2"));
        choose(inp, "rtime", QStringLiteral("Flow Times: days"));
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(shown(inp, "Command2"));
        QCOMPARE(int(t->state.RateTimeUnit), 1);
        choose(inp, "ttime", QStringLiteral("Test Times: min."));
        QCOMPARE(int(t->state.TestTimeUnit), 1);
        QVERIFY(shown(inp, "Command3"));
    }

    // Gas analysed in pseudopressure needs no FVF for the flow-time unit.
    void pseudopressureGasNeedsNoFvf() {
        click(inp, "Check2");
        choose(inp, "rtime", QStringLiteral("Flow Times: hrs."));
        QVERIFY(t->messages.messages.isEmpty());
        QVERIFY(shown(inp, "Command2"));
    }

    // A GOR that absorbs all the gas of the last rate leaves no free gas: gas must stop
    // counting as a flowing phase (4 -> 1, 7 -> 5) and the engineer be told.
    void solutionGorTakesGasOut() {
        setRates({{200, 500}, {100, 150}});
        click(inp, "Check1");
        click(inp, "Check2");
        QCOMPARE(int(t->state.FluidFlags), 4);
        typeInto(inp, "rsin", QStringLiteral("1"));
        QVERIFY(!shown(inp, "Label18"));
        QCOMPARE(int(t->state.FluidFlags), 4);
        typeInto(inp, "rsin", QStringLiteral("1.5"));
        QVERIFY(shown(inp, "Label18"));
        QCOMPARE(child<QLabel>(inp, "Label18")->text(), QStringLiteral("Undersaturated Condition"));
        QVERIFY(!child<QCheckBox>(inp, "Check2")->isChecked());
        QVERIFY(!shown(inp, "gaspk"));
        QCOMPARE(int(t->state.FluidFlags), 1);
        QCOMPARE(t->state.SolutionGor, 1.5);
        QVERIFY(shown(inp, "rsin")); // still there to be corrected

        click(inp, "Check2");
        click(inp, "Check3");
        QCOMPARE(int(t->state.FluidFlags), 7);
        typeInto(inp, "rsin", QStringLiteral("2"));
        QCOMPARE(int(t->state.FluidFlags), 5);
        typeInto(inp, "rsin", QStringLiteral("0.5"));
        QVERIFY(!shown(inp, "Label18"));
    }

    // Typing the GOR before any rate exists must not untick gas: with no rate the
    // free-gas test would compare zeros and always find the oil undersaturated.
    void solutionGorBeforeRatesKeepsGas() {
        click(inp, "Check1");
        click(inp, "Check2");
        typeInto(inp, "rsin", QStringLiteral("0.8"));
        QVERIFY(child<QCheckBox>(inp, "Check2")->isChecked());
        QVERIFY(!shown(inp, "Label18"));
        QCOMPARE(int(t->state.FluidFlags), 4);
        QCOMPARE(t->state.SolutionGor, 0.8);
    }

    void navigation_data() {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("rates");
        QTest::addColumn<int>("kind");
        QTest::newRow("semilog, one rate") << u"List1"_s << u"Semilog Analysis"_s << 1 << 1;
        QTest::newRow("semilog, two rates") << u"List1"_s << u"Semilog Analysis"_s << 2 << 2;
        QTest::newRow("type curves") << u"List1"_s << u"Type Curve Analysis"_s << 1 << 1;
        QTest::newRow("test data") << u"List1"_s << u"Show/Edit Test Data"_s << 1 << 1;
        QTest::newRow("skin") << u"List2"_s << u"Skin Factor Evaluation"_s << 2 << 2;
    }
    // Every analysis must start from freshly prepared series in the right plot kind;
    // a screen opens, and one that is not there yet says so instead of doing nothing.
    void navigation() {
        QFETCH(QString, list);
        QFETCH(QString, item);
        QFETCH(int, rates);
        QFETCH(int, kind);
        AnalysisState& s = t->state;
        s.FluidFlags = kOil;
        s.ShutInFlag = 1;
        s.StartPressure = 3000;
        for (int j = 1; j <= rates; ++j) {
            s.Rate[j] = 100.0 * j;
            s.RateTime[j] = 10;
        }
        s.RateCount = static_cast<std::int16_t>(rates);
        s.ProducingTime = 24;
        s.TestTime[1] = 24;
        s.TestPressure[1] = 3100;
        s.TestTime[2] = 2;
        s.TestPressure[2] = 3050;
        s.TestTime[3] = 0.5;
        s.TestPressure[3] = 3020;
        s.TestPointCount = 3;
        s.SemilogPlotKind = 0;
        s.TimeFunction[1] = 0;
        inp->refreshEntryState();
        QVERIFY(shown(inp, "List1"));
        clickItem(inp, list.toUtf8().constData(), item);
        QCOMPARE(int(s.SemilogPlotKind), kind);
        QCOMPARE(s.TimeFunction[1], 12.0); // tp*t/(tp + t) with tp = t = 24 h
        const QString screen = QString::fromStdString(*navigationScreen(item.toStdString()));
        if (t->program->screens().isAvailable(screen)) {
            QVERIFY(t->messages.messages.isEmpty());
            QVERIFY(t->screen(screen.toUtf8().constData())->isVisible());
        } else {
            QCOMPARE(t->messages.messages.size(), 1);
            QCOMPARE(t->messages.lastText(),
                     item + QStringLiteral(" is not available in this version yet."));
        }
    }

    // A run-time fault inside a handler (here the logarithm of a zero pressure change)
    // must be reported and leave the screen working, not end the program.
    void faultInHandlerIsReported() {
        AnalysisState& s = t->state;
        s.FluidFlags = kOil;
        s.StartPressure = 3000;
        s.TestTime[1] = 1;
        s.TestPressure[1] = 3000;
        s.TestPointCount = 1;
        inp->refreshEntryState();
        clickItem(inp, "List1", QStringLiteral("Semilog Analysis"));
        QCOMPARE(t->messages.messages.size(), 1);
        QCOMPARE(t->messages.lastTitle(), kRuntimeErrorTitle);
        QVERIFY(!t->endCode);
        typeInto(inp, "hin", QStringLiteral("50"));
        QCOMPARE(s.Thickness, 50.0);
    }

    // Print must show the heading and hide the toolbar on the page, then put the
    // screen back as it was.
    void printShowsHeadingWithoutToolbar() {
        bool toolbarHidden = false, headingShown = false;
        t->printer.whilePrinting = [&] {
            toolbarHidden = !shown(inp, "Toolbar1");
            headingShown = shown(inp, "Label4");
        };
        child<QAction>(inp, "Print")->trigger();
        QCOMPARE(t->printer.pages.size(), 1);
        QVERIFY(toolbarHidden);
        QVERIFY(headingShown);
        QVERIFY(!t->printer.pages.first().isNull());
        QVERIFY(shown(inp, "Toolbar1"));
        QVERIFY(!shown(inp, "Label4"));
        const QStringList keys = [this] {
            QStringList k;
            for (QAction* a : child<QToolBar>(inp, "Toolbar1")->actions())
                k.append(a->objectName());
            return k;
        }();
        QCOMPARE(keys, QStringList({QStringLiteral("Open"), QStringLiteral("Save"),
                                    QStringLiteral("Import"), QStringLiteral("Print"),
                                    QStringLiteral("Exit")}));
    }

    // Export writes the printed page to the file the engineer names.
    void exportWritesThePage() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("input.png"));
        t->files.answers = {path};
        child<QAction>(inp, "Export")->trigger();
        QImage written(path);
        QVERIFY(!written.isNull());
        QVERIFY(written.width() > 300);
    }

    // The Version entry must answer with the program's version.
    void versionShowsTheVersion() {
        child<QAction>(inp, "Version")->trigger();
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(t->messages.lastText().contains(QStringLiteral("0.1.0")));
    }

    // Exit from the toolbar, and closing the window by its frame, end the program
    // with every screen closed and no save prompt.
    void exitEndsProgram() {
        click(inp, "Command1");
        QVERIFY(t->screen("mox")->isVisible());
        child<QAction>(inp, "Exit")->trigger();
        QCOMPARE(t->endCode, std::optional<int>(0));
        QVERIFY(!t->screen("mox")->isVisible());
        QVERIFY(!inp->isVisible());
        QVERIFY(t->messages.messages.isEmpty());

        TestProgram other;
        auto* input = other.show<InputScreen>("inp");
        input->close();
        QCOMPARE(other.endCode, std::optional<int>(0));
    }

    // The entry buttons must set the mode before the entry screen lays itself out.
    void entryButtonsOpenDatinInTheirMode() {
        click(inp, "Check2");
        choose(inp, "rtime", QStringLiteral("Flow Times: hrs."));
        click(inp, "Command2");
        QCOMPARE(int(t->state.DatinMode), 1);
        QWidget* datin = t->screen("Datin");
        QVERIFY(datin->isVisible());
        QCOMPARE(child<QLabel>(datin, "lyrlab")->text(),
                 QStringLiteral("Enter Rates and Flow Duration"));
        choose(inp, "ttime", QStringLiteral("Test Times: hrs."));
        click(inp, "Command3");
        QCOMPARE(int(t->state.DatinMode), 0);
        QCOMPARE(child<QLabel>(datin, "lyrlab")->text(), QStringLiteral("Enter Well Test Values"));
    }

    // After a file is opened the boxes must show the stored values in the typed units,
    // and the stored values must be those of the shown text (the change rules ran).
    void refillShowsStoredValues() {
        AnalysisState& s = t->state;
        s.TestTitle = "Refilled";
        s.ShutInFlag = 1;
        s.FluidFlags = 5;
        s.WellboreRadius = 0.354;
        s.Porosity = 0.2;
        s.TotalCompressibility = 1.5e-5;
        s.OilFvf = 1.23456;
        s.DrainageRadius = 744.73;
        s.RateTimeUnit = 1;
        inp->refillFromState();
        QCOMPARE(child<QLineEdit>(inp, "titl")->text(), QStringLiteral("Refilled"));
        QCOMPARE(child<QComboBox>(inp, "test")->currentText(), QStringLiteral("Buildup"));
        QCOMPARE(child<QComboBox>(inp, "rtime")->currentText(), QStringLiteral("Flow Times: days"));
        QVERIFY(child<QCheckBox>(inp, "Check1")->isChecked());
        QVERIFY(!child<QCheckBox>(inp, "Check2")->isChecked());
        QVERIFY(child<QCheckBox>(inp, "Check3")->isChecked());
        QCOMPARE(child<QLineEdit>(inp, "rwin")->text(), QStringLiteral("4.248"));
        QCOMPARE(child<QLineEdit>(inp, "phin")->text(), QStringLiteral("20."));
        QCOMPARE(child<QLineEdit>(inp, "ctin")->text(), QStringLiteral("15."));
        QCOMPARE(child<QLineEdit>(inp, "boin")->text(), QStringLiteral("1.2346"));
        QCOMPARE(s.OilFvf, 1.2346);
        QVERIFY(std::fabs(s.WellboreRadius - 0.354) < 1e-12);
        QVERIFY(shown(inp, "bwin"));
        QVERIFY(shown(inp, "Command2"));
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::InputScreenTest)
#include "InputScreenTest.moc"
