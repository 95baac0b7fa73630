// SPDX-License-Identifier: MIT
#pragma once

#include "core/ui/PrintService.h"
#include "core/ui/ScreenRegistry.h"
#include "properties/property_calculator.h"
#include "properties/ui/CorrelationDialog.h"

#include <QWidget>

#include <optional>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zorvekan {

struct ScreenContext;

// mox: the property calculator. The engineer types the oil and gas gravities, the
// solution GOR or bubble point, pressure, temperature, salinity, porosity and
// saturations, chooses correlations on Corch, and "Calculate PVT Properties" shows the
// gas (z-factor, FVF, compressibility, viscosity, density), the oil, the water, the
// formation and the total compressibility. A z-factor failure is written into the
// message box Text1, shown in a message box, and ends the program once the unsaved
// test is kept. "Copy to Input" types the properties the
// test's fluids need into the input screen's boxes, through their change rules.
class PropertyCalculator : public QWidget, public ShownHook, public PrintablePage {
    Q_OBJECT

public:
    explicit PropertyCalculator(ScreenContext& context, QWidget* parent = nullptr);

    void beforeShow() override;
    QImage printedPage() override;

    void calculate();          // Command1 "Calculate PVT Properties"
    void selectCorrelations(); // Command2 "Select Correlations"
    void copyToInput();        // Command4 "Copy to Input"

Q_SIGNALS:
    // A calculation ran: it may have changed properties the analyses use (the
    // z-factor routine keeps its B in OilFvf).
    void propertiesCalculated();

public Q_SLOTS:
    // A choice made on Corch, shown in the "Correlation Selected" column.
    void showCorrelation(zorvekan::CorrelationDialog::Line line, const QString& text);
    // Corch was closed: the focus comes back to the calculate button.
    void takeFocusBack();

Q_SIGNALS:
    // One input-screen box (by object name) and the text to type into it.
    void propertyCopied(const QString& objectName, const QString& text);

private:
    QWidget* buildInputs();
    QWidget* buildColumn();
    QWidget* buildResults();
    QWidget* buildCommands();
    PropertyInputs readInputs() const;
    void showCalculation(const PropertyCalculation& r);
    void showOilStandards(const std::string& standards);
    void showRockClassRow();

    ScreenContext& m_ctx;
    QLineEdit* m_api = nullptr;
    QLineEdit* m_gravity = nullptr;
    QLineEdit* m_gor = nullptr;
    QLineEdit* m_bubblePoint = nullptr;
    QLineEdit* m_pressure = nullptr;
    QLineEdit* m_temperature = nullptr;
    QLineEdit* m_salinity = nullptr;
    QComboBox* m_salinityUnit = nullptr;
    QLineEdit* m_porosity = nullptr;
    QLineEdit* m_oilSaturation = nullptr;
    QLineEdit* m_waterSaturation = nullptr;
    QLineEdit* m_gasSaturation = nullptr;
    QFormLayout* m_column = nullptr; // the "Correlation Selected" column
    QLabel* m_oilLine = nullptr;
    QLabel* m_oilStandards = nullptr;
    QLabel* m_gasLine = nullptr;
    QLabel* m_formationLine = nullptr;
    QLabel* m_rockLine = nullptr;
    QLabel* m_formationRemark = nullptr;
    QLabel* m_gasResults = nullptr;       // Picture1
    QLabel* m_oilResults = nullptr;       // Picture2
    QLabel* m_waterResults = nullptr;     // Picture3
    QLabel* m_formationResults = nullptr; // Picture4
    QLineEdit* m_message = nullptr;       // Text1
    QPushButton* m_calculate = nullptr;
    QString m_formation = QStringLiteral("Hall");
    QString m_rockClass;
    // The properties of the last calculation, until an input changes.
    std::optional<PhaseValues> m_values;
};

} // namespace zorvekan
