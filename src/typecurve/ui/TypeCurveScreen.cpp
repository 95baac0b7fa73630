// SPDX-License-Identifier: MIT
#include "typecurve/ui/TypeCurveScreen.h"

#include "core/analysis_data.h"
#include "core/display_mask.h"
#include "core/runtime_error.h"
#include "core/ui/EventGuard.h"
#include "core/ui/PlotSurface.h"
#include "core/ui/ScreenContext.h"
#include "core/val.h"

#include <QCoreApplication>
#include <QCursor>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace zorvekan {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

const QStringList kOperations = {QStringLiteral("Shift Data"), QStringLiteral("Select Type Curve"),
                                 QStringLiteral("Select Match Point"), QStringLiteral("Redraw")};
const QStringList kModels = {QStringLiteral("Single Porosity"), QStringLiteral("Dual Porosity"),
                             QStringLiteral("Vertical Fracture")};

QListWidget* listBox(const char* name, const QStringList& items, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(QString::fromUtf8(name));
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->addItems(items);
    list->setFixedHeight(items.size() * list->sizeHintForRow(0) + 2 * list->frameWidth() + 4);
    return list;
}

QLabel* promptLabel(const char* name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromUtf8(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->hide();
    return label;
}

} // namespace

template <class Handler> void TypeCurveScreen::guarded(Handler&& handler) {
    m_ctx.guard.run(this, std::forward<Handler>(handler));
}

TypeCurveScreen::TypeCurveScreen(ScreenContext& context, QWidget* parent)
    : QMainWindow(parent), m_ctx(context) {
    setObjectName(QStringLiteral("kv2"));
    setWindowTitle(QStringLiteral("Type Curve Analysis"));
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* page = new QVBoxLayout(central);
    // The printed page carries the test's title.
    m_heading = new QLabel(central);
    m_heading->setObjectName(QStringLiteral("Label6"));
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 13pt;"));
    m_heading->hide();
    page->addWidget(m_heading);
    auto* columns = new QHBoxLayout;
    m_tcrv = new PlotSurface(central);
    m_tcrv->setObjectName(QStringLiteral("tcrv"));
    m_tcrv->setMinimumSize(560, 380);
    connect(m_tcrv, &PlotSurface::mouseDown, this,
            [this](Qt::MouseButton, double x, double y) { guarded([&] { mouseDown(x, y); }); });
    // The status line reads the type-curve groups and the test's data under the cursor.
    m_tcrv->setReadout([this](double x, double y) {
        return m_activated ? typeCurveReadout(m_ctx.state, m_view, x, y) : std::string();
    });
    columns->addWidget(m_tcrv, 1);
    columns->addWidget(buildSidePanel());
    page->addLayout(columns, 1);
    buildCommands();
    statusBar()->setObjectName(QStringLiteral("readout"));
    connect(m_tcrv, &PlotSurface::readoutChanged, statusBar(),
            [this](const QString& text) { statusBar()->showMessage(text); });
    resize(1280, 720);
}

