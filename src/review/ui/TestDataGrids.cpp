// SPDX-License-Identifier: MIT
// The grids of the test data screen: filling them, correcting one cell through the
// edit frame, INSERT and DELETE of rows, and copy and paste with a spreadsheet.
#include "review/ui/TestDataScreen.h"

#include "core/display_mask.h"
#include "core/ui/EventGuard.h"
#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "core/val.h"
#include "core/version.h"
#include "input/input_rules.h"

#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace zorvekan {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

QTableWidget* makeGrid(const char* name, QWidget* parent) {
    auto* table = new QTableWidget(parent);
    table->setObjectName(QString::fromUtf8(name));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::ContiguousSelection);
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // Fixed row heights: sizing 500 rows to their contents on every refill costs seconds.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table->setWordWrap(false);
    return table;
}

QTableWidgetItem* cellItem(const std::string& text, bool header) {
    auto* item = new QTableWidgetItem(qs(text));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    if (header) {
        QFont f = item->font();
        f.setBold(true);
        item->setFont(f);
        item->setBackground(QColor(230, 230, 230));
        item->setTextAlignment(Qt::AlignCenter);
    } else {
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    return item;
}

} // namespace

QWidget* TestDataScreen::buildGridPanel() {
    auto* panel = new QWidget(centralWidget());
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    m_grids[0] = makeGrid("MSFlexGrid1", panel);
    m_grids[1] = makeGrid("MSFlexGrid2", panel);
    m_grids[2] = makeGrid("MSFlexGrid3", panel);
    m_clickHint = new QLabel(QStringLiteral("Click on Value in Table with Mouse"), panel);
    m_clickHint->setObjectName(QStringLiteral("Label1"));
    m_keysHint = new QLabel(
        QStringLiteral("Use DELETE key to remove rows; use INSERT key to add rows."), panel);
    m_keysHint->setObjectName(QStringLiteral("Label4"));
    for (QLabel* l : {m_clickHint, m_keysHint}) {
        l->setStyleSheet(QStringLiteral("color: #a00000;"));
        l->hide();
    }

    m_frame = new QGroupBox(QStringLiteral("Enter Correct Value:"), panel);
    m_frame->setObjectName(QStringLiteral("Frame1"));
    m_text = new QLineEdit(m_frame);
    m_text->setObjectName(QStringLiteral("Text1"));
    m_accept = new QPushButton(QStringLiteral("OK"), m_frame);
    m_accept->setObjectName(QStringLiteral("Command1"));
    m_cancel = new QPushButton(QStringLiteral("Cancel"), m_frame);
    m_cancel->setObjectName(QStringLiteral("Command2"));
    auto* frameRow = new QHBoxLayout(m_frame);
    frameRow->addWidget(m_text, 1);
    frameRow->addWidget(m_accept);
    frameRow->addWidget(m_cancel);
    m_frame->hide();

    auto* rateRow = new QHBoxLayout;
    rateRow->addWidget(m_grids[1]);
    rateRow->addWidget(m_grids[2]);
    m_grids[1]->setMinimumHeight(150);
    m_grids[2]->setMinimumHeight(150);
    layout->addWidget(m_grids[0], 3);
    layout->addLayout(rateRow, 1);
    layout->addWidget(m_clickHint);
    layout->addWidget(m_keysHint);
    layout->addWidget(m_frame);

    for (DataGrid g : {DataGrid::TestPoints, DataGrid::Rates, DataGrid::PhaseRates}) {
        QTableWidget* table = grid(g);
        table->installEventFilter(this);
        connect(table, &QTableWidget::cellClicked, this,
                [this, g](int r, int c) { guarded([&] { gridClicked(g, r, c); }); });
    }
    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString& t) { m_typed = Val(t.toStdString()); });
    connect(m_text, &QLineEdit::returnPressed, this, [this] { guarded([&] { acceptValue(); }); });
    connect(m_accept, &QPushButton::clicked, this, [this] { guarded([&] { acceptValue(); }); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { guarded([&] { cancelEdit(); }); });
    return panel;
}

QTableWidget* TestDataScreen::grid(DataGrid g) const {
    return m_grids[static_cast<std::size_t>(static_cast<int>(g) - 1)];
}

DataGrid TestDataScreen::gridOf(const QObject* table) const {
    if (table == m_grids[1])
        return DataGrid::Rates;
    return table == m_grids[2] ? DataGrid::PhaseRates : DataGrid::TestPoints;
}

void TestDataScreen::fillGrid(DataGrid g, GridFill fill) {
    const GridContents c = gridContents(m_ctx.state, g, fill);
    QTableWidget* table = grid(g);
    const int rows = static_cast<int>(c.rows.size());
    const int columns = static_cast<int>(c.rows[0].size());
    table->setRowCount(rows);
    table->setColumnCount(columns);
    QStringList numbers{QString(), QString()};
    for (int r = 2; r < rows; ++r)
        numbers << QString::number(r - 1);
    table->setVerticalHeaderLabels(numbers);
    for (int r = 0; r < rows; ++r) {
        for (int col = 0; col < columns; ++col) {
            QTableWidgetItem* item =
                cellItem(c.rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(col)], r < 2);
            // The display masks round (a time of 0.001 h shows as "."): the stored value
            // is a hover away.
            if (const auto v = cellValue(m_ctx.state, g, r, col))
                item->setToolTip(qs(Str(*v)).trimmed());
            table->setItem(r, col, item);
        }
    }
    // A column that does not apply to the fluids of the test stays out of sight.
    for (int col = 0; col < columns; ++col)
        table->setColumnHidden(col, c.rows[0][static_cast<std::size_t>(col)].empty());
}

