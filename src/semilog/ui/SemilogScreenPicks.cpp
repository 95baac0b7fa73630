// SPDX-License-Identifier: MIT
// The mouse picks of the semilog screen: the straight lines, the flow-regime marks
// and intervals, the storage coefficient and the end of the transient.
#include "semilog/ui/SemilogScreen.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/plot_frame.h"
#include "core/result_line.h"
#include "core/ui/EventGuard.h"
#include "core/ui/PlotSurface.h"
#include "core/ui/ScreenContext.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include <cmath>

namespace zorvekan {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

bool chosen(const QComboBox* list, const char* item) {
    return !list->isHidden() && list->currentText() == QString::fromUtf8(item);
}

// Where the semilog straight line is valid: red marks, or near-white to erase them.
void drawValidityMarks(Canvas& c, const ValidityMarks& marks, bool erase = false) {
    c.setPenColor(erase ? kNearWhite : kDerivativeRed);
    c.setPenWidth(1);
    for (const auto& [x, label] :
         {std::pair{marks.startX, "start"}, std::pair{marks.endX, "end"}}) {
        c.line(x, 53, x, 57);
        c.text(x - 6, 61, label);
    }
    c.setPenColor(kBlack);
}

} // namespace

// ---- semilog plot ----

void SemilogScreen::semilogMouseDown(double x, double y) {
    if (chosen(m_semipk, "Straight Line")) {
        if (lineMouseDown(m_semiLine, x, y) == LineClick::Completed)
            completeSemilogLine();
    } else if (chosen(m_semipk, "End of Transient")) {
        pickTransient(x, y);
    }
}

void SemilogScreen::semilogMouseMove(double x, double y) {
    if (!chosen(m_semipk, "Straight Line"))
        return;
    lineMouseMove(m_semiLine, *m_semi, x, y,
                  [&] { drawSemilogPoints(*m_semi, m_ctx.state, m_semiScales); });
}

void SemilogScreen::completeSemilogLine() {
    m_lineHint->hide();
    eraseSemilogLine();
    drawSemilogLine();
    computeResults();
}

// A new line replaces the one shown: drawn over in white with its validity marks, then
// the axes and points it crossed drawn again.
void SemilogScreen::eraseSemilogLine() {
    if (!m_shownLine)
        return;
    drawLineAcrossBox(*m_semi, *m_shownLine, kWhite);
    if (m_validity)
        drawValidityMarks(*m_semi, *m_validity, true);
    m_validity.reset();
    m_shownLine.reset();
    drawAxes(*m_semi);
    drawSemilogPoints(*m_semi, m_ctx.state, m_semiScales);
    m_semi->setPenColor(kBlack);
}

// The picked line in red across the whole plot, and where it is valid.
void SemilogScreen::drawSemilogLine() {
    if (!m_semiLine.complete)
        return;
    drawLineAcrossBox(*m_semi, m_semiLine, kDerivativeRed);
    m_shownLine = m_semiLine;
    if (m_validity)
        drawValidityMarks(*m_semi, *m_validity);
}

void SemilogScreen::computeResults() {
    if (!m_semiLine.complete)
        return;
    m_inputs.line = m_semiLine;
    m_inputs.scales = m_semiScales;
    const SemilogResults r = ComputeSemilogResults(m_ctx.state, m_inputs);
    m_lineResults = r.lines;
    m_radiusResult.reset(); // it was worked out from the permeability of the line before
    showResults();
    const bool moved = !m_validity || !r.marks || m_validity->startX != r.marks->startX ||
                       m_validity->endX != r.marks->endX;
    if (m_validity && moved)
        drawValidityMarks(*m_semi, *m_validity, true);
    if (r.marks && moved)
        drawValidityMarks(*m_semi, *r.marks);
    m_validity = r.marks;
    m_matching->show();
}

void SemilogScreen::showResults() {
    m_results->clear();
    for (const std::string& line : m_lineResults)
        m_results->appendPlainText(qs(line));
    for (const auto& extra : {m_storageResult, m_radiusResult})
        if (extra)
            m_results->appendPlainText(qs(*extra));
}

void SemilogScreen::pickTransient(double x, double y) {
    AnalysisState& s = m_ctx.state;
    if (m_transientMark && s.ShutInFlag == 0 && s.RateCount == 1) {
        // Only one end of the transient on a drawdown: the previous mark goes.
        const Mark& old = *m_transientMark;
        m_semi->setPenColor(kNearWhite);
        if (m_transientMarkFromActivation) {
            m_semi->line(old.x, 31, old.x, 39);
            m_semi->text(old.x - 14, 45, old.label);
        } else {
            drawPickMark(*m_semi, old.x, old.y, old.label, true);
        }
        m_semi->setPenColor(kBlack);
    }
    const TransientPick pick = pickEndOfTransient(s, x, m_semiScales);
    drawPickMark(*m_semi, x, y, pick.markLabel);
    m_transientMark = Mark{x, y, pick.markLabel};
    m_transientMarkFromActivation = false;
    m_radiusResult = pick.radiusLine;
    showResults();
}

// ---- log-log plot ----

