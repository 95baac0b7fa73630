// SPDX-License-Identifier: MIT
// The input screen and the test in hand: Open, Save and Import, the recent tests of
// the File menu, the status line, and the recovery file kept when the program ends.
#include "input/ui/InputScreen.h"

#include "core/ui/EventGuard.h"
#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "core/ui/ScreenRegistry.h"
#include "core/version.h"
#include "input/ui/ImportNotice.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>

namespace zorvekan {

namespace {

QString qs(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* statusLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

void InputScreen::buildStatusLine() {
    m_fileName = statusLabel(QString(), this);
    m_fileName->setObjectName(QStringLiteral("testFile"));
    m_changedMark = statusLabel(QStringLiteral("Unsaved changes"), this);
    m_changedMark->setObjectName(QStringLiteral("changedMark"));
    m_changedMark->setStyleSheet(QStringLiteral("color: #b00000; font-weight: bold;"));
    statusBar()->setObjectName(QStringLiteral("statusLine"));
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_fileName, 1);
    statusBar()->addPermanentWidget(m_changedMark);
}

void InputScreen::showWhereTheTestStands() {
    if (!m_fileName)
        return;
    const QString& path = m_session.path();
    m_fileName->setText(path.isEmpty() ? QStringLiteral("New test, not saved yet")
                                       : QStringLiteral("Test file: ") + path);
    m_changedMark->setVisible(m_session.changed(m_ctx.state));
    const QStringList recent = m_session.recentFiles();
    for (qsizetype i = 0; i < m_recent.size(); ++i) {
        QAction* action = m_recent[i];
        action->setVisible(i < recent.size());
        if (i >= recent.size())
            continue;
        action->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(recent[i]).fileName()));
        action->setData(recent[i]);
        action->setStatusTip(recent[i]);
    }
    m_recentSeparator->setVisible(!recent.isEmpty());
}

void InputScreen::openTestFile() {
    if (const auto refill = m_files.open()) {
        showRefill(*refill);
        m_session.opened(m_files.lastPath(), m_ctx.state);
    }
}

void InputScreen::openRecent(const QString& path) {
    m_ctx.guard.run(this, [&] {
        QString error;
        if (const auto refill = m_files.openPath(path, error)) {
            showRefill(*refill);
            m_session.opened(path, m_ctx.state);
        } else {
            m_ctx.messages.show(
                this, MessageService::Kind::Warning, kFileErrorTitle,
                QStringLiteral("The test file was not opened; the current test is unchanged.\n\n") +
                    error);
        }
    });
    showWhereTheTestStands();
}

void InputScreen::saveTestFile() {
    if (m_files.save(m_title->text()))
        m_session.saved(m_files.lastPath(), m_ctx.state);
}

void InputScreen::importTestData() {
    const auto result = m_files.import();
    if (!result)
        return;
    if (result->startPressureText)
        setStartPressureText(qs(*result->startPressureText));
    refreshEntryState();
    m_commands[2]->show();
    auto* notice = qobject_cast<ImportNotice*>(m_ctx.screens.window(QStringLiteral("datct")));
    if (!notice)
        return;
    notice->showSummary(result->summary);
    m_ctx.screens.show(QStringLiteral("datct"));
}

QString InputScreen::openFile(const QString& path) {
    QString error;
    m_ctx.guard.run(this, [&] {
        if (const auto refill = m_files.openPath(path, error)) {
            showRefill(*refill);
            m_session.opened(path, m_ctx.state);
        }
    });
    showWhereTheTestStands();
    return error;
}

void InputScreen::setImportProgressDelay(std::chrono::milliseconds delay) {
    m_files.setProgressDelay(delay);
}

KeptWork InputScreen::keepWork() noexcept {
    try {
        QStringList noticed;
        for (std::size_t i = 0; i < m_notices.size(); ++i)
            if (m_notices[i] && !m_notices[i]->text().isEmpty())
                noticed.append(m_boxes[i]->objectName());
        KeptWork kept = m_session.keep(m_ctx.state, noticed);
        if (kept.failed && m_ctx.screens.exiting())
            m_ctx.messages.show(this, MessageService::Kind::Warning, kFileErrorTitle, kept.text);
        return kept;
    } catch (...) {
        return {true, QStringLiteral("The unsaved test could not be kept.")};
    }
}

void InputScreen::offerRecovery() {
    m_ctx.guard.run(this, [&] {
        if (m_ctx.screens.exiting())
            return;
        if (!m_session.recoveryWaiting()) {
            m_session.discardRecovery(); // older than the last save: nothing to offer
            return;
        }
        if (!m_ctx.messages.ask(this, QString::fromUtf8(kProgramTitle),
                                QStringLiteral("Restore the test you were working on when "
                                               "the program closed?"),
                                QStringLiteral("Restore"), QStringLiteral("Discard"))) {
            m_session.discardRecovery();
            return;
        }
        const OpenResult restored = m_session.restore(m_ctx.state);
        if (!restored.ok) {
            m_ctx.messages.show(this, MessageService::Kind::Warning, kFileErrorTitle,
                                QStringLiteral("The test could not be restored.\n\n") +
                                    qs(restored.error.message()));
            return;
        }
        showRefill(restored.refill);
        const QStringList noticed = m_session.noticedBoxes();
        for (std::size_t i = 0; i < m_notices.size(); ++i)
            if (m_notices[i] && noticed.contains(m_boxes[i]->objectName()))
                showNotice(static_cast<PropertyBox>(i));
    });
    showWhereTheTestStands();
}

} // namespace zorvekan
