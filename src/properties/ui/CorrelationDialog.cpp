// SPDX-License-Identifier: MIT
#include "properties/ui/CorrelationDialog.h"

#include "core/ui/EventGuard.h"
#include "core/ui/ScreenContext.h"
#include "properties/correlations.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <string_view>

namespace zorvekan {

namespace {

template <std::size_t N>
QListWidget* choiceList(const char* name, const std::array<std::string_view, N>& items,
                        QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(QString::fromUtf8(name));
    for (std::string_view item : items)
        list->addItem(QString::fromUtf8(item.data(), static_cast<qsizetype>(item.size())));
    const int rows = static_cast<int>(N);
    list->setFixedHeight(rows * list->sizeHintForRow(0) + 2 * list->frameWidth() + 4);
    list->setMinimumWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth() + 8);
    return list;
}

QLabel* caption(const char* name, const QString& text, QWidget* buddy, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromUtf8(name));
    label->setBuddy(buddy);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

CorrelationDialog::CorrelationDialog(ScreenContext& context, QWidget* parent)
    : QDialog(parent), m_ctx(context) {
    setWindowTitle(QStringLiteral("PVT Correlations Selection"));

    m_oil = choiceList("Oilch", kOilCorrelations, this);
    m_gas = choiceList("Gasch", kGasKinds, this);
    m_formation = choiceList("Forch", kFormationCorrelations, this);
    m_rocks = choiceList("Rocks", kRockClasses, this);
    m_rocks->setEnabled(false);

    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("Command1"));
    close->setDefault(true);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(14, 12, 14, 12);
    grid->setHorizontalSpacing(16);
    grid->addWidget(caption("Label1", QStringLiteral("Oil"), m_oil, this), 0, 0);
    grid->addWidget(m_oil, 1, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(caption("Label2", QStringLiteral("Gas"), m_gas, this), 0, 1);
    grid->addWidget(m_gas, 1, 1, Qt::AlignTop);
    grid->addWidget(caption("Label3", QStringLiteral("Formation"), m_formation, this), 2, 1);
    grid->addWidget(m_formation, 3, 1, Qt::AlignTop);
    grid->addWidget(caption("Label4", QStringLiteral("Rock Class"), m_rocks, this), 4, 1);
    grid->addWidget(m_rocks, 5, 1, Qt::AlignTop);
    grid->addWidget(close, 6, 1, Qt::AlignRight);
    grid->setRowStretch(5, 1);

    connect(m_oil, &QListWidget::currentTextChanged, this,
            [this](const QString& t) { oilChosen(t); });
    connect(m_gas, &QListWidget::currentTextChanged, this,
            [this](const QString& t) { gasChosen(t); });
    connect(m_formation, &QListWidget::currentTextChanged, this,
            [this](const QString& t) { formationChosen(t); });
    connect(m_rocks, &QListWidget::currentTextChanged, this, [this](const QString& t) {
        m_ctx.guard.run(this, [&] { Q_EMIT correlationSelected(Line::RockClass, t); });
    });
    connect(close, &QPushButton::clicked, this, [this] {
        hide();
        Q_EMIT returnedToCalculator();
    });
}

void CorrelationDialog::oilChosen(const QString& text) {
    m_ctx.guard.run(this, [&] {
        if (const auto code = oilCorrelationCode(text.toStdString()))
            m_ctx.state.OilCorrelation = *code;
        Q_EMIT correlationSelected(Line::Oil, text);
    });
}

void CorrelationDialog::gasChosen(const QString& text) {
    m_ctx.guard.run(this, [&] {
        if (const auto code = gasKindCode(text.toStdString()))
            m_ctx.state.GasKind = *code;
        Q_EMIT correlationSelected(Line::Gas, text);
    });
}

void CorrelationDialog::formationChosen(const QString& text) {
    m_ctx.guard.run(this, [&] {
        Q_EMIT correlationSelected(Line::Formation, text);
        m_rocks->setEnabled(formationNeedsRockClass(text.toStdString()));
    });
}

} // namespace zorvekan
