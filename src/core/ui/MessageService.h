// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QString>
#include <QWidget>

namespace zorvekan {

// Every message box of the program goes through this service, so tests can capture a
// message instead of blocking on a modal window.
class MessageService {
public:
    enum class Kind { Information, Warning, Critical };

    virtual ~MessageService() = default;
    virtual void show(QWidget* parent, Kind kind, const QString& title, const QString& text) = 0;
};

// The real message boxes.
class DialogMessageService final : public MessageService {
public:
    void show(QWidget* parent, Kind kind, const QString& title, const QString& text) override {
        const QMessageBox::Icon icon = kind == Kind::Information ? QMessageBox::Information
                                       : kind == Kind::Warning   ? QMessageBox::Warning
                                                                 : QMessageBox::Critical;
        QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
};

} // namespace zorvekan
