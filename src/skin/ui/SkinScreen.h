// SPDX-License-Identifier: MIT
#pragma once

#include "core/ui/PrintService.h"
#include "core/ui/ScreenRegistry.h"
#include "skin/skin_evaluation.h"

#include <QMainWindow>

#include <array>

class QCheckBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;
class QToolBar;

namespace zorvekan {

struct ScreenContext;

// skin, "Skin Factor Evaluation": splits the total skin of the analyses into the
// pseudo-skins of the completion (slant hole, partial penetration, partial completion,
// perforations) and the fracture skin, leaving the actual (damage) skin.
class SkinScreen : public QMainWindow, public PrintablePage, public ShownHook {
    Q_OBJECT

public:
    explicit SkinScreen(ScreenContext& context, QWidget* parent = nullptr);

    // Each time the screen comes to the front: net pay, total skin and wellbore radius
    // (inches) from the analysis state, where it holds them.
    void beforeShow() override;

    // Command1 "Calculate Skins".
    void calculate();

    // Toolbar buttons and menu entries by key: "Return", "Print", "Export", "Exit".
    void runCommand(const QString& key);

    QImage printedPage() override;

    const SkinInputs& inputs() const { return m_inputs; }

private:
    enum Box {
        Total,
        Radius,
        Ratio,
        Angle,
        NetPay,
        Penetrated,
        Completed,
        Density,
        Length,
        PerfRadius,
        BoxCount
    };

    QWidget* buildInputs();
    QGroupBox* buildCompletionFrame();
    QGroupBox* buildPhasingFrame();
    QWidget* buildResults();
    void buildCommands();
    template <class Handler> void guarded(Handler&& handler);

    void activate();
    void boxChanged(Box box, const QString& text);
    void completionChanged();
    void setStarting(Box box, double value, const char* mask);

    ScreenContext& m_ctx;
    SkinInputs m_inputs;
    bool m_activated = false;
    QFormLayout* m_form = nullptr;
    std::array<QLineEdit*, BoxCount> m_boxes{};
    std::array<QCheckBox*, 4> m_checks{};
    std::array<QRadioButton*, kPhasingCount> m_options{};
    QGroupBox* m_phasing = nullptr;
    QPlainTextEdit* m_results = nullptr;
    QLabel* m_heading = nullptr;
    QToolBar* m_toolbar = nullptr;
};

} // namespace zorvekan
