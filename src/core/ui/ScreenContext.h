// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

namespace zorvekan {

class EventGuard;
class FileDialogService;
class MessageService;
class PrintService;
class ScreenRegistry;

// What every screen works with: the one analysis state of the program, the window
// registry, the event guard and the services for message boxes, file dialogs and
// printing. Owned by the program; screens keep a reference.
struct ScreenContext {
    AnalysisState& state;
    ScreenRegistry& screens;
    EventGuard& guard;
    MessageService& messages;
    FileDialogService& files;
    PrintService& printer;
};

} // namespace zorvekan
