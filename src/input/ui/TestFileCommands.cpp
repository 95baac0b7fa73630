// SPDX-License-Identifier: MIT
#include "input/ui/TestFileCommands.h"

#include "core/ui/FileDialogService.h"
#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "input/import_survey.h"
#include "input/test_file.h"
#include "input/ui/ImportSetupDialog.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProgressDialog>

#include <functional>
#include <memory>
#include <string>

namespace zorvekan {

namespace {

constexpr int kProgressSteps = 1000;

QString qs(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string localPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

// A name typed without an extension gets the test-file one, unless such a file exists.
QString withTestFileExtension(const QString& path) {
    const QFileInfo info(path);
    if (!info.suffix().isEmpty() || info.exists())
        return path;
    return path + QLatin1Char('.') + QString::fromUtf8(kTestFileExtension);
}

// Shows a progress dialog once an import has run longer than the delay, keeps the
// screens painted while the file is read, and tells the importer when the engineer
// cancels.
class ImportProgressWatch {
public:
    ImportProgressWatch(QWidget* parent, const QString& path, std::chrono::milliseconds delay)
        : m_parent(parent), m_path(path), m_delay(delay) {
        m_clock.start();
    }

    // The fraction of one pass over the file that spans [from, to] of the whole work.
    std::function<bool(double)> span(double from, double to) {
        return [this, from, to](double fraction) { return step(from + (to - from) * fraction); };
    }

    bool step(double fraction) {
        if (!m_dialog && m_clock.elapsed() >= m_delay.count())
            showDialog();
        if (!m_dialog)
            return true;
        m_dialog->setValue(static_cast<int>(fraction * kProgressSteps));
        QCoreApplication::processEvents();
        return !m_dialog->wasCanceled();
    }

private:
    void showDialog() {
        m_dialog = std::make_unique<QProgressDialog>(
            QStringLiteral("Importing test data from %1").arg(QFileInfo(m_path).fileName()),
            QStringLiteral("Cancel"), 0, kProgressSteps, m_parent);
        m_dialog->setObjectName(QStringLiteral("importProgress"));
        m_dialog->setWindowTitle(QStringLiteral("Importing Test Data"));
        // Nothing else may change the test while its new points are being read.
        m_dialog->setWindowModality(Qt::ApplicationModal);
        m_dialog->setMinimumDuration(0);
        m_dialog->setAutoReset(false);
        m_dialog->setAutoClose(false);
        m_dialog->show();
    }

    QWidget* m_parent;
    QString m_path;
    std::chrono::milliseconds m_delay;
    QElapsedTimer m_clock;
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace

TestFileCommands::TestFileCommands(ScreenContext& context, QWidget* parent)
    : m_ctx(context), m_parent(parent) {}

void TestFileCommands::refuse(const QString& what, const QString& why) {
    m_ctx.messages.show(m_parent, MessageService::Kind::Warning, kFileErrorTitle,
                        what + QStringLiteral("\n\n") + why);
}

bool TestFileCommands::save(const QString& title) {
    const QString chosen = m_ctx.files.saveFileName(m_parent, kTestFileFilter);
    if (chosen.isEmpty())
        return false;
    const QString path = withTestFileExtension(chosen);
    m_ctx.state.TestTitle = title.toStdString();
    FileError error;
    if (!saveTestFile(m_ctx.state, localPath(path), error)) {
        error.file = path.toStdString();
        refuse(QStringLiteral("The test was not saved; a file already there is unchanged."),
               qs(error.message()));
        return false;
    }
    m_lastPath = path;
    m_ctx.state.TestFileName = path.toStdString();
    return true;
}

std::optional<InputRefill> TestFileCommands::openPath(const QString& path, QString& error) {
    OpenResult result = openTestFile(m_ctx.state, localPath(path));
    if (!result.ok) {
        FileError e = result.error;
        e.file = path.toStdString();
        error = qs(e.message());
        return std::nullopt;
    }
    m_ctx.state.TestFileName = path.toStdString();
    m_lastPath = path;
    return std::move(result.refill);
}

std::optional<InputRefill> TestFileCommands::open() {
    const QString path = m_ctx.files.openFileName(m_parent, kTestFileFilter);
    if (path.isEmpty())
        return std::nullopt;
    QString error;
    auto refill = openPath(path, error);
    if (!refill)
        refuse(QStringLiteral("The test file was not opened; the current test is unchanged."),
               error);
    return refill;
}

std::optional<ImportResult> TestFileCommands::import() {
    const QString path = m_ctx.files.openFileName(m_parent, kImportFilter);
    if (path.isEmpty())
        return std::nullopt;
    const QString failed = QStringLiteral("No test data were imported; the current test is "
                                          "unchanged.");
    auto watch = std::make_unique<ImportProgressWatch>(m_parent, path, m_progressDelay);
    const ImportSurvey survey = surveyImportFile(localPath(path), watch->span(0.0, 0.4));
    if (survey.cancelled)
        return std::nullopt;
    ImportOptions options;
    if (survey.ok && !survey.plainPairs()) {
        watch.reset();
        if (survey.contradictoryDates()) {
            FileError error = dateOrderContradiction(survey);
            error.file = path.toStdString();
            refuse(failed, qs(error.message()));
            return std::nullopt;
        }
        const AnalysisState& s = m_ctx.state;
        ImportSetupDialog dialog(survey, QFileInfo(path).fileName(),
                                 (s.ShutInFlag != 0) != (s.InjectionFlag != 0), s.TestTimeUnit == 1,
                                 m_parent);
        if (!m_ctx.messages.runDialog(dialog))
            return std::nullopt;
        options = dialog.options();
        watch = std::make_unique<ImportProgressWatch>(m_parent, path, m_progressDelay);
    }
    ImportResult result;
    if (survey.ok)
        result = importTestFile(m_ctx.state, localPath(path), options,
                                watch->span(survey.plainPairs() ? 0.4 : 0.0, 1.0));
    else
        result.error = survey.error;
    if (result.cancelled)
        return std::nullopt;
    if (!result.ok) {
        FileError e = result.error;
        e.file = path.toStdString();
        refuse(failed, qs(e.message()));
        return std::nullopt;
    }
    return result;
}

} // namespace zorvekan
