// SPDX-License-Identifier: MIT
#include "FakeServices.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

namespace zorvekan::testing {

void FakeMessageService::show(QWidget*, Kind kind, const QString& title, const QString& text) {
    messages.append({kind, title, text});
}

bool FakeMessageService::ask(QWidget*, const QString& title, const QString& text, const QString&,
                             const QString&) {
    messages.append({Kind::Question, title, text});
    return !answers.isEmpty() && answers.takeFirst();
}

bool FakeMessageService::runDialog(QDialog& dialog) {
    dialogsShown.append(dialog.objectName());
    if (dialogAnswers.isEmpty())
        return false;
    dialog.show();
    dialogAnswers.takeFirst()(dialog);
    dialog.hide();
    return dialog.result() == QDialog::Accepted;
}

QString FakeFileDialogService::openFileName(QWidget*, const QString&) {
    ++asked;
    return answers.isEmpty() ? QString() : answers.takeFirst();
}

QString FakeFileDialogService::saveFileName(QWidget*, const QString&) {
    ++asked;
    return answers.isEmpty() ? QString() : answers.takeFirst();
}

bool FakePrintService::print(QWidget*, const QImage& page) {
    if (whilePrinting)
        whilePrinting();
    pages.append(page);
    return true;
}

TestProgram::TestProgram()
    : program(std::make_unique<Program>(state, messages, files, printer,
                                        [this](int code) { endCode = code; })) {
    program->useWorkFolder(workFolder.path());
}

void typeInto(QWidget* window, const char* box, const QString& text) {
    auto* edit = child<QLineEdit>(window, box);
    edit->selectAll();
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Backspace);
    else
        QTest::keyClicks(edit, text);
}

void choose(QWidget* window, const char* list, const QString& item) {
    auto* combo = child<QComboBox>(window, list);
    const int index = combo->findText(item);
    if (index < 0)
        qFatal("no item %s in %s", qPrintable(item), list);
    combo->setCurrentIndex(index);
    Q_EMIT combo->activated(index);
}

void click(QWidget* window, const char* control) {
    auto* button = child<QAbstractButton>(window, control);
    QTest::mouseClick(button, Qt::LeftButton);
}

void clickItem(QWidget* window, const char* list, const QString& item) {
    auto* widget = child<QListWidget>(window, list);
    const QList<QListWidgetItem*> found = widget->findItems(item, Qt::MatchExactly);
    if (found.isEmpty())
        qFatal("no row %s in %s", qPrintable(item), list);
    widget->setCurrentItem(found.first());
    Q_EMIT widget->itemClicked(found.first());
}

bool shown(QWidget* window, const char* control) {
    auto* widget = child<QWidget>(window, control);
    return widget->isVisibleTo(window);
}

} // namespace zorvekan::testing
