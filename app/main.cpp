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
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

namespace {

zorvekan::Program* g_program = nullptr; // for the last words of a fatal error

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

// A fault no handler caught ends the program: the unsaved test is kept first.
[[noreturn]] void keepWorkAndEnd() {
    static bool ending = false;
    if (!ending) {
        ending = true;
        std::string what = "an unexpected error";
        try {
            if (const std::exception_ptr e = std::current_exception())
                std::rethrow_exception(e);
        } catch (const std::exception& e) {
            what = e.what();
        } catch (...) {
        }
        std::fprintf(stderr, "zorvekan: %s ended the program.\n", what.c_str());
        if (g_program)
            std::fprintf(stderr, "zorvekan: %s\n",
                         g_program->keepWork().text.toLocal8Bit().constData());
    }
    std::abort();
}

// --help is answered before the windowing system is started, so it works where
// there is no display.
bool asksForHelp(int argc, char** argv) {
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i)
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0)
            return true;
    return false;
}

// In a run without windows a message box would wait for ever for a click: each
// message goes to stderr instead, and the run ends in failure.
class ConsoleMessageService final : public zorvekan::MessageService {
public:
    void show(QWidget*, Kind, const QString& title, const QString& text) override {
        printError(title + QStringLiteral(": ") + text);
        m_shown = true;
    }
    // Nothing can be answered without a window: the question is printed and the second
    // choice (Discard, No) is taken.
    bool ask(QWidget*, const QString& title, const QString& text, const QString&,
             const QString&) override {
        printError(title + QStringLiteral(": ") + text);
        return false;
    }
    bool shown() const { return m_shown; }

private:
    bool m_shown = false;
};

} // namespace

int main(int argc, char** argv) {
    using namespace zorvekan;
    if (asksForHelp(argc, argv)) {
        std::fputs(launchUsage().c_str(), stdout);
        return 0;
    }
    useOffscreenPlatformForExport(argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zorvekan"));
    QApplication::setOrganizationName(QStringLiteral("Zorvekan"));
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

    const bool headless = !options.exports.empty();
    AnalysisState state;
    DialogMessageService dialogs;
    ConsoleMessageService console;
    PlatformFileDialogService files;
    PrinterPrintService printer;
    Program program(state, headless ? static_cast<MessageService&>(console) : dialogs, files,
                    printer, [](int code) { QApplication::exit(code); });
    g_program = &program;
    struct Forget {
        ~Forget() { g_program = nullptr; }
    } forget;
    std::set_terminate(keepWorkAndEnd);

    if (options.file) {
        if (const QString error = program.openStartupFile(QString::fromStdString(*options.file));
            !error.isEmpty()) {
            printError(error);
            return 1;
        }
        if (console.shown())
            return 1;
    }
    if (headless) {
        const QStringList errors = program.exportPages(options.exports);
        for (const QString& e : errors)
            printError(e);
        return errors.isEmpty() && !console.shown() ? 0 : 1;
    }
    program.start();
    return QApplication::exec();
}
