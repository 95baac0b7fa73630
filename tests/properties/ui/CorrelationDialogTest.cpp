// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "properties/ui/CorrelationDialog.h"
#include "properties/ui/PropertyCalculator.h"

#include <QLabel>
#include <QListWidget>
#include <QTest>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

class CorrelationDialogTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestProgram> t;
    QWidget* mox = nullptr;
    QWidget* corch = nullptr;

    void select(const char* list, const char* item) {
        auto* w = child<QListWidget>(corch, list);
        const auto found = w->findItems(QString::fromUtf8(item), Qt::MatchExactly);
        QVERIFY2(!found.isEmpty(), item);
        w->setCurrentItem(found.first());
    }

private Q_SLOTS:
    void init() {
        t = std::make_unique<TestProgram>();
        mox = t->show("mox");
        click(mox, "Command2"); // "Select Correlations"
        corch = t->screen("Corch");
    }
    void cleanup() { t.reset(); }

    // The calculator's correlations are keyed by these exact texts, in this order.
    void listsHoldTheCorrelations() {
        QVERIFY(corch->isVisible());
        QCOMPARE(corch->windowTitle(), QStringLiteral("PVT Correlations Selection"));
        auto* oil = child<QListWidget>(corch, "Oilch");
        QCOMPARE(oil->count(), 9);
        QCOMPARE(oil->item(0)->text(), QStringLiteral("Standing : California Crudes"));
        QCOMPARE(oil->item(8)->text(), QStringLiteral("Kartoatmodjo/Schmidt : Worldwide Crudes"));
        QCOMPARE(child<QListWidget>(corch, "Gasch")->item(1)->text(), QStringLiteral("Dry Gas"));
        QCOMPARE(child<QListWidget>(corch, "Forch")->item(2)->text(),
                 QStringLiteral("Yale et. al."));
        QCOMPARE(child<QListWidget>(corch, "Rocks")->item(3)->text(), QStringLiteral("Carbonates"));
        QCOMPARE(child<QLabel>(corch, "Label1")->text(), QStringLiteral("Oil"));
        QCOMPARE(child<QLabel>(corch, "Label3")->text(), QStringLiteral("Formation"));
    }

    // A choice must store its code (the codes of every item are checked in the core
    // tests) and fill the calculator's column with the chosen text.
    void choicesStoreCodesAndFillTheColumn() {
        select("Oilch", "Farshad : Columbian Crudes");
        QCOMPARE(int(t->state.OilCorrelation), 6);
        QCOMPARE(child<QLabel>(mox, "oilSelected")->text(), u"Farshad : Columbian Crudes"_s);
        select("Gasch", "Dry Gas");
        QCOMPARE(int(t->state.GasKind), 1);
        QCOMPARE(child<QLabel>(mox, "gasSelected")->text(), QStringLiteral("Dry Gas"));
        select("Gasch", "Wet Gas");
        QCOMPARE(int(t->state.GasKind), 0);
    }

    // The rock class applies to Newman and Yale only; Hall after Newman switches it off
    // again but keeps its last choice.
    void rockClassFollowsFormation() {
        auto* rocks = child<QListWidget>(corch, "Rocks");
        QVERIFY(!rocks->isEnabled());
        select("Forch", "Newman");
        QVERIFY(rocks->isEnabled());
        QCOMPARE(child<QLabel>(mox, "formationSelected")->text(), QStringLiteral("Newman"));
        select("Rocks", "Friable Sands");
        select("Forch", "Hall");
        QVERIFY(!rocks->isEnabled());
        QCOMPARE(rocks->currentItem()->text(), QStringLiteral("Friable Sands"));
        select("Forch", "Yale et. al.");
        QVERIFY(rocks->isEnabled());
    }

    // Closing returns to the calculator, and the choices outlive the dialog.
    void closeReturnsToCalculator() {
        select("Oilch", "Glaso : North Sea Crudes");
        mox->hide();
        click(corch, "Command1");
        QVERIFY(!corch->isVisible());
        QVERIFY(mox->isVisible());
        QCOMPARE(int(t->state.OilCorrelation), 2);
        click(mox, "Command2");
        QCOMPARE(child<QListWidget>(corch, "Oilch")->currentItem()->text(),
                 QStringLiteral("Glaso : North Sea Crudes"));
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::CorrelationDialogTest)
#include "CorrelationDialogTest.moc"
