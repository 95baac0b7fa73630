// SPDX-License-Identifier: MIT
#pragma once

#include "core/ui/PrintService.h"
#include "input/input_rules.h"
#include "input/input_screen_rules.h"
#include "input/ui/TestFileCommands.h"
#include "input/ui/TestFileSession.h"

#include <QMainWindow>

#include <array>

class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;
class QToolBar;

namespace zorvekan {

struct ScreenContext;

// inp: the main screen on which the engineer describes the test (title, test type,
// fluids, time units, reservoir and fluid properties) and from which every other
// screen is reached. Each control writes the analysis state as it changes.
class InputScreen : public QMainWindow, public PrintablePage {
    Q_OBJECT

public:
    InputScreen(ScreenContext& context, WorkPlaces places, QWidget* parent = nullptr);

    // Toolbar buttons and menu entries by their key: "Open", "Save", "Import",
    // "Print", "Export", "Exit".
    void runCommand(const QString& key);

    void openTestFile();
    void saveTestFile();
    void importTestData();
    void printScreen();
    void exportScreen();
    void showVersion();

    // Opens the test file at `path` (the command line's FILE). Returns an error text,
    // empty when the file was opened.
    QString openFile(const QString& path);

    // How long an import runs before its progress dialog appears (half a second).
    void setImportProgressDelay(std::chrono::milliseconds delay);

    // Refills every control from the state, as after a test file is opened: the
    // property boxes get the file's refill masks and their change rules store the
    // displayed values; the lists and check boxes show the stored choices.
    void refillFromState();
    // Shows a refill: texts and choices with the change rules' signals blocked (the
    // state already holds what they would store).
    void showRefill(const InputRefill& refill);

    QImage printedPage() override;

    // Before the program ends: the unsaved test goes to the recovery file (a failure
    // is also shown when the program ends by Exit).
    KeptWork keepWork() noexcept;
    // At the first show: a recovery file newer than the last save is offered
    // (Restore / Discard) before anything else.
    void offerRecovery();
    // Opens one of the recent tests of the File menu.
    void openRecent(const QString& path);

public Q_SLOTS:
    // The entry screen found the start of the test (a row at time 0).
    void setStartPressureText(const QString& text);
    // Rates or test points were entered: summaries and the analysis list follow.
    void refreshEntryState();
    // Types `text` into the property box with that object name, as the engineer would:
    // the box's change rule stores it (also when the text is already there).
    void setPropertyText(const QString& objectName, const QString& text);
    // The property calculator ran: where it changed the FVF or the viscosity the
    // analysis uses, the box shows the new value and a notice beside it says so. The
    // notice stands until the box's change rule runs again (typing, or a setText that
    // is not signal-blocked, as a copy of calculated properties into the box does).
    void showCalculatedProperties();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;

private:
    QWidget* buildHeading();
    QGroupBox* buildTestGroup();
    QGroupBox* buildFluidGroup();
    QWidget* buildPropertyGroups();
    QGroupBox* buildEntryGroup();
    QGroupBox* buildAnalysisGroup();
    void buildCommands();
    QAction* addCommand(const QString& key, const QString& menuText);
    void buildStatusLine();
    void showWhereTheTestStands();
    void hideAnalysisScreens();
    void offerRecoveryOnScreen(int tries);
    void showNotice(PropertyBox box);
    void hideNotice(PropertyBox box);

    void testTypeChosen(int index);
    void fluidChanged();
    void rateTimeChosen(int index);
    void testTimeChosen(int index);
    void propertyEdited(PropertyBox box, const QString& text);
    void solutionGorEdited(const QString& text);
    void navigate(const QString& item);
    void showVisibility();
    void setPrintLayout(bool printing);
    QImage renderPage();
    FluidChoice fluidChoice() const;

    template <class Handler> void guarded(Handler&& handler);

    ScreenContext& m_ctx;
    TestFileCommands m_files;
    TestFileSession m_session;
    QToolBar* m_toolbar = nullptr;
    QLabel* m_heading = nullptr; // Label4
    QLineEdit* m_title = nullptr;
    QComboBox* m_testType = nullptr;
    QComboBox* m_rateTime = nullptr;
    QComboBox* m_testTime = nullptr;
    QComboBox* m_gasAnalysis = nullptr;
    QLabel* m_gasAnalysisLabel = nullptr;
    std::array<QCheckBox*, 3> m_fluids{};
    QLabel* m_undersaturated = nullptr; // Label18
    std::array<QLineEdit*, kPropertyBoxCount> m_boxes{};
    std::array<QLabel*, kPropertyBoxCount> m_labels{};
    std::array<QLabel*, kPropertyBoxCount> m_notices{}; // FVF and viscosity only
    QLabel* m_radius = nullptr;
    std::array<QPushButton*, 3> m_commands{};
    QLabel* m_rateSummary = nullptr;
    QLabel* m_pointSummary = nullptr;
    QListWidget* m_analyses = nullptr; // List1
    QListWidget* m_skin = nullptr;     // List2
    QLabel* m_fileName = nullptr;      // status line: the test file
    QLabel* m_changedMark = nullptr;   // status line: changed since opened or saved
    QList<QAction*> m_recent;          // File menu: the recent tests
    QAction* m_recentSeparator = nullptr;
    int m_acceptedRateTime = -1;
    bool m_recoveryChecked = false;
};

} // namespace zorvekan
