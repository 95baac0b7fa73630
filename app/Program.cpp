// SPDX-License-Identifier: MIT
#include "app/Program.h"

#include "app/SplashScreen.h"
#include "core/ui/PrintService.h"
#include "input/fault_cause.h"
#include "input/ui/DataEntryScreen.h"
#include "input/ui/ImportNotice.h"
#include "input/ui/InputScreen.h"
#include "properties/ui/CorrelationDialog.h"
#include "properties/ui/PropertyCalculator.h"
#include "review/ui/TestDataScreen.h"
#include "semilog/ui/SemilogScreen.h"
#include "skin/ui/SkinScreen.h"
#include "typecurve/ui/TypeCurveScreen.h"

#include <QDir>
#include <QStandardPaths>

#include <utility>

namespace zorvekan {

Program::Program(AnalysisState& state, MessageService& messages, FileDialogService& files,
                 PrintService& printer, ScreenRegistry::EndProgram endProgram)
    : m_guard(messages), m_screens(std::move(endProgram)), m_context{state,    m_screens, m_guard,
                                                                     messages, files,     printer},
      m_places{QStandardPaths::writableLocation(QStandardPaths::AppDataLocation), QString()} {
    // A fault is explained from the test's inputs where the data are prepared (the
    // input screen's analysis list) or analysed; elsewhere (entry, calculator) those
    // inputs are not what failed.
    m_guard.setFaultText([&state](const RuntimeError& e, const QWidget* window) {
        static const QStringList analysing = {QStringLiteral("inpsho"), QStringLiteral("kv1"),
                                              QStringLiteral("kv2")};
        const QString name = window ? window->objectName() : QString();
        if (name == QStringLiteral("inp"))
            return faultMessage(state, e, FaultStage::Preparation);
        if (analysing.contains(name))
            return faultMessage(state, e, FaultStage::Analysis);
        return std::string(e.what());
    });
    m_guard.setLastResort([this] { m_screens.keepWork(); });
    m_screens.setKeepWork([this] {
        auto* input = qobject_cast<InputScreen*>(m_screens.existing(QStringLiteral("inp")));
        return input ? input->keepWork() : KeptWork{};
    });
    registerScreens();
}

void Program::useWorkFolder(const QString& folder) {
    m_places = {folder, QDir(folder).filePath(QStringLiteral("settings.ini"))};
}

void Program::registerScreens() {
    ScreenRegistry& r = m_screens;
    ScreenContext& c = m_context;
    r.add(QStringLiteral("Form1"), [&c] { return new SplashScreen(c); });
    r.add(QStringLiteral("inp"), [this, &c] { return new InputScreen(c, m_places); });
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
    r.add(QStringLiteral("mox"), [&c, &r] {
        auto* calculator = new PropertyCalculator(c);
        auto* input = qobject_cast<InputScreen*>(r.window(QStringLiteral("inp")));
        QObject::connect(calculator, &PropertyCalculator::propertyCopied, input,
                         &InputScreen::setPropertyText);
        QObject::connect(calculator, &PropertyCalculator::propertiesCalculated, input,
                         &InputScreen::showCalculatedProperties);
        return calculator;
    });
    r.add(QStringLiteral("Corch"), [&c, &r] {
        auto* dialog = new CorrelationDialog(c);
        auto* calculator = qobject_cast<PropertyCalculator*>(r.window(QStringLiteral("mox")));
        QObject::connect(dialog, &CorrelationDialog::correlationSelected, calculator,
                         &PropertyCalculator::showCorrelation);
        QObject::connect(dialog, &CorrelationDialog::returnedToCalculator, calculator,
                         &PropertyCalculator::takeFocusBack);
        return dialog;
    });
    r.add(QStringLiteral("inpsho"), [&c, &r] {
        auto* review = new TestDataScreen(c);
        auto* input = qobject_cast<InputScreen*>(r.window(QStringLiteral("inp")));
        QObject::connect(review, &TestDataScreen::dataCorrected, input,
                         &InputScreen::refreshEntryState);
        return review;
    });
    r.add(QStringLiteral("kv1"), [&c] { return new SemilogScreen(c); });
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
        if (!window)
            errors.append(QStringLiteral("There is no screen named %1.").arg(name));
        else if (!page)
            errors.append(QStringLiteral("The screen %1 has no printed page.").arg(name));
        else if (const QString error = writePageOf(name, *page, path); !error.isEmpty())
            errors.append(error);
    }
    return errors;
}

} // namespace zorvekan
