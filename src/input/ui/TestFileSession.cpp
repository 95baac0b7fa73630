// SPDX-License-Identifier: MIT
#include "input/ui/TestFileSession.h"

#include "input/recovery_file.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace zorvekan {

namespace {

const QString kRecentKey = QStringLiteral("recentTests");
const QString kLastSaveKey = QStringLiteral("lastSave");
const QString kRecoveredFromKey = QStringLiteral("recoveredFrom");
const QString kNoticedKey = QStringLiteral("recoveredNotices");

std::string localPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

} // namespace

TestFileSession::TestFileSession(WorkPlaces places)
    : m_places(std::move(places)),
      m_settings(m_places.settingsFile.isEmpty()
                     ? std::make_unique<QSettings>()
                     : std::make_unique<QSettings>(m_places.settingsFile, QSettings::IniFormat)) {}

TestFileSession::~TestFileSession() = default;

QString TestFileSession::recoveryPath() const {
    return QDir(m_places.dataFolder).filePath(QString::fromUtf8(kRecoveryFileName));
}

void TestFileSession::begin(const AnalysisState& s) {
    m_path.clear();
    m_baseline = testFileText(s);
}

void TestFileSession::remember(const QString& path, const AnalysisState& s) {
    m_path = QFileInfo(path).absoluteFilePath();
    m_baseline = testFileText(s);
    QStringList recent = recentFiles();
    recent.removeAll(m_path);
    recent.prepend(m_path);
    while (recent.size() > kRecentFileCount)
        recent.removeLast();
    m_settings->setValue(kRecentKey, recent);
}

void TestFileSession::opened(const QString& path, const AnalysisState& s) {
    remember(path, s);
}

void TestFileSession::saved(const QString& path, const AnalysisState& s) {
    remember(path, s);
    m_settings->setValue(kLastSaveKey, QDateTime::currentDateTimeUtc());
}

bool TestFileSession::changed(const AnalysisState& s) const {
    return testFileText(s) != m_baseline;
}

QStringList TestFileSession::recentFiles() const {
    return m_settings->value(kRecentKey).toStringList();
}

KeptWork TestFileSession::keep(const AnalysisState& s, const QStringList& noticedBoxes) noexcept {
    try {
        const QString path = recoveryPath();
        if (!changed(s)) {
            QFile::remove(path);
            return {false, QStringLiteral("The test had no unsaved changes.")};
        }
        FileError error;
        if (!QDir().mkpath(m_places.dataFolder) || !writeRecoveryFile(s, localPath(path), error)) {
            if (error.file.empty())
                error = FileError{localPath(m_places.dataFolder), 0, {}, "cannot be created"};
            return {true, QStringLiteral("The unsaved test could not be kept: %1")
                              .arg(QString::fromStdString(error.message()))};
        }
        m_settings->setValue(kRecoveredFromKey, m_path);
        m_settings->setValue(kNoticedKey, noticedBoxes);
        m_settings->sync();
        return {false, QStringLiteral("The unsaved test is kept and will be offered when the "
                                      "program starts again.")};
    } catch (...) {
        return {true, QStringLiteral("The unsaved test could not be kept.")};
    }
}

bool TestFileSession::recoveryWaiting() const {
    const QFileInfo recovery(recoveryPath());
    if (!recovery.isFile())
        return false;
    const QDateTime lastSave = m_settings->value(kLastSaveKey).toDateTime();
    return !lastSave.isValid() || recovery.lastModified() > lastSave;
}

OpenResult TestFileSession::restore(AnalysisState& s) {
    OpenResult result = restoreRecoveryFile(s, localPath(recoveryPath()));
    if (result.ok) {
        m_path = m_settings->value(kRecoveredFromKey).toString();
        m_baseline.clear(); // restored work is unsaved work
    }
    return result;
}

QStringList TestFileSession::noticedBoxes() const {
    return m_settings->value(kNoticedKey).toStringList();
}

void TestFileSession::discardRecovery() {
    QFile::remove(recoveryPath());
}

} // namespace zorvekan
