// SPDX-License-Identifier: MIT
#include "review/ui/TestDataScreen.h"

#include "core/ui/EventGuard.h"
#include "core/ui/PlotSurface.h"
#include "core/ui/ScreenContext.h"
#include "input/input_screen_rules.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace zorvekan {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

QLabel* hint(const char* name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromUtf8(name));
    label->setStyleSheet(QStringLiteral("color: #a00000;"));
    label->hide();
    return label;
}

} // namespace

TestDataScreen::TestDataScreen(ScreenContext& context, QWidget* parent)
    : QMainWindow(parent), m_ctx(context) {
    setObjectName(QStringLiteral("inpsho"));
    setWindowTitle(QStringLiteral("Test Data"));
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* outer = new QVBoxLayout(central);
    m_heading = new QLabel(QStringLiteral("Well Test: Test Data"), central);
    m_heading->setObjectName(QStringLiteral("Label5"));
    m_heading->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 14pt;"));
    m_heading->hide();
    m_title = new QLabel(central);
    m_title->setObjectName(QStringLiteral("Label3"));
    m_title->setStyleSheet(QStringLiteral("font-weight: bold;"));
    outer->addWidget(m_heading);
    outer->addWidget(m_title);
    auto* row = new QHBoxLayout;
    row->addWidget(buildGridPanel(), 2);
    row->addWidget(buildPlotPanel(), 3);
    outer->addLayout(row, 1);
    buildCommands();
    resize(1280, 800);
}

QWidget* TestDataScreen::buildPlotPanel() {
    auto* panel = new QWidget(centralWidget());
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    m_cart = new PlotSurface(panel);
    m_cart->setObjectName(QStringLiteral("cart"));
    m_cart->setMinimumSize(520, 360);
    m_carto = new QComboBox(panel);
    m_carto->setObjectName(QStringLiteral("carto"));
    m_carto->addItems({QStringLiteral("End of Transient"), QStringLiteral("Start PSS"),
                       QStringLiteral("PSS Straight Line"), QStringLiteral("Redraw")});
    m_carto->setCurrentIndex(-1);
    m_carto->setPlaceholderText(QStringLiteral("Choose..."));
    m_carto->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_lineHint = hint("Label2", QStringLiteral("Click on Each End to Create Line"), panel);
    m_results = new QPlainTextEdit(panel);
    m_results->setObjectName(QStringLiteral("Picture1"));
    m_results->setReadOnly(true);
    m_results->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_results->setFixedHeight(m_results->fontMetrics().lineSpacing() * 3);
    m_results->hide();
    auto* options = new QHBoxLayout;
    options->addWidget(m_carto);
    options->addWidget(m_lineHint);
    options->addStretch(1);
    layout->addWidget(m_cart, 1);
    layout->addLayout(options);
    layout->addWidget(m_results);

    connect(m_carto, &QComboBox::activated, this,
            [this](int i) { guarded([&] { optionChosen(m_carto->itemText(i)); }); });
    connect(m_cart, &PlotSurface::mouseDown, this,
            [this](Qt::MouseButton, double x, double y) { guarded([&] { plotMouseDown(x, y); }); });
    connect(m_cart, &PlotSurface::mouseMove, this, [this](Qt::MouseButtons, double x, double y) {
        guarded([&] { plotMouseMove(x, y); });
    });
    return panel;
}

void TestDataScreen::buildCommands() {
    auto command = [this](const char* key, const char* text) {
        auto* action = new QAction(QString::fromUtf8(text), this);
        action->setObjectName(QString::fromUtf8(key));
        action->setData(QString::fromUtf8(key));
        const QString k = QString::fromUtf8(key);
        connect(action, &QAction::triggered, this, [this, k] { runCommand(k); });
        return action;
    };
    QAction* back = command("Return", "&Return");
    QAction* edit = command("Edit", "&Edit");
    QAction* print = command("Print", "&Print");
    QAction* exportPage = command("Export", "&Export...");
    QAction* exit = command("Exit", "E&xit");
    print->setShortcut(QKeySequence::Print);
    back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    edit->setIcon(style()->standardIcon(QStyle::SP_FileDialogDetailedView));
    exit->setIcon(style()->standardIcon(QStyle::SP_DialogCloseButton));
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addActions({back, edit, print, exportPage});
    file->addSeparator();
    file->addAction(exit);
    m_toolbar = addToolBar(QStringLiteral("Commands"));
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setMovable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolbar->addActions({back, edit, print, exit});
}

