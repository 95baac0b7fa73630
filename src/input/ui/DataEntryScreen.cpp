// SPDX-License-Identifier: MIT
#include "input/ui/DataEntryScreen.h"

#include "core/ui/EventGuard.h"
#include "core/ui/LenientReading.h"
#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "core/version.h"
#include "input/entry_rules.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorvekan {

namespace {

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

DataEntryScreen::DataEntryScreen(ScreenContext& context, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(context) {
    setWindowTitle(QStringLiteral("Data Input"));

    m_heading = new QLabel(this);
    m_heading->setObjectName(QStringLiteral("lyrlab"));
    m_heading->setTextFormat(Qt::PlainText);
    QFont bold = m_heading->font();
    bold.setBold(true);
    m_heading->setFont(bold);
    m_row = new QLabel(this);
    m_row->setObjectName(QStringLiteral("rowNumber"));

    // conv/Label2, conv2/Label1, conv3/Label3, conv4/Label4
    const std::array<const char*, 4> boxNames = {"conv", "conv2", "conv3", "conv4"};
    const std::array<const char*, 4> labelNames = {"Label2", "Label1", "Label3", "Label4"};
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    for (int i = 0; i < 4; ++i) {
        m_labels[i] = new QLabel(this);
        m_labels[i]->setObjectName(QString::fromUtf8(labelNames[i]));
        m_labels[i]->setTextFormat(Qt::PlainText);
        m_boxes[i] = new QLineEdit(this);
        m_boxes[i]->setObjectName(QString::fromUtf8(boxNames[i]));
        m_boxes[i]->setMinimumWidth(110);
        showLenientReading(m_boxes[i]);
        m_labels[i]->setBuddy(m_boxes[i]);
        grid->addWidget(m_labels[i], i, 0);
        grid->addWidget(m_boxes[i], i, 1);
        connect(m_boxes[i], &QLineEdit::returnPressed, this, [this, i] { advanceFrom(i); });
    }
    // A half-typed row cannot be finished.
    connect(m_boxes[0], &QLineEdit::textEdited, this, [this] { m_finish->hide(); });

    m_store = new QPushButton(QStringLiteral("Store Row"), this);
    m_store->setObjectName(QStringLiteral("Command1"));
    m_finish = new QPushButton(QStringLiteral("Finish"), this);
    m_finish->setObjectName(QStringLiteral("Command2"));
    connect(m_store, &QPushButton::clicked, this, [this] { storeRow(); });
    connect(m_finish, &QPushButton::clicked, this, [this] { finish(); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_store);
    buttons->addWidget(m_finish);
    buttons->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->addWidget(m_heading);
    layout->addWidget(m_row);
    layout->addLayout(grid);
    layout->addLayout(buttons);
    layout->addStretch(1);
    beforeShow();
}

void DataEntryScreen::beforeShow() {
    m_ctx.guard.run(this, [this] {
        const EntryLayout layout = entryLayout(m_ctx.state);
        m_heading->setText(qs(layout.heading));
        for (int i = 0; i < 4; ++i) {
            m_labels[i]->setText(qs(layout.boxes[i].label));
            m_labels[i]->setVisible(layout.boxes[i].visible);
            m_boxes[i]->setVisible(layout.boxes[i].visible);
        }
        m_ctx.state.EntryCounter = 1;
        m_draft = EntryDraft{};
        clearBoxes();
        m_finish->show();
        showRowNumber();
        adjustSize();
    });
}

void DataEntryScreen::clearBoxes() {
    for (QLineEdit* box : m_boxes)
        box->setText(QStringLiteral(" "));
    m_boxes[0]->setFocus();
    m_boxes[0]->selectAll();
}

void DataEntryScreen::showRowNumber() {
    const int most = m_ctx.state.DatinMode == 1 ? kMaxRates : kMaxTestPoints;
    const int row = m_ctx.state.EntryCounter;
    m_row->setText(row > most ? QStringLiteral("All %1 rows stored; Finish keeps them").arg(most)
                              : QStringLiteral("Row %1 of at most %2").arg(row).arg(most));
}

void DataEntryScreen::advanceFrom(int box) {
    for (int next = box + 1; next < 4; ++next) {
        if (!m_boxes[next]->isHidden()) {
            m_boxes[next]->setFocus();
            m_boxes[next]->selectAll();
            return;
        }
    }
    storeRow();
}

void DataEntryScreen::storeRow() {
    m_ctx.guard.run(this, [this] {
        std::array<std::string, 4> texts;
        for (int i = 0; i < 4; ++i)
            texts[i] = m_boxes[i]->text().toStdString();
        const RowOutcome outcome = storeEntryRow(m_ctx.state, m_draft, texts);
        if (outcome.message) {
            m_ctx.messages.show(this, MessageService::Kind::Warning,
                                QString::fromUtf8(kProgramTitle), qs(*outcome.message));
            if (outcome.limitReached) {
                // The refused row goes; the rows already stored can still be finished.
                clearBoxes();
                m_finish->show();
            }
            return;
        }
        if (outcome.startPressureText)
            Q_EMIT startPressureEntered(qs(*outcome.startPressureText));
        clearBoxes();
        m_finish->show();
        showRowNumber();
    });
}

void DataEntryScreen::finish() {
    m_ctx.guard.run(this, [this] {
        finishEntry(m_ctx.state, m_draft);
        Q_EMIT entryFinished();
        hide();
    });
}

} // namespace zorvekan
