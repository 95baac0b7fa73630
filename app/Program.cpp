// SPDX-License-Identifier: MIT
#include "app/Program.h"

#include "app/SplashScreen.h"
#include "core/ui/PrintService.h"
#include "input/ui/DataEntryScreen.h"
#include "input/ui/ImportNotice.h"
#include "input/ui/InputScreen.h"
#include "properties/ui/CorrelationDialog.h"
#include "properties/ui/PropertyCalculator.h"
#include "semilog/ui/SemilogScreen.h"
#include "skin/ui/SkinScreen.h"
#include "typecurve/ui/TypeCurveScreen.h"

#include <utility>

namespace zorvekan {

Program::Program(AnalysisState& state, MessageService& messages, FileDialogService& files,
                 PrintService& printer, ScreenRegistry::EndProgram endProgram)
    : m_guard(messages), m_screens(std::move(endProgram)), m_context{state,    m_screens, m_guard,
                                                                     messages, files,     printer} {
    registerScreens();
}

void Program::registerScreens() {
    ScreenRegistry& r = m_screens;
    ScreenContext& c = m_context;
    r.add(QStringLiteral("Form1"), [&c] { return new SplashScreen(c); });
    r.add(QStringLiteral("inp"), [&c] { return new InputScreen(c); });
    r.add(QStringLiteral("Datin"), [&c, &r] {
        auto* entry = new DataEntryScreen(c);
        auto* input = qobject_cast<InputScreen*>(r.window(QStringLiteral("inp")));
        QObject::connect(entry, &DataEntryScreen::startPressureEntered, input,
                         &InputScreen::setStartPressureText);
        QObject::connect(entry, &DataEntryScreen::entryFinished, input,
                         &InputScreen::refreshEntryState);
        return entry;
    });
    r.add(QStringLiteral("datct"), [&c] { return new ImportNotice(c); });
    r.add(QStringLiteral("mox"), [&c] { return new PropertyCalculator(c); });
    r.add(QStringLiteral("Corch"), [&c, &r] {
        auto* dialog = new CorrelationDialog(c);
        auto* calculator = qobject_cast<PropertyCalculator*>(r.window(QStringLiteral("mox")));
        QObject::connect(dialog, &CorrelationDialog::correlationSelected, calculator,
                         &PropertyCalculator::showCorrelation);
        QObject::connect(dialog, &CorrelationDialog::returnedToCalculator, calculator,
                         &PropertyCalculator::takeFocusBack);
        return dialog;
    });
    r.add(QStringLiteral("kv1"), [&c] { return new SemilogScreen(c); });
    // Screens still to come: each becomes one r.add line like those above.
    r.announce(QStringLiteral("inpsho"), QStringLiteral("Show/Edit Test Data"));
    r.add(QStringLiteral("kv2"), [&c] { return new TypeCurveScreen(c); });
    r.add(QStringLiteral("skin"), [&c] { return new SkinScreen(c); });
}

void Program::start() {
    m_screens.show(QStringLiteral("Form1"));
}

QString Program::openStartupFile(const QString& path) {
    auto* input = qobject_cast<InputScreen*>(m_screens.window(QStringLiteral("inp")));
    return input->openFile(path);
}

namespace {
// The page of one screen written to `path`; a fault while drawing it is reported as text.
QString writePageOf(const QString& name, PrintablePage& page, const QString& path) {
    try {
        return writePage(page.printedPage(), path);
    } catch (const std::exception& e) {
        return name + QStringLiteral(": ") + QString::fromUtf8(e.what());
    }
}
} // namespace

QStringList Program::exportPages(const std::vector<PageExport>& pages) {
    QStringList errors;
    for (const PageExport& p : pages) {
        const QString name = QString::fromStdString(p.screen);
        const QString path = QString::fromStdString(p.path);
        QWidget* window = m_screens.window(name);
        auto* page = dynamic_cast<PrintablePage*>(window);
        if (!window && m_screens.title(name) != name)
            errors.append(QStringLiteral("%1 (%2) is not available in this version yet.")
                              .arg(name, m_screens.title(name)));
        else if (!window)
            errors.append(QStringLiteral("There is no screen named %1.").arg(name));
        else if (!page)
            errors.append(QStringLiteral("The screen %1 has no printed page.").arg(name));
        else if (const QString error = writePageOf(name, *page, path); !error.isEmpty())
            errors.append(error);
    }
    return errors;
}

} // namespace zorvekan
