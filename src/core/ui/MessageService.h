// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QString>
#include <QWidget>

namespace zorvekan {

// Every message box and modal dialog of the program goes through this service, so tests
// can capture a message or answer a dialog instead of blocking on a modal window.
class MessageService {
public:
    enum class Kind { Information, Warning, Critical, Question };

    virtual ~MessageService() = default;
    virtual void show(QWidget* parent, Kind kind, const QString& title, const QString& text) = 0;
    // A question with two answers, the first one the default; true when it is chosen.
    virtual bool ask(QWidget* parent, const QString& title, const QString& text,
                     const QString& first, const QString& second) = 0;
    // Runs a modal dialog; true when the engineer accepted it.
    virtual bool runDialog(QDialog& dialog) { return dialog.exec() == QDialog::Accepted; }
};

// The real message boxes.
class DialogMessageService final : public MessageService {
public:
    void show(QWidget* parent, Kind kind, const QString& title, const QString& text) override {
        const QMessageBox::Icon icon = kind == Kind::Information ? QMessageBox::Information
                                       : kind == Kind::Warning   ? QMessageBox::Warning
                                       : kind == Kind::Question  ? QMessageBox::Question
                                                                 : QMessageBox::Critical;
        QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    bool ask(QWidget* parent, const QString& title, const QString& text, const QString& first,
             const QString& second) override {
        QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
        box.setTextFormat(Qt::PlainText);
        QPushButton* yes = box.addButton(first, QMessageBox::AcceptRole);
        box.addButton(second, QMessageBox::RejectRole);
        box.setDefaultButton(yes);
        box.exec();
        return box.clickedButton() == yes;
    }
};

} // namespace zorvekan
