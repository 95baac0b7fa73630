// SPDX-License-Identifier: MIT
#include "semilog/ui/SemilogScreen.h"

#include "core/analysis_data.h"
#include "core/display_mask.h"
#include "core/ui/EventGuard.h"
#include "core/ui/MessageService.h"
#include "core/ui/PlotSurface.h"
#include "core/ui/ScreenContext.h"
#include "core/val.h"
#include "core/version.h"
#include "semilog/plot_readouts.h"

#include <QComboBox>
#include <QDate>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
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

QComboBox* optionList(const char* name, const QStringList& items, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(QString::fromUtf8(name));
    list->addItems(items);
    list->setCurrentIndex(-1); // nothing armed until the engineer chooses
    list->setPlaceholderText(QStringLiteral("Choose..."));
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return list;
}

// Keeps a widget's room in its layout while it is hidden, so nothing beside it moves.
void keepRoomWhenHidden(QWidget* w) {
    QSizePolicy policy = w->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    w->setSizePolicy(policy);
}

// A hint that comes and goes under its plot: its line is always there, and its text
// never widens the panel.
QLabel* hint(const char* name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromUtf8(name));
    label->setStyleSheet(QStringLiteral("color: #a00000;"));
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    keepRoomWhenHidden(label);
    label->hide();
    return label;
}

// A plot with its controls underneath and its hint line below them, as one panel.
QWidget* plotPanel(PlotSurface* plot, std::initializer_list<QWidget*> controls, QLabel* hintLine,
                   QWidget* parent) {
    auto* panel = new QWidget(parent);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(plot, 1);
    auto* row = new QHBoxLayout;
    for (QWidget* c : controls)
        row->addWidget(c);
    row->addStretch(1);
    layout->addLayout(row);
    layout->addWidget(hintLine);
    return panel;
}

} // namespace

template <class Handler> void SemilogScreen::guarded(Handler&& handler) {
    m_ctx.guard.run(this, std::forward<Handler>(handler));
}

SemilogScreen::SemilogScreen(ScreenContext& context, QWidget* parent)
    : QMainWindow(parent), m_ctx(context) {
    setObjectName(QStringLiteral("kv1"));
    setWindowTitle(QStringLiteral("Semilog Analysis"));
    auto* central = new QWidget(this);
    auto* outer = new QHBoxLayout(central);
    auto* left = new QVBoxLayout;
    m_heading = new QWidget(central);
    auto* headingRow = new QHBoxLayout(m_heading);
    headingRow->setContentsMargins(0, 0, 0, 0);
    auto* heading = new QLabel(QStringLiteral("Well Test: Semilog Results"), m_heading);
    heading->setObjectName(QStringLiteral("Label5"));
    heading->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 14pt;"));
    m_pageInfo = new QLabel(m_heading);
    m_pageInfo->setObjectName(QStringLiteral("pageInfo"));
    headingRow->addWidget(heading);
    headingRow->addStretch(1);
    headingRow->addWidget(m_pageInfo);
    m_heading->hide();
    m_title = new QLabel(central);
    m_title->setObjectName(QStringLiteral("Label3"));
    m_title->setStyleSheet(QStringLiteral("font-weight: bold;"));
    left->addWidget(m_heading);
    left->addWidget(m_title);
    m_grid = new QGridLayout;
    buildPlots(m_grid);
    left->addLayout(m_grid, 1);
    outer->addLayout(left, 1);
    outer->addWidget(buildSidePanel());
    setCentralWidget(central);
    buildCommands();
    statusBar()->setObjectName(QStringLiteral("readout"));
    connectReadouts();
    resize(1360, 860);
}

