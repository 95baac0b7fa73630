// SPDX-License-Identifier: MIT
#include "core/ui/EventGuard.h"

#include "core/ui/MessageService.h"

#include <QWidget>

#include <cstdio>

namespace zorvekan {

void EventGuard::report(QWidget* parent, const RuntimeError& e) noexcept {
    QString text = QString::fromUtf8(e.what());
    try {
        if (m_faultText)
            text = QString::fromStdString(m_faultText(e, parent ? parent->window() : nullptr));
    } catch (...) {
        // Without its cause the fault's own text still says what happened.
    }
    report(parent, text);
}

void EventGuard::report(QWidget* parent, const QString& text) noexcept {
    try {
        m_messages.show(parent, MessageService::Kind::Critical, kRuntimeErrorTitle, text);
    } catch (...) {
        // The message box itself failed (out of memory): keep the work, then the
        // console is all that is left.
        try {
            if (m_lastResort)
                m_lastResort();
        } catch (...) {
        }
        std::fprintf(stderr, "zorvekan: %s\n", text.toLocal8Bit().constData());
    }
}

} // namespace zorvekan
