// SPDX-License-Identifier: MIT
// Services that answer the program's dialogs in the screen tests: messages are
// captured, file dialogs answer from a queue, printed pages are kept.
#pragma once

#include "app/Program.h"
#include "core/analysis_state.h"
#include "core/ui/FileDialogService.h"
#include "core/ui/MessageService.h"
#include "core/ui/PrintService.h"

#include <QImage>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace zorvekan::testing {

struct CapturedMessage {
    MessageService::Kind kind;
    QString title;
    QString text;
};

class FakeMessageService final : public MessageService {
public:
    void show(QWidget* parent, Kind kind, const QString& title, const QString& text) override;
    // Captured as a Question; answered from `answers`, the second answer when none is left.
    bool ask(QWidget* parent, const QString& title, const QString& text, const QString& first,
             const QString& second) override;

    // Answered by the first of `dialogAnswers`, which works the dialog's controls as the
    // engineer would (accepting or cancelling it); rejected when none is left.
    bool runDialog(QDialog& dialog) override;

    QList<CapturedMessage> messages;
    QList<bool> answers;
    QList<std::function<void(QDialog&)>> dialogAnswers;
    QStringList dialogsShown; // object names
    QString lastText() const { return messages.isEmpty() ? QString() : messages.last().text; }
    QString lastTitle() const { return messages.isEmpty() ? QString() : messages.last().title; }
};

class FakeFileDialogService final : public FileDialogService {
public:
    QString openFileName(QWidget* parent, const QString& filter) override;
    QString saveFileName(QWidget* parent, const QString& filter) override;

    QStringList answers; // taken first to last; an empty answer is a cancel
    int asked = 0;
};

class FakePrintService final : public PrintService {
public:
    bool print(QWidget* parent, const QImage& page) override;

    QList<QImage> pages;
    std::function<void()> whilePrinting; // runs while the page is being printed
};

// A whole program around its own state, with fake services and a recorded end; its
// recovery file and settings live in a folder of its own.
struct TestProgram {
    QTemporaryDir workFolder;
    AnalysisState state;
    FakeMessageService messages;
    FakeFileDialogService files;
    FakePrintService printer;
    std::optional<int> endCode;
    std::unique_ptr<Program> program;

    TestProgram();

    // The screen with that object name, created if needed (not shown).
    template <class T = QWidget> T* screen(const char* name) {
        return qobject_cast<T*>(program->screens().window(QString::fromUtf8(name)));
    }
    // Shows the screen through the registry, as the program does.
    template <class T = QWidget> T* show(const char* name) {
        program->screens().show(QString::fromUtf8(name));
        return screen<T>(name);
    }
};

// ---- driving controls by object name ----

template <class T> T* child(QWidget* window, const char* name) {
    T* found = window->findChild<T*>(QString::fromUtf8(name));
    if (!found)
        qFatal("no control %s of type %s in %s", name, T::staticMetaObject.className(),
               qPrintable(window->objectName()));
    return found;
}

// Replaces the text of a box by typing it, as the engineer does.
void typeInto(QWidget* window, const char* box, const QString& text);
// Chooses an item of a drop-down list by its text, as a click on it does.
void choose(QWidget* window, const char* list, const QString& item);
// Clicks a button or check box.
void click(QWidget* window, const char* control);
// Clicks the row of a list box with that text.
void clickItem(QWidget* window, const char* list, const QString& item);
// True when the control would be on screen with its window.
bool shown(QWidget* window, const char* control);

} // namespace zorvekan::testing