void SemilogScreen::buildPlots(QGridLayout* grid) {
    QWidget* parent = centralWidget() ? centralWidget() : this;
    auto makeSurface = [&](const char* name) {
        auto* surface = new PlotSurface(parent);
        surface->setObjectName(QString::fromUtf8(name));
        surface->setMinimumSize(420, 270);
        return surface;
    };
    m_semi = makeSurface("semi");
    m_stor = makeSurface("Stor");
    m_sqr = makeSurface("sqrslp");
    m_qtr = makeSurface("qtrslp");

    m_ddpk = optionList(
        "ddpk", {QStringLiteral("Semilog Plot"), QStringLiteral("Superposition Plot")}, parent);
    m_semipk = optionList("semipk",
                          {QStringLiteral("Straight Line"), QStringLiteral("End of Transient"),
                           QStringLiteral("Redraw")},
                          parent);
    m_storpk = optionList("storpk",
                          {QStringLiteral("Unit Slope"), QStringLiteral("End of Storage"),
                           QStringLiteral("Start of Transient"), QStringLiteral("Half Slope"),
                           QStringLiteral("Quarter Slope"), QStringLiteral("Redraw")},
                          parent);
    m_sqrpk = optionList(
        "sqrpk",
        {QStringLiteral("Select Half Slope"), QStringLiteral("Redraw"), QStringLiteral("Quit")},
        parent);
    m_qtrpk = optionList(
        "qtrpk",
        {QStringLiteral("Select Quarter Slope"), QStringLiteral("Redraw"), QStringLiteral("Quit")},
        parent);
    m_semipk->hide();
    const QString lineHint = QStringLiteral("Click on Each End to Create Line");
    m_lineHint = hint("Label2", lineHint, parent);
    m_linearHint = hint("sqrHint", lineHint, parent);
    m_bilinearHint = hint("qtrHint", lineHint, parent);
    m_storageHint = hint("Label4", QStringLiteral("Click on Data Point in Storage"), parent);

    m_expand = new QPushButton(QStringLiteral("Expand"), parent);
    m_expand->setObjectName(QStringLiteral("Command2"));

    auto* spacingLabel = new QLabel(QStringLiteral("Derivative Spacing"), parent);
    spacingLabel->setObjectName(QStringLiteral("Label1"));
    m_spin = new QLineEdit(parent);
    m_spin->setObjectName(QStringLiteral("spin"));
    m_spin->setFixedWidth(56);
    m_spin->setToolTip(QStringLiteral("Derivative spacing in log cycles"));
    auto* up = new QToolButton(parent);
    up->setObjectName(QStringLiteral("spinUp"));
    up->setArrowType(Qt::UpArrow);
    auto* down = new QToolButton(parent);
    down->setObjectName(QStringLiteral("spinDown"));
    down->setArrowType(Qt::DownArrow);

    m_semiPanel = plotPanel(m_semi, {m_ddpk, m_semipk, m_expand}, m_lineHint, parent);
    m_storPanel =
        plotPanel(m_stor, {m_storpk, spacingLabel, m_spin, up, down}, m_storageHint, parent);
    m_sqrPanel = plotPanel(m_sqr, {m_sqrpk}, m_linearHint, parent);
    m_qtrPanel = plotPanel(m_qtr, {m_qtrpk}, m_bilinearHint, parent);
    // The option lists keep their room while hidden, so a plot does not grow or shrink
    // when its list comes and goes; the plots share the grid equally.
    for (QWidget* list : {m_semipk, m_sqrpk, m_qtrpk})
        keepRoomWhenHidden(list);
    grid->addWidget(m_semiPanel, 0, 0);
    grid->addWidget(m_storPanel, 0, 1);
    grid->addWidget(m_sqrPanel, 1, 0);
    grid->addWidget(m_qtrPanel, 1, 1);
    for (int i = 0; i < 2; ++i) {
        grid->setColumnStretch(i, 1);
        grid->setRowStretch(i, 1);
    }

    connect(m_ddpk, &QComboBox::activated, this,
            [this](int i) { guarded([&] { plotKindChosen(m_ddpk->itemText(i)); }); });
    connect(m_semipk, &QComboBox::activated, this,
            [this](int i) { guarded([&] { semilogOptionChosen(m_semipk->itemText(i)); }); });
    connect(m_storpk, &QComboBox::activated, this,
            [this](int i) { guarded([&] { storageOptionChosen(m_storpk->itemText(i)); }); });
    connect(m_sqrpk, &QComboBox::activated, this,
            [this](int i) { guarded([&] { linearOptionChosen(m_sqrpk->itemText(i)); }); });
    connect(m_qtrpk, &QComboBox::activated, this,
            [this](int i) { guarded([&] { bilinearOptionChosen(m_qtrpk->itemText(i)); }); });
    connect(m_spin, &QLineEdit::textEdited, this,
            [this](const QString& t) { guarded([&] { spacingEdited(t); }); });
    connect(up, &QToolButton::clicked, this, [this] { guarded([&] { stepSpacing(0.05); }); });
    connect(down, &QToolButton::clicked, this, [this] { guarded([&] { stepSpacing(-0.05); }); });
    connect(m_expand, &QPushButton::clicked, this, [this] { guarded([&] { expandOrReduce(); }); });

    connect(m_semi, &PlotSurface::mouseDown, this, [this](Qt::MouseButton, double x, double y) {
        guarded([&] { semilogMouseDown(x, y); });
    });
    connect(m_semi, &PlotSurface::mouseMove, this, [this](Qt::MouseButtons, double x, double y) {
        guarded([&] { semilogMouseMove(x, y); });
    });
    connect(m_stor, &PlotSurface::mouseDown, this, [this](Qt::MouseButton, double x, double y) {
        guarded([&] { storageMouseDown(x, y); });
    });
    connect(m_sqr, &PlotSurface::mouseDown, this, [this](Qt::MouseButton, double x, double y) {
        guarded([&] { linearMouseDown(x, y); });
    });
    connect(m_sqr, &PlotSurface::mouseMove, this, [this](Qt::MouseButtons, double x, double y) {
        guarded([&] { linearMouseMove(x, y); });
    });
    connect(m_qtr, &PlotSurface::mouseDown, this, [this](Qt::MouseButton, double x, double y) {
        guarded([&] { bilinearMouseDown(x, y); });
    });
    connect(m_qtr, &PlotSurface::mouseMove, this, [this](Qt::MouseButtons, double x, double y) {
        guarded([&] { bilinearMouseMove(x, y); });
    });
}

