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
#include "properties/correlations.h"
#include "properties/oil_pvt.h"
#include "properties/water_properties.h"

#include <QComboBox>
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

using namespace Qt::StringLiterals;

namespace {

QLineEdit* numberBox(const char* name, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromUtf8(name));
    box->setMaximumWidth(110);
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

QString joined(const std::vector<std::string>& lines) {
    QStringList list;
    for (const std::string& line : lines)
        list.append(QString::fromStdString(line));
    return list.join(QLatin1Char('\n'));
}

double number(const QLineEdit* box) {
    return Val(box->text().toStdString());
}

} // namespace

PropertyCalculator::PropertyCalculator(ScreenContext& context, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(context) {
    setWindowTitle(QString::fromUtf8(kProgramTitle) + QStringLiteral(" -- PVT Properties"));
    auto* top = new QHBoxLayout;
    top->addWidget(buildInputs(), 2);
    top->addWidget(buildColumn(), 3);
    m_message = new QLineEdit(this);
    m_message->setObjectName(QStringLiteral("Text1"));
    m_message->setReadOnly(true);
    auto* messageRow = new QHBoxLayout;
    messageRow->addWidget(new QLabel(QStringLiteral("Message:"), this));
    messageRow->addWidget(m_message, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->addLayout(top);
    layout->addWidget(buildResults(), 1);
    layout->addLayout(messageRow);
    layout->addWidget(buildCommands());
}

QWidget* PropertyCalculator::buildInputs() {
    auto* group = new QGroupBox(QStringLiteral("Fluids, Rock and Conditions"), this);
    auto* form = new QFormLayout(group);
    m_api = numberBox("apiin", group);
    m_gravity = numberBox("ggin", group);
    m_gor = numberBox("gorin", group);
    m_bubblePoint = numberBox("pbin", group);
    m_pressure = numberBox("pin", group);
    m_temperature = numberBox("tin", group);
    m_salinity = numberBox("salin", group);
    m_salinity->setMinimumWidth(m_salinity->fontMetrics().horizontalAdvance(u"0000000"_s) + 12);
    m_salinityUnit = new QComboBox(group);
    m_salinityUnit->setObjectName(QStringLiteral("salunit"));
    m_salinityUnit->addItems({QStringLiteral("ppm"), QStringLiteral("% NaCl")});
    auto* salinityRow = new QHBoxLayout;
    salinityRow->addWidget(m_salinity);
    salinityRow->addWidget(m_salinityUnit);
    salinityRow->addStretch(1);
    m_porosity = numberBox("phin", group);
    m_oilSaturation = numberBox("soin", group);
    m_waterSaturation = numberBox("swin", group);
    m_gasSaturation = numberBox("sgin", group);
    form->addRow(QStringLiteral("Oil Gravity       API"), m_api);
    form->addRow(QStringLiteral("Gas Gravity    (air = 1)"), m_gravity);
    form->addRow(QStringLiteral("Sol'n GOR       scf/STB"), m_gor);
    form->addRow(QStringLiteral("or Bubble Point    psia"), m_bubblePoint);
    form->addRow(QStringLiteral("Pressure            psia"), m_pressure);
    form->addRow(QStringLiteral("Temperature      F."), m_temperature);
    form->addRow(QStringLiteral("Water Salinity"), salinityRow);
    form->addRow(QStringLiteral("Porosity     %"), m_porosity);
    form->addRow(QStringLiteral("Oil Saturation     %"), m_oilSaturation);
    form->addRow(QStringLiteral("Water Saturation     %"), m_waterSaturation);
    form->addRow(QStringLiteral("Gas Saturation     %"), m_gasSaturation);
    for (QLineEdit* box : group->findChildren<QLineEdit*>()) {
        connect(box, &QLineEdit::returnPressed, this, [this] { calculate(); });
        // New inputs make the last results stale: they are no longer copied.
        connect(box, &QLineEdit::textChanged, this, [this] { m_values.reset(); });
    }
    connect(m_salinityUnit, &QComboBox::currentIndexChanged, this, [this] { m_values.reset(); });
    return group;
}

QWidget* PropertyCalculator::buildColumn() {
    auto* chosen = new QGroupBox(QStringLiteral("Correlation Selected"), this);
    auto* form = new QFormLayout(chosen);
    m_column = form;
    m_oilLine = valueLabel("oilSelected", chosen);
    m_oilStandards = valueLabel("oilStandards", chosen);
    m_gasLine = valueLabel("gasSelected", chosen);
    m_formationLine = valueLabel("formationSelected", chosen);
    m_rockLine = valueLabel("rockSelected", chosen);
    m_formationRemark = valueLabel("formationRemark", chosen);
    auto* water = valueLabel("waterSelected", chosen);
    water->setText(QStringLiteral("McCain (1990); compressibility Osif (1988)"));
    for (QLabel* remark : {m_oilStandards, m_formationRemark}) {
        remark->setWordWrap(true);
        remark->setStyleSheet(QStringLiteral("color: #505050;"));
    }
    form->addRow(QStringLiteral("Oil:"), m_oilLine);
    form->addRow(QString(), m_oilStandards);
    form->addRow(QStringLiteral("Gas:"), m_gasLine);
    form->addRow(QStringLiteral("Water:"), water);
    form->addRow(QStringLiteral("Formation:"), m_formationLine);
    form->addRow(QStringLiteral("Rock Class:"), m_rockLine);
    form->addRow(QString(), m_formationRemark);
    m_oilLine->setText(QString::fromStdString(selectedOilCorrelation(m_ctx.state)));
    if (const auto code = oilCorrelation(m_ctx.state.OilCorrelation))
        showOilStandards(oilStandardsUsed(*code));
    m_gasLine->setText(QString::fromStdString(selectedGasKind(m_ctx.state)));
    m_formationLine->setText(m_formation);
    showRockClassRow();
    return chosen;
}

QWidget* PropertyCalculator::buildResults() {
    auto* box = new QWidget(this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    const struct {
        const char* title;
        const char* name;
        QLabel** label;
        int row, column, lines;
    } groups[] = {
        {"Oil Properties", "Picture2", &m_oilResults, 0, 0, 11},
        {"Gas Properties", "Picture1", &m_gasResults, 0, 1, 5},
        {"Water Properties", "Picture3", &m_waterResults, 1, 0, 5},
        {"Formation and Total Compressibility", "Picture4", &m_formationResults, 1, 1, 3},
    };
    for (const auto& g : groups) {
        auto* group = new QGroupBox(QString::fromUtf8(g.title), box);
        auto* layout = new QVBoxLayout(group);
        QLabel* label = valueLabel(g.name, group);
        label->setMinimumHeight(label->fontMetrics().lineSpacing() * g.lines + 4);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QLatin1Char('m')) * 26);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
        layout->addWidget(label);
        grid->addWidget(group, g.row, g.column);
        *g.label = label;
    }
    return box;
}

QWidget* PropertyCalculator::buildCommands() {
    auto* box = new QWidget(this);
    auto* buttons = new QHBoxLayout(box);
    buttons->setContentsMargins(0, 0, 0, 0);
    m_calculate = new QPushButton(QStringLiteral("Calculate PVT Properties"), box);
    m_calculate->setObjectName(QStringLiteral("Command1"));
    m_calculate->setDefault(true);
    auto* select = new QPushButton(QStringLiteral("Select Correlations"), box);
    select->setObjectName(QStringLiteral("Command2"));
    auto* copy = new QPushButton(QStringLiteral("Copy to Input"), box);
    copy->setObjectName(QStringLiteral("Command4"));
    auto* print = new QPushButton(QStringLiteral("Print"), box);
    print->setObjectName(QStringLiteral("Command5"));
    auto* back = new QPushButton(QStringLiteral("Return"), box);
    back->setObjectName(QStringLiteral("Command3"));
    connect(m_calculate, &QPushButton::clicked, this, [this] { calculate(); });
    connect(select, &QPushButton::clicked, this, [this] { selectCorrelations(); });
    connect(copy, &QPushButton::clicked, this, [this] { copyToInput(); });
    connect(print, &QPushButton::clicked, this, [this] {
        m_ctx.guard.run(this, [this] { m_ctx.printer.print(this, printedPage()); });
    });
    connect(back, &QPushButton::clicked, this, [this] { hide(); });
    buttons->addWidget(m_calculate);
    buttons->addWidget(select);
    buttons->addWidget(copy);
    buttons->addStretch(1);
    buttons->addWidget(print);
    buttons->addWidget(back);
    return box;
}

void PropertyCalculator::beforeShow() {
    const AnalysisState& s = m_ctx.state;
    const std::pair<QLineEdit*, QString> starts[] = {
        {m_gravity, startingText(s.GasGravity, "#.###")},
        {m_pressure, startingText(s.StartPressure, "#####.#")},
        {m_temperature, startingText(s.ReservoirTemperature, "###.#")},
        {m_gor, startingText(s.SolutionGor * 1000.0, "#####.")}, // MCF/STB on inp
        {m_porosity, startingText(s.Porosity * 100.0, "##.##")},
    };
    for (const auto& [box, text] : starts)
        if (box->text().isEmpty())
            box->setText(text);
}

QImage PropertyCalculator::printedPage() {
    return renderWindow(*this);
}

PropertyInputs PropertyCalculator::readInputs() const {
    PropertyInputs in;
    in.gasGravity = number(m_gravity);
    in.temperature = number(m_temperature);
    in.pressure = number(m_pressure);
    in.api = number(m_api);
    in.gor = number(m_gor);
    in.bubblePoint = number(m_bubblePoint);
    in.salinity = salinityPercent(number(m_salinity), m_salinityUnit->currentIndex() == 0
                                                          ? SalinityUnit::Ppm
                                                          : SalinityUnit::Percent);
    in.porosity = number(m_porosity) / 100.0;
    in.oilSaturation = number(m_oilSaturation) / 100.0;
    in.waterSaturation = number(m_waterSaturation) / 100.0;
    in.gasSaturation = number(m_gasSaturation) / 100.0;
    in.formation = m_formation.toStdString();
    in.rockClass = m_rockClass.toStdString();
    return in;
}

void PropertyCalculator::calculate() {
    m_ctx.guard.run(this, [this] {
        m_values.reset();
        const PropertyCalculation r = calculateProperties(m_ctx.state, readInputs());
        const CalculatorGasOutcome& out = r.gas;
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
        showCalculation(r);
        m_values = r.values;
        Q_EMIT propertiesCalculated();
    });
}

void PropertyCalculator::showCalculation(const PropertyCalculation& r) {
    m_gasResults->setText(joined(r.gas.lines));
    m_oilResults->setText(joined(r.oilLines));
    m_waterResults->setText(joined(r.waterLines));
    m_formationResults->setText(joined(r.rockLines));
    if (!r.oilStandards.empty() || !r.oilLines.empty())
        showOilStandards(r.oilStandards);
    m_formationRemark->setText(QString::fromStdString(r.formationRemark));
    QStringList notes;
    for (const std::string& note : r.notes)
        notes.append(QString::fromStdString(note));
    m_message->setText(notes.join(QLatin1Char(' ')));
    m_message->setCursorPosition(0);
    m_message->setToolTip(notes.join(QLatin1Char('\n')));
}

void PropertyCalculator::showOilStandards(const std::string& standards) {
    m_oilStandards->setText(standards.empty()
                                ? QString()
                                : QStringLiteral("(%1)").arg(QString::fromStdString(standards)));
}

void PropertyCalculator::copyToInput() {
    m_ctx.guard.run(this, [this] {
        if (!m_values) {
            m_message->setText(QStringLiteral("Nothing copied: calculate the properties first."));
            return;
        }
        std::vector<std::string> missing;
        const std::vector<BoxValue> boxes =
            inputBoxValues(m_ctx.state.FluidFlags, *m_values, missing);
        for (const BoxValue& b : boxes)
            Q_EMIT propertyCopied(QString::fromStdString(b.objectName),
                                  QString::fromStdString(b.text));
        QString text = QStringLiteral("Copied to the input screen: %1 values.").arg(boxes.size());
        if (!missing.empty()) {
            QStringList names;
            for (const std::string& m : missing)
                names.append(QString::fromStdString(m));
            text += QStringLiteral(" Not computed, not copied: %1.")
                        .arg(names.join(QStringLiteral(", ")));
        }
        m_message->setText(text);
    });
}

void PropertyCalculator::selectCorrelations() {
    m_ctx.guard.run(this, [this] { m_ctx.screens.show(QStringLiteral("Corch")); });
}

void PropertyCalculator::showCorrelation(CorrelationDialog::Line line, const QString& text) {
    switch (line) {
    case CorrelationDialog::Line::Oil:
        m_oilLine->setText(text);
        if (const auto code = oilCorrelation(m_ctx.state.OilCorrelation))
            showOilStandards(oilStandardsUsed(*code));
        break;
    case CorrelationDialog::Line::Gas:
        m_gasLine->setText(text);
        break;
    case CorrelationDialog::Line::Formation:
        m_formationLine->setText(text);
        m_formation = text;
        m_formationRemark->clear();
        showRockClassRow();
        break;
    case CorrelationDialog::Line::RockClass:
        m_rockLine->setText(text);
        m_rockClass = text;
        m_formationRemark->clear();
        break;
    }
    m_values.reset();
}

void PropertyCalculator::showRockClassRow() {
    // The rock class belongs to the Newman and Yale correlations only.
    const bool applies = formationNeedsRockClass(m_formation.toStdString());
    m_rockLine->setVisible(applies);
    if (QWidget* caption = m_column->labelForField(m_rockLine))
        caption->setVisible(applies);
}

void PropertyCalculator::takeFocusBack() {
    show();
    raise();
    activateWindow();
    m_calculate->setFocus();
}

} // namespace zorvekan
