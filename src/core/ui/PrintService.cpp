// SPDX-License-Identifier: MIT
#include "core/ui/PrintService.h"

#include "core/launch_options.h"
#include "core/ui/FileDialogService.h"
#include "core/ui/MessageService.h"

#include <QDate>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextCursor>
#include <QWidget>

namespace zorvekan {

namespace {

QPageLayout::Orientation orientationFor(const QImage& page) {
    return page.width() > page.height() ? QPageLayout::Landscape : QPageLayout::Portrait;
}

QString writePdf(const QImage& page, const QString& path) {
    QPdfWriter writer(path);
    writer.setResolution(300);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), orientationFor(page),
                                     QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
    writer.setCreator(QStringLiteral("Zorvekan"));
    QPainter painter;
    if (!painter.begin(&writer))
        return QStringLiteral("Cannot write the page to %1.").arg(path);
    paintPage(painter, page, painter.viewport());
    painter.end();
    return {};
}

} // namespace

bool PrinterPrintService::print(QWidget* parent, const QImage& page) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(orientationFor(page));
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    paintPage(painter, page, painter.viewport());
    return painter.end();
}

QImage renderWindow(QWidget& window) {
    window.ensurePolished();
    if (!window.testAttribute(Qt::WA_Resized))
        window.adjustSize();
    if (QLayout* layout = window.layout())
        layout->activate();
    return window.grab().toImage();
}

void paintPage(QPainter& painter, const QImage& page, const QRect& area) {
    if (page.isNull() || area.isEmpty())
        return;
    const QSizeF logical = page.deviceIndependentSize();
    const QSize fitted = logical.scaled(QSizeF(area.size()), Qt::KeepAspectRatio).toSize();
    const QRect target(area.left() + (area.width() - fitted.width()) / 2, area.top(),
                       fitted.width(), fitted.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, page);
}

QString writePage(const QImage& page, const QString& path) {
    const auto format = pageFormatOf(path.toStdString());
    if (!format)
        return QStringLiteral("A page is written as .pdf or .png, not %1.").arg(path);
    if (page.isNull())
        return QStringLiteral("There is no page to write.");
    if (*format == PageFormat::Pdf)
        return writePdf(page, path);
    if (!page.save(path, "PNG"))
        return QStringLiteral("Cannot write the page to %1.").arg(path);
    return {};
}

bool exportPage(QWidget* parent, const QImage& page, FileDialogService& files,
                MessageService& messages) {
    QString path =
        files.saveFileName(parent, QStringLiteral("PDF document (*.pdf);;PNG image (*.png)"));
    if (path.isEmpty())
        return false;
    if (!pageFormatOf(path.toStdString()))
        path += QStringLiteral(".pdf");
    const QString error = writePage(page, path);
    if (!error.isEmpty()) {
        messages.show(parent, MessageService::Kind::Critical, QStringLiteral("ZORVEKAN"), error);
        return false;
    }
    return true;
}

} // namespace zorvekan

namespace zorvekan {

QString pageSourceText(const std::string& testFile, const QDate& date) {
    const QString name = testFile.empty() ? QStringLiteral("(not saved)")
                                          : QFileInfo(QString::fromStdString(testFile)).fileName();
    return QStringLiteral("File: %1    Date: %2").arg(name, date.toString(Qt::ISODate));
}

namespace {

// Takes the focus frame and every text selection off the window for the page.
QPointer<QWidget> clearMarks(QMainWindow& window) {
    QPointer<QWidget> focus = window.focusWidget();
    if (focus)
        focus->clearFocus();
    for (auto* edit : window.findChildren<QLineEdit*>())
        edit->deselect();
    for (auto* edit : window.findChildren<QPlainTextEdit*>()) {
        QTextCursor cursor = edit->textCursor();
        cursor.clearSelection();
        edit->setTextCursor(cursor);
    }
    return focus;
}

} // namespace

QImage formPage(QMainWindow& window, QWidget* toolbar, QWidget* heading,
                const std::function<void(const QImage&)>& whileShown) {
    auto layoutFor = [&](bool printing) {
        toolbar->setVisible(!printing);
        heading->setVisible(printing);
        window.centralWidget()->layout()->activate();
        window.layout()->activate();
    };
    const QPointer<QWidget> focus = clearMarks(window);
    layoutFor(true);
    struct Restore {
        std::function<void()> undo;
        ~Restore() { undo(); }
    } restore{[&] {
        layoutFor(false);
        if (focus)
            focus->setFocus();
    }};
    const QImage whole = renderWindow(window);
    const qreal ratio = whole.devicePixelRatio();
    const QRect area = window.centralWidget()->geometry();
    QImage page = whole.copy(QRectF(area.topLeft() * ratio, area.size() * ratio).toRect());
    page.setDevicePixelRatio(ratio);
    if (whileShown)
        whileShown(page);
    return page;
}

} // namespace zorvekan
