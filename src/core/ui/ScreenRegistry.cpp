// SPDX-License-Identifier: MIT
#include "core/ui/ScreenRegistry.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zorvekan {

const QStringList& ScreenRegistry::exitOrder() {
    static const QStringList order = {QStringLiteral("datct"),  QStringLiteral("Datin"),
                                      QStringLiteral("inpsho"), QStringLiteral("skin"),
                                      QStringLiteral("kv1"),    QStringLiteral("kv2"),
                                      QStringLiteral("Corch"),  QStringLiteral("mox")};
    return order;
}

ScreenRegistry::ScreenRegistry(EndProgram endProgram) : m_end(std::move(endProgram)) {}

ScreenRegistry::~ScreenRegistry() {
    // Newest first: a window created by another may refer to it.
    std::vector<Entry*> made;
    for (auto& [name, e] : m_entries)
        if (e.window)
            made.push_back(&e);
    std::sort(made.begin(), made.end(),
              [](const Entry* a, const Entry* b) { return a->created > b->created; });
    for (Entry* e : made)
        delete e->window.data();
}

void ScreenRegistry::add(const QString& name, Factory factory) {
    Entry& e = m_entries[name];
    e.factory = std::move(factory);
}

bool ScreenRegistry::isAvailable(const QString& name) const {
    const auto it = m_entries.find(name);
    return it != m_entries.end() && it->second.factory;
}

QWidget* ScreenRegistry::window(const QString& name) {
    const auto it = m_entries.find(name);
    if (it == m_entries.end() || !it->second.factory)
        return nullptr;
    Entry& e = it->second;
    if (!e.window) {
        QWidget* w = e.factory();
        w->setObjectName(name);
        e.window = w;
        e.created = m_created++;
    }
    return e.window;
}

QWidget* ScreenRegistry::existing(const QString& name) const {
    const auto it = m_entries.find(name);
    return it == m_entries.end() ? nullptr : it->second.window.data();
}

bool ScreenRegistry::show(const QString& name) {
    QWidget* w = window(name);
    if (!w)
        return false;
    if (auto* hook = dynamic_cast<ShownHook*>(w))
        hook->beforeShow();
    w->show();
    w->raise();
    w->activateWindow();
    return true;
}

KeptWork ScreenRegistry::keepWork() noexcept {
    try {
        return m_keepWork ? m_keepWork() : KeptWork{};
    } catch (...) {
        return {true, QStringLiteral("The unsaved test could not be kept.")};
    }
}

void ScreenRegistry::exitProgram() {
    if (m_exiting)
        return;
    m_exiting = true;
    keepWork();
    QStringList order = exitOrder();
    for (const auto& [name, e] : m_entries)
        if (!order.contains(name))
            order.append(name);
    for (const QString& name : order)
        if (QWidget* w = existing(name))
            w->close();
    endProgram(0);
}

void ScreenRegistry::endProgram(int exitCode) {
    if (m_end)
        m_end(exitCode);
}

} // namespace zorvekan
