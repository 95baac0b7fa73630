// SPDX-License-Identifier: MIT
#pragma once

#include "core/straight_line.h"
#include "core/ui/EventGuard.h"
#include "core/ui/PrintService.h"
#include "core/ui/ScreenContext.h"
#include "core/ui/ScreenRegistry.h"
#include "review/cartesian_plot.h"
#include "review/data_grids.h"

#include <QMainWindow>

#include <array>
#include <utility>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;
class QToolBar;

namespace zorvekan {

class PlotSurface;

// inpsho, "Test Data": the test points, the rate history and the phase rates in three
// editable grids beside the Cartesian plot, where a drawdown's pseudosteady-state line
// gives the drainage radius. Every correction goes straight into the analysis state.
class TestDataScreen : public QMainWindow, public PrintablePage, public ShownHook {
    Q_OBJECT

public:
    explicit TestDataScreen(ScreenContext& context, QWidget* parent = nullptr);

    // Each time the screen comes to the front: heading, the options list for a
    // single-rate drawdown or injectivity test, hints and edit frame hidden, the phase
    // grid for two or more phases, then the plot drawn and the grids filled.
    void beforeShow() override;

    // Toolbar buttons and menu entries by key: "Return", "Edit", "Print", "Export", "Exit".
    void runCommand(const QString& key);

    QImage printedPage() override;

    const CartesianScales& scales() const { return m_scales; }
    const StraightLine& pssLine() const { return m_line; }
    int insertState() const { return m_insertState; }

Q_SIGNALS:
    // The rate history or the test points were corrected (counts, q and tp may differ).
    void dataCorrected();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildGridPanel();
    QWidget* buildPlotPanel();
    void buildCommands();
    template <class Handler> void guarded(Handler&& handler) {
        m_ctx.guard.run(this, std::forward<Handler>(handler));
    }

    void activate();
    void DrawCartesianPlot();
    void fillGrid(DataGrid g, GridFill fill);
    QTableWidget* grid(DataGrid g) const;
    DataGrid gridOf(const QObject* table) const;

    void gridClicked(DataGrid g, int row, int column);
    void acceptValue();
    void cancelEdit();
    void gridKey(DataGrid g, int key);
    void pasteInto(DataGrid g);
    void copyFrom(DataGrid g);

    void optionChosen(const QString& item);
    void plotMouseDown(double x, double y);
    void plotMouseMove(double x, double y);
    void completePssLine();

    ScreenContext& m_ctx;
    std::array<QTableWidget*, 3> m_grids{};
    PlotSurface* m_cart = nullptr;
    QComboBox* m_carto = nullptr;
    QGroupBox* m_frame = nullptr;
    QLineEdit* m_text = nullptr;
    QPushButton *m_accept = nullptr, *m_cancel = nullptr;
    QLabel *m_clickHint = nullptr, *m_lineHint = nullptr, *m_keysHint = nullptr,
           *m_heading = nullptr, *m_title = nullptr;
    QPlainTextEdit* m_results = nullptr;
    QToolBar* m_toolbar = nullptr;

    // The editing variables: the grid, row and column last clicked, the typed value and
    // the insert state (0 none, 1 a row was just inserted, 2 its first value is in).
    DataGrid m_editedGrid = DataGrid::TestPoints;
    int m_row = -1, m_column = -1;
    double m_typed = 0;
    int m_insertState = 0;

    bool m_drawn = false;   // the screen was shown (or its page drawn) once
    bool m_plotted = false; // the plot stands with valid scales
    CartesianScales m_scales;
    StraightLine m_line;
};

} // namespace zorvekan
