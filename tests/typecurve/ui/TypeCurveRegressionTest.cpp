// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/ui/PlotSurface.h"
#include "input/test_file.h"
#include "typecurve/ui/TypeCurveScreen.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <functional>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class TypeCurveRegressionTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    TypeCurveScreen* kv2 = nullptr;

    QString results() { return child<QPlainTextEdit>(kv2, "Picture1")->toPlainText(); }

    // The oil buildup (k 100 md, skin 3, C 0.01 bbl/psi) handed over with estimates 20 % off,
    // matched where the estimates put the data.
    void matchTheOilBuildup() {
        const OpenResult r =
            openTestFile(t->state, std::string(SOURCE_DIR "/examples/oil-buildup.zvt"));
        QVERIFY2(r.ok, r.error.message().c_str());
        t->state.Permeability = 80;
        t->state.SkinFactor = 2.4;
        t->state.WellboreStorage = 0.012;
        t->state.TypeCurveEstimateFlag = 1;
        t->show("inp");
        clickItem(t->screen("inp"), "List1", u"Type Curve Analysis"_s);
        kv2 = t->screen<TypeCurveScreen>("kv2");
        QVERIFY(!child<QPushButton>(kv2, "regress")->isEnabled());
        clickItem(kv2, "List1", u"Select Match Point"_s);
        Q_EMIT child<PlotSurface>(kv2, "tcrv")->mouseDown(Qt::LeftButton, 50, 30);
        QVERIFY(kv2->results());
    }

    // Clicks "Refine by Regression" and answers its dialog with `fill`, then "Fit".
    void refine(const std::function<void(QWidget*)>& fill) {
        QTimer::singleShot(0, this, [fill] {
            QWidget* dialog = QApplication::activeModalWidget();
            QVERIFY(dialog && dialog->objectName() == u"regr"_s);
            fill(dialog);
            click(dialog, "regrFit");
            if (dialog->isVisible()) // refused: say why, then give up
                click(dialog, "regrCancel");
        });
        click(kv2, "regress");
    }

    // The value on a line of the regression (after the match's lines).
    double lineValue(const QString& caption) {
        const QString regression = results().mid(results().indexOf(u"Regression:"_s));
        const auto m =
            QRegularExpression(u"^"_s + QRegularExpression::escape(caption) + u" (-?[0-9.E-]+)"_s,
                               QRegularExpression::MultilineOption)
                .match(regression);
        if (!m.hasMatch())
            qFatal("no line %s in\n%s", qPrintable(caption), qPrintable(results()));
        return m.captured(1).toDouble();
    }

    static int orangePixels(const PlotSurface* surface) {
        const QImage image = surface->picture().convertToFormat(QImage::Format_RGB32);
        int n = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                n += image.pixel(x, y) == qRgb(230, 120, 0);
        return n;
    }

private Q_SLOTS:
    void init() { t = std::make_unique<TestProgram>(); }
    void cleanup() { t.reset(); }

    // After a match, "Refine by Regression" fits the whole test from it: the reservoir comes
    // back (k within 0.5 %, skin within 0.05), the lines follow the match's own after a blank
    // line, the results reach the state, and the model is drawn in its own colour over the
    // data on tcrv and on the semilog and log-log plots of the semilog screen.
    void refinesTheMatchAndDrawsTheModel() {
        matchTheOilBuildup();
        const int matchLines = static_cast<int>(kv2->results()->lines.size());
        QCOMPARE(orangePixels(child<PlotSurface>(kv2, "tcrv")), 0);
        refine([](QWidget*) {});
        const QStringList lines = results().split(u'\n');
        QCOMPARE(lines.value(matchLines), QString());
        QCOMPARE(lines.value(matchLines + 1), u"Regression: Radial Homogeneous"_s);
        QVERIFY2(
            lines.value(matchLines + 2)
                .contains(QRegularExpression(u"^Permeability = [0-9.]+ md\\. \\(± [0-9.]+\\)$"_s)),
            qPrintable(results()));
        QVERIFY2(std::fabs(lineValue(u"Permeability ="_s) - 100) < 0.5, qPrintable(results()));
        QVERIFY2(std::fabs(lineValue(u"Skin Factor ="_s) - 3) < 0.05, qPrintable(results()));
        QVERIFY(lines.last().startsWith(u"Points Used = 100"_s));
        QVERIFY(std::fabs(t->state.Permeability - 100) < 0.5);
        QVERIFY(std::fabs(t->state.WellboreStorage - 0.01) < 2e-4);
        QVERIFY(orangePixels(child<PlotSurface>(kv2, "tcrv")) > 100);

        t->show("inp");
        clickItem(t->screen("inp"), "List1", u"Semilog Analysis"_s);
        QWidget* kv1 = t->screen("kv1");
        for (const char* plot : {"semi", "Stor"})
            QVERIFY2(orangePixels(child<PlotSurface>(kv1, plot)) > 100, plot);
    }

    // A fit that cannot be made keeps what was shown: a reversed window is refused in the
    // dialog with its reason, and a window holding no point is reported in a message box,
    // the previous regression's lines and results staying as they were.
    void aFailedFitKeepsThePreviousResults() {
        matchTheOilBuildup();
        refine([](QWidget*) {});
        const QString before = results();
        const double k = t->state.Permeability;
        QString refusal;
        refine([&refusal](QWidget* d) {
            typeInto(d, "regrFrom", u"5"_s);
            typeInto(d, "regrTo", u"1"_s);
            click(d, "regrFit");
            refusal = child<QLabel>(d, "regrError")->text();
            typeInto(d, "regrFrom", u"1000"_s);
            typeInto(d, "regrTo", u"2000"_s);
        });
        QCOMPARE(refusal, u"The window must end after it starts."_s);
        QVERIFY2(t->messages.lastText().contains(u"more points in its window"_s),
                 qPrintable(t->messages.lastText()));
        QCOMPARE(results(), before);
        QCOMPARE(t->state.Permeability, k);
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::TypeCurveRegressionTest)
#include "TypeCurveRegressionTest.moc"