void SemilogScreen::replaceMark(PlotSurface& surface, std::optional<Mark>& mark, double x, double y,
                                const std::string& label) {
    if (mark)
        drawPickMark(surface, mark->x, mark->y, mark->label, true);
    drawPickMark(surface, x, y, label);
    mark = Mark{x, y, label};
}

void SemilogScreen::storageMouseDown(double x, double y) {
    AnalysisState& s = m_ctx.state;
    if (chosen(m_storpk, "Unit Slope")) {
        const StorageClick click = storagePointAt(s, x, y);
        s.WellboreStorage = wellboreStorageAt(s, click);
        // A second pick is a better aim at the same line: it replaces the first.
        m_storageResult =
            resultLine("Wellbore Storage =", Format(s.WellboreStorage, "#.####"), " bbl/psi.");
        showResults();
    } else if (chosen(m_storpk, "End of Storage")) {
        replaceMark(*m_stor, m_storageEndMark, x, y, "<-- Storage");
    } else if (chosen(m_storpk, "Start of Transient")) {
        replaceMark(*m_stor, m_transientStartMark, x, y, "Transient -->");
    } else if (chosen(m_storpk, "Half Slope")) {
        pickFlowInterval(x, y, true);
    } else if (chosen(m_storpk, "Quarter Slope")) {
        pickFlowInterval(x, y, false);
    }
}

void SemilogScreen::pickFlowInterval(double x, double y, bool linear) {
    AnalysisState& s = m_ctx.state;
    StorageClick click = storagePointAt(s, x, y);
    if (!m_intervalStart) {
        m_intervalStart = click;
        return;
    }
    const StorageClick first = *m_intervalStart;
    m_intervalStart.reset();
    const TimeInterval interval = orderedInterval(first.plottedTime, click.plottedTime);
    // The later end is the one marked; its position is that of whichever click it was.
    const bool secondIsLater = click.plottedTime >= first.plottedTime;
    const StorageClick later = secondIsLater ? click : first;
    const double laterX = s.StorageScale * (Log10(later.plottedTime) - s.StorageXMin);
    const double laterY = s.StorageScale * (Log10(later.deltaP) - s.StorageYMin);
    if (linear) {
        replaceMark(*m_stor, m_linearEndMark, laterX, laterY, "End Linear");
        replaceMark(*m_stor, m_oneCycleMark, oneCycleMarkX(s, later.plottedTime), laterY,
                    "1 cycle");
        m_linearInterval = interval;
        m_sqrPanel->show();
        m_sqrpk->show();
        m_sqrpk->setCurrentIndex(-1);
        redrawLinear();
    } else {
        replaceMark(*m_stor, m_bilinearEndMark, laterX, laterY, "End Bilinear");
        m_inputs.endBilinearDeltaP = later.deltaP;
        m_bilinearInterval = interval;
        m_qtrPanel->show();
        m_qtrpk->show();
        m_qtrpk->setCurrentIndex(-1);
        redrawBilinear();
    }
}

// ---- linear and bilinear flow plots ----

namespace {

// Slope |dy/dx| in data units and the zero-time intercept, taken with |slope| even
// when the line falls (the program's flow plots have always done so).
std::pair<double, double> flowLineResult(const StraightLine& line, const FlowPlotFrame& f) {
    const double slope = std::fabs(lineSlope(line, f.scales.x, f.scales.y));
    return {slope, lineIntercept(line, slope, f.xMin, f.scales.x, f.yMin, f.scales.y)};
}

} // namespace

void SemilogScreen::linearMouseDown(double x, double y) {
    if (!chosen(m_sqrpk, "Select Half Slope"))
        return;
    if (lineMouseDown(m_linearLine, x, y) != LineClick::Completed)
        return;
    m_linearHint->hide();
    m_sqrpk->hide();
    drawLineAcrossBox(*m_sqr, m_linearLine, kDerivativeRed);
    std::tie(m_inputs.linearSlope, m_inputs.linearIntercept) =
        flowLineResult(m_linearLine, m_linearFrame);
    computeResults();
}

void SemilogScreen::linearMouseMove(double x, double y) {
    if (!chosen(m_sqrpk, "Select Half Slope"))
        return;
    lineMouseMove(m_linearLine, *m_sqr, x, y,
                  [&] { drawFlowPoints(*m_sqr, m_ctx.state, m_linearInterval, m_linearFrame); });
}

void SemilogScreen::bilinearMouseDown(double x, double y) {
    if (!chosen(m_qtrpk, "Select Quarter Slope"))
        return;
    if (lineMouseDown(m_bilinearLine, x, y) != LineClick::Completed)
        return;
    m_bilinearHint->hide();
    m_qtrpk->hide();
    drawLineAcrossBox(*m_qtr, m_bilinearLine, kDerivativeRed);
    m_inputs.bilinearSlope = flowLineResult(m_bilinearLine, m_bilinearFrame).first;
    computeResults();
}

void SemilogScreen::bilinearMouseMove(double x, double y) {
    if (!chosen(m_qtrpk, "Select Quarter Slope"))
        return;
    lineMouseMove(m_bilinearLine, *m_qtr, x, y, [&] {
        drawFlowPoints(*m_qtr, m_ctx.state, m_bilinearInterval, m_bilinearFrame);
    });
}

} // namespace zorvekan
