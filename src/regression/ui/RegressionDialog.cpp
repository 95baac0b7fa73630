// SPDX-License-Identifier: MIT
#include "regression/ui/RegressionDialog.h"

#include "core/display_mask.h"
#include "core/val.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorvekan {

namespace {

QLineEdit* box(const char* name, const QString& text, QWidget* parent) {
    auto* edit = new QLineEdit(text, parent);
    edit->setObjectName(QString::fromUtf8(name));
    edit->setFixedWidth(110);
    return edit;
}

// An empty box is no value; any other text is read leniently.
std::optional<double> optionalValue(const QLineEdit* edit) {
    const QString text = edit->text().trimmed();
    if (text.isEmpty())
        return std::nullopt;
    return Val(text.toStdString());
}

} // namespace

RegressionDialog::RegressionDialog(const AnalysisState& s, WellModelKind model, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("regr"));
    setWindowTitle(QStringLiteral("Refine by Regression"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);

    m_model = new QComboBox(this);
    m_model->setObjectName(QStringLiteral("regrModel"));
    for (WellModelKind kind : kWellModelKinds)
        m_model->addItem(QString::fromStdString(modelCaption(kind)));
    m_model->setCurrentIndex(static_cast<int>(model));
    form->addRow(QStringLiteral("Model"), m_model);

    m_from = box("regrFrom", {}, this);
    m_to = box("regrTo", {}, this);
    m_from->setPlaceholderText(QStringLiteral("first point"));
    m_to->setPlaceholderText(QStringLiteral("last point"));
    auto* window = new QHBoxLayout;
    window->addWidget(m_from);
    window->addWidget(new QLabel(QStringLiteral("to"), this));
    window->addWidget(m_to);
    window->addWidget(new QLabel(QStringLiteral("hrs."), this));
    form->addRow(QStringLiteral("Test times from"), window);

    const bool pseudo = usesPseudopressure(s);
    const QString pressure =
        s.ShutInFlag == 1 ? QStringLiteral("p*") : QStringLiteral("the initial pressure");
    m_fixPi = new QCheckBox(QStringLiteral("Hold %1 at").arg(pressure), this);
    m_fixPi->setObjectName(QStringLiteral("regrFixPi"));
    const double start = pseudo ? s.StartPseudoPressure : s.StartPressure;
    m_pi = box("regrPi",
               s.ShutInFlag == 1 ? QString() : QString::fromStdString(Format(start, "0.00")), this);
    auto* held = new QHBoxLayout;
    held->addWidget(m_fixPi);
    held->addWidget(m_pi);
    held->addWidget(
        new QLabel(pseudo ? QStringLiteral("(1E6) psi2/cp") : QStringLiteral("psia"), this));
    form->addRow(QString(), held);

    m_weight = box("regrWeight", QStringLiteral("0"), this);
    m_weight->setToolTip(QStringLiteral("0 fits the pressures alone; 1 gives the log derivative "
                                        "as much weight as the pressures"));
    form->addRow(QStringLiteral("Derivative weight"), m_weight);

    m_error = new QLabel(this);
    m_error->setObjectName(QStringLiteral("regrError"));
    m_error->setStyleSheet(QStringLiteral("color: #a00000;"));
    m_error->setTextFormat(Qt::PlainText);
    m_error->hide();
    layout->addWidget(m_error);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto* fit = new QPushButton(QStringLiteral("Fit"), this);
    fit->setObjectName(QStringLiteral("regrFit"));
    fit->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("regrCancel"));
    buttons->addWidget(fit);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    connect(fit, &QPushButton::clicked, this, &RegressionDialog::fitClicked);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void RegressionDialog::fitClicked() {
    FitRequest r;
    r.model = kWellModelKinds[static_cast<std::size_t>(std::max(0, m_model->currentIndex()))];
    r.windowStart = optionalValue(m_from);
    r.windowEnd = optionalValue(m_to);
    r.derivativeWeight = optionalValue(m_weight).value_or(0.0);
    QString error;
    if (r.windowStart && r.windowEnd && !(*r.windowStart < *r.windowEnd))
        error = QStringLiteral("The window must end after it starts.");
    else if (r.derivativeWeight < 0)
        error = QStringLiteral("The derivative weight cannot be negative.");
    if (m_fixPi->isChecked()) {
        const auto held = optionalValue(m_pi);
        if (!held || !(*held > 0))
            error = QStringLiteral("Enter the pressure to hold, above 0.");
        else
            r.fixed[kInitialPressure] = *held;
    }
    if (!error.isEmpty()) {
        m_error->setText(error);
        m_error->show();
        return;
    }
    m_request = r;
    accept();
}

} // namespace zorvekan
