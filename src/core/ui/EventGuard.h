// SPDX-License-Identifier: MIT
#pragma once

#include "core/runtime_error.h"

#include <QString>

#include <exception>
#include <functional>
#include <string>
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
    // The text shown for a run-time fault in a window: its own text and, where the
    // program can tell, the input that caused it.
    using FaultText = std::function<std::string(const RuntimeError&, const QWidget* window)>;

    explicit EventGuard(MessageService& messages) : m_messages(messages) {}

    void setFaultText(FaultText faultText) { m_faultText = std::move(faultText); }
    // Runs when not even the message box can be shown (the program is out of memory):
    // the last chance to keep the engineer's work.
    void setLastResort(std::function<void()> lastResort) { m_lastResort = std::move(lastResort); }

    // Runs `handler`; returns false when it was ended by an exception.
    template <class Handler> bool run(QWidget* parent, Handler&& handler) noexcept {
        try {
            std::forward<Handler>(handler)();
            return true;
        } catch (const RuntimeError& e) {
            report(parent, e);
        } catch (const std::exception& e) {
            report(parent, QString::fromUtf8(e.what()));
        } catch (...) {
            report(parent, QStringLiteral("An unexpected error ended the command."));
        }
        return false;
    }

private:
    void report(QWidget* parent, const RuntimeError& e) noexcept;
    void report(QWidget* parent, const QString& text) noexcept;

    MessageService& m_messages;
    FaultText m_faultText;
    std::function<void()> m_lastResort;
};

} // namespace zorvekan