QWidget* SemilogScreen::buildSidePanel() {
    auto* panel = new QWidget(centralWidget());
    auto* layout = new QVBoxLayout(panel);
    auto* caption = new QLabel(QStringLiteral("Results"), panel);
    caption->setStyleSheet(QStringLiteral("font-weight: bold;"));
    m_results = new QPlainTextEdit(panel);
    m_results->setObjectName(QStringLiteral("Picture1"));
    m_results->setReadOnly(true);
    m_results->setMinimumWidth(300);
    m_results->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_matching = new QPushButton(QStringLiteral("Automatic Type Curve Matching"), panel);
    m_matching->setObjectName(QStringLiteral("Command1"));
    m_matching->hide();
    connect(m_matching, &QPushButton::clicked, this,
            [this] { guarded([&] { automaticTypeCurveMatching(); }); });
    layout->addWidget(caption);
    layout->addWidget(m_results, 1);
    layout->addWidget(m_matching);
    return panel;
}

void SemilogScreen::buildCommands() {
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

void SemilogScreen::runCommand(const QString& key) {
    guarded([&] {
        if (key == QStringLiteral("Return")) {
            hide();
            m_ctx.screens.show(QStringLiteral("inp"));
        } else if (key == QStringLiteral("Print")) {
            m_pageInfo->setText(pageSourceText(m_ctx.state.TestFileName, QDate::currentDate()));
            formPage(*this, m_toolbar, m_heading,
                     [this](const QImage& page) { m_ctx.printer.print(this, page); });
        } else if (key == QStringLiteral("Export")) {
            exportPage(this, printedPage(), m_ctx.files, m_ctx.messages);
        } else if (key == QStringLiteral("Exit")) {
            m_ctx.screens.exitProgram();
        }
    });
}

void SemilogScreen::beforeShow() {
    guarded([&] { activate(); });
}

void SemilogScreen::activate() {
    AnalysisState& s = m_ctx.state;
    s.TypeCurveEstimateFlag = 0;
    for (QWidget* w : {static_cast<QWidget*>(m_sqrPanel), static_cast<QWidget*>(m_qtrPanel),
                       static_cast<QWidget*>(m_sqrpk), static_cast<QWidget*>(m_qtrpk),
                       static_cast<QWidget*>(m_lineHint), static_cast<QWidget*>(m_storageHint),
                       static_cast<QWidget*>(m_linearHint), static_cast<QWidget*>(m_bilinearHint),
                       static_cast<QWidget*>(m_matching)})
        w->hide();
    m_sqr->show();
    m_qtr->show();
    m_title->setText(qs(s.TestTitle));
    m_spin->setText(qs(Format(s.DerivativeSpan, "0.##")));
    m_ddpk->setVisible(s.RateCount > 1);
    m_ddpk->setCurrentIndex(s.SemilogPlotKind == kSuperpositionPlot ? 1 : 0);
    for (QComboBox* list : {m_semipk, m_storpk, m_sqrpk, m_qtrpk})
        list->setCurrentIndex(-1);
    m_lineResults.clear();
    m_storageResult.reset();
    m_radiusResult.reset();
    m_validity.reset();
    showResults();
    m_semiLine = {};
    m_linearLine = {};
    m_bilinearLine = {};
    m_inputs = {};
    m_intervalStart.reset();
    m_transientMark.reset();
    m_drawn = false;
    redrawAll();
    m_drawn = true;
    // The end of the transient stored for a single-rate drawdown is shown again.
    drawStoredTransientMark(*m_semi, s, m_semiScales);
    if (s.ShutInFlag == 0 && s.RateCount == 1 && s.EndOfTransientTime > 0) {
        const double x = m_semiScales.x * (std::log10(s.EndOfTransientTime) - s.SemilogXMin);
        m_transientMark = Mark{x, 35, "<-- Transient"};
        m_transientMarkFromActivation = true;
    }
}

void SemilogScreen::redrawAll() {
    redrawStorage();
}

void SemilogScreen::redrawSemilog() {
    m_shownLine.reset();
    m_semiScales = DrawSemilogPlot(*m_semi, m_ctx.state);
    m_semipk->show();
}

void SemilogScreen::redrawStorage() {
    // The log-log plot is the screen's general redraw: it redraws the semilog plot too.
    DrawStoragePlot(*m_stor, m_ctx.state);
    m_storageEndMark.reset();
    m_transientStartMark.reset();
    m_linearEndMark.reset();
    m_oneCycleMark.reset();
    m_bilinearEndMark.reset();
    redrawSemilog();
}

void SemilogScreen::redrawLinear() {
    m_linearFrame = DrawLinearFlowPlot(*m_sqr, m_ctx.state, m_linearInterval);
    m_linearLine = {};
}

void SemilogScreen::redrawBilinear() {
    m_bilinearFrame = DrawBilinearFlowPlot(*m_qtr, m_ctx.state, m_bilinearInterval);
    m_bilinearLine = {};
}

void SemilogScreen::plotKindChosen(const QString& item) {
    AnalysisState& s = m_ctx.state;
    s.SemilogPlotKind = item.startsWith(QStringLiteral("Supe")) ? kSuperpositionPlot : kSemilogPlot;
    PrepareAnalysisData(s);
    // A line of the other plot kind means nothing here: it goes with its results.
    m_semiLine = {};
    m_lineResults.clear();
    m_validity.reset();
    showResults();
    redrawStorage();
}

void SemilogScreen::semilogOptionChosen(const QString& item) {
    const bool line = item == QStringLiteral("Straight Line");
    m_lineHint->setVisible(line);
    if (item == QStringLiteral("Redraw")) {
        m_semiLine.clickState = 0;
        redrawSemilog();
        m_transientMark.reset();
    } else if (line) {
        m_semiLine.clickState = 0;
    }
}

void SemilogScreen::storageOptionChosen(const QString& item) {
    m_storageHint->setVisible(item == QStringLiteral("Unit Slope"));
    m_intervalStart.reset();
    if (item == QStringLiteral("Redraw"))
        redrawStorage();
}

void SemilogScreen::linearOptionChosen(const QString& item) {
    const bool select = item == QStringLiteral("Select Half Slope");
    m_linearHint->setVisible(select);
    m_linearLine = {};
    if (item == QStringLiteral("Redraw"))
        redrawLinear();
    else if (item == QStringLiteral("Quit"))
        m_sqrpk->hide();
}

void SemilogScreen::bilinearOptionChosen(const QString& item) {
    const bool select = item == QStringLiteral("Select Quarter Slope");
    m_bilinearHint->setVisible(select);
    m_bilinearLine = {};
    if (item == QStringLiteral("Redraw"))
        redrawBilinear();
    else if (item == QStringLiteral("Quit"))
        m_qtrpk->hide();
}

void SemilogScreen::spacingEdited(const QString& text) {
    AnalysisState& s = m_ctx.state;
    s.DerivativeSpan = Val(text.toStdString());
    if (!(s.DerivativeSpan > 0))
        return; // stored, but a spacing of 0 or less computes nothing
    PrepareAnalysisData(s);
    // The derivative leaves the semilog series as it was: the line stays with its results.
    redrawStorage();
    drawSemilogLine();
}

void SemilogScreen::stepSpacing(double step) {
    const double span = std::max(0.05, m_ctx.state.DerivativeSpan + step);
    const QString text = qs(Format(span, "0.##"));
    m_spin->setText(text);
    spacingEdited(text);
}

void SemilogScreen::expandOrReduce() {
    m_expanded = m_expand->text() == QStringLiteral("Expand");
    m_expand->setText(m_expanded ? QStringLiteral("Reduce") : QStringLiteral("Expand"));
    // The semilog plot doubles in both directions over the other plots, and back.
    m_grid->removeWidget(m_semiPanel);
    if (m_expanded)
        m_grid->addWidget(m_semiPanel, 0, 0, 2, 2);
    else
        m_grid->addWidget(m_semiPanel, 0, 0);
    m_storPanel->setVisible(!m_expanded);
    if (m_expanded) {
        m_sqrPanel->hide();
        m_qtrPanel->hide();
    } else {
        m_sqrPanel->setVisible(m_linearFrame.pointCount > 0 && !m_sqrpk->isHidden());
        m_qtrPanel->setVisible(m_bilinearFrame.pointCount > 0 && !m_qtrpk->isHidden());
    }
    m_semiPanel->raise();
    centralWidget()->layout()->activate();
    redrawSemilog();
    drawSemilogLine();
}

void SemilogScreen::automaticTypeCurveMatching() {
    m_ctx.state.TypeCurveEstimateFlag = 1;
    m_ctx.screens.show(QStringLiteral("kv2"));
}

QImage SemilogScreen::printedPage() {
    if (!m_drawn) {
        // A page asked for before the screen was ever shown (batch export): the four
        // plots of the test as the navigation list prepares them, the flow plots over
        // the whole test, no picks.
        AnalysisState& s = m_ctx.state;
        s.SemilogPlotKind = s.RateCount > 1 ? kSuperpositionPlot : kSemilogPlot;
        PrepareAnalysisData(s);
        activate();
        TimeInterval whole{0, 0};
        for (int i = 1; i <= s.TestPointCount; ++i)
            whole.upper = std::max(whole.upper, 2 * s.TimeFunction[i]);
        m_linearInterval = m_bilinearInterval = whole;
        m_sqrPanel->show();
        m_qtrPanel->show();
        redrawLinear();
        redrawBilinear();
    }
    m_pageInfo->setText(pageSourceText(m_ctx.state.TestFileName, QDate::currentDate()));
    return formPage(*this, m_toolbar, m_heading);
}

void SemilogScreen::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    guarded([&] { cancelPicks(); });
    event->accept();
}

