// SPDX-License-Identifier: MIT
#pragma once

#include "core/plot_frame.h"
#include "core/ui/PrintService.h"
#include "core/ui/ScreenRegistry.h"
#include "typecurve/library_file.h"
#include "typecurve/type_curve_match.h"
#include "typecurve/type_curve_plot.h"

#include <QMainWindow>

#include <optional>

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QToolBar;

namespace zorvekan {

class PlotSurface;
struct ScreenContext;

// kv2, "Type Curve Analysis": the test's pressure change and derivative over a family of
// type curves (tcrv); the engineer shifts the data onto a curve, picks the curve and a match
// point, and reads permeability, skin, fracture half-length or omega and lambda.
class TypeCurveScreen : public QMainWindow, public PrintablePage, public ShownHook {
    Q_OBJECT

public:
    explicit TypeCurveScreen(ScreenContext& context, QWidget* parent = nullptr);

    // Each time the screen comes to the front: the family of TypeCurveModel with the data
    // placed from the semilog estimates (or at the corner), the preselected curve, no results.
    void beforeShow() override;

    // Toolbar buttons and menu entries by key: "Return", "Print", "Export", "Exit".
    void runCommand(const QString& key);

    QImage printedPage() override;

    // Where things stand, for the engineer's own checks and the tests.
    const TypeCurveView& view() const { return m_view; }
    TypeCurveGrid grid() const { return typeCurveGrid(m_view.model); }
    const std::optional<TypeCurveResults>& results() const { return m_results; }

private:
    enum class DualStep { None, Descending, Ascending };

    QWidget* buildSidePanel();
    void buildCommands();
    template <class Handler> void guarded(Handler&& handler);
    LibraryLocation library() const;

    void activate();
    void startModel(std::optional<int> keptCurve);
    void redraw();
    void redrawAndHidePrompt();
    void showLines(const TypeCurveResults& r);
    void prompt(const QString& text, const char* background);

    void modelChosen(int row);
    void operationChosen(const QString& item);
    void spacingEdited(const QString& text);
    void stepSpacing(double step);
    void endDualSequence();

    void mouseDown(double x, double y);
    void shiftClick(double x, double y);
    void selectCurve(double x, double y);
    void selectMatchPoint(double x, double y);
    void pickTransition(double x, double y);

    // "Refine by Regression": the matched model fitted to the whole test from the match.
    void refineByRegression();

    ScreenContext& m_ctx;
    PlotSurface* m_tcrv = nullptr;
    QListWidget *m_operations = nullptr, *m_models = nullptr;
    QLineEdit* m_spin = nullptr;
    QLabel *m_curvePrompt = nullptr, *m_shiftPrompt = nullptr, *m_movePrompt = nullptr,
           *m_heading = nullptr;
    QPlainTextEdit* m_resultBox = nullptr;
    QPushButton* m_regress = nullptr;
    QToolBar* m_toolbar = nullptr;

    bool m_activated = false;
    TypeCurveView m_view;
    int m_shiftState = 0; // 0 waiting for the shift point, 1 for the target point
    double m_shiftX = 0, m_shiftY = 0;
    DualStep m_dualStep = DualStep::None;
    int m_descendingCurve = 0;
    std::optional<TypeCurveResults> m_results;
    // The lines of the last regression and those of the match it refined: printed after the
    // match's own lines while that match is shown.
    std::vector<std::string> m_regressionLines, m_regressedMatch;
};

} // namespace zorvekan
