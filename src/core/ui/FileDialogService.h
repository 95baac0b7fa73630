// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDialog>
#include <QString>
#include <QWidget>

namespace zorvekan {

inline const QString kFileDialogTitle = QStringLiteral("Zorvekan File Selection");

// File choosers go through this service so tests can answer them. An empty answer
// means the engineer cancelled.
class FileDialogService {
public:
    virtual ~FileDialogService() = default;
    virtual QString openFileName(QWidget* parent, const QString& filter) = 0;
    virtual QString saveFileName(QWidget* parent, const QString& filter) = 0;
};

// The platform's common file dialog.
class PlatformFileDialogService final : public FileDialogService {
public:
    QString openFileName(QWidget* parent, const QString& filter) override {
        return QFileDialog::getOpenFileName(parent, kFileDialogTitle, QString(), filter);
    }
    QString saveFileName(QWidget* parent, const QString& filter) override {
        return QFileDialog::getSaveFileName(parent, kFileDialogTitle, QString(), filter);
    }
};

} // namespace zorvekan
