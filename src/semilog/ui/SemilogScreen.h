// SPDX-License-Identifier: MIT
#pragma once

#include "core/straight_line.h"
#include "core/ui/PrintService.h"
#include "core/ui/ScreenRegistry.h"
#include "semilog/semilog_plots.h"
#include "semilog/semilog_results.h"
#include "semilog/storage_picks.h"

#include <QMainWindow>

#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QKeyEvent;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QToolBar;

namespace zorvekan {

class PlotSurface;
struct ScreenContext;

// kv1, "Semilog Analysis": the test on four plots — semilog or superposition (semi),
// log-log with the derivative (Stor), linear flow (sqrslp) and bilinear flow
// (qtrslp) — with the picks that give permeability, skin, storage, fracture and
// average-pressure results.
class SemilogScreen : public QMainWindow, public PrintablePage, public ShownHook {
    Q_OBJECT

public:
    explicit SemilogScreen(ScreenContext& context, QWidget* parent = nullptr);

    // Each time the screen comes to the front: plots redrawn from the prepared series,
    // picks and results cleared, flow plots hidden.
    void beforeShow() override;

    // Escape gives up a line whose first end is placed and any pick under way.
    void cancelPicks();

    // Toolbar buttons and menu entries by key: "Return", "Print", "Export", "Exit".
    void runCommand(const QString& key);

    QImage printedPage() override;

    // Where things stand, for the engineer's own checks and the tests.
    const StraightLine& semilogLine() const { return m_semiLine; }
    const PlotScales& semilogScales() const { return m_semiScales; }
    const FlowPlotFrame& linearFrame() const { return m_linearFrame; }
    const FlowPlotFrame& bilinearFrame() const { return m_bilinearFrame; }
    const TimeInterval& linearInterval() const { return m_linearInterval; }
    const TimeInterval& bilinearInterval() const { return m_bilinearInterval; }
    double linearSlope() const { return m_inputs.linearSlope; }
    double linearIntercept() const { return m_inputs.linearIntercept; }
    double bilinearSlope() const { return m_inputs.bilinearSlope; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // A green or red mark drawn on a plot, kept so that it can be erased.
    struct Mark {
        double x = 0, y = 0;
        std::string label;
    };

    void buildPlots(QGridLayout* grid);
    QWidget* buildSidePanel();
    void buildCommands();
    template <class Handler> void guarded(Handler&& handler);

    void activate();
    void redrawAll();
    void redrawSemilog();
    void redrawStorage();
    void redrawLinear();
    void redrawBilinear();

    void plotKindChosen(const QString& item);
    void semilogOptionChosen(const QString& item);
    void storageOptionChosen(const QString& item);
    void linearOptionChosen(const QString& item);
    void bilinearOptionChosen(const QString& item);
    void spacingEdited(const QString& text);
    void stepSpacing(double step);
    void expandOrReduce();
    void automaticTypeCurveMatching();

    void semilogMouseDown(double x, double y);
    void semilogMouseMove(double x, double y);
    void storageMouseDown(double x, double y);
    void linearMouseDown(double x, double y);
    void linearMouseMove(double x, double y);
    void bilinearMouseDown(double x, double y);
    void bilinearMouseMove(double x, double y);

    void connectReadouts();
    void completeSemilogLine();
    void drawSemilogLine();
    void eraseSemilogLine();
    void pickTransient(double x, double y);
    void pickFlowInterval(double x, double y, bool linear);
    void replaceMark(PlotSurface& surface, std::optional<Mark>& mark, double x, double y,
                     const std::string& label);
    void computeResults();
    void showResults();

    ScreenContext& m_ctx;
    PlotSurface *m_semi = nullptr, *m_stor = nullptr, *m_sqr = nullptr, *m_qtr = nullptr;
    QWidget *m_semiPanel = nullptr, *m_storPanel = nullptr, *m_sqrPanel = nullptr,
            *m_qtrPanel = nullptr;
    QGridLayout* m_grid = nullptr;
    QComboBox *m_ddpk = nullptr, *m_semipk = nullptr, *m_storpk = nullptr, *m_sqrpk = nullptr,
              *m_qtrpk = nullptr;
    QLineEdit* m_spin = nullptr;
    QLabel *m_lineHint = nullptr, *m_title = nullptr, *m_storageHint = nullptr,
           *m_linearHint = nullptr, *m_bilinearHint = nullptr, *m_pageInfo = nullptr;
    QWidget* m_heading = nullptr; // the printed heading: Label5 and the page's source line
    QPushButton *m_matching = nullptr, *m_expand = nullptr;
    QPlainTextEdit* m_results = nullptr;
    QToolBar* m_toolbar = nullptr;

    bool m_drawn = false;
    bool m_expanded = false;
    PlotScales m_semiScales;
    StraightLine m_semiLine, m_linearLine, m_bilinearLine;
    SemilogInputs m_inputs;
    FlowPlotFrame m_linearFrame, m_bilinearFrame;
    TimeInterval m_linearInterval, m_bilinearInterval;
    std::optional<StorageClick> m_intervalStart;
    std::optional<Mark> m_transientMark, m_storageEndMark, m_transientStartMark, m_linearEndMark,
        m_oneCycleMark, m_bilinearEndMark;
    bool m_transientMarkFromActivation = false;

    // The results area: the semilog line's results, then the storage coefficient of
    // the latest unit-slope pick, then the radius of the latest end-of-transient pick.
    std::vector<std::string> m_lineResults;
    std::optional<std::string> m_storageResult, m_radiusResult;
    std::optional<ValidityMarks> m_validity; // of the line shown
    std::optional<StraightLine> m_shownLine; // the semilog line drawn on the plot
};

} // namespace zorvekan