QWidget* TypeCurveScreen::buildSidePanel() {
    auto* panel = new QWidget(centralWidget());
    panel->setFixedWidth(300);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    auto caption = [panel](const QString& text) {
        auto* label = new QLabel(text, panel);
        label->setStyleSheet(QStringLiteral("font-weight: bold;"));
        return label;
    };
    m_models = listBox("List2", kModels, panel);
    m_operations = listBox("List1", kOperations, panel);
    connect(m_models, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { guarded([&] { modelChosen(m_models->row(item)); }); });
    connect(m_operations, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { guarded([&] { operationChosen(item->text()); }); });

    m_regress = new QPushButton(QStringLiteral("Refine by Regression"), panel);
    m_regress->setObjectName(QStringLiteral("regress"));
    m_regress->setEnabled(false);
    connect(m_regress, &QPushButton::clicked, this,
            [this] { guarded([&] { refineByRegression(); }); });

    m_curvePrompt = promptLabel("Label2", QStringLiteral("Click on  Type Curve"), panel);
    m_shiftPrompt = promptLabel("Label3", QStringLiteral("Click on Shift Point"), panel);
    m_movePrompt = promptLabel("Label4", QStringLiteral("Move Mouse & Click to Shift"), panel);
    for (QLabel* p : {m_shiftPrompt, m_movePrompt})
        p->setStyleSheet(QStringLiteral("color: #a00000;"));

    auto* spacingRow = new QHBoxLayout;
    auto* spacingLabel = new QLabel(QStringLiteral("Derivative Spacing"), panel);
    spacingLabel->setObjectName(QStringLiteral("Label1"));
    m_spin = new QLineEdit(panel);
    m_spin->setObjectName(QStringLiteral("spin"));
    m_spin->setFixedWidth(56);
    m_spin->setToolTip(QStringLiteral("Derivative spacing in log cycles"));
    auto* up = new QToolButton(panel);
    up->setObjectName(QStringLiteral("spinUp"));
    up->setArrowType(Qt::UpArrow);
    auto* down = new QToolButton(panel);
    down->setObjectName(QStringLiteral("spinDown"));
    down->setArrowType(Qt::DownArrow);
    for (QWidget* w : {static_cast<QWidget*>(spacingLabel), static_cast<QWidget*>(m_spin),
                       static_cast<QWidget*>(up), static_cast<QWidget*>(down)})
        spacingRow->addWidget(w);
    spacingRow->addStretch(1);
    connect(m_spin, &QLineEdit::textEdited, this,
            [this](const QString& t) { guarded([&] { spacingEdited(t); }); });
    connect(up, &QToolButton::clicked, this, [this] { guarded([&] { stepSpacing(0.05); }); });
    connect(down, &QToolButton::clicked, this, [this] { guarded([&] { stepSpacing(-0.05); }); });

    auto* resultsTitle = new QLabel(QStringLiteral("Well Test: Type Curve Results"), panel);
    resultsTitle->setObjectName(QStringLiteral("Label5"));
    resultsTitle->setStyleSheet(QStringLiteral("font-weight: bold;"));
    m_resultBox = new QPlainTextEdit(panel);
    m_resultBox->setObjectName(QStringLiteral("Picture1"));
    m_resultBox->setReadOnly(true);
    m_resultBox->setLineWrapMode(QPlainTextEdit::NoWrap);

    layout->addWidget(caption(QStringLiteral("Type Curve Model")));
    layout->addWidget(m_models);
    layout->addWidget(caption(QStringLiteral("Operation")));
    layout->addWidget(m_operations);
    for (QLabel* p : {m_curvePrompt, m_shiftPrompt, m_movePrompt})
        layout->addWidget(p);
    layout->addWidget(m_regress);
    layout->addLayout(spacingRow);
    layout->addSpacing(8);
    layout->addWidget(resultsTitle);
    layout->addWidget(m_resultBox, 1);
    return panel;
}

