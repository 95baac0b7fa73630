// SPDX-License-Identifier: MIT
#pragma once

#include "core/ui/ScreenRegistry.h"
#include "properties/ui/CorrelationDialog.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace zorvekan {

struct ScreenContext;

// mox: the property calculator. The engineer types the gas gravity, pressure and
// temperature, chooses correlations on Corch, and "Calculate PVT Properties" shows the
// gas z-factor, FVF, compressibility, viscosity and density. A z-factor failure is
// written into the message box Text1, shown in a message box, and ends the program
// once the unsaved test is kept.
class PropertyCalculator : public QWidget, public ShownHook {
    Q_OBJECT

public:
    explicit PropertyCalculator(ScreenContext& context, QWidget* parent = nullptr);

    void beforeShow() override;

    void calculate();          // Command1 "Calculate PVT Properties"
    void selectCorrelations(); // Command2 "Select Correlations"

Q_SIGNALS:
    // A calculation ran: it may have changed properties the analyses use (the
    // z-factor routine keeps its B in OilFvf).
    void propertiesCalculated();

public Q_SLOTS:
    // A choice made on Corch, shown in the "Correlation Selected" column.
    void showCorrelation(zorvekan::CorrelationDialog::Line line, const QString& text);
    // Corch was closed: the focus comes back to the calculate button.
    void takeFocusBack();

private:
    ScreenContext& m_ctx;
    QLineEdit* m_gravity;
    QLineEdit* m_pressure;
    QLineEdit* m_temperature;
    QLabel* m_oilLine;
    QLabel* m_gasLine;
    QLabel* m_formationLine;
    QLabel* m_results;
    QLineEdit* m_message; // Text1
    QPushButton* m_calculate;
};

} // namespace zorvekan
