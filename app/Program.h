// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/launch_options.h"
#include "core/ui/EventGuard.h"
#include "core/ui/ScreenContext.h"
#include "core/ui/ScreenRegistry.h"
#include "input/ui/TestFileSession.h"

#include <QString>

#include <vector>

namespace zorvekan {

class FileDialogService;
class MessageService;
class PrintService;

// The desktop program put together: the event guard, the window registry with every
// screen it knows, and the services, around the one analysis state the caller owns.
class Program {
public:
    Program(AnalysisState& state, MessageService& messages, FileDialogService& files,
            PrintService& printer, ScreenRegistry::EndProgram endProgram);

    ScreenRegistry& screens() { return m_screens; }
    ScreenContext& context() { return m_context; }

    // Where the recovery file and the settings are kept: by default the user's
    // application-data folder and the program's Qt settings. Set before the input
    // screen is first used (tests keep both in a folder of their own).
    void useWorkFolder(const QString& folder);

    // Shows the start-up screen Form1; its timer opens the input screen.
    void start();

    // Keeps the unsaved test in the recovery file, as before any end of the program.
    KeptWork keepWork() noexcept { return m_screens.keepWork(); }

    // Opens a test file named on the command line. Returns an error text, empty when
    // the file was opened.
    QString openStartupFile(const QString& path);

    // Writes the printed page of each screen without showing a window. Returns the
    // error texts, one per page that could not be written.
    QStringList exportPages(const std::vector<PageExport>& pages);

private:
    void registerScreens();

    EventGuard m_guard;
    ScreenRegistry m_screens;
    ScreenContext m_context;
    WorkPlaces m_places;
};

} // namespace zorvekan