void SemilogScreen::cancelPicks() {
    for (auto [line, surface] : {std::pair{&m_semiLine, m_semi}, std::pair{&m_linearLine, m_sqr},
                                 std::pair{&m_bilinearLine, m_qtr}}) {
        if (line->clickState == 1) {
            cancelLine(*line);
            surface->dropTransient(); // the rubber band goes with the line
        }
    }
    m_intervalStart.reset();
    for (QLabel* h : {m_lineHint, m_storageHint, m_linearHint, m_bilinearHint})
        h->hide();
    for (QComboBox* list : {m_semipk, m_storpk, m_sqrpk, m_qtrpk})
        list->setCurrentIndex(-1);
}

void SemilogScreen::connectReadouts() {
    const AnalysisState& s = m_ctx.state;
    m_semi->setReadout(
        [this, &s](double x, double y) { return semilogReadout(s, m_semiScales, x, y); });
    m_stor->setReadout([&s](double x, double y) { return storageReadout(s, x, y); });
    m_sqr->setReadout(
        [this, &s](double x, double y) { return flowReadout(s, m_linearFrame, x, y); });
    m_qtr->setReadout(
        [this, &s](double x, double y) { return flowReadout(s, m_bilinearFrame, x, y); });
    for (PlotSurface* p : {m_semi, m_stor, m_sqr, m_qtr})
        connect(p, &PlotSurface::readoutChanged, statusBar(),
                [this](const QString& text) { statusBar()->showMessage(text); });
}

} // namespace zorvekan
