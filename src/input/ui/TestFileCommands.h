// SPDX-License-Identifier: MIT
#pragma once

#include "input/importer.h"
#include "input/input_refill.h"

#include <QString>

#include <chrono>
#include <optional>

class QWidget;

namespace zorvekan {

struct ScreenContext;

inline const QString kFileErrorTitle = QStringLiteral("ZORVEKAN File Error");
inline const QString kTestFileFilter = QStringLiteral("Zorvekan tests (*.zvt);;All files (*)");
inline const QString kImportFilter =
    QStringLiteral("Time/pressure pairs (*.txt *.csv *.dat *.prn *.tsv);;All files (*)");

// Save, Open and Import of the input screen: the file dialogs, the file work, the
// progress of a long import and the messages of a refused file. A refused or
// cancelled command leaves the test as it was; the input screen shows what a
// successful one returns.
class TestFileCommands {
public:
    TestFileCommands(ScreenContext& context, QWidget* parent);

    // Save: asks for a file name and writes the test, `title` as TestTitle. The file
    // is replaced atomically: on any failure the previous file stays as it was.
    // True when the test was saved.
    bool save(const QString& title);

    // Open: asks for a test file. The refill of the screen when a test was opened.
    std::optional<InputRefill> open();

    // Opens `path` without a dialog or a message box; on refusal `error` says why.
    std::optional<InputRefill> openPath(const QString& path, QString& error);

    // Import: asks for a file of time/pressure pairs (times in the test-time unit of
    // the state). The outcome when pairs were imported.
    std::optional<ImportResult> import();

    // The file of the last successful Save or Open.
    const QString& lastPath() const { return m_lastPath; }

    // How long an import runs before its progress dialog appears.
    void setProgressDelay(std::chrono::milliseconds delay) { m_progressDelay = delay; }

private:
    void refuse(const QString& what, const QString& why);

    ScreenContext& m_ctx;
    QWidget* m_parent;
    QString m_lastPath;
    std::chrono::milliseconds m_progressDelay{500};
};

} // namespace zorvekan
