// SPDX-License-Identifier: MIT
// "Refine by Regression" on the type-curve screen: the matched model fitted to the whole test
// through its rate history, starting from the match.
#include "typecurve/ui/TypeCurveScreen.h"

#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "core/version.h"
#include "regression/ui/RegressionDialog.h"
#include "regression/well_fit.h"

#include <QCoreApplication>
#include <QProgressDialog>

#include <algorithm>

namespace zorvekan {

namespace {

WellModelKind fittedModel(int typeCurveModel) {
    switch (typeCurveModel) {
    case kDualPorosityModel:
        return WellModelKind::DualPss;
    case kVerticalFractureModel:
        return WellModelKind::FractureInfinite;
    default:
        return WellModelKind::Radial;
    }
}

// The search starts where the match put the reservoir: permeability, storage, skin, fracture
// half-length, omega and lambda, as far as the match gave them.
void startFromMatch(const TypeCurveResults& m, FitRequest& r) {
    const auto start = [&r](ModelParameter p, double value) {
        r.start[static_cast<std::size_t>(p)] = value;
    };
    if (m.permeability > 0)
        start(ModelParameter::Permeability, m.permeability);
    if (m.storage > 0)
        start(ModelParameter::Storage, m.storage);
    if (m.skin)
        start(ModelParameter::Skin, *m.skin);
    if (m.fractureHalfLength)
        start(ModelParameter::HalfLength, *m.fractureHalfLength);
    if (m.dual) {
        start(ModelParameter::Skin, m.dual->skin);
        if (m.dual->omega > 0 && m.dual->omega < 1)
            start(ModelParameter::Omega, m.dual->omega);
        if (m.dual->lambda > 0)
            start(ModelParameter::Lambda, m.dual->lambda);
    }
}

} // namespace

void TypeCurveScreen::refineByRegression() {
    if (!m_results)
        return;
    RegressionDialog dialog(m_ctx.state, fittedModel(m_view.model), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    FitRequest request = dialog.request();
    startFromMatch(*m_results, request);

    // Progress and Cancel appear once a fit has run half a second; the events are let through
    // after every iteration so that Cancel is heard.
    QProgressDialog progress(QStringLiteral("Fitting the model to the whole test..."),
                             QStringLiteral("Cancel"), 0, kMaxFitIterations, this);
    progress.setObjectName(QStringLiteral("regrProgress"));
    progress.setWindowTitle(QStringLiteral("Refine by Regression"));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(500);
    progress.setValue(0);
    const FitOutcome outcome = fitWellModel(m_ctx.state, request, [&progress](int iteration) {
        progress.setValue(std::min(iteration, kMaxFitIterations - 1));
        QCoreApplication::processEvents();
        return !progress.wasCanceled();
    });
    progress.reset();
    if (!outcome.result) {
        if (!outcome.cancelled)
            m_ctx.messages.show(this, MessageService::Kind::Warning,
                                QString::fromUtf8(kProgramTitle),
                                QString::fromStdString(outcome.message));
        return;
    }
    applyFit(m_ctx.state, *outcome.result);
    m_regressionLines = outcome.result->lines;
    m_regressedMatch = m_results->lines;
    showLines(*m_results);
    redraw();
}

} // namespace zorvekan
