// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "skin/ui/SkinScreen.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class SkinScreenTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    QWidget* skin = nullptr;

    QString results() const { return child<QPlainTextEdit>(skin, "Picture1")->toPlainText(); }
    void type(const char* box, const char* text) { typeInto(skin, box, QString::fromUtf8(text)); }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        skin = t->show("skin");
    }
    void cleanup() { t.reset(); }

    // A ticked feature must show exactly the boxes it needs, with their labels, and
    // clearing it hide them again.
    void completionShowsItsBoxes() {
        const QStringList optional = {u"angin"_s, u"Label4"_s, u"hsin"_s, u"hpin"_s,  u"partin"_s,
                                      u"spfin"_s, u"lpin"_s,   u"rpin"_s, u"Frame2"_s};
        const std::pair<const char*, QStringList> features[] = {
            {"Check1", {u"angin"_s, u"Label4"_s, u"hsin"_s}},
            {"Check2", {u"hsin"_s, u"hpin"_s}},
            {"Check3", {u"hsin"_s, u"partin"_s}},
            {"Check4", {u"Frame2"_s, u"spfin"_s, u"lpin"_s, u"rpin"_s}},
        };
        for (const auto& [check, boxes] : features) {
            click(skin, check);
            for (const QString& name : optional)
                QVERIFY2(shown(skin, qPrintable(name)) == boxes.contains(name), check);
            for (const char* always : {"skinin", "rwsin", "ratioin", "Command1"})
                QVERIFY(shown(skin, always));
            click(skin, check);
            for (const QString& name : optional)
                QVERIFY(!shown(skin, qPrintable(name)));
        }
    }

    // The captions must keep their leading and inner blanks exactly.
    void exactCaptions() {
        const char* labels[][2] = {
            {"Label1", "Total Skin Factor"},
            {"Label2", "Wellbore Radius          in."},
            {"Label3", "Vert. Perm./Horiz. Perm."},
            {"Label4", "     Wellbore Angle (Deviation from Vert.)           degrees"},
            {"Label5", "True (Vert.) Net Pay              ft."},
            {"Label6", "Interval Penetrated                 ft."},
            {"Label7", "Production Interval              ft."},
            {"Label8", "Perforation Density          shots/ft."},
            {"Label9", "Perforation Length              in."},
            {"Label10", "Perforation Radius              in."},
            {"Label11", "Well Test: Skin Factor Evaluation"},
        };
        for (const auto& l : labels)
            QCOMPARE(child<QLabel>(skin, l[0])->text(), QString::fromUtf8(l[1]));
        QCOMPARE(child<QWidget>(skin, "Frame1")->property("title").toString(),
                 u"Completion Information"_s);
        QCOMPARE(child<QWidget>(skin, "Frame2")->property("title").toString(),
                 u"Phasing Angle, degrees"_s);
    }

    // Activation shows net pay, skin and radius through their masks but calculates with
    // the values themselves (3.2468 shows "3.2" and prints 3.25), and a box typed
    // afterwards is what counts.
    void activationFillsFromState() {
        t->state.Thickness = 100.04;
        t->state.SkinFactor = 3.2468;
        t->state.WellboreRadius = 0.354;
        t->show("skin");
        QCOMPARE(child<QLineEdit>(skin, "hsin")->text(), u"100."_s);
        QCOMPARE(child<QLineEdit>(skin, "skinin")->text(), u"3.2"_s);
        QCOMPARE(child<QLineEdit>(skin, "rwsin")->text(), u"4.248"_s);
        click(skin, "Command1");
        QCOMPARE(results(), u"Total Skin Factor = 3.25\nActual Skin Factor = 3.25"_s);
        type("skinin", "4.5");
        click(skin, "Command1");
        QCOMPARE(results(), u"Total Skin Factor = 4.5\nActual Skin Factor = 4.5"_s);
    }

    // The boxes, ticks and phasing option must reach the calculation, and the fracture
    // skin of the semilog results come off the total until another test is opened.
    // Worked case as in the core tests: actual = 15 + 1.5 + 0.1005 - 7.929 - 3.874 - 0.602.
    void calculatesEveryComponent() {
        t->state.FractureSkin = -1.5;
        const char* typed[][2] = {{"skinin", "15"}, {"rwsin", "4"},  {"ratioin", "0.1"},
                                  {"angin", "30"},  {"hsin", "100"}, {"hpin", "40"},
                                  {"partin", "50"}, {"spfin", "4"},  {"lpin", "12"},
                                  {"rpin", "0.2"}};
        for (const auto& box : typed)
            type(box[0], box[1]);
        for (const char* check : {"Check1", "Check2", "Check3", "Check4"})
            click(skin, check);
        click(skin, "Option4");
        click(skin, "Command1");
        const QStringList lines = results().split(u'\n');
        QCOMPARE(lines.size(), 11);
        QCOMPARE(lines.last(), u"Actual Skin Factor = 4.2"_s);

        QCOMPARE(
            t->program->openStartupFile(QStringLiteral(SOURCE_DIR "/examples/oil-buildup.zvt")),
            QString());
        for (const char* check : {"Check1", "Check2", "Check3", "Check4"})
            click(skin, check);
        click(skin, "Command1");
        QCOMPARE(results(), u"Total Skin Factor = 15.\nActual Skin Factor = 15."_s);
    }

    // A zero radius is a run-time error in a message box: the earlier results are not
    // left standing as if they were the new ones, and the screen calculates again once
    // the radius is typed.
    void zeroRadiusIsReported() {
        type("skinin", "5");
        type("ratioin", "0.1");
        type("hsin", "100");
        type("angin", "30");
        type("rwsin", "4");
        click(skin, "Check1");
        click(skin, "Command1");
        QVERIFY(results().startsWith(u"Total Skin Factor = 5.\nSlant Hole Skin Factor = -0.1"_s));
        type("rwsin", "0");
        click(skin, "Command1");
        QCOMPARE(t->messages.messages.size(), 1);
        QVERIFY(t->messages.lastText().contains(u"wellbore radius"_s));
        QCOMPARE(results(), QString());
        type("rwsin", "4");
        click(skin, "Command1");
        QVERIFY(results().startsWith(u"Total Skin Factor = 5."_s));
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::SkinScreenTest)
#include "SkinScreenTest.moc"
