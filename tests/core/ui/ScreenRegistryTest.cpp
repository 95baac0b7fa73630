// SPDX-License-Identifier: MIT
#include "../../support/ui/FakeServices.h"

#include "core/runtime_error.h"
#include "core/ui/EventGuard.h"
#include "core/ui/ScreenRegistry.h"

#include <QCloseEvent>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <stdexcept>

namespace zorvekan::testing {

using namespace Qt::StringLiterals;

namespace {

// A window that notes when it is closed.
class NotingWindow : public QWidget {
public:
    NotingWindow(QStringList& closed) : m_closed(closed) {}

protected:
    void closeEvent(QCloseEvent* e) override {
        m_closed.append(objectName());
        e->accept();
    }

private:
    QStringList& m_closed;
};

QImage samplePage() {
    QImage page(400, 300, QImage::Format_RGB32);
    page.fill(Qt::white);
    return page;
}

} // namespace

class ScreenRegistryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Screens are single instances kept while hidden: a second show must not make a
    // second window nor lose what the first holds.
    void singleInstanceKeptWhileHidden() {
        ScreenRegistry r(nullptr);
        int made = 0;
        r.add(QStringLiteral("mox"), [&] {
            ++made;
            return new QWidget;
        });
        QVERIFY(!r.existing(QStringLiteral("mox")));
        QVERIFY(r.show(QStringLiteral("mox")));
        QWidget* first = r.existing(QStringLiteral("mox"));
        QCOMPARE(first->objectName(), QStringLiteral("mox"));
        first->hide();
        QVERIFY(r.show(QStringLiteral("mox")));
        QCOMPARE(r.existing(QStringLiteral("mox")), first);
        QCOMPARE(made, 1);
        QVERIFY(first->isVisible());
    }

    // Exit keeps the unsaved work first, then closes the screens in the program's order
    // (import notice, entry, review, skin, semilog, type curve, correlations,
    // calculator), then the rest, then ends; a second Exit during the first must not
    // run again.
    void exitClosesInOrderThenEnds() {
        QStringList closed;
        QList<int> ends;
        ScreenRegistry r([&](int code) { ends.append(code); });
        r.setKeepWork([&] {
            closed.append(QStringLiteral("kept"));
            return KeptWork{};
        });
        QStringList names = ScreenRegistry::exitOrder();
        names << QStringLiteral("Form1") << QStringLiteral("inp");
        for (const QString& n : names)
            r.add(n, [&] { return new NotingWindow(closed); });
        for (auto it = names.crbegin(); it != names.crend(); ++it)
            r.show(*it);
        r.exitProgram();
        QCOMPARE(closed, QStringList{QStringLiteral("kept")} + names);
        QCOMPARE(ends, QList<int>{0});
        r.exitProgram();
        QCOMPARE(ends, QList<int>{0});
        for (const QString& n : names)
            QVERIFY(!r.existing(n)->isVisible());
    }

    void guardReportsEveryFault_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        QTest::newRow("run-time error") << 0 << u"Division by zero: tp"_s;
        QTest::newRow("standard exception") << 1 << u"bad thing"_s;
        QTest::newRow("anything else") << 2 << u"An unexpected error ended the command."_s;
    }
    // No fault in a handler may escape into Qt's event loop (which would end the
    // program): each is shown in the run-time error box and the next handler runs.
    void guardReportsEveryFault() {
        QFETCH(int, kind);
        QFETCH(QString, text);
        FakeMessageService messages;
        EventGuard guard(messages);
        const bool completed = guard.run(nullptr, [kind] {
            if (kind == 0)
                throw RuntimeError(Fault::DivisionByZero, "tp");
            if (kind == 1)
                throw std::logic_error("bad thing");
            throw 42;
        });
        QVERIFY(!completed);
        QCOMPARE(messages.messages.size(), 1);
        QCOMPARE(messages.lastTitle(), QStringLiteral("ZORVEKAN Run-time Error"));
        QCOMPARE(messages.lastText(), text);
        int after = 0;
        QVERIFY(guard.run(nullptr, [&] { after = 1; }));
        QCOMPARE(after, 1);
    }

    // One rendering feeds the printer, PDF and PNG: each file must really be what its
    // extension says, and other extensions must be refused with a message.
    void pagesAsPdfAndPng() {
        QTemporaryDir dir;
        const QString pdf = dir.filePath(QStringLiteral("page.pdf"));
        const QString png = dir.filePath(QStringLiteral("page.PNG"));
        QCOMPARE(writePage(samplePage(), pdf), QString());
        QCOMPARE(writePage(samplePage(), png), QString());
        QFile f(pdf);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.read(5) == "%PDF-");
        QCOMPARE(QImage(png).size(), QSize(400, 300));
        QVERIFY(!writePage(samplePage(), dir.filePath(QStringLiteral("page.jpg"))).isEmpty());

        FakeMessageService messages;
        FakeFileDialogService files;
        files.answers = {dir.filePath(QStringLiteral("report")), QString()};
        QVERIFY(exportPage(nullptr, samplePage(), files, messages));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("report.pdf"))));
        QVERIFY(!exportPage(nullptr, samplePage(), files, messages)); // cancelled
        QVERIFY(messages.messages.isEmpty());
        files.answers = {QStringLiteral("/no/such/folder/page.png")};
        QVERIFY(!exportPage(nullptr, samplePage(), files, messages));
        QCOMPARE(messages.messages.size(), 1);
    }

    // Batch export writes the input screen's page without showing it, and names the
    // screens it cannot write.
    void batchExport() {
        TestProgram t;
        QTemporaryDir dir;
        const QString png = dir.filePath(QStringLiteral("inp.png"));
        const QStringList errors = t.program->exportPages(
            {{"inp", png.toStdString()},
             {"inpsho", "x.png"},
             {"nosuch", "y.pdf"},
             {"kv1", dir.filePath(QStringLiteral("kv1.png")).toStdString()}});
        QCOMPARE(errors.size(), 3);
        QVERIFY2(errors[0].startsWith(QStringLiteral("inpsho: No data")), qPrintable(errors[0]));
        QCOMPARE(errors[1], QStringLiteral("There is no screen named nosuch."));
        // Pages that cannot be drawn (no test points) are reported, not a crash.
        QVERIFY2(errors[2].startsWith(QStringLiteral("kv1: No data")), qPrintable(errors[2]));
        const QImage page(png);
        QVERIFY(page.width() > 400 && page.height() > 300);
        QVERIFY(!t.screen("inp")->isVisible());
    }
};

} // namespace zorvekan::testing

QTEST_MAIN(zorvekan::testing::ScreenRegistryTest)
#include "ScreenRegistryTest.moc"
