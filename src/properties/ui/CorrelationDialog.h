// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;
class QListWidget;

namespace zorvekan {

struct ScreenContext;

// Corch: the choice of the oil correlation, the gas kind, the formation-compressibility
// correlation and the rock class the property calculator uses. Oil and gas choices are
// stored as codes in the state (by the first three characters of the item); every
// choice is also reported to the calculator's "Correlation Selected" column.
class CorrelationDialog : public QDialog {
    Q_OBJECT

public:
    enum class Line { Oil, Gas, Formation, RockClass };

    explicit CorrelationDialog(ScreenContext& context, QWidget* parent = nullptr);

Q_SIGNALS:
    void correlationSelected(zorvekan::CorrelationDialog::Line line, const QString& text);
    // The dialog was closed by its button; the calculator takes the focus back.
    void returnedToCalculator();

private:
    void oilChosen(const QString& text);
    void gasChosen(const QString& text);
    void formationChosen(const QString& text);

    ScreenContext& m_ctx;
    QListWidget* m_oil;       // Oilch
    QListWidget* m_gas;       // Gasch
    QListWidget* m_formation; // Forch
    QListWidget* m_rocks;     // Rocks
};

} // namespace zorvekan
