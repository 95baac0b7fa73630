// SPDX-License-Identifier: MIT
// The mouse picks of the type-curve screen: shifting the data, picking a curve, the match
// point and the dual-porosity transition curves.
#include "typecurve/ui/TypeCurveScreen.h"

#include "core/ui/MessageService.h"
#include "core/ui/PlotSurface.h"
#include "core/ui/ScreenContext.h"
#include "core/version.h"
#include "typecurve/curve_parameters.h"

#include <QLabel>
#include <QListWidget>

namespace zorvekan {

namespace {

constexpr const char* kTransitionYellow = "rgb(255, 223, 87)";

const QString kDescendingPrompt = QStringLiteral("Click on a Descending Transition Curve (P1)");
const QString kAscendingPrompt = QStringLiteral("Click on an Ascending Transition Curve (P2)");

} // namespace

void TypeCurveScreen::mouseDown(double x, double y) {
    if (m_dualStep != DualStep::None) {
        pickTransition(x, y);
        return;
    }
    const QListWidgetItem* item = m_operations->currentItem();
    const QString operation = item ? item->text() : QString();
    if (operation == QStringLiteral("Shift Data"))
        shiftClick(x, y);
    else if (operation == QStringLiteral("Select Type Curve"))
        selectCurve(x, y);
    else if (operation == QStringLiteral("Select Match Point"))
        selectMatchPoint(x, y);
}

void TypeCurveScreen::shiftClick(double x, double y) {
    if (m_shiftState == 0) {
        m_shiftX = x;
        m_shiftY = y;
        m_shiftPrompt->hide();
        m_movePrompt->show();
        m_shiftState = 1;
        return;
    }
    m_movePrompt->hide();
    m_shiftState = 0;
    m_view.placement.sx += x - m_shiftX;
    m_view.placement.sy += y - m_shiftY;
    m_view.matchMark.reset();
    redrawAndHidePrompt();
    m_shiftPrompt->show(); // ready for the next shift
}

void TypeCurveScreen::selectCurve(double x, double y) {
    const LibraryFile family = familyFile(m_view.model);
    const auto hit = hitTestCurve(library().of(family), family, grid(), x, y);
    if (!hit)
        return; // a miss keeps the curve picked before
    m_view.selectedCurve = hit;
    m_view.highlights.clear();
    redrawAndHidePrompt();
}

void TypeCurveScreen::selectMatchPoint(double x, double y) {
    if (!m_view.selectedCurve) {
        m_ctx.messages.show(this, MessageService::Kind::Information,
                            QString::fromUtf8(kProgramTitle),
                            QStringLiteral("Select Type Curve first: the match needs the curve "
                                           "the data lie on."));
        return;
    }
    const MatchPoint match = matchPointAt(grid(), m_view.placement, x, y);
    m_results = ComputeMatchResults(m_ctx.state, m_view.model, *m_view.selectedCurve, match);
    showLines(*m_results);
    m_view.matchMark = {x, y};
    m_view.highlights.clear();
    if (m_view.model == kDualPorosityModel) {
        // The transition curves alone over the matched curve, so they are told apart from
        // the derivative curves of the family.
        m_view.familyShown = false;
        m_view.transitionsShown = true;
        m_dualStep = DualStep::Descending;
        prompt(kDescendingPrompt, kTransitionYellow);
    }
    redraw();
}

// The transition curves cross one another; a click is taken for a curve of the group asked
// for when one lies under it, and refused with a prompt when only the other group's does.
void TypeCurveScreen::pickTransition(double x, double y) {
    const bool wantDescending = m_dualStep == DualStep::Descending;
    const int lastCurve = libraryCurveCount(LibraryFile::TwoType);
    const auto hitIn = [&](int first, int last) {
        return hitTestCurve(library().of(LibraryFile::TwoType), LibraryFile::TwoType, grid(), x, y,
                            first, last);
    };
    const auto wanted = wantDescending ? hitIn(kFirstDescendingCurve, kFirstAscendingCurve - 1)
                                       : hitIn(kFirstAscendingCurve, lastCurve);
    if (!wanted) {
        const auto other = wantDescending ? hitIn(kFirstAscendingCurve, lastCurve)
                                          : hitIn(kFirstDescendingCurve, kFirstAscendingCurve - 1);
        if (other)
            prompt(wantDescending ? QStringLiteral("That curve rises. ") + kDescendingPrompt
                                  : QStringLiteral("That curve falls. ") + kAscendingPrompt,
                   kTransitionYellow);
        return;
    }
    if (wantDescending) {
        m_descendingCurve = *wanted;
        m_view.highlights = {{LibraryFile::TwoType, *wanted}};
        m_dualStep = DualStep::Ascending;
        prompt(QString::fromStdString(curveLabel(LibraryFile::TwoType, *wanted)) +
                   QStringLiteral(". ") + kAscendingPrompt,
               kTransitionYellow);
        redraw();
        return;
    }
    m_results = ComputeDualPorosityResults(m_ctx.state, *m_results, m_descendingCurve, *wanted);
    showLines(*m_results);
    const DualPorosityResults& d = *m_results->dual;
    m_view.highlights = {{LibraryFile::TwoType, m_descendingCurve},
                         {LibraryFile::TwoType, *wanted},
                         {LibraryFile::OneType, d.lateCurve},
                         {LibraryFile::TwoType, d.transitionCurve}};
    // The matched model alone: early and late curves, the picked transitions and the
    // pressure transition curve of Le-2s over the data; Redraw brings the family back.
    m_dualStep = DualStep::None;
    m_view.familyShown = false;
    m_view.transitionsShown = false;
    redrawAndHidePrompt();
}

// Choosing another operation abandons transition picks still to be made.
void TypeCurveScreen::endDualSequence() {
    if (m_dualStep == DualStep::None)
        return;
    m_dualStep = DualStep::None;
    m_view.familyShown = true;
    m_view.transitionsShown = false;
    m_view.highlights.clear();
    redraw();
}

} // namespace zorvekan
