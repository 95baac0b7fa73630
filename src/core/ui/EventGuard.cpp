// SPDX-License-Identifier: MIT
#include "core/ui/EventGuard.h"

#include "core/ui/MessageService.h"

#include <cstdio>

namespace zorvekan {

void EventGuard::report(QWidget* parent, const QString& text) noexcept {
    try {
        m_messages.show(parent, MessageService::Kind::Critical, kRuntimeErrorTitle, text);
    } catch (...) {
        // The message box itself failed (out of memory): the console is all that is left.
        std::fprintf(stderr, "zorvekan: %s\n", text.toLocal8Bit().constData());
    }
}

} // namespace zorvekan