void TestDataScreen::runCommand(const QString& key) {
    guarded([&] {
        if (key == QStringLiteral("Return")) {
            hide();
            m_ctx.screens.show(QStringLiteral("inp"));
        } else if (key == QStringLiteral("Edit")) {
            m_clickHint->show();
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

void TestDataScreen::beforeShow() {
    guarded([&] { activate(); });
}

void TestDataScreen::activate() {
    const AnalysisState& s = m_ctx.state;
    m_drawn = true;
    m_title->setText(qs(s.TestTitle));
    setWindowTitle(QStringLiteral("Test Data"));
    const bool flowing = s.ShutInFlag == 0 && s.RateCount == 1;
    m_carto->setVisible(flowing);
    for (QWidget* w : {static_cast<QWidget*>(m_clickHint), static_cast<QWidget*>(m_lineHint),
                       static_cast<QWidget*>(m_frame), static_cast<QWidget*>(m_keysHint)})
        w->hide();
    grid(DataGrid::PhaseRates)->setVisible(s.FluidFlags >= kOilGas);
    DrawCartesianPlot();
}

void TestDataScreen::DrawCartesianPlot() {
    // The grids first: a test the plot cannot draw (one point, a flat record) can still
    // be corrected in them.
    for (DataGrid g : {DataGrid::TestPoints, DataGrid::Rates, DataGrid::PhaseRates})
        fillGrid(g, GridFill::Full);
    m_plotted = false;
    try {
        m_scales = zorvekan::DrawCartesianPlot(*m_cart, m_ctx.state);
    } catch (...) {
        m_cart->clear();
        throw;
    }
    m_plotted = true;
}

void TestDataScreen::optionChosen(const QString& item) {
    if (item == QStringLiteral("PSS Straight Line")) {
        m_lineHint->show();
    } else if (item == QStringLiteral("Redraw")) {
        m_results->clear();
        DrawCartesianPlot();
    }
}

void TestDataScreen::plotMouseDown(double x, double y) {
    if (!m_plotted || m_carto->isHidden())
        return;
    AnalysisState& s = m_ctx.state;
    const QString item = m_carto->currentText();
    if (item == QStringLiteral("End of Transient")) {
        markEndOfTransient(*m_cart, s, m_scales, x, y);
    } else if (item == QStringLiteral("Start PSS")) {
        markStartOfPss(*m_cart, s, m_scales, x, y);
    } else if (item == QStringLiteral("PSS Straight Line")) {
        if (lineMouseDown(m_line, x, y) == LineClick::Completed)
            completePssLine();
    }
}

void TestDataScreen::plotMouseMove(double x, double y) {
    if (!m_plotted)
        return;
    lineMouseMove(m_line, *m_cart, x, y,
                  [&] { drawCartesianPoints(*m_cart, m_ctx.state, m_scales); });
}

void TestDataScreen::completePssLine() {
    drawStraightLine(*m_cart, m_line, kPurple);
    const PssResult r = pssDrainageRadius(m_ctx.state, m_line, m_scales);
    m_results->show();
    m_lineHint->hide();
    m_results->clear();
    m_results->appendPlainText(qs(r.line));
}

QImage TestDataScreen::printedPage() {
    if (!m_drawn) {
        // A page asked for before the screen was ever shown (batch export): the test as
        // the navigation list prepares it, no picks.
        prepareForAnalysisScreen(m_ctx.state);
        activate();
    }
    return formPage(*this, m_toolbar, m_heading);
}

} // namespace zorvekan
