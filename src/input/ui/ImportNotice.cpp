// SPDX-License-Identifier: MIT
#include "input/ui/ImportNotice.h"

#include "core/ui/EventGuard.h"
#include "core/ui/ScreenContext.h"
#include "input/importer.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorvekan {

namespace {

QLabel* noticeLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

ImportNotice::ImportNotice(ScreenContext& context, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(context) {
    setWindowTitle(QString::fromUtf8(kImportNoticeHeading));

    auto* heading =
        noticeLabel(QStringLiteral("Label1"), QString::fromUtf8(kImportNoticeHeading), this);
    QFont bold = heading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    heading->setFont(bold);
    heading->setAlignment(Qt::AlignCenter);

    auto* counts = new QGridLayout;
    counts->setHorizontalSpacing(16);
    counts->addWidget(
        noticeLabel(QStringLiteral("Label2"), QString::fromUtf8(kImportNoticeCount), this), 0, 0);
    m_count = noticeLabel(QStringLiteral("Label3"), QString(), this);
    m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont countFont = m_count->font();
    countFont.setBold(true);
    m_count->setFont(countFont);
    counts->addWidget(m_count, 0, 1);
    counts->setColumnStretch(2, 1);

    m_resizing =
        noticeLabel(QStringLiteral("Label4"), QString::fromUtf8(kImportNoticeResizing), this);
    m_resizing->setStyleSheet(QStringLiteral("color: #b00000; font-weight: bold;"));
    m_kept = noticeLabel(QStringLiteral("keptLabel"), QString(), this);
    m_kept->setWordWrap(true);
    m_skipped = noticeLabel(QStringLiteral("skippedLabel"), QString(), this);
    m_columns = noticeLabel(QStringLiteral("columnsLabel"), QString(), this);
    m_start = noticeLabel(QStringLiteral("startLabel"), QString(), this);
    m_start->setWordWrap(true);
    QPalette quiet = m_skipped->palette();
    quiet.setColor(QPalette::WindowText, QColor(0x55, 0x55, 0x55));
    for (QLabel* label : {m_skipped, m_columns, m_start})
        label->setPalette(quiet);

    m_accept = new QPushButton(QString::fromUtf8(kImportNoticeAccept), this);
    m_accept->setObjectName(QStringLiteral("Command1"));
    m_accept->setDefault(true);
    connect(m_accept, &QPushButton::clicked, this, [this] { accept(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_accept);
    buttons->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->setSpacing(8);
    layout->addWidget(heading);
    layout->addSpacing(4);
    layout->addLayout(counts);
    layout->addWidget(m_resizing);
    layout->addWidget(m_kept);
    layout->addWidget(m_skipped);
    layout->addWidget(m_columns);
    layout->addWidget(m_start);
    layout->addSpacing(6);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_resizing->hide();
    m_kept->hide();
}

void ImportNotice::showSummary(const ImportSummary& summary) {
    m_count->setText(QString::number(summary.pairsInFile));
    m_resizing->setVisible(summary.resized);
    m_kept->setVisible(summary.resized);
    m_kept->setText(QStringLiteral("%1 test points kept, spread evenly in log time "
                                   "(first and last kept).")
                        .arg(summary.pairsKept));
    m_skipped->setText(summary.skippedLines() == 0
                           ? QStringLiteral("No lines skipped.")
                           : QStringLiteral("Lines skipped: %1 (%2 header, %3 comment, %4 blank)")
                                 .arg(summary.skippedLines())
                                 .arg(summary.headerLines)
                                 .arg(summary.commentLines)
                                 .arg(summary.blankLines));
    m_columns->setText(QString::fromStdString(importColumnsText(summary)));
    const std::string start = importStartText(summary);
    m_start->setText(QString::fromStdString(start));
    m_start->setVisible(!start.empty());
    adjustSize();
}

void ImportNotice::accept() {
    m_ctx.guard.run(this, [this] { hide(); });
}

} // namespace zorvekan
