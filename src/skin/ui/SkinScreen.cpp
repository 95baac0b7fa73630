// SPDX-License-Identifier: MIT
#include "skin/ui/SkinScreen.h"

#include "core/display_mask.h"
#include "core/ui/EventGuard.h"
#include "core/ui/ScreenContext.h"
#include "core/val.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace zorvekan {

namespace {

struct BoxSpec {
    const char* name;
    const char* label;
};

// The input boxes in screen order, with their captions as the engineer reads them.
constexpr BoxSpec kBoxes[] = {
    {"skinin", "Total Skin Factor"},
    {"rwsin", "Wellbore Radius          in."},
    {"ratioin", "Vert. Perm./Horiz. Perm."},
    {"angin", "     Wellbore Angle (Deviation from Vert.)           degrees"},
    {"hsin", "True (Vert.) Net Pay              ft."},
    {"hpin", "Interval Penetrated                 ft."},
    {"partin", "Production Interval              ft."},
    {"spfin", "Perforation Density          shots/ft."},
    {"lpin", "Perforation Length              in."},
    {"rpin", "Perforation Radius              in."},
};

constexpr const char* kCompletionCaptions[] = {"Slant Hole", "Partial Penetration",
                                               "Partial Completion", "Perforated"};

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

} // namespace

template <class Handler> void SkinScreen::guarded(Handler&& handler) {
    m_ctx.guard.run(this, std::forward<Handler>(handler));
}

SkinScreen::SkinScreen(ScreenContext& context, QWidget* parent)
    : QMainWindow(parent), m_ctx(context) {
    setObjectName(QStringLiteral("skin"));
    setWindowTitle(QStringLiteral("Skin Factor Evaluation"));
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* page = new QVBoxLayout(central);
    // The printed page carries the test's title.
    m_heading = new QLabel(central);
    m_heading->setObjectName(QStringLiteral("Label12"));
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 13pt;"));
    m_heading->hide();
    page->addWidget(m_heading);

    auto* columns = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(buildCompletionFrame());
    left->addWidget(buildInputs());
    left->addWidget(buildPhasingFrame());
    auto* calculateButton = new QPushButton(QStringLiteral("Calculate Skins"), central);
    calculateButton->setObjectName(QStringLiteral("Command1"));
    calculateButton->setDefault(true);
    connect(calculateButton, &QPushButton::clicked, this, [this] { calculate(); });
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(calculateButton);
    buttonRow->addStretch(1);
    left->addLayout(buttonRow);
    left->addStretch(1);
    columns->addLayout(left);
    columns->addWidget(buildResults(), 1);
    page->addLayout(columns, 1);
    buildCommands();
    completionChanged();
    resize(900, 580);
}

QGroupBox* SkinScreen::buildCompletionFrame() {
    auto* frame = new QGroupBox(QStringLiteral("Completion Information"), centralWidget());
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* grid = new QGridLayout(frame);
    for (int i = 0; i < 4; ++i) {
        auto* check = new QCheckBox(QString::fromUtf8(kCompletionCaptions[i]), frame);
        check->setObjectName(QStringLiteral("Check%1").arg(i + 1));
        // As wide as its caption: the frame does not stretch a box over empty space.
        check->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
        connect(check, &QCheckBox::toggled, this,
                [this] { guarded([&] { completionChanged(); }); });
        m_checks[static_cast<std::size_t>(i)] = check;
        grid->addWidget(check, i / 2, i % 2, Qt::AlignLeft);
    }
    return frame;
}

QWidget* SkinScreen::buildInputs() {
    auto* panel = new QWidget(centralWidget());
    m_form = new QFormLayout(panel);
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setLabelAlignment(Qt::AlignLeft);
    for (int i = 0; i < BoxCount; ++i) {
        auto* label = new QLabel(QString::fromUtf8(kBoxes[i].label), panel);
        label->setObjectName(QStringLiteral("Label%1").arg(i + 1));
        label->setTextFormat(Qt::PlainText);
        auto* box = new QLineEdit(panel);
        box->setObjectName(QString::fromUtf8(kBoxes[i].name));
        box->setMaximumWidth(110);
        label->setBuddy(box);
        const auto which = static_cast<Box>(i);
        connect(box, &QLineEdit::textChanged, this,
                [this, which](const QString& text) { guarded([&] { boxChanged(which, text); }); });
        connect(box, &QLineEdit::returnPressed, this, [this] { calculate(); });
        m_boxes[static_cast<std::size_t>(i)] = box;
        m_form->addRow(label, box);
    }
    return panel;
}

QGroupBox* SkinScreen::buildPhasingFrame() {
    m_phasing = new QGroupBox(QStringLiteral("Phasing Angle, degrees"), centralWidget());
    m_phasing->setObjectName(QStringLiteral("Frame2"));
    auto* row = new QHBoxLayout(m_phasing);
    auto* group = new QButtonGroup(m_phasing);
    for (int i = 0; i < kPhasingCount; ++i) {
        auto* option = new QRadioButton(
            QString::number(kPhasingDegrees[static_cast<std::size_t>(i)]), m_phasing);
        option->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        group->addButton(option, i + 1);
        row->addWidget(option);
        m_options[static_cast<std::size_t>(i)] = option;
    }
    row->addStretch(1);
    connect(group, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on)
            m_inputs.phasing = id;
    });
    m_options[0]->setChecked(true);
    return m_phasing;
}

