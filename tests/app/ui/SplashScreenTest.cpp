// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "app/SplashScreen.h"
#include "core/ui/PlotSurface.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QTest>
#include <QTimer>

namespace zorvekan::testing {

class SplashScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The start-up screen must stay 1500 ms, fire once, and hand over to the input
    // screen; a repeating timer would reopen inp over and over.
    void timerOpensInputAfter1500ms() {
        TestProgram t;
        QElapsedTimer clock;
        clock.start();
        t.program->start();
        QWidget* splash = t.program->screens().existing(QStringLiteral("Form1"));
        QVERIFY(splash && splash->isVisible());
        auto* timer = splash->findChild<QTimer*>(QStringLiteral("Timer1"));
        QVERIFY(timer);
        QCOMPARE(timer->interval(), 1500);
        QVERIFY(timer->isSingleShot());
        QVERIFY(timer->isActive());
        QVERIFY(!t.program->screens().existing(QStringLiteral("inp")));
        QTest::qWait(1200);
        QVERIFY(!t.program->screens().existing(QStringLiteral("inp")));
        QTRY_VERIFY_WITH_TIMEOUT(t.program->screens().existing(QStringLiteral("inp")), 2000);
        QVERIFY(clock.elapsed() >= 1500);
        QWidget* inp = t.program->screens().existing(QStringLiteral("inp"));
        QVERIFY(inp->isVisible());
        QVERIFY(!splash->isVisible());
        QVERIFY(!timer->isActive());
        QVERIFY(t.messages.messages.isEmpty());
    }

    // The title, the picture and the credit line are what the start-up screen is for;
    // the picture must hold both drawn series.
    void showsTitlePictureAndCredit() {
        TestProgram t;
        QWidget* splash = t.screen("Form1");
        QCOMPARE(child<QLabel>(splash, "Label1")->text(), QStringLiteral("ZORVEKAN"));
        QVERIFY(child<QLabel>(splash, "Label2")->text().contains(QStringLiteral("0.1.0")));
        const QImage picture = child<PlotSurface>(splash, "Picture1")->picture();
        int blue = 0, red = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb p = picture.pixel(x, y);
                blue += p == qRgb(0, 0, 255);
                red += p == qRgb(255, 0, 0);
            }
        QVERIFY(blue > 100);
        QVERIFY(red > 100);
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::SplashScreenTest)
#include "SplashScreenTest.moc"
