// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace zorvekan {

struct ImportSummary;
struct ScreenContext;

// datct: the small notice shown after test data were imported: how many pairs the
// file held, whether they were reduced to the 500 points a test holds, how many lines
// were skipped, which columns were read and where the analysed period starts.
// "Accept Data" hides it.
class ImportNotice : public QWidget {
    Q_OBJECT

public:
    explicit ImportNotice(ScreenContext& context, QWidget* parent = nullptr);

    // Puts the counts of an import on the notice (it is shown through the registry).
    void showSummary(const ImportSummary& summary);

    void accept(); // Command1

private:
    ScreenContext& m_ctx;
    QLabel* m_count = nullptr;    // Label3
    QLabel* m_resizing = nullptr; // Label4
    QLabel* m_kept = nullptr;
    QLabel* m_skipped = nullptr;
    QLabel* m_columns = nullptr;
    QLabel* m_start = nullptr;
    QPushButton* m_accept = nullptr; // Command1
};

} // namespace zorvekan
