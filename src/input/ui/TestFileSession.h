// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/ui/ScreenRegistry.h"
#include "input/test_file.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <string>

class QSettings;

namespace zorvekan {

// Where the program keeps what outlives one run: the recovery file in the user's
// application-data folder, and the settings (recent tests, time of the last save).
struct WorkPlaces {
    QString dataFolder;   // the recovery file is written here
    QString settingsFile; // an INI file; empty for the program's own Qt settings
};

// The test in hand against its file: which file it was opened from or saved to,
// whether it has changed since, the tests used recently, and the recovery file that
// keeps unsaved work when the program ends.
class TestFileSession {
public:
    explicit TestFileSession(WorkPlaces places);
    ~TestFileSession();

    // A new test: what it holds now counts as unchanged.
    void begin(const AnalysisState& s);
    // The test was opened from or saved to `path`: unchanged from now on, and the
    // file goes to the top of the recent tests.
    void opened(const QString& path, const AnalysisState& s);
    void saved(const QString& path, const AnalysisState& s);

    bool changed(const AnalysisState& s) const;
    const QString& path() const { return m_path; }
    QStringList recentFiles() const;

    // Keeps unsaved work in the recovery file, with the boxes whose values were set
    // by the property calculator (their notices are shown again on restore); with
    // nothing unsaved, an old recovery file goes, so the next start offers nothing.
    KeptWork keep(const AnalysisState& s, const QStringList& noticedBoxes) noexcept;

    // A recovery file newer than the last save waits to be offered.
    bool recoveryWaiting() const;
    // Restores the recovery file into `s`; the test counts as changed, from the file
    // it was last opened from or saved to. On failure `s` is untouched.
    OpenResult restore(AnalysisState& s);
    void discardRecovery();
    // The noticed boxes kept with the recovery file (object names).
    QStringList noticedBoxes() const;

    QString recoveryPath() const;

private:
    void remember(const QString& path, const AnalysisState& s);

    WorkPlaces m_places;
    std::unique_ptr<QSettings> m_settings;
    QString m_path;
    std::string m_baseline; // the test file text when last opened, saved or begun
};

inline constexpr int kRecentFileCount = 5;

} // namespace zorvekan