QWidget* SkinScreen::buildResults() {
    auto* panel = new QWidget(centralWidget());
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel(QStringLiteral("Well Test: Skin Factor Evaluation"), panel);
    title->setObjectName(QStringLiteral("Label11"));
    title->setStyleSheet(QStringLiteral("font-weight: bold;"));
    m_results = new QPlainTextEdit(panel);
    m_results->setObjectName(QStringLiteral("Picture1"));
    m_results->setReadOnly(true);
    m_results->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_results->setMinimumWidth(320);
    layout->addWidget(title);
    layout->addWidget(m_results, 1);
    return panel;
}

void SkinScreen::buildCommands() {
    auto command = [this](const char* key, const char* text) {
        auto* action = new QAction(QString::fromUtf8(text), this);
        action->setObjectName(QString::fromUtf8(key));
        action->setData(QString::fromUtf8(key));
        const QString k = QString::fromUtf8(key);
        connect(action, &QAction::triggered, this, [this, k] { runCommand(k); });
        return action;
    };
    QAction* back = command("Return", "&Return");
    QAction* print = command("Print", "&Print");
    QAction* exportPage = command("Export", "&Export...");
    QAction* exit = command("Exit", "E&xit");
    print->setShortcut(QKeySequence::Print);
    back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    exit->setIcon(style()->standardIcon(QStyle::SP_DialogCloseButton));
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addActions({back, print, exportPage});
    file->addSeparator();
    file->addAction(exit);
    m_toolbar = addToolBar(QStringLiteral("Commands"));
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setMovable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolbar->addActions({back, print, exit});
}

void SkinScreen::runCommand(const QString& key) {
    guarded([&] {
        if (key == QStringLiteral("Return")) {
            hide();
            m_ctx.screens.show(QStringLiteral("inp"));
        } else if (key == QStringLiteral("Print")) {
            formPage(*this, m_toolbar, m_heading,
                     [this](const QImage& page) { m_ctx.printer.print(this, page); });
        } else if (key == QStringLiteral("Export")) {
            exportPage(this, printedPage(), m_ctx.files, m_ctx.messages);
        } else if (key == QStringLiteral("Exit")) {
            m_ctx.screens.exitProgram();
        }
    });
}

void SkinScreen::beforeShow() {
    guarded([&] { activate(); });
}

void SkinScreen::activate() {
    const AnalysisState& s = m_ctx.state;
    m_activated = true;
    m_heading->setText(qs(s.TestTitle));
    if (s.Thickness != 0)
        setStarting(NetPay, s.Thickness, "###.#");
    if (s.SkinFactor != 0)
        setStarting(Total, s.SkinFactor, "###.#");
    if (s.WellboreRadius != 0)
        setStarting(Radius, 12 * s.WellboreRadius, "##.###");
}

// The box shows the value through its mask; the calculation keeps the value itself.
void SkinScreen::setStarting(Box box, double value, const char* mask) {
    m_boxes[box]->setText(qs(Format(value, mask)));
    switch (box) {
    case Total:
        m_inputs.totalSkin = value;
        break;
    case Radius:
        m_inputs.wellboreRadius = value;
        break;
    case NetPay:
        m_inputs.netPay = value;
        break;
    default:
        break;
    }
}

void SkinScreen::boxChanged(Box box, const QString& text) {
    const double v = Val(text.toStdString());
    double* fields[BoxCount] = {
        &m_inputs.totalSkin,          &m_inputs.wellboreRadius, &m_inputs.permeabilityRatio,
        &m_inputs.wellAngle,          &m_inputs.netPay,         &m_inputs.penetratedInterval,
        &m_inputs.productionInterval, &m_inputs.shotsPerFoot,   &m_inputs.perforationLength,
        &m_inputs.perforationRadius};
    *fields[box] = v;
}

void SkinScreen::completionChanged() {
    auto ticked = [this](int i) { return m_checks[static_cast<std::size_t>(i)]->isChecked(); };
    m_inputs.slantHole = ticked(0);
    m_inputs.partialPenetration = ticked(1);
    m_inputs.partialCompletion = ticked(2);
    m_inputs.perforated = ticked(3);
    // Each box shows while a ticked feature needs it; net pay serves three of them.
    const bool needs[BoxCount] = {true,
                                  true,
                                  true,
                                  m_inputs.slantHole,
                                  m_inputs.slantHole || m_inputs.partialPenetration ||
                                      m_inputs.partialCompletion,
                                  m_inputs.partialPenetration,
                                  m_inputs.partialCompletion,
                                  m_inputs.perforated,
                                  m_inputs.perforated,
                                  m_inputs.perforated};
    for (int i = 0; i < BoxCount; ++i)
        m_form->setRowVisible(i, needs[i]);
    m_phasing->setVisible(m_inputs.perforated);
}

void SkinScreen::calculate() {
    m_results->clear();
    guarded([&] {
        m_inputs.fractureSkin = m_ctx.state.FractureSkin;
        QStringList lines;
        for (const std::string& line : CalculateSkins(m_inputs).lines)
            lines.append(qs(line));
        m_results->setPlainText(lines.join(QLatin1Char('\n')));
    });
}

QImage SkinScreen::printedPage() {
    if (!m_activated) {
        // A page asked for before the screen was ever shown (batch export): the
        // screen as it opens, with the total and actual skin when the test has one.
        activate();
        if (m_ctx.state.SkinFactor != 0)
            calculate();
    }
    return formPage(*this, m_toolbar, m_heading);
}

} // namespace zorvekan
