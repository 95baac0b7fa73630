// SPDX-License-Identifier: MIT
#include "properties/ui/PropertyCalculator.h"

#include "core/display_mask.h"
#include "core/ui/EventGuard.h"
#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "core/ui/ScreenRegistry.h"
#include "core/val.h"
#include "core/version.h"
#include "properties/calculator_gas.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstdio>

namespace zorvekan {

namespace {

QLineEdit* numberBox(const char* name, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromUtf8(name));
    box->setMaximumWidth(120);
    return box;
}

QLabel* valueLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromUtf8(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

// A stored property as the calculator's starting value; an empty box when not entered.
QString startingText(double value, const char* mask) {
    return value > 0 ? QString::fromStdString(Format(value, mask)) : QString();
}

} // namespace

PropertyCalculator::PropertyCalculator(ScreenContext& context, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(context) {
    setWindowTitle(QString::fromUtf8(kProgramTitle) + QStringLiteral(" -- PVT Properties"));

    auto* inputs = new QGroupBox(QStringLiteral("Gas at Pressure and Temperature"), this);
    auto* form = new QFormLayout(inputs);
    m_gravity = numberBox("ggin", inputs);
    m_pressure = numberBox("pin", inputs);
    m_temperature = numberBox("tin", inputs);
    form->addRow(QStringLiteral("Gas  Gravity    (air = 1)"), m_gravity);
    form->addRow(QStringLiteral("Pressure            psia"), m_pressure);
    form->addRow(QStringLiteral("Temperature      F."), m_temperature);

    auto* chosen = new QGroupBox(QStringLiteral("Correlation Selected"), this);
    auto* chosenForm = new QFormLayout(chosen);
    m_oilLine = valueLabel("oilSelected", chosen);
    m_gasLine = valueLabel("gasSelected", chosen);
    m_formationLine = valueLabel("formationSelected", chosen);
    chosenForm->addRow(QStringLiteral("Oil:"), m_oilLine);
    chosenForm->addRow(QStringLiteral("Gas:"), m_gasLine);
    chosenForm->addRow(QStringLiteral("Formation:"), m_formationLine);
    m_oilLine->setText(QString::fromStdString(selectedOilCorrelation(m_ctx.state)));
    m_gasLine->setText(QString::fromStdString(selectedGasKind(m_ctx.state)));

    auto* resultsGroup = new QGroupBox(QStringLiteral("Gas Properties"), this);
    auto* resultsLayout = new QVBoxLayout(resultsGroup);
    m_results = valueLabel("Picture1", resultsGroup);
    m_results->setMinimumHeight(m_results->fontMetrics().lineSpacing() * 5 + 4);
    m_results->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_results->setTextInteractionFlags(Qt::TextSelectableByMouse);
    resultsLayout->addWidget(m_results);

    m_message = new QLineEdit(this);
    m_message->setObjectName(QStringLiteral("Text1"));
    m_message->setReadOnly(true);
    auto* messageRow = new QHBoxLayout;
    messageRow->addWidget(new QLabel(QStringLiteral("Message:"), this));
    messageRow->addWidget(m_message, 1);

    m_calculate = new QPushButton(QStringLiteral("Calculate PVT Properties"), this);
    m_calculate->setObjectName(QStringLiteral("Command1"));
    m_calculate->setDefault(true);
    auto* select = new QPushButton(QStringLiteral("Select Correlations"), this);
    select->setObjectName(QStringLiteral("Command2"));
    auto* back = new QPushButton(QStringLiteral("Return"), this);
    back->setObjectName(QStringLiteral("Command3"));
    connect(m_calculate, &QPushButton::clicked, this, [this] { calculate(); });
    connect(select, &QPushButton::clicked, this, [this] { selectCorrelations(); });
    connect(back, &QPushButton::clicked, this, [this] { hide(); });
    for (QLineEdit* box : {m_gravity, m_pressure, m_temperature})
        connect(box, &QLineEdit::returnPressed, this, [this] { calculate(); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_calculate);
    buttons->addWidget(select);
    buttons->addStretch(1);
    buttons->addWidget(back);

    auto* top = new QHBoxLayout;
    top->addWidget(inputs, 1);
    top->addWidget(chosen, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->addLayout(top);
    layout->addWidget(resultsGroup);
    layout->addLayout(messageRow);
    layout->addLayout(buttons);
}

void PropertyCalculator::beforeShow() {
    const AnalysisState& s = m_ctx.state;
    if (m_gravity->text().isEmpty())
        m_gravity->setText(startingText(s.GasGravity, "#.###"));
    if (m_pressure->text().isEmpty())
        m_pressure->setText(startingText(s.StartPressure, "#####.#"));
    if (m_temperature->text().isEmpty())
        m_temperature->setText(startingText(s.ReservoirTemperature, "###.#"));
}

void PropertyCalculator::calculate() {
    m_ctx.guard.run(this, [this] {
        const CalculatorGasOutcome out = calculateGasPart(
            m_ctx.state, Val(m_gravity->text().toStdString()),
            Val(m_temperature->text().toStdString()), Val(m_pressure->text().toStdString()));
        if (out.fatal) {
            // The z-factor routine failed at the engineer's pressure: the message is
            // written and shown, the unsaved test kept, and the program stops.
            const QString failure = QString::fromStdString(*out.fatal);
            m_message->setText(failure);
            std::fprintf(stderr, "zorvekan: %s\n", out.fatal->c_str());
            Q_EMIT propertiesCalculated(); // B may already be in the oil FVF
            const KeptWork kept = m_ctx.screens.keepWork();
            m_ctx.messages.show(this, MessageService::Kind::Critical, kRuntimeErrorTitle,
                                failure + QStringLiteral("\n\nThe program ends now. ") + kept.text);
            m_ctx.screens.endProgram(1);
            return;
        }
        QStringList lines;
        for (const std::string& line : out.lines)
            lines.append(QString::fromStdString(line));
        m_results->setText(lines.join(QLatin1Char('\n')));
        m_message->setText(out.note ? QString::fromStdString(*out.note) : QString());
        Q_EMIT propertiesCalculated();
    });
}

void PropertyCalculator::selectCorrelations() {
    m_ctx.guard.run(this, [this] { m_ctx.screens.show(QStringLiteral("Corch")); });
}

void PropertyCalculator::showCorrelation(CorrelationDialog::Line line, const QString& text) {
    switch (line) {
    case CorrelationDialog::Line::Oil:
        m_oilLine->setText(text);
        break;
    case CorrelationDialog::Line::Gas:
        m_gasLine->setText(text);
        break;
    case CorrelationDialog::Line::Formation:
        m_formationLine->setText(text);
        break;
    }
}

void PropertyCalculator::takeFocusBack() {
    show();
    raise();
    activateWindow();
    m_calculate->setFocus();
}

} // namespace zorvekan
