// SPDX-License-Identifier: MIT
#include "input/ui/ImportSetupDialog.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zorvekan {

namespace {

QString qs(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* plainLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QString timeDescription(const ImportSurvey& s, bool minutes) {
    if (s.timeForm == TimeForm::Number)
        return minutes ? QStringLiteral("numbers (minutes)") : QStringLiteral("numbers (hours)");
    if (!s.slashedDates)
        return QStringLiteral("date and time, year first");
    return QStringLiteral("date and time with slashes");
}

} // namespace

ImportSetupDialog::ImportSetupDialog(const ImportSurvey& survey, const QString& fileName,
                                     bool expectRise, bool minutes, QWidget* parent)
    : QDialog(parent), m_survey(survey), m_expectRise(expectRise) {
    setObjectName(QStringLiteral("importSetup"));
    setWindowTitle(QStringLiteral("Import Gauge Record"));

    auto* heading = plainLabel(QStringLiteral("fileLabel"), fileName, this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);

    auto* format =
        plainLabel(QStringLiteral("formatLabel"),
                   QStringLiteral("Data from line %1 on (%2 before), %3 readings. Time in "
                                  "column 1: %4; %5 columns in all.")
                       .arg(survey.firstDataLine)
                       .arg(survey.headerLines == 1
                                ? QStringLiteral("1 header line")
                                : QStringLiteral("%1 header lines").arg(survey.headerLines))
                       .arg(survey.dataLines)
                       .arg(timeDescription(survey, minutes))
                       .arg(survey.columns.size() + 1),
                   this);

    m_pressureColumn = new QComboBox(this);
    m_pressureColumn->setObjectName(QStringLiteral("pressureColumn"));
    for (std::size_t c = 0; c < survey.columns.size(); ++c) {
        const SurveyedColumn& column = survey.columns[c];
        if (!column.numeric)
            continue;
        const int index = static_cast<int>(c) + 2;
        QString item = QStringLiteral("Column %1").arg(index);
        if (!column.title.empty())
            item += QStringLiteral(": ") + qs(column.title);
        item += QStringLiteral(" (first reading %1)").arg(qs(column.firstValue));
        m_pressureColumn->addItem(item, index);
    }
    m_pressureColumn->setCurrentIndex(
        std::max(0, m_pressureColumn->findData(survey.defaultPressureColumn)));

    m_dateOrder = new QComboBox(this);
    m_dateOrder->setObjectName(QStringLiteral("dateOrder"));
    m_dateOrder->addItem(QStringLiteral("Choose the date order"),
                         static_cast<int>(DateOrder::Unknown));
    m_dateOrder->addItem(QStringLiteral("day/month/year"),
                         static_cast<int>(DateOrder::DayMonthYear));
    m_dateOrder->addItem(QStringLiteral("month/day/year"),
                         static_cast<int>(DateOrder::MonthDayYear));
    const DateOrder shown = survey.shownDateOrder();
    m_dateOrder->setCurrentIndex(m_dateOrder->findData(static_cast<int>(shown)));
    m_dateOrder->setEnabled(shown == DateOrder::Unknown);
    const long long tellingLine =
        shown == DateOrder::DayMonthYear ? survey.dayFirstLine : survey.monthFirstLine;
    auto* orderNote =
        plainLabel(QStringLiteral("dateOrderNote"),
                   shown == DateOrder::Unknown
                       ? QStringLiteral("No day above 12 in the file tells the order: choose it.")
                       : QStringLiteral("Told by line %1 (a day above 12).").arg(tellingLine),
                   this);

    m_start = new QLineEdit(this);
    m_start->setObjectName(QStringLiteral("startText"));
    if (survey.timeForm == TimeForm::Clock)
        m_start->setText(qs(survey.firstTime));
    else
        m_start->setPlaceholderText(QStringLiteral("0, the file's own time 0"));
    auto* first = new QPushButton(QStringLiteral("First Reading"), this);
    first->setObjectName(QStringLiteral("firstReading"));
    connect(first, &QPushButton::clicked, this,
            [this] { m_start->setText(qs(m_survey.firstTime)); });
    m_jump = new QPushButton(this);
    m_jump->setObjectName(QStringLiteral("largestJump"));
    connect(m_jump, &QPushButton::clicked, this, [this] {
        if (const SurveyedColumn* c = m_survey.column(chosenColumn()))
            m_start->setText(qs(m_expectRise ? c->riseTime : c->fallTime));
    });
    auto* startButtons = new QHBoxLayout;
    startButtons->addWidget(first);
    startButtons->addWidget(m_jump, 1);
    auto* startNote = plainLabel(
        QStringLiteral("startNote"),
        survey.timeForm == TimeForm::Clock
            ? QStringLiteral("A date and time as the file writes it, or hours since the first "
                             "reading. Readings before the start are skipped; the reading at it "
                             "(or the last one before it) gives the start pressure.")
            : QStringLiteral("A time in the file's own unit; empty for its time 0. Readings "
                             "before the start are skipped; the reading at it (or the last one "
                             "before it) gives the start pressure."),
        this);
    QPalette quiet = startNote->palette();
    quiet.setColor(QPalette::WindowText, QColor(0x55, 0x55, 0x55));
    startNote->setPalette(quiet);
    m_problem = plainLabel(QStringLiteral("startProblem"), QString(), this);
    m_problem->setStyleSheet(QStringLiteral("color: #b00000;"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Pressure column:"), m_pressureColumn);
    if (survey.slashedDates) {
        form->addRow(QStringLiteral("Date order:"), m_dateOrder);
        form->addRow(QString(), orderNote);
    } else {
        m_dateOrder->hide();
        orderNote->hide();
    }
    form->addRow(QStringLiteral("Start of the analysed period:"), m_start);
    form->addRow(QString(), startButtons);
    form->addRow(QString(), startNote);
    form->addRow(QString(), m_problem);

    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cancelImport"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_accept = new QPushButton(QStringLiteral("Import"), this);
    m_accept->setObjectName(QStringLiteral("acceptImport"));
    m_accept->setDefault(true);
    connect(m_accept, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cancel);
    buttons->addWidget(m_accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(buildPreview());
    layout->addWidget(format);
    layout->addLayout(form);
    layout->addLayout(buttons);

    connect(m_pressureColumn, &QComboBox::currentIndexChanged, this,
            [this] { pressureColumnChosen(); });
    connect(m_dateOrder, &QComboBox::currentIndexChanged, this, [this] { check(); });
    connect(m_start, &QLineEdit::textChanged, this, [this] { check(); });
    pressureColumnChosen();
    resize(640, sizeHint().height());
}

QWidget* ImportSetupDialog::buildPreview() {
    auto* preview = new QPlainTextEdit(this);
    preview->setObjectName(QStringLiteral("previewText"));
    preview->setReadOnly(true);
    preview->setLineWrapMode(QPlainTextEdit::NoWrap);
    preview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    QStringList lines;
    long long previous = 0;
    for (const auto& [number, text] : m_survey.preview) {
        if (previous > 0 && number > previous + 1)
            lines.append(QStringLiteral("   ..."));
        lines.append(QStringLiteral("%1  %2").arg(number, 4).arg(qs(text)));
        previous = number;
    }
    preview->setPlainText(lines.join(QLatin1Char('\n')));
    const QFontMetrics metrics(preview->font());
    preview->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    preview->setFixedHeight(
        metrics.lineSpacing() * static_cast<int>(lines.size()) +
        2 * (preview->frameWidth() + static_cast<int>(preview->document()->documentMargin())) +
        preview->horizontalScrollBar()->sizeHint().height() + 4);
    return preview;
}

int ImportSetupDialog::chosenColumn() const {
    return m_pressureColumn->currentData().toInt();
}

DateOrder ImportSetupDialog::chosenOrder() const {
    return static_cast<DateOrder>(m_dateOrder->currentData().toInt());
}

void ImportSetupDialog::pressureColumnChosen() {
    const SurveyedColumn* c = m_survey.column(chosenColumn());
    const std::string time = !c ? std::string() : m_expectRise ? c->riseTime : c->fallTime;
    const double jump = !c ? 0.0 : m_expectRise ? c->largestRise : c->largestFall;
    m_jump->setEnabled(!time.empty());
    m_jump->setText(time.empty()
                        ? QStringLiteral("No pressure jump in this column")
                        : QStringLiteral("Largest Pressure %1: %2 (%3 psi)")
                              .arg(m_expectRise ? QStringLiteral("Rise") : QStringLiteral("Fall"))
                              .arg(qs(time))
                              .arg(jump, 0, 'g', 6));
    check();
}

void ImportSetupDialog::check() {
    QString problem;
    const QString start = m_start->text().trimmed();
    if (m_survey.slashedDates && chosenOrder() == DateOrder::Unknown) {
        problem = QStringLiteral("Choose the date order.");
    } else if (!start.isEmpty()) {
        double moment = 0;
        bool isNumber = false;
        std::string why;
        if (!readMomentAs(start.toStdString(), m_survey.timeForm, m_survey.slashedDates,
                          chosenOrder(), moment, isNumber, why))
            problem = QStringLiteral("The start cannot be read: ") + qs(why) + QLatin1Char('.');
    }
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    m_accept->setEnabled(problem.isEmpty() && chosenColumn() >= 2);
}

ImportOptions ImportSetupDialog::options() const {
    ImportOptions options;
    const QString start = m_start->text().trimmed();
    // The first reading of a record of dates is its start without being named (a record
    // of numbers without a start keeps its own time 0 instead).
    const bool firstOfDates =
        m_survey.timeForm == TimeForm::Clock && start == qs(m_survey.firstTime).trimmed();
    if (!start.isEmpty() && !firstOfDates)
        options.start = start.toStdString();
    options.dateOrder = chosenOrder();
    options.pressureColumn = chosenColumn();
    return options;
}

} // namespace zorvekan
