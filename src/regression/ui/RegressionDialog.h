// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "regression/well_fit.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace zorvekan {

// regr, "Refine by Regression": what the fit is to do before it runs — the model (the matched
// family's by default), the window of test times fitted (empty ends: the whole test), the
// initial pressure (p* for a shut-in test) held at a value or fitted, and the weight of the log
// derivative beside the pressures. "Fit" is refused, with the reason shown under the boxes,
// while a window is empty or reversed or a held pressure is not above 0.
class RegressionDialog : public QDialog {
    Q_OBJECT

public:
    RegressionDialog(const AnalysisState& s, WellModelKind model, QWidget* parent = nullptr);

    // The fit asked for, without start values (the screen adds its match).
    FitRequest request() const { return m_request; }

private:
    void fitClicked();

    QComboBox* m_model = nullptr;  // regrModel
    QLineEdit* m_from = nullptr;   // regrFrom, hours
    QLineEdit* m_to = nullptr;     // regrTo, hours
    QCheckBox* m_fixPi = nullptr;  // regrFixPi
    QLineEdit* m_pi = nullptr;     // regrPi
    QLineEdit* m_weight = nullptr; // regrWeight
    QLabel* m_error = nullptr;     // regrError
    FitRequest m_request;
};

} // namespace zorvekan
