// SPDX-License-Identifier: MIT
#pragma once

#include "input/import_survey.h"
#include "input/importer.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zorvekan {

// importSetup: shown by Import for a file that is not plain time/pressure pairs (a gauge
// record of dates and times, or more than two columns), before anything is imported.
// It shows the first lines of the file and what the survey found (time form, columns),
// and asks for the pressure column, the order of day and month when the dates cannot
// tell it, and the start of the analysed period: the first reading by default, the
// largest pressure jump of the record offered as the shut-in. "Import" is enabled
// while the start can be read.
class ImportSetupDialog : public QDialog {
    Q_OBJECT

public:
    // `expectRise`: the analysed period starts with a pressure rise (a buildup or an
    // injectivity test) rather than a fall (a drawdown or a falloff).
    ImportSetupDialog(const ImportSurvey& survey, const QString& fileName, bool expectRise,
                      bool minutes, QWidget* parent = nullptr);

    // The choices, for the import.
    ImportOptions options() const;

private:
    QWidget* buildPreview();
    void pressureColumnChosen();
    void check();
    int chosenColumn() const;
    DateOrder chosenOrder() const;

    const ImportSurvey& m_survey;
    bool m_expectRise;
    QComboBox* m_pressureColumn = nullptr; // pressureColumn
    QComboBox* m_dateOrder = nullptr;      // dateOrder
    QLineEdit* m_start = nullptr;          // startText
    QPushButton* m_jump = nullptr;         // largestJump
    QLabel* m_problem = nullptr;           // startProblem
    QPushButton* m_accept = nullptr;       // acceptImport
};

} // namespace zorvekan
