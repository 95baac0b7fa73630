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

    void choicesStoreCodesAndFillTheColumn_data() {
        QTest::addColumn<QString>("oil");
        QTest::addColumn<int>("code");
        QTest::newRow("Farshad") << u"Farshad : Columbian Crudes"_s << 6;
        QTest::newRow("Petrosky/Farshad") << u"Petrosky/Farshad : Gulf of Mexico Crudes"_s << 4;
        QTest::newRow("Al-Marhoun") << u"Al-Marhoun : Middle East Crudes"_s << 3;
        QTest::newRow("Kartoatmodjo") << u"Kartoatmodjo/Schmidt : Worldwide Crudes"_s << 8;
    }
    // The code comes from the first three characters of the whole text: "Farshad" and
    // "Petrosky/Farshad" must not be confused; the calculator must show each choice.
    void choicesStoreCodesAndFillTheColumn() {
        QFETCH(QString, oil);
        QFETCH(int, code);
        select("Oilch", oil.toUtf8().constData());
        QCOMPARE(int(t->state.OilCorrelation), code);
        QCOMPARE(child<QLabel>(mox, "oilSelected")->text(), oil);
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
        QCOMPARE(t->screen("Corch"), corch); // one instance, kept while hidden
        QCOMPARE(child<QListWidget>(corch, "Oilch")->currentItem()->text(),
                 QStringLiteral("Glaso : North Sea Crudes"));
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::CorrelationDialogTest)
#include "CorrelationDialogTest.moc"
