// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/ui/EventGuard.h"
#include "core/ui/LenientReading.h"
#include "core/val.h"
#include "input/entry_rules.h"
#include "input/recovery_file.h"
#include "input/test_file.h"
#include "input/ui/InputScreen.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include <cmath>
#include <tuple>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class InputScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    InputScreen* inp = nullptr;

    QString label(const char* name) { return child<QLabel>(inp, name)->text(); }

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
        QCOMPARE(inp->objectName(), u"inp"_s);
        QCOMPARE(inp->windowTitle(), u"ZORVEKAN -- Input Data"_s);
        const auto items = [this](const char* name) {
            QStringList l;
            for (auto* list = child<QListWidget>(inp, name); l.size() < list->count();)
                l.append(list->item(int(l.size()))->text());
            return l;
        };
        QCOMPARE(items("List1"), QStringList({u"Show/Edit Test Data"_s, u"Semilog Analysis"_s,
                                              u"Type Curve Analysis"_s}));
        QCOMPARE(items("List2"), QStringList{u"Skin Factor Evaluation"_s});
        for (const char* hidden : {"ggin", "trin", "gginLabel", "trinLabel", "List1", "gaspk",
                                   "Command2", "Command3", "Label4", "Label18"})
            QVERIFY2(!shown(inp, hidden), hidden);
        QCOMPARE(child<QPushButton>(inp, "Command1")->text(), u"PVT Correlations"_s);
        QCOMPARE(child<QPushButton>(inp, "Command2")->text(), u"Input Rate Data"_s);
        QCOMPARE(child<QPushButton>(inp, "Command3")->text(), u"Input Test Data"_s);
        QCOMPARE(label("Label4"), u"Well Test: Input Data"_s);
        QCOMPARE(t->state.ApplicationDirectory, QDir::currentPath().toStdString());
        auto* test = child<QComboBox>(inp, "test");
        QCOMPARE(test->count(), 4);
        QCOMPARE(test->itemText(3), u"Falloff"_s);
        QCOMPARE(child<QComboBox>(inp, "ttime")->itemText(0), u"Test Times: min."_s);
    }

    // A conversion missed or applied twice, or a label without its unit, stores a
    // property off by 12, 100, 1e6 or 43560 without the engineer noticing; the drainage
    // radius (3.1416, not full-precision pi) must follow each change of the area box.
    // Text that is not a plain number keeps its lenient reading, which the box must
    // show (tinted, "read as ..."), or "1,3" silently becomes 1.
    void convertsTypedUnits() {
        struct Row {
            const char* box;
            QString typed, label;
            double AnalysisState::*field;
            double stored;
            QString reading;
        };
        using S = AnalysisState;
        const Row rows[] = {
            {"rwin", u"7"_s, u"Well Radius        in."_s, &S::WellboreRadius, 0.58333, {}},
            {"phin", u"20"_s, u"Porosity     %"_s, &S::Porosity, 0.2, {}},
            {"ctin",
             u"15"_s,
             u"Total Compressibility            msips"_s,
             &S::TotalCompressibility,
             1.5e-5,
             {}},
            {"rein", u"40"_s, u"Drainage Area        acres"_s, &S::DrainageArea, 1742400.0, {}},
            {"psin", u"3000"_s, u"Pressure @ start            psia"_s, &S::StartPressure, 3000, {}},
            {"hin", u"35ft"_s, u"Net Pay        ft."_s, &S::Thickness, 35.0, u"read as 35"_s},
            {"muin", u"1,3"_s, u"Viscosity      cp."_s, &S::OilViscosity, 1.0, u"read as 1"_s},
            {"muin", u"9"_s, u"Viscosity      cp."_s, &S::OilViscosity, 9.0, {}},
            {"muin", QString(), u"Viscosity      cp."_s, &S::OilViscosity, 0.0, {}}, // cleared
        };
        for (const Row& r : rows) {
            typeInto(inp, r.box, r.typed);
            QCOMPARE(label((QByteArray(r.box) + "Label").constData()), r.label);
            const double value = t->state.*r.field;
            QVERIFY2(std::fabs(value - r.stored) <= 1e-5 * std::max(1.0, std::fabs(r.stored)),
                     r.box);
            auto* box = child<QLineEdit>(inp, r.box);
            QCOMPARE(box->toolTip(), r.reading);
            QCOMPARE(showsLenientReading(box), !r.reading.isEmpty());
        }
        QCOMPARE(label("drainageRadius"), u"744.73"_s);
        typeInto(inp, "rein", u"160"_s);
        QCOMPARE(label("drainageRadius"), u"1489.46"_s);
    }

    // The fluid code decides every analysis (pressure or pseudopressure, which rates are
    // asked for): each click must give the code of the boxes now ticked, show the boxes
    // (and labels) of the flowing phases and no other, and label the FVF for its phase;
    // "Pressure" chosen while a liquid also flows must not turn the test into gas alone.
    void fluidClicksSetCodeAndBoxes() {
        struct Step {
            const char* control;
            const char* item; // chosen in a list; else the control is clicked
            int code;
            const char* shown;
            const char* hidden;
            const char* fvfLabel;
        };
        const Step steps[] = {
            {"Check2", nullptr, 0, "gaspk ggin trin muin ctin hin psin", "boin bgin rsin bwin",
             "   FVF    RVB/MCF"},
            {"gaspk", "Pressure", 2, "gaspk boin muin ctin", "ggin trin bgin rsin bwin",
             "   FVF    RVB/MCF"},
            {"Check1", nullptr, 4, "gaspk boin bgin mgin rsin", "bwin mwin ggin",
             "FVF      RVB/STB"},
            {"Check1", nullptr, 2, "gaspk boin", "ggin trin bgin rsin", "   FVF    RVB/MCF"},
            {"gaspk", "Pseudopressure", 0, "ggin trin", "boin", "   FVF    RVB/MCF"},
            {"Check3", nullptr, 6, "gaspk boin bgin mgin bwin mwin", "ggin trin rsin",
             "FVF      RVB/STB"},
            {"Check1", nullptr, 7, "bgin mgin bwin mwin rsin", "ggin trin", "FVF      RVB/STB"},
            {"Check2", nullptr, 5, "bwin mwin boin", "gaspk bgin mgin rsin ggin",
             "   FVF    RVB/STB"},
            {"Check1", nullptr, 3, "boin muin", "bwin mwin gaspk rsin", "   FVF    RVB/STB"},
            {"Check1", nullptr, 5, "bwin mwin", "bgin", "   FVF    RVB/STB"},
            {"Check3", nullptr, 1, "boin muin hin psin", "gaspk ggin bgin bwin rsin",
             "   FVF    RVB/STB"},
        };
        t->state.FluidFlags = 99;
        for (const Step& s : steps) {
            if (s.item)
                choose(inp, s.control, QString::fromUtf8(s.item));
            else
                click(inp, s.control);
            QCOMPARE(int(t->state.FluidFlags), s.code);
            for (const QString& box : QString::fromUtf8(s.shown).split(u' ')) {
                QVERIFY2(shown(inp, qPrintable(box)), qPrintable(box));
                if (box != u"gaspk"_s)
                    QVERIFY2(shown(inp, qPrintable(box + u"Label"_s)), qPrintable(box));
            }
            for (const QString& box : QString::fromUtf8(s.hidden).split(u' '))
                QVERIFY2(!shown(inp, qPrintable(box)), qPrintable(box));
            QCOMPARE(label("boinLabel"), QString::fromUtf8(s.fvfLabel));
        }
    }

    // Without an FVF the producing time cannot be computed from reservoir volumes: the
    // flow-time unit must be refused with the input-error box and rate entry stay shut.
    // Gas analysed in pseudopressure needs no FVF.
    void flowTimeUnitNeedsFvf() {
        click(inp, "Check1");
        choose(inp, "rtime", u"Flow Times: days"_s);
        QCOMPARE(t->messages.messages.size(), 1);
        QCOMPARE(t->messages.lastTitle(), u"ZORVEKAN Input Error"_s);
        QCOMPARE(t->messages.lastText(), u"Enter FVF & Reselect Flow Time"_s);
        QVERIFY(!shown(inp, "Command2"));
        QCOMPARE(int(t->state.RateTimeUnit), 0);
        QCOMPARE(child<QComboBox>(inp, "rtime")->currentIndex(), -1);

        typeInto(inp, "boin", u"1.2"_s);
        choose(inp, "rtime", u"Flow Times: days"_s);
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(shown(inp, "Command2"));
        QCOMPARE(int(t->state.RateTimeUnit), 1);
        choose(inp, "ttime", u"Test Times: min."_s);
        QCOMPARE(int(t->state.TestTimeUnit), 1);
        QVERIFY(shown(inp, "Command3"));

        TestProgram gas;
        auto* g = gas.show<InputScreen>("inp");
        click(g, "Check2");
        choose(g, "rtime", u"Flow Times: days"_s);
        QVERIFY(gas.messages.messages.isEmpty());
        QVERIFY(shown(g, "Command2"));
        QCOMPARE(int(gas.state.RateTimeUnit), 1);
    }

    // A GOR that absorbs all the gas of the last rate leaves no free gas: gas must stop
    // counting as a flowing phase (4 -> 1, 7 -> 5) and the engineer be told. Typed
    // before any rate exists it must not untick gas (the free-gas test would compare
    // zeros and always find the oil undersaturated).
    void solutionGorTakesGasOut() {
        click(inp, "Check1");
        click(inp, "Check2");
        typeInto(inp, "rsin", u"1.5"_s);
        QVERIFY(child<QCheckBox>(inp, "Check2")->isChecked());
        QVERIFY(!shown(inp, "Label18"));
        QCOMPARE(int(t->state.FluidFlags), 4);
        QCOMPARE(t->state.SolutionGor, 1.5);

        setRates({{200, 500}, {100, 150}});
        typeInto(inp, "rsin", u"1"_s);
        QVERIFY(!shown(inp, "Label18"));
        QCOMPARE(int(t->state.FluidFlags), 4);
        typeInto(inp, "rsin", u"1.5"_s);
        QVERIFY(shown(inp, "Label18"));
        QCOMPARE(label("Label18"), u"Undersaturated Condition"_s);
        QVERIFY(!child<QCheckBox>(inp, "Check2")->isChecked());
        QVERIFY(!shown(inp, "gaspk"));
        QCOMPARE(int(t->state.FluidFlags), 1);
        QVERIFY(shown(inp, "rsin")); // still there to be corrected

        click(inp, "Check2");
        click(inp, "Check3");
        QCOMPARE(int(t->state.FluidFlags), 7);
        typeInto(inp, "rsin", u"2"_s);
        QCOMPARE(int(t->state.FluidFlags), 5);
        typeInto(inp, "rsin", u"0.5"_s);
        QVERIFY(!shown(inp, "Label18"));
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
        const double points[][2] = {{24, 3100}, {2, 3050}, {0.5, 3020}};
        for (int i = 1; i <= 3; ++i)
            std::tie(s.TestTime[i], s.TestPressure[i]) =
                std::pair(points[i - 1][0], points[i - 1][1]);
        s.TestPointCount = 3;
        s.SemilogPlotKind = 0;
        s.TimeFunction[1] = 0;
        inp->refreshEntryState();
        QVERIFY(shown(inp, "List1"));
        clickItem(inp, list.toUtf8().constData(), item);
        QCOMPARE(int(s.SemilogPlotKind), kind);
        QCOMPARE(s.TimeFunction[1], 12.0); // tp*t/(tp + t) with tp = t = 24 h
        const QString screen = QString::fromStdString(*navigationScreen(item.toStdString()));
        QVERIFY(t->messages.messages.isEmpty());
        QVERIFY(t->screen(screen.toUtf8().constData())->isVisible());
    }

    // A run-time fault inside a handler (here the logarithm of a zero pressure change)
    // must be reported with the input behind it and leave the screen working, not end
    // the program; the analysis screen must not stay up with the previous series.
    void faultInHandlerIsReported() {
        AnalysisState& s = t->state;
        s.FluidFlags = kOil;
        s.ShutInFlag = 1;
        s.StartPressure = 3000;
        s.RateCount = 1;
        s.Rate[1] = s.FlowRate = 100;
        s.RateTime[1] = s.ProducingTime = 24;
        for (int i = 1; i <= 3; ++i)
            std::tie(s.TestTime[i], s.TestPressure[i]) = std::pair(i, 3000 + 10.0 * i);
        s.TestPointCount = 3;
        inp->refreshEntryState();
        clickItem(inp, "List1", u"Semilog Analysis"_s);
        QVERIFY(t->screen("kv1")->isVisible());
        const int shownBefore = int(t->messages.messages.size());
        s.TestPressure[2] = 3000;
        clickItem(inp, "List1", u"Semilog Analysis"_s);
        QCOMPARE(t->messages.messages.size(), shownBefore + 1);
        QCOMPARE(t->messages.lastTitle(), kRuntimeErrorTitle);
        QCOMPARE(t->messages.lastText(), u"Invalid procedure call or argument: logarithm of 0: "
                                         u"test point 2 has the start pressure"_s);
        QVERIFY(!t->screen("kv1")->isVisible());
        QVERIFY(!t->endCode);
        typeInto(inp, "hin", u"50"_s);
        QCOMPARE(s.Thickness, 50.0);
    }

    // Print must show the heading and hide the toolbar on the page, then put the
    // screen back as it was; Export must write that page to the file the engineer
    // names, and Version answer with the program's version.
    void printExportAndVersion() {
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
        QStringList keys;
        for (QAction* a : child<QToolBar>(inp, "Toolbar1")->actions())
            keys.append(a->objectName());
        QCOMPARE(keys, QStringList({u"Open"_s, u"Save"_s, u"Import"_s, u"Print"_s, u"Exit"_s}));

        QTemporaryDir dir;
        t->files.answers = {dir.filePath(u"input.png"_s)};
        child<QAction>(inp, "Export")->trigger();
        QVERIFY(QImage(dir.filePath(u"input.png"_s)).width() > 300);

        child<QAction>(inp, "Version")->trigger();
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(t->messages.lastText().contains(u"0.1.0"_s));
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

    void recoveryOfferedAtNextStart_data() {
        QTest::addColumn<bool>("savedFirst");
        QTest::addColumn<bool>("restore");
        QTest::newRow("restored") << false << true;
        QTest::newRow("discarded") << false << false;
        QTest::newRow("saved before Exit") << true << true;
    }
    // Exit asks nothing, so the unsaved test must be kept and offered at the next start;
    // restored, it must be the test left to the last digit (no display mask rounds the
    // 0.0234 cp or the calculator's B, whose notice stands again) and count as unsaved.
    // Discarded, or saved before Exit, nothing is offered again.
    void recoveryOfferedAtNextStart() {
        QFETCH(bool, savedFirst);
        QFETCH(bool, restore);
        AnalysisState& s = t->state;
        typeInto(inp, "titl", u"Well B-1 buildup"_s);
        choose(inp, "test", u"Buildup"_s);
        click(inp, "Check1");
        for (auto [box, text] : {std::pair("boin", "1.2345"),
                                 {"muin", "0.0234"},
                                 {"hin", "30"},
                                 {"rwin", "4.25"},
                                 {"phin", "18.5"},
                                 {"ctin", "12.5"}})
            typeInto(inp, box, QString::fromUtf8(text));
        choose(inp, "ttime", u"Test Times: min."_s);
        for (int j = 1; j <= 2; ++j)
            std::tie(s.Rate[j], s.RateTime[j]) = std::pair(300.0 / j, 10.0 * j);
        s.RateCount = 2;
        deriveFlowRateAndProducingTime(s);
        for (int i = 1; i <= 4; ++i)
            std::tie(s.TestTime[i], s.TestPressure[i]) = std::pair(i / 60.0, 3000 + 7.5 * i);
        s.TestPointCount = 4;
        s.OilFvf = 6.13834898214656; // the z-factor routine's B, as a calculation leaves it
        inp->showCalculatedProperties();
        QTemporaryDir dir;
        if (savedFirst) {
            t->files.answers = {dir.filePath(u"b1.zvt"_s)};
            child<QAction>(inp, "Save")->trigger();
        }
        const std::string left = testFileText(s);
        const double tp = s.ProducingTime;
        child<QAction>(inp, "Exit")->trigger();
        QCOMPARE(t->endCode, std::optional<int>(0));
        const QString recovery =
            QDir(t->workFolder.path()).filePath(QString::fromUtf8(kRecoveryFileName));
        QCOMPARE(QFile::exists(recovery), !savedFirst);
        if (savedFirst)
            return; // nothing to offer

        TestProgram next;
        next.program->useWorkFolder(t->workFolder.path());
        next.messages.answers = {restore};
        auto* again = next.show<InputScreen>("inp");
        QTRY_COMPARE(next.messages.messages.size(), 1); // once the window is on the screen
        QCOMPARE(next.messages.lastText(),
                 u"Restore the test you were working on when the program closed?"_s);
        QCOMPARE(QFile::exists(recovery), restore);
        if (!restore) {
            QCOMPARE(next.state.TestPointCount, 0);
            return;
        }
        QCOMPARE(testFileText(next.state), left);
        QCOMPARE(next.state.OilViscosity, 0.0234);
        QCOMPARE(next.state.ProducingTime, tp);
        QCOMPARE(child<QLineEdit>(again, "muin")->text(), u".0234"_s);
        QCOMPARE(Val(child<QLineEdit>(again, "boin")->text().toStdString()), next.state.OilFvf);
        QVERIFY(shown(again, "boinNotice"));
        QCOMPARE(child<QLineEdit>(again, "titl")->text(), u"Well B-1 buildup"_s);
        QVERIFY(shown(again, "changedMark"));
        QVERIFY(shown(again, "List1"));
    }

    // The engineer must see which file the test is and whether it changed since it was
    // opened or saved, and find the tests used last in the File menu, newest first.
    void statusLineAndRecentTests() {
        QCOMPARE(label("testFile"), u"New test, not saved yet"_s);
        QVERIFY(!shown(inp, "changedMark"));
        typeInto(inp, "hin", u"30"_s);
        QVERIFY(shown(inp, "changedMark"));
        QTemporaryDir dir;
        const QString a = dir.filePath(u"a.zvt"_s), b = dir.filePath(u"b.zvt"_s);
        t->files.answers = {a};
        child<QAction>(inp, "Save")->trigger();
        QCOMPARE(label("testFile"), u"Test file: "_s + a);
        QVERIFY(!shown(inp, "changedMark"));
        typeInto(inp, "hin", u"40"_s);
        t->files.answers = {b};
        child<QAction>(inp, "Save")->trigger();
        QCOMPARE(child<QAction>(inp, "recent1")->text(), u"&1 b.zvt"_s);
        QCOMPARE(child<QAction>(inp, "recent2")->text(), u"&2 a.zvt"_s);
        QVERIFY(!child<QAction>(inp, "recent3")->isVisible());
        child<QAction>(inp, "recent2")->trigger();
        QCOMPARE(t->state.Thickness, 30.0);
        QCOMPARE(label("testFile"), u"Test file: "_s + a);
        QVERIFY(!shown(inp, "changedMark"));
        QCOMPARE(child<QAction>(inp, "recent1")->text(), u"&1 a.zvt"_s);
        QVERIFY(t->messages.messages.isEmpty());
    }

    // The entry buttons must set the mode before the entry screen lays itself out.
    void entryButtonsOpenDatinInTheirMode() {
        click(inp, "Check2");
        choose(inp, "rtime", u"Flow Times: hrs."_s);
        click(inp, "Command2");
        QCOMPARE(int(t->state.DatinMode), 1);
        QWidget* datin = t->screen("Datin");
        QVERIFY(datin->isVisible());
        QCOMPARE(child<QLabel>(datin, "lyrlab")->text(), u"Enter Rates and Flow Duration"_s);
        choose(inp, "ttime", u"Test Times: hrs."_s);
        click(inp, "Command3");
        QCOMPARE(int(t->state.DatinMode), 0);
        QCOMPARE(child<QLabel>(datin, "lyrlab")->text(), u"Enter Well Test Values"_s);
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::InputScreenTest)
#include "InputScreenTest.moc"
