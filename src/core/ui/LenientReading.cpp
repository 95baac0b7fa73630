// SPDX-License-Identifier: MIT
#include "core/ui/LenientReading.h"

#include "core/runtime_error.h"
#include "core/val.h"

#include <QLineEdit>
#include <QVariant>

#include <cstdio>

namespace zorvekan {

namespace {

constexpr const char* kTinted = "lenientReading";

void showReading(QLineEdit* box, const QString& text) {
    const std::string typed = text.toStdString();
    QString reading;
    if (!ValTakesWholeText(typed)) {
        try {
            char value[40];
            std::snprintf(value, sizeof value, "%.15g", Val(typed));
            reading = QStringLiteral("read as ") + QString::fromLatin1(value);
        } catch (const RuntimeError&) {
            // A number beyond the double range: the change rule reports the overflow.
        }
    }
    const bool tinted = !reading.isEmpty();
    if (box->property(kTinted).toBool() == tinted && box->toolTip() == reading)
        return;
    box->setProperty(kTinted, tinted);
    box->setToolTip(reading);
    box->setStyleSheet(tinted ? QStringLiteral("QLineEdit { background: #ffe3a3; }") : QString());
}

} // namespace

void showLenientReading(QLineEdit* box) {
    QObject::connect(box, &QLineEdit::textChanged, box,
                     [box](const QString& text) { showReading(box, text); });
    showReading(box, box->text());
}

void refreshLenientReading(QLineEdit* box) {
    showReading(box, box->text());
}

bool showsLenientReading(const QLineEdit* box) {
    return box->property(kTinted).toBool();
}

} // namespace zorvekan
