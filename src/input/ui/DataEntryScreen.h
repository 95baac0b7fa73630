// SPDX-License-Identifier: MIT
#pragma once

#include "core/ui/ScreenRegistry.h"
#include "input/entry_rules.h"

#include <QWidget>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace zorvekan {

struct ScreenContext;

// Datin: row-by-row entry of the rate history (DatinMode 1) or of the test points.
// Each time it is opened it lays itself out for the mode and starts again at row 1;
// "Store Row" keeps a row aside, "Finish" writes the rows to the rate history or the
// test points, counts them and, for rates, derives the flow rate and producing time.
// Closed without Finish, it leaves the history and the points as they were.
class DataEntryScreen : public QWidget, public ShownHook {
    Q_OBJECT

public:
    explicit DataEntryScreen(ScreenContext& context, QWidget* parent = nullptr);

    void beforeShow() override;

    void storeRow(); // Command1
    void finish();   // Command2

Q_SIGNALS:
    // A row at time 0 gave the start pressure, formatted for the input screen.
    void startPressureEntered(const QString& text);
    // Entry was finished: the counts, flow rate and producing time are stored.
    void entryFinished();

private:
    void clearBoxes();
    void showRowNumber();
    void advanceFrom(int box);

    ScreenContext& m_ctx;
    EntryDraft m_draft;
    QLabel* m_heading; // lyrlab
    QLabel* m_row;
    std::array<QLineEdit*, 4> m_boxes{};
    std::array<QLabel*, 4> m_labels{};
    QPushButton* m_store;  // Command1
    QPushButton* m_finish; // Command2
};

} // namespace zorvekan
