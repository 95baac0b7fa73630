// SPDX-License-Identifier: MIT
// zorvekan: the desktop program.
#include "app/Program.h"
#include "core/analysis_state.h"
#include "core/launch_options.h"
#include "core/ui/FileDialogService.h"
#include "core/ui/MessageService.h"
#include "core/ui/PrintService.h"

#include <QApplication>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

// Batch export draws pages without a window, also where there is no display at all.
void useOffscreenPlatformForExport(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strncmp(argv[i], "--export", 8) == 0 &&
            qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
}

void printError(const QString& text) {
    std::fprintf(stderr, "zorvekan: %s\n", text.toLocal8Bit().constData());
}

} // namespace

int main(int argc, char** argv) {
    using namespace zorvekan;
    useOffscreenPlatformForExport(argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zorvekan"));
    QApplication::setQuitOnLastWindowClosed(false);

    std::vector<std::string> args;
    const QStringList qtArgs = QApplication::arguments();
    for (qsizetype i = 1; i < qtArgs.size(); ++i)
        args.push_back(qtArgs[i].toStdString());
    const LaunchOptions options = parseLaunchOptions(args);
    if (options.help || options.error) {
        if (options.error)
            printError(QString::fromStdString(*options.error));
        std::fputs(launchUsage().c_str(), options.error ? stderr : stdout);
        return options.error ? 2 : 0;
    }

    AnalysisState state;
    DialogMessageService messages;
    PlatformFileDialogService files;
    PrinterPrintService printer;
    Program program(state, messages, files, printer, [](int code) { QApplication::exit(code); });

    if (options.file) {
        if (const QString error = program.openStartupFile(QString::fromStdString(*options.file));
            !error.isEmpty()) {
            printError(error);
            return 1;
        }
    }
    if (!options.exports.empty()) {
        const QStringList errors = program.exportPages(options.exports);
        for (const QString& e : errors)
            printError(e);
        return errors.isEmpty() ? 0 : 1;
    }
    program.start();
    return QApplication::exec();
}
