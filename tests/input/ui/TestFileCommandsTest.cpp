// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/val.h"
#include "input/test_file.h"
#include "input/ui/ImportNotice.h"
#include "input/ui/InputScreen.h"
#include "input/ui/TestFileCommands.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <map>
#include <vector>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

namespace {

const QString kData = QStringLiteral(TEST_DATA_DIR "/input/");
const QString kExamples = QStringLiteral(SOURCE_DIR "/examples/");

// Everything the input screen shows: box texts, list choices, check boxes, and
// which of the boxes and buttons are on screen.
std::map<QString, QString> screenShows(QWidget* inp) {
    std::map<QString, QString> shows;
    for (QLineEdit* box : inp->findChildren<QLineEdit*>())
        if (!box->objectName().isEmpty())
            shows[box->objectName()] =
                box->text() + (box->isVisibleTo(inp) ? u""_s : u" (hidden)"_s);
    for (QComboBox* list : inp->findChildren<QComboBox*>())
        shows[list->objectName()] = list->currentText();
    for (QCheckBox* check : inp->findChildren<QCheckBox*>())
        shows[check->objectName()] = check->isChecked() ? u"checked"_s : u"clear"_s;
    for (const char* name : {"Command2", "Command3", "List1", "Label18"})
        shows[QString::fromUtf8(name)] = shown(inp, name) ? u"shown"_s : u"hidden"_s;
    return shows;
}

QStringList listed(const std::map<QString, QString>& shows) {
    QStringList lines;
    for (const auto& [name, value] : shows)
        lines.append(name + QLatin1Char('=') + value);
    return lines;
}

// The state as a test file holds it, with the title and the values Open derives.
QString stateOf(const AnalysisState& s) {
    return QString::fromStdString(testFileText(s)) + QStringLiteral("|%1|%2|%3|%4")
                                                         .arg(s.FlowRate, 0, 'g', 17)
                                                         .arg(s.ProducingTime, 0, 'g', 17)
                                                         .arg(s.DerivativeSpan, 0, 'g', 17)
                                                         .arg(s.DrainageArea, 0, 'g', 17);
}

// Types text that a keyboard layout or an input method delivers (any script).
void composeInto(QWidget* window, const char* box, const QString& text) {
    auto* edit = child<QLineEdit>(window, box);
    edit->selectAll();
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(edit, &commit);
}

void writeFile(const QString& path, const QByteArray& contents) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(contents) != contents.size())
        qFatal("cannot write %s", qPrintable(path));
}

// n pairs with log-spaced times, as a gauge logs them.
QByteArray gaugePairs(int n) {
    QByteArray text;
    text.reserve(n * 24);
    for (int i = 1; i <= n; ++i) {
        const double t = 0.001 * std::pow(10.0, 5.0 * i / n);
        text += QByteArray::number(t, 'g', 10) + '\t' +
                QByteArray::number(3000.0 - 100.0 * std::log10(t + 1.0), 'f', 3) + '\n';
    }
    return text;
}

// A test as the engineer types it: the steps on inp in order ("Check1" clicks a
// box, "name=item" chooses in a list or types into a box), then the rows typed on
// Datin ("conv,conv2,conv3,conv4", rows separated by ";", an empty cell left alone).
struct Row {
    QString title;
    const char* steps;
    const char* rates;
    const char* points;
};

} // namespace

class TestFileCommandsTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    InputScreen* inp = nullptr;
    std::unique_ptr<QTemporaryDir> dir;

    QString path(const char* name) const { return dir->filePath(QString::fromUtf8(name)); }

    void command(const char* key, const QString& answer) {
        t->files.answers = {answer};
        child<QAction>(inp, key)->trigger();
    }

    void openFile(const QString& file) { command("Open", file); }

    // The test and everything the screen shows, to check that a command changed nothing.
    QStringList snapshot() const { return listed(screenShows(inp)) << stateOf(t->state); }

    // Types a test in through inp and Datin as the engineer does.
    void typeTest(const Row& r) {
        composeInto(inp, "titl", r.title);
        for (const QString& step : QString::fromUtf8(r.steps).split(QLatin1Char('|'))) {
            const QByteArray name = step.section(QLatin1Char('='), 0, 0).toUtf8();
            const QString value = step.section(QLatin1Char('='), 1);
            if (inp->findChild<QComboBox*>(QString::fromUtf8(name)))
                choose(inp, name.constData(), value);
            else if (value.isEmpty())
                click(inp, name.constData());
            else
                typeInto(inp, name.constData(), value);
        }
        enterRows("Command2", r.rates);
        enterRows("Command3", r.points);
    }

    void enterRows(const char* button, const char* rows) {
        click(inp, button);
        QWidget* datin = t->screen("Datin");
        const char* boxes[] = {"conv", "conv2", "conv3", "conv4"};
        for (const QString& row : QString::fromUtf8(rows).split(QLatin1Char(';'))) {
            const QStringList cells = row.split(QLatin1Char(','));
            for (qsizetype i = 0; i < cells.size(); ++i)
                if (!cells[i].isEmpty())
                    typeInto(datin, boxes[i], cells[i]);
            click(datin, "Command1");
        }
        click(datin, "Command2");
    }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        inp = t->show<InputScreen>("inp");
        dir = std::make_unique<QTemporaryDir>();
        QVERIFY(dir->isValid());
    }
    void cleanup() {
        t.reset();
        dir.reset();
    }

    // Save then Open must give back the test that was typed, for every kind of test
    // and unit choice: a unit converted twice, a box refilled without its rule, a
    // title mangled by its encoding or a derived producing time lost would each show
    // here as a changed state or a changed screen.
    void saveOpenRoundTrip() {
        const Row rows[] = {
            {u"Prüfung Ölfeld — Bohrung №7, «Süd» 東"_s, // oil buildup in days and minutes
             "test=Buildup|Check1|muin=0.8|boin=1.25|hin=35|rwin=4.25|phin=18.5|ctin=12.5|"
             "rein=80|rtime=Flow Times: days|ttime=Test Times: min.",
             "2,300;1.5,450", "0,2013.4;6,2210.5;30,2390.25;600,2601"},
            {u"Gas well G-2"_s,
             "test=Drawdown|Check2|gaspk=Pseudopressure|ggin=0.72|trin=215.5|muin=0.025|hin=50|"
             "rwin=3.5|phin=12|ctin=150|psin=4500|rein=640|rtime=Flow Times: hrs.|"
             "ttime=Test Times: hrs.",
             "72,4000", "0.5,4400.5;2,4350"},
            {u"Three-phase falloff"_s,
             "test=Falloff|Check2|gaspk=Pressure|Check1|Check3|muin=1.2|boin=1.35|hin=45.5|"
             "rwin=6|phin=20|ctin=12.5|rein=160|psin=3200|bwin=1.02|mwin=0.5|bgin=0.9|"
             "mgin=0.018|rsin=0.4|rtime=Flow Times: hrs.|ttime=Test Times: hrs.",
             "24,300,250,50;48,250,220,60", "0.25,2950;1,2980"},
            {u"Gas and water injectivity"_s,
             "test=Injectivity|Check2|gaspk=Pressure|Check3|muin=0.6|boin=1.1|hin=20|rwin=4|"
             "phin=15|ctin=9|rein=40|psin=2500|bwin=1.01|mwin=0.45|bgin=0.85|mgin=0.02|"
             "rtime=Flow Times: days|ttime=Test Times: min.",
             "1,,500,200", "15,2600;90,2700"},
        };
        for (const Row& r : rows) {
            t = std::make_unique<TestProgram>();
            inp = t->show<InputScreen>("inp");
            typeTest(r);
            const QString file = path("round.zvt");
            command("Save", file);
            QVERIFY2(t->messages.messages.isEmpty(), qPrintable(t->messages.lastText()));
            const QString saved = stateOf(t->state);
            const std::string title = t->state.TestTitle;
            QCOMPARE(QString::fromStdString(title), r.title);

            TestProgram other;
            auto* reopened = other.show<InputScreen>("inp");
            other.files.answers = {file};
            child<QAction>(reopened, "Open")->trigger();
            QVERIFY2(other.messages.messages.isEmpty(), qPrintable(other.messages.lastText()));
            QCOMPARE(stateOf(other.state), saved);
            QCOMPARE(other.state.TestTitle, title);
            QCOMPARE(child<QLineEdit>(reopened, "titl")->text(), r.title);
            // The reopened screen shows what the typing screen shows once refilled.
            inp->refillFromState();
            QCOMPARE(stateOf(t->state), saved);
            QCOMPARE(listed(screenShows(reopened)), listed(screenShows(inp)));
            // Each typed step shows again on the reopened screen: a choice wired to the
            // wrong rule (a falloff saved as a buildup) comes back changed.
            for (const QString& step : QString::fromUtf8(r.steps).split(QLatin1Char('|'))) {
                const QString name = step.section(QLatin1Char('='), 0, 0);
                const QString value = step.section(QLatin1Char('='), 1);
                if (auto* box = reopened->findChild<QLineEdit*>(name))
                    QCOMPARE(Val(box->text().toStdString()), Val(value.toStdString()));
                else if (auto* list = reopened->findChild<QComboBox*>(name))
                    QCOMPARE(list->currentText(), value);
                else
                    QVERIFY2(child<QCheckBox>(reopened, name.toUtf8().constData())->isChecked(),
                             qPrintable(name));
            }
        }
    }

    void opensTheExamples_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("expected"); // control=shown text, separated by "|"
        QTest::newRow("oil buildup")
            << u"oil-buildup.zvt"_s
            << u"titl=Example oil buildup: k 100 md, skin 3, C 0.01 bbl/psi|test=Buildup|"
               "Check1=checked|Check2=clear|rtime=Flow Times: days|ttime=Test Times: min.|"
               "muin=.8|boin=1.25|hin=50.|rwin=4.248|phin=20.|ctin=15.|rein=640.|psin=3873.1|"
               "List1=shown|Command2=shown|Command3=shown|Label18=hidden|"
               "rateSummary=1 rate, q = 400. STB/day, tp = 72. hrs.|"
               "pointSummary=100 test points"_s;
        QTest::newRow("gas drawdown")
            << u"gas-drawdown.zvt"_s
            << u"test=Drawdown|Check1=clear|Check2=checked|gaspk=Pseudopressure|"
               "ttime=Test Times: hrs.|ggin=.7|trin=200.|muin=.027|phin=12.|ctin=120.|"
               "psin=5000.|List1=shown|Command2=shown|"
               "rateSummary=1 rate, q = 4000. MCF/day, tp = 0. hrs.|"
               "pointSummary=100 test points"_s;
    }
    // Each example must open at once with its values in the boxes, the units of the
    // file in the lists, and rate entry, test entry and the analyses within reach.
    void opensTheExamples() {
        QFETCH(QString, file);
        QFETCH(QString, expected);
        openFile(kExamples + file);
        QVERIFY2(t->messages.messages.isEmpty(), qPrintable(t->messages.lastText()));
        std::map<QString, QString> shows = screenShows(inp);
        for (QLabel* label : inp->findChildren<QLabel*>())
            shows.try_emplace(label->objectName(), label->text());
        for (const QString& e : expected.split(QLatin1Char('|'))) {
            const QString control = e.section(QLatin1Char('='), 0, 0);
            QCOMPARE(control + QLatin1Char('=') + shows[control], e);
        }
        QCOMPARE(t->state.DerivativeSpan, 0.2);
    }

    // A truncated, corrupt or foreign file must leave the test and every box as they
    // were, and the message must lead the engineer to the spot: file, line, problem
    // (the lines and fields of each file are checked with the reader).
    void brokenFileChangesNothing() {
        openFile(kData + u"oil_buildup.zvt"_s);
        QVERIFY(t->messages.messages.isEmpty());
        typeInto(inp, "titl", QStringLiteral("Edited after opening"));
        const QStringList before = snapshot();
        const QStringList broken =
            QDir(kData + u"broken"_s).entryList({u"*.zvt"_s}, QDir::Files, QDir::Name);
        QVERIFY(broken.size() >= 10);
        for (const QString& name : broken) {
            const QString file = kData + u"broken/"_s + name;
            const qsizetype count = t->messages.messages.size();
            openFile(file);
            QCOMPARE(t->messages.messages.size(), count + 1);
            QCOMPARE(t->messages.lastTitle(), kFileErrorTitle);
            const QString text = t->messages.lastText();
            QVERIFY2(text.contains(u"the current test is unchanged"_s), qPrintable(text));
            QVERIFY2(text.contains(file + u": "_s), qPrintable(text));
            QCOMPARE(snapshot(), before);
            QCOMPARE(t->state.TestTitle, std::string("Edited after opening"));
        }
        // The field is named where one field is at fault.
        openFile(kData + u"broken/text_for_number.zvt"_s);
        QVERIFY2(t->messages.lastText().contains(
                     u": line 2: record 3a, WellboreRadius (in.): \"abc\" is not a number"_s),
                 qPrintable(t->messages.lastText()));
        openFile(path("no such file.zvt"));
        QVERIFY(t->messages.lastText().contains(path("no such file.zvt")));
    }

    // Cancelling a file dialog is the engineer changing their mind: nothing may be
    // written, read or reported.
    void cancelDoesNothing() {
        openFile(kData + u"oil_buildup.zvt"_s);
        const QStringList before = snapshot();
        for (const char* key : {"Open", "Save", "Import"})
            command(key, QString());
        QCOMPARE(t->files.asked, 4);
        QVERIFY(t->messages.messages.isEmpty());
        QCOMPARE(snapshot(), before);
        QVERIFY(QDir(dir->path()).isEmpty());
        QVERIFY(!t->screen("datct")->isVisible());
    }

    // A save that cannot be completed must say which file failed in the file-error box
    // (the failures themselves are played with the writer); a name typed bare gets the
    // test-file extension.
    void saveFailureKeepsThePreviousFile() {
        openFile(kExamples + u"oil-buildup.zvt"_s);
        command("Save", path("bare"));
        QVERIFY(QFile::exists(path("bare.zvt")));
        QFile original(kExamples + u"oil-buildup.zvt"_s);
        QFile copy(path("bare.zvt"));
        QVERIFY(original.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), original.readAll());

        command("Save", path("missing/test.zvt"));
        QCOMPARE(t->messages.messages.size(), 1);
        QCOMPARE(t->messages.lastTitle(), kFileErrorTitle);
        QVERIFY2(t->messages.lastText().contains(path("missing/test.zvt") + u": "_s),
                 qPrintable(t->messages.lastText()));
        QCOMPARE(QDir(dir->path()).entryList(QDir::Files), QStringList{u"bare.zvt"_s});
    }

    // A title from a file written elsewhere that is not UTF-8 must not turn into
    // replacement marks, and what is shown is what the state holds and saves.
    void latin1TitleIsReadAsLatin1() {
        writeFile(path("latin1.zvt"),
                  "\"Pr\xfc"
                  "fung S\xfc"
                  "d\",0,1,1,0,0,0,0,0\n1,0.8,1.25,30,4.248,0.2,15,2000,40\n500,72\n1,2100\n");
        openFile(path("latin1.zvt"));
        QVERIFY2(t->messages.messages.isEmpty(), qPrintable(t->messages.lastText()));
        QCOMPARE(child<QLineEdit>(inp, "titl")->text(), u"Prüfung Süd"_s);
        QCOMPARE(t->state.TestTitle, std::string("Pr\xc3\xbc"
                                                 "fung S\xc3\xbc"
                                                 "d"));
    }

    // A file without an FVF reopens with its flow-time unit, but rate entry waits
    // for the FVF as the unit list does, and no refusal pops up while opening.
    void fileWithoutFvfKeepsRateEntryClosed() {
        writeFile(path("nofvf.zvt"),
                  "\"No FVF\",0,1,1,0,0,1,0,0\n0,0.8,0,30,4.248,0.2,15,2000,40\n1,2100\n");
        openFile(path("nofvf.zvt"));
        QVERIFY(t->messages.messages.isEmpty());
        QCOMPARE(child<QComboBox>(inp, "rtime")->currentText(), u"Flow Times: days"_s);
        QCOMPARE(int(t->state.RateTimeUnit), 1);
        QVERIFY(!shown(inp, "Command2"));
        QVERIFY(shown(inp, "Command3"));
        typeInto(inp, "boin", QStringLiteral("1.3"));
        choose(inp, "rtime", QStringLiteral("Flow Times: days"));
        QVERIFY(shown(inp, "Command2"));
    }

    // The undersaturated case of a reopened oil-and-gas file clears the gas box and
    // says so, with the GOR box left in sight to be corrected.
    void undersaturatedFileClearsGas() {
        writeFile(path("under.zvt"), "\"Oil and gas\",0,1,4,0,0,0,0,0\n"
                                     "1,0.8,1.25,30,4.248,0.2,15,2000,40,0,0,0.9,0.02,0.9\n"
                                     "250,48,0,220\n1,2100\n");
        openFile(path("under.zvt"));
        QVERIFY(t->messages.messages.isEmpty());
        QVERIFY(!child<QCheckBox>(inp, "Check2")->isChecked());
        QVERIFY(shown(inp, "Label18"));
        QVERIFY(shown(inp, "rsin"));
        QCOMPARE(int(t->state.FluidFlags), 1);
    }

    // FILE on the command line opens before the first screen; a bad file is an error
    // text, not a message box, and leaves the test as it was.
    void commandLineFile() {
        Program& program = *t->program;
        QCOMPARE(program.openStartupFile(kExamples + u"gas-drawdown.zvt"_s), QString());
        QCOMPARE(int(t->state.FluidFlags), 0);
        QCOMPARE(child<QLineEdit>(inp, "ggin")->text(), u".7"_s);
        const QStringList before = snapshot();
        const QString error = program.openStartupFile(kData + u"broken/rates_26.zvt"_s);
        QVERIFY2(error.startsWith(kData + u"broken/rates_26.zvt: line 2"_s), qPrintable(error));
        QCOMPARE(snapshot(), before);
        QVERIFY(t->messages.messages.isEmpty());
    }

    // Import with header lines, every kind of comment and blank lines, in minutes: the
    // counts on the notice, the minutes turned into hours, the time-0 pair taken as the
    // start pressure through its box ("#####.#"); Accept Data hides the notice, and
    // Exit closes it.
    void importSmallFile() {
        choose(inp, "ttime", QStringLiteral("Test Times: min."));
        writeFile(path("gauge.csv"), "Gauge 4471 serial X\r\n"
                                     "Elapsed time (min),Pressure (psia)\r\n"
                                     "# gauge 4471, shut in at 08:00\r\n"
                                     "\r\n"
                                     "0, 3000.04\r\n"
                                     "6;3050.5\r\n"
                                     "; storage\r\n"
                                     "30\t3100\r\n"
                                     "   \r\n"
                                     "' quote comment\r\n"
                                     "// hourly from here\r\n"
                                     "60   3150.25\r\n"
                                     "120,3190\r\n");
        command("Import", path("gauge.csv"));
        QVERIFY2(t->messages.messages.isEmpty(), qPrintable(t->messages.lastText()));
        QCOMPARE(int(t->state.TestPointCount), 4);
        QCOMPARE(t->state.TestTime[1], 0.1); // in minutes, as the list says
        QCOMPARE(t->state.StartPressure, 3000.0);
        QCOMPARE(child<QLineEdit>(inp, "psin")->text(), u"3000."_s);
        QCOMPARE(child<QLabel>(inp, "pointSummary")->text(), u"4 test points"_s);

        auto* notice = t->screen<ImportNotice>("datct");
        QVERIFY(notice->isVisible());
        QCOMPARE(child<QLabel>(notice, "Label1")->text(), u"Importing Test Data"_s);
        QCOMPARE(child<QLabel>(notice, "Label2")->text(), u"No. of Test Data Pairs:"_s);
        QCOMPARE(child<QLabel>(notice, "Label3")->text(), u"4"_s);
        QVERIFY(!shown(notice, "Label4"));
        QCOMPARE(child<QLabel>(notice, "skippedLabel")->text(),
                 u"Lines skipped: 8 (2 header, 4 comment, 2 blank)"_s);
        QCOMPARE(child<QPushButton>(notice, "Command1")->text(), u"Accept Data"_s);
        click(notice, "Command1");
        QVERIFY(!notice->isVisible());

        command("Import", path("gauge.csv"));
        QVERIFY(notice->isVisible());
        child<QAction>(inp, "Exit")->trigger();
        QVERIFY(!notice->isVisible());
        QCOMPARE(t->endCode, std::optional<int>(0));
    }

    // More than 500 pairs are reduced to the 500 a test holds, and the notice says so
    // with its own caption; the first and last pairs stay.
    void importResizesLargeFile() {
        choose(inp, "ttime", QStringLiteral("Test Times: hrs."));
        writeFile(path("long.txt"), gaugePairs(1234));
        command("Import", path("long.txt"));
        QVERIFY2(t->messages.messages.isEmpty(), qPrintable(t->messages.lastText()));
        auto* notice = t->screen("datct");
        QCOMPARE(child<QLabel>(notice, "Label3")->text(), u"1234"_s);
        QVERIFY(shown(notice, "Label4"));
        QCOMPARE(child<QLabel>(notice, "Label4")->text(),
                 u"Too Many Test Data Pairs:               Resizing"_s);
        QVERIFY(child<QLabel>(notice, "keptLabel")->text().startsWith(u"500 test points kept"_s));
        QCOMPARE(child<QLabel>(notice, "skippedLabel")->text(), u"No lines skipped."_s);
        QCOMPARE(int(t->state.TestPointCount), 500);

        // A later import of a short file hides the resizing caption again.
        writeFile(path("short.txt"), gaugePairs(10));
        command("Import", path("short.txt"));
        QCOMPARE(child<QLabel>(notice, "Label3")->text(), u"10"_s);
        QVERIFY(!shown(notice, "Label4"));
    }

    // A file with a bad line must import nothing and name the line.
    void importFailureChangesNothing() {
        openFile(kExamples + u"oil-buildup.zvt"_s);
        const QStringList before = snapshot();
        writeFile(path("bad.txt"), "0.1,3000\n0.2,3010\n0.3,3O20\n");
        command("Import", path("bad.txt"));
        QCOMPARE(t->messages.messages.size(), 1);
        QCOMPARE(t->messages.lastTitle(), kFileErrorTitle);
        QVERIFY2(t->messages.lastText().contains(path("bad.txt") + u": line 3"_s),
                 qPrintable(t->messages.lastText()));
        QCOMPARE(snapshot(), before);
        QVERIFY(!t->screen("datct")->isVisible());
    }

    // A long import shows its progress, and Cancel there stops it with the test
    // as it was; without Cancel the import completes and the dialog goes away.
    void longImportShowsProgressAndCancels() {
        inp->setImportProgressDelay(std::chrono::milliseconds(0));
        openFile(kExamples + u"oil-buildup.zvt"_s);
        const QStringList before = snapshot();
        writeFile(path("big.txt"), gaugePairs(200000)); // several megabytes
        bool sawDialog = false;
        QTimer::singleShot(0, this, [&] {
            auto* progress = inp->findChild<QProgressDialog*>(u"importProgress"_s);
            sawDialog = progress && progress->isVisible();
            if (progress)
                progress->cancel();
        });
        command("Import", path("big.txt"));
        QVERIFY(sawDialog);
        QVERIFY(t->messages.messages.isEmpty());
        QCOMPARE(snapshot(), before);
        QVERIFY(!t->screen("datct")->isVisible());
        QVERIFY(!inp->findChild<QProgressDialog*>(u"importProgress"_s));

        sawDialog = false;
        QTimer::singleShot(0, this, [&] {
            sawDialog = inp->findChild<QProgressDialog*>(u"importProgress"_s) != nullptr;
        });
        command("Import", path("big.txt"));
        QVERIFY(sawDialog);
        QCOMPARE(int(t->state.TestPointCount), 500);
        QVERIFY(t->screen("datct")->isVisible());
        QVERIFY(!inp->findChild<QProgressDialog*>(u"importProgress"_s));
    }

    // A gauge record of a whole test (the example): the dialog shows the file and what
    // was found in it, proposes the largest pressure rise of a buildup as the shut-in,
    // and the points imported through it are exactly those zorvekan-cli import prints for
    // the same start, row 0 being the start pressure the psin box takes. A proposal from
    // the wrong reading, or a dialog that imported otherwise than the command line, fails.
    void importGaugeRecordMatchesTheCommandLine() {
        choose(inp, "test", QStringLiteral("Buildup"));
        const QString record = kExamples + u"oil-gauge-record.csv"_s;
        QString proposed;
        t->messages.dialogAnswers.append([&](QDialog& d) {
            QVERIFY(child<QPlainTextEdit>(&d, "previewText")
                        ->toPlainText()
                        .contains(u"   4  Date Time,Pressure (psia),Temperature (degF)"_s));
            QCOMPARE(child<QLabel>(&d, "formatLabel")->text(),
                     u"Data from line 5 on (4 header lines before), 1281 readings. Time in "
                     "column 1: date and time with slashes; 3 columns in all."_s);
            QCOMPARE(child<QComboBox>(&d, "pressureColumn")->currentText(),
                     u"Column 2: Pressure (psia) (first reading 4000.00)"_s);
            QCOMPARE(child<QComboBox>(&d, "dateOrder")->currentText(), u"day/month/year"_s);
            QVERIFY(!child<QComboBox>(&d, "dateOrder")->isEnabled());
            QCOMPARE(child<QLineEdit>(&d, "startText")->text(), u"27/02/2024 18:00:00"_s);
            click(&d, "largestJump");
            proposed = child<QLineEdit>(&d, "startText")->text();
            click(&d, "acceptImport");
        });
        command("Import", record);
        QCOMPARE(t->messages.dialogsShown, QStringList{u"importSetup"_s});
        QVERIFY2(t->messages.messages.isEmpty(), qPrintable(t->messages.lastText()));
        QCOMPARE(proposed, u"01/03/2024 19:00:00"_s);
        QCOMPARE(child<QLineEdit>(inp, "psin")->text(), u"3873.1"_s);
        auto* notice = t->screen("datct");
        QVERIFY(notice->isVisible());
        QCOMPARE(child<QLabel>(notice, "Label3")->text(), u"782"_s);
        QCOMPARE(child<QLabel>(notice, "columnsLabel")->text(),
                 u"Time from column 1 (date and time, day/month/year), pressure from column 2."_s);
        QCOMPARE(child<QLabel>(notice, "startLabel")->text(),
                 u"Start 01/03/2024 19:00:00: readings before it skipped: 498."_s);

        QProcess cli;
        cli.start(QCoreApplication::applicationDirPath() + u"/zorvekan-cli"_s,
                  {u"import"_s, record, u"--start"_s, proposed});
        QVERIFY(cli.waitForFinished(30000));
        QCOMPARE(cli.exitCode(), 0);
        const QStringList rows = QString::fromUtf8(cli.readAllStandardOutput()).split(u'\n');
        QCOMPARE(rows.size(), 1 + 1 + 500 + 1); // header, row 0, the points, the last break
        QCOMPARE(rows[1].section(u',', 2).toDouble(), t->state.StartPressure);
        QCOMPARE(int(t->state.TestPointCount), 500);
        for (int i = 1; i <= 500; ++i) {
            QCOMPARE(rows[i + 1].section(u',', 1, 1).toDouble(), t->state.TestTime[i]);
            QCOMPARE(rows[i + 1].section(u',', 2, 2).toDouble(), t->state.TestPressure[i]);
        }
    }

    // A record whose dates cannot tell day from month: Import stays disabled until the
    // order is chosen, Cancel imports nothing; accepted with a pressure column whose
    // fifth line holds no number, it is refused with the file, line and column named,
    // and the test is as it was.
    void gaugeDialogAsksAndRefusesWithoutChanges() {
        openFile(kExamples + u"oil-buildup.zvt"_s);
        const QStringList before = snapshot();
        writeFile(path("gauge.txt"), "Date Time;T (F);P (psia)\n"
                                     "01/03/2024 12:00:00;180;3000\n"
                                     "01/03/2024 12:10:00;180;3005\n"
                                     "02/03/2024 12:20:00;181;3010\n"
                                     "02/03/2024 12:30:00;181;ERR\n");
        bool disabledUntilChosen = false;
        t->messages.dialogAnswers.append([&](QDialog& d) {
            disabledUntilChosen =
                !child<QPushButton>(&d, "acceptImport")->isEnabled() && shown(&d, "startProblem");
            click(&d, "cancelImport");
        });
        t->messages.dialogAnswers.append([&](QDialog& d) {
            choose(&d, "dateOrder", u"month/day/year"_s);
            choose(&d, "pressureColumn", u"Column 3: P (psia) (first reading 3000)"_s);
            typeInto(&d, "startText", u"0.1"_s);
            QVERIFY(child<QPushButton>(&d, "acceptImport")->isEnabled());
            click(&d, "acceptImport");
        });
        command("Import", path("gauge.txt"));
        QVERIFY(disabledUntilChosen);
        QVERIFY(t->messages.messages.isEmpty());
        command("Import", path("gauge.txt"));
        QCOMPARE(t->messages.messages.size(), 1);
        QCOMPARE(t->messages.lastTitle(), kFileErrorTitle);
        QVERIFY2(
            t->messages.lastText().contains(
                path("gauge.txt") + u": line 5: column 3 (pressure): \"ERR\" is not a number"_s),
            qPrintable(t->messages.lastText()));
        QCOMPARE(snapshot(), before);
        QVERIFY(!t->screen("datct")->isVisible());
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::TestFileCommandsTest)
#include "TestFileCommandsTest.moc"