void TypeCurveScreen::buildCommands() {
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

void TypeCurveScreen::runCommand(const QString& key) {
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

LibraryLocation TypeCurveScreen::library() const {
    return {m_ctx.state.ApplicationDirectory, QCoreApplication::applicationDirPath().toStdString()};
}

void TypeCurveScreen::beforeShow() {
    guarded([&] { activate(); });
}

void TypeCurveScreen::activate() {
    AnalysisState& s = m_ctx.state;
    m_activated = true;
    if (s.TypeCurveModel < kSinglePorosityModel || s.TypeCurveModel > kVerticalFractureModel)
        s.TypeCurveModel = kSinglePorosityModel;
    m_models->setCurrentRow(s.TypeCurveModel - 1);
    m_operations->setCurrentRow(-1);
    m_heading->setText(qs(s.TestTitle));
    m_spin->setText(qs(Format(s.DerivativeSpan, "0.##")));
    for (QLabel* p : {m_shiftPrompt, m_movePrompt})
        p->hide();
    // Coming here through the navigation list or the semilog screen, the data were prepared
    // afresh (another test, edited points, another spacing or plot kind may lie behind
    // them), so a shift kept from before could put them anywhere: they are placed again
    // from the estimates, or at the corner, and the curve preselected again.
    m_view = {};
    m_view.model = s.TypeCurveModel;
    m_view.placement = initialPlacement(s, m_view.model);
    m_shiftState = 0;
    startModel(std::nullopt);
}

// A fresh start of the model's picture: no results, the family shown, the curve kept (when
// the family has it) or else preselected from the estimates. A fault of the preselection
// is reported after the family has been drawn.
void TypeCurveScreen::startModel(std::optional<int> keptCurve) {
    const AnalysisState& s = m_ctx.state;
    m_view.familyShown = true;
    m_view.transitionsShown = false;
    m_view.highlights.clear();
    m_view.matchMark.reset();
    m_dualStep = DualStep::None;
    m_results.reset();
    m_resultBox->clear();
    m_regress->setEnabled(false);
    std::optional<RuntimeError> fault;
    if (keptCurve && *keptCurve <= libraryCurveCount(familyFile(m_view.model))) {
        m_view.selectedCurve = keptCurve;
    } else {
        m_view.selectedCurve.reset();
        try {
            m_view.selectedCurve = preselectCurve(s, m_view.model);
        } catch (const RuntimeError& e) {
            fault = e;
        }
    }
    redrawAndHidePrompt();
    if (fault)
        throw *fault;
}

void TypeCurveScreen::redraw() {
    DrawTypeCurves(*m_tcrv, m_ctx.state, library(), m_view);
    // The status line reads what now lies under the cursor (the data may have moved, the
    // grid changed), or nothing when the cursor is elsewhere.
    QString readout;
    if (m_tcrv->underMouse()) {
        const QPoint at = m_tcrv->mapFromGlobal(QCursor::pos());
        readout = qs(typeCurveReadout(m_ctx.state, m_view, m_tcrv->toUserX(at.x()),
                                      m_tcrv->toUserY(at.y())));
    }
    statusBar()->showMessage(readout);
}

void TypeCurveScreen::redrawAndHidePrompt() {
    m_curvePrompt->hide();
    redraw();
}

void TypeCurveScreen::showLines(const TypeCurveResults& r) {
    QStringList lines;
    for (const std::string& line : r.lines)
        lines.append(qs(line));
    if (!m_regressionLines.empty() && r.lines == m_regressedMatch) {
        lines.append(QString());
        for (const std::string& line : m_regressionLines)
            lines.append(qs(line));
    }
    m_resultBox->setPlainText(lines.join(QLatin1Char('\n')));
    m_regress->setEnabled(true);
}

void TypeCurveScreen::prompt(const QString& text, const char* background) {
    m_curvePrompt->setText(text);
    m_curvePrompt->setStyleSheet(
        QStringLiteral("background-color: %1; padding: 2px;").arg(QString::fromUtf8(background)));
    m_curvePrompt->show();
}

void TypeCurveScreen::modelChosen(int row) {
    if (row < 0)
        return;
    // The engineer's shift carries over: the data keep their place on the type-curve axes
    // (still matched when going between the two storage models, which share their curves).
    // The picked curve stays only within the same family: a number of the storage family
    // (a CDe2s) means nothing among the fracture curves (an xe/xf), which are preselected.
    const int model = row + 1;
    const bool sameFamily = familyFile(model) == familyFile(m_view.model);
    m_view.placement =
        placementOnGrid(m_view.placement, typeCurveGrid(m_view.model), typeCurveGrid(model));
    m_view.model = model;
    m_ctx.state.TypeCurveModel = static_cast<std::int16_t>(model);
    startModel(sameFamily ? m_view.selectedCurve : std::nullopt);
}

void TypeCurveScreen::operationChosen(const QString& item) {
    endDualSequence();
    for (QLabel* p : {m_curvePrompt, m_shiftPrompt, m_movePrompt})
        p->hide();
    if (item == QStringLiteral("Shift Data")) {
        m_shiftState = 0;
        m_shiftPrompt->show();
    } else if (item == QStringLiteral("Select Type Curve")) {
        prompt(QStringLiteral("Click on  Type Curve"), "rgb(0, 255, 0)");
    } else if (item == QStringLiteral("Redraw")) {
        m_view.familyShown = true;
        redrawAndHidePrompt();
    }
}

void TypeCurveScreen::spacingEdited(const QString& text) {
    AnalysisState& s = m_ctx.state;
    s.DerivativeSpan = Val(text.toStdString());
    if (!(s.DerivativeSpan > 0))
        return; // stored, but a spacing of 0 or less computes nothing
    PrepareAnalysisData(s);
    redraw();
}

void TypeCurveScreen::stepSpacing(double step) {
    const double span = std::max(0.05, m_ctx.state.DerivativeSpan + step);
    const QString text = qs(Format(span, "0.##"));
    m_spin->setText(text);
    spacingEdited(text);
}

QImage TypeCurveScreen::printedPage() {
    if (!m_activated) {
        // A page asked for before the screen was ever shown (batch export): the family of the
        // current model with the test's data, as the navigation list prepares them.
        AnalysisState& s = m_ctx.state;
        s.SemilogPlotKind = s.RateCount > 1 ? kSuperpositionPlot : kSemilogPlot;
        PrepareAnalysisData(s);
        activate();
    }
    return formPage(*this, m_toolbar, m_heading);
}

} // namespace zorvekan
