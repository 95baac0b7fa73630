// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <utility>

class QWidget;

namespace zorvekan {

class MessageService;

inline const QString kRuntimeErrorTitle = QStringLiteral("ZORVEKAN Run-time Error");

// Every event handler runs through this guard: a run-time fault of the analysis (or any
// other exception) ends the handler, is shown in a message box, and leaves the program
// and the analysis state usable for the next action.
class EventGuard {
public:
    explicit EventGuard(MessageService& messages) : m_messages(messages) {}

    // Runs `handler`; returns false when it was ended by an exception.
    template <class Handler> bool run(QWidget* parent, Handler&& handler) noexcept {
        try {
            std::forward<Handler>(handler)();
            return true;
        } catch (const std::exception& e) {
            report(parent, QString::fromUtf8(e.what()));
        } catch (...) {
            report(parent, QStringLiteral("An unexpected error ended the command."));
        }
        return false;
    }

private:
    void report(QWidget* parent, const QString& text) noexcept;

    MessageService& m_messages;
};

} // namespace zorvekan