void TestDataScreen::gridClicked(DataGrid g, int row, int column) {
    m_frame->show();
    if (m_insertState != 2)
        m_keysHint->show();
    m_editedGrid = g;
    m_row = row;
    m_column = column;
    // The stored value to correct, at full precision and selected, so typing replaces it.
    const auto value = cellValue(m_ctx.state, g, row, column);
    m_text->setText(value ? qs(Str(*value)).trimmed() : QString());
    m_text->selectAll();
}

void TestDataScreen::acceptValue() {
    if (m_row < 0)
        return;
    const DataGrid g = m_editedGrid;
    AnalysisState& s = m_ctx.state;
    const std::string text = acceptCellEdit(s, g, m_row, m_column, m_typed);
    QTableWidget* table = grid(g);
    table->setCurrentCell(m_row, m_column);
    if (QTableWidgetItem* item = table->item(m_row, m_column))
        item->setText(qs(text));
    Q_EMIT dataCorrected();
    m_text->setText(QStringLiteral(" "));
    m_keysHint->hide();
    // A freshly inserted point is drawn once both its time and its pressure are in.
    const bool drawPoint = g == DataGrid::TestPoints && pointComplete(s, m_row);
    if (m_insertState == 1) {
        // The second value of the inserted row is clicked and entered next.
        m_insertState = 2;
        m_clickHint->show();
        if (drawPoint)
            DrawCartesianPlot();
        return;
    }
    m_insertState = 0;
    m_clickHint->hide();
    m_frame->hide();
    DrawCartesianPlot();
}

void TestDataScreen::cancelEdit() {
    m_clickHint->hide();
    m_keysHint->hide();
    m_frame->hide();
}

bool TestDataScreen::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress ||
        std::find(m_grids.begin(), m_grids.end(), watched) == m_grids.end())
        return QMainWindow::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    const DataGrid g = gridOf(watched);
    if (key->matches(QKeySequence::Copy)) {
        guarded([&] { copyFrom(g); });
        return true;
    }
    if (key->matches(QKeySequence::Paste)) {
        if (g != DataGrid::PhaseRates)
            guarded([&] { pasteInto(g); });
        return true;
    }
    if (key->key() == Qt::Key_Insert || key->key() == Qt::Key_Delete) {
        if (g != DataGrid::PhaseRates)
            guarded([&] { gridKey(g, key->key()); });
        return true;
    }
    // Typing a number on a clicked cell goes straight into the edit box.
    const QString typed = key->text();
    if (m_frame->isVisible() && !typed.isEmpty() && typed.at(0).isPrint() &&
        !(key->modifiers() & Qt::ControlModifier)) {
        m_text->setText(typed);
        m_text->setFocus();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void TestDataScreen::gridKey(DataGrid g, int key) {
    m_keysHint->hide();
    m_clickHint->hide();
    QTableWidget* table = grid(g);
    const int row = table->currentRow();
    if (row < 0)
        return;
    AnalysisState& s = m_ctx.state;
    if (key == Qt::Key_Insert) {
        insertGridRow(s, g, row);
        m_insertState = 1;
    } else {
        m_frame->hide();
        deleteGridRow(s, g, row);
    }
    Q_EMIT dataCorrected();
    fillGrid(g, GridFill::InsertDelete);
    if (g == DataGrid::Rates)
        fillGrid(DataGrid::PhaseRates, GridFill::InsertDelete);
    table->setCurrentCell(std::min(row, table->rowCount() - 1),
                          std::max(0, table->currentColumn()));
    // A deleted point leaves the plot at once; an inserted one waits for its values.
    if (g == DataGrid::TestPoints && key == Qt::Key_Delete)
        DrawCartesianPlot();
}

void TestDataScreen::pasteInto(DataGrid g) {
    QTableWidget* table = grid(g);
    const int row = std::max(table->currentRow(), 2);
    const PasteOutcome out =
        pasteGridRows(m_ctx.state, g, row, QGuiApplication::clipboard()->text().toStdString());
    if (out.message) {
        m_ctx.messages.show(this, MessageService::Kind::Warning,
                            QString::fromUtf8(out.limit ? kProgramTitle : kInputErrorTitle),
                            qs(*out.message));
        return;
    }
    Q_EMIT dataCorrected();
    m_frame->hide();
    m_insertState = 0;
    DrawCartesianPlot();
    table->setCurrentCell(row, 0);
}

void TestDataScreen::copyFrom(DataGrid g) {
    QTableWidget* table = grid(g);
    const QList<QTableWidgetSelectionRange> ranges = table->selectedRanges();
    int top = table->currentRow(), bottom = top, left = table->currentColumn(), right = left;
    if (!ranges.isEmpty()) {
        top = left = 1 << 30;
        bottom = right = -1;
        for (const QTableWidgetSelectionRange& r : ranges) {
            top = std::min(top, r.topRow());
            bottom = std::max(bottom, r.bottomRow());
            left = std::min(left, r.leftColumn());
            right = std::max(right, r.rightColumn());
        }
    }
    if (top < 0 || left < 0)
        return;
    QGuiApplication::clipboard()->setText(
        qs(copyGridCells(m_ctx.state, g, top, left, bottom, right)));
}

} // namespace zorvekan
