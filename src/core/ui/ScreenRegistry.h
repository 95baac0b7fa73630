// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <map>
#include <utility>

namespace zorvekan {

// A window that wants to prepare itself each time it is shown through the registry
// (the entry screen lays out its mode, for example).
class ShownHook {
public:
    virtual ~ShownHook() = default;
    virtual void beforeShow() = 0;
};

// What became of the engineer's work as the program ends.
struct KeptWork {
    bool failed = false;
    QString text; // a sentence for the engineer: kept, nothing to keep, or why not
};

// Owns the windows of the program: each is a single instance, created on first use
// and kept while hidden.
class ScreenRegistry {
public:
    using Factory = std::function<QWidget*()>;
    using EndProgram = std::function<void(int exitCode)>;
    using KeepWork = std::function<KeptWork()>;

    // The order in which Exit closes the screens; the start-up and input screens last.
    static const QStringList& exitOrder();

    explicit ScreenRegistry(EndProgram endProgram);
    ~ScreenRegistry();
    ScreenRegistry(const ScreenRegistry&) = delete;
    ScreenRegistry& operator=(const ScreenRegistry&) = delete;

    void add(const QString& name, Factory factory);

    bool isAvailable(const QString& name) const;

    // The window, created now if needed (not shown); null for a screen not available.
    QWidget* window(const QString& name);
    // The window if it was created, else null.
    QWidget* existing(const QString& name) const;

    // Shows the screen non-modally in front; false when it is not available yet.
    bool show(const QString& name);

    // Keeps the engineer's work before the program ends (the recovery file).
    void setKeepWork(KeepWork keepWork) { m_keepWork = std::move(keepWork); }
    KeptWork keepWork() noexcept;

    // Exit: keeps the work, closes every screen in exitOrder, then the rest, then ends
    // the program. No save prompt. A second call while closing does nothing.
    void exitProgram();
    bool exiting() const { return m_exiting; }

    // Ends the program at once with the exit code.
    void endProgram(int exitCode);

private:
    struct Entry {
        Factory factory;
        QPointer<QWidget> window;
        int created = -1; // creation order
    };

    std::map<QString, Entry> m_entries;
    EndProgram m_end;
    KeepWork m_keepWork;
    int m_created = 0;
    bool m_exiting = false;
};

} // namespace zorvekan
