// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <functional>
#include <string>

class QDate;
class QPainter;
class QMainWindow;
class QWidget;

namespace zorvekan {

class FileDialogService;
class MessageService;

// A screen whose Print command has a page: the window as it stands once the command
// has prepared it (toolbar hidden, heading shown, plots copied into their pictures).
// The same page goes to the printer, to an exported PDF or PNG and to batch export.
class PrintablePage {
public:
    virtual ~PrintablePage() = default;
    virtual QImage printedPage() = 0;
};

// Printing goes through this service so tests can capture the page.
class PrintService {
public:
    virtual ~PrintService() = default;
    // Sends one page image to a printer; false when cancelled or not printed.
    virtual bool print(QWidget* parent, const QImage& page) = 0;
};

// The system print dialog and printer.
class PrinterPrintService final : public PrintService {
public:
    bool print(QWidget* parent, const QImage& page) override;
};

// The window as it is drawn, laid out first so a window never shown renders too.
QImage renderWindow(QWidget& window);

// The page of a screen's Print command: the form below its menu bar, with the toolbar
// hidden and the printed heading shown while the page is taken (and while `whileShown`
// runs, which is where a printer is handed the page); the screen is restored after.
// Focus frames and selected text are not part of a page: they are cleared first and
// the focus is given back after.
QImage formPage(QMainWindow& window, QWidget* toolbar, QWidget* heading,
                const std::function<void(const QImage&)>& whileShown = {});

// The source line of a printed heading: the test file's name (not its folders) and the
// date of printing, "File: oil-buildup.zvt    Date: 2024-11-23"; a test never saved
// reads "File: (not saved)".
QString pageSourceText(const std::string& testFile, const QDate& date);

// Draws the page scaled to fit inside `area`, keeping its proportions, at the top.
void paintPage(QPainter& painter, const QImage& page, const QRect& area);

// Writes the page as PDF (A4, fitted, landscape for a wide window) or PNG, chosen by
// the extension of `path`. Returns an error text, empty when written.
QString writePage(const QImage& page, const QString& path);

// The "Export..." command of every screen: asks for a file name (PDF or PNG; a name
// without either extension gets ".pdf"), writes the page, reports a failure.
// Returns true when the page was written.
bool exportPage(QWidget* parent, const QImage& page, FileDialogService& files,
                MessageService& messages);

} // namespace zorvekan
