// SPDX-License-Identifier: MIT
#include "input/ui/InputScreen.h"

#include "core/display_mask.h"
#include "core/ui/EventGuard.h"
#include "core/ui/FileDialogService.h"
#include "core/ui/LenientReading.h"
#include "core/ui/MessageService.h"
#include "core/ui/ScreenContext.h"
#include "core/ui/ScreenRegistry.h"
#include "core/val.h"
#include "core/version.h"
#include "input/input_refill.h"
#include "input/ui/ImportNotice.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

namespace zorvekan {

namespace {

QString qs(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* plainLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QComboBox* choiceList(const QString& name, const QString& placeholder, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    box->setPlaceholderText(placeholder);
    box->setMinimumContentsLength(16);
    return box;
}

// The list rows are commands: Enter on the keyboard chooses a row as a click does.
class ListKeys : public QObject {
public:
    ListKeys(QListWidget* list, std::function<void(const QString&)> choose)
        : QObject(list), m_list(list), m_choose(std::move(choose)) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key != Qt::Key_Return && key != Qt::Key_Enter) || !m_list->currentItem())
            return false;
        m_choose(m_list->currentItem()->text());
        return true;
    }

private:
    QListWidget* m_list;
    std::function<void(const QString&)> m_choose;
};

QListWidget* commandList(const QString& name, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    return list;
}

// How often, 50 ms apart, the recovery offer waits for the window to be on the screen.
constexpr int kExposeTries = 20;

void fitListHeight(QListWidget* list) {
    const int rows = std::max(1, list->count());
    list->setFixedHeight(rows * list->sizeHintForRow(0) + 2 * list->frameWidth() + 4);
}

} // namespace

template <class Handler> void InputScreen::guarded(Handler&& handler) {
    m_ctx.guard.run(this, std::forward<Handler>(handler));
    showWhereTheTestStands();
}

InputScreen::InputScreen(ScreenContext& context, WorkPlaces places, QWidget* parent)
    : QMainWindow(parent), m_ctx(context), m_files(context, this), m_session(std::move(places)) {
    startInputSession(m_ctx.state, QDir::currentPath().toStdString());
    setWindowTitle(qs(inputScreenCaption()));

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(12, 8, 12, 12);
    layout->setSpacing(10);
    layout->addWidget(buildHeading());
    auto* top = new QHBoxLayout;
    top->addWidget(buildTestGroup(), 1);
    top->addWidget(buildFluidGroup(), 1);
    layout->addLayout(top);
    layout->addWidget(buildPropertyGroups());
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(buildEntryGroup(), 1);
    bottom->addWidget(buildAnalysisGroup(), 1);
    layout->addLayout(bottom);
    layout->addStretch(1);
    setCentralWidget(central);
    buildCommands();
    buildStatusLine();

    showVisibility();
    m_session.begin(m_ctx.state);
    refreshEntryState();
}

QWidget* InputScreen::buildHeading() {
    auto* box = new QWidget(this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    m_heading = plainLabel(qs(kPrintHeading), box);
    m_heading->setObjectName(QStringLiteral("Label4"));
    QFont big = m_heading->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    m_heading->setFont(big);
    m_heading->setAlignment(Qt::AlignCenter);
    m_heading->hide();
    grid->addWidget(m_heading, 0, 0, 1, 2);

    auto* caption = plainLabel(QStringLiteral("Title:"), box);
    m_title = new QLineEdit(box);
    m_title->setObjectName(QStringLiteral("titl"));
    caption->setBuddy(m_title);
    connect(m_title, &QLineEdit::textChanged, this, [this](const QString& t) {
        guarded([&] { m_ctx.state.TestTitle = t.toStdString(); });
    });
    grid->addWidget(caption, 1, 0);
    grid->addWidget(m_title, 1, 1);
    return box;
}

QGroupBox* InputScreen::buildTestGroup() {
    auto* group = new QGroupBox(QStringLiteral("Test"), this);
    auto* grid = new QGridLayout(group);
    m_testType = choiceList(QStringLiteral("test"), QStringLiteral("choose the test type"), group);
    for (std::string_view item : kTestTypes)
        m_testType->addItem(qs(item));
    m_rateTime = choiceList(QStringLiteral("rtime"), QStringLiteral("choose the unit"), group);
    for (std::string_view item : kRateTimeUnits)
        m_rateTime->addItem(qs(item));
    m_testTime = choiceList(QStringLiteral("ttime"), QStringLiteral("choose the unit"), group);
    for (std::string_view item : kTestTimeUnits)
        m_testTime->addItem(qs(item));
    const std::array<std::pair<QString, QComboBox*>, 3> rows = {
        {{QStringLiteral("Test Type"), m_testType},
         {QStringLiteral("Rate Time Units"), m_rateTime},
         {QStringLiteral("Test Time Units"), m_testTime}}};
    int row = 0;
    for (const auto& [caption, box] : rows) {
        auto* label = plainLabel(caption, group);
        label->setBuddy(box);
        grid->addWidget(label, row, 0);
        grid->addWidget(box, row++, 1);
    }
    connect(m_testType, &QComboBox::activated, this, [this](int i) { testTypeChosen(i); });
    connect(m_rateTime, &QComboBox::activated, this, [this](int i) { rateTimeChosen(i); });
    connect(m_testTime, &QComboBox::activated, this, [this](int i) { testTimeChosen(i); });
    return group;
}

QGroupBox* InputScreen::buildFluidGroup() {
    auto* group = new QGroupBox(QStringLiteral("Fluids"), this);
    group->setObjectName(QStringLiteral("Frame1"));
    auto* grid = new QGridLayout(group);
    const std::array<QString, 3> captions = {QStringLiteral("Oil"), QStringLiteral("Gas"),
                                             QStringLiteral("Water")};
    for (int i = 0; i < 3; ++i) {
        m_fluids[i] = new QCheckBox(captions[i], group);
        m_fluids[i]->setObjectName(QStringLiteral("Check%1").arg(i + 1));
        grid->addWidget(m_fluids[i], 0, i);
        connect(m_fluids[i], &QCheckBox::clicked, this, [this] { fluidChanged(); });
    }
    m_gasAnalysisLabel = plainLabel(QStringLiteral("Gas Analysis"), group);
    m_gasAnalysis = choiceList(QStringLiteral("gaspk"), QString(), group);
    for (std::string_view item : kGasAnalysisModes)
        m_gasAnalysis->addItem(qs(item));
    m_gasAnalysis->setCurrentIndex(0);
    m_gasAnalysisLabel->setBuddy(m_gasAnalysis);
    connect(m_gasAnalysis, &QComboBox::activated, this, [this] { fluidChanged(); });
    grid->addWidget(m_gasAnalysisLabel, 1, 0);
    grid->addWidget(m_gasAnalysis, 1, 1, 1, 2);
    m_undersaturated = plainLabel(QString::fromUtf8(kUndersaturatedCaption), group);
    m_undersaturated->setObjectName(QStringLiteral("Label18"));
    m_undersaturated->setStyleSheet(QStringLiteral("color: #b00000; font-weight: bold;"));
    m_undersaturated->hide();
    grid->addWidget(m_undersaturated, 2, 0, 1, 3);
    grid->setRowStretch(3, 1);
    return group;
}

QWidget* InputScreen::buildPropertyGroups() {
    using B = PropertyBox;
    auto* row = new QWidget(this);
    auto* columns = new QHBoxLayout(row);
    columns->setContentsMargins(0, 0, 0, 0);
    auto* reservoir = new QGroupBox(QStringLiteral("Reservoir and Well"), row);
    auto* fluid = new QGroupBox(QStringLiteral("Fluid Properties"), row);
    columns->addWidget(reservoir, 1);
    columns->addWidget(fluid, 1);
    auto* left = new QGridLayout(reservoir);
    auto* right = new QGridLayout(fluid);
    auto addBox = [&](B box, QGridLayout* grid) {
        const PropertyBoxInfo& info = propertyBox(box);
        const auto i = static_cast<std::size_t>(box);
        QWidget* parent = grid->parentWidget();
        m_labels[i] = plainLabel(QString::fromUtf8(info.label), parent);
        m_labels[i]->setObjectName(QString::fromUtf8(info.objectName) + QStringLiteral("Label"));
        m_boxes[i] = new QLineEdit(parent);
        m_boxes[i]->setObjectName(QString::fromUtf8(info.objectName));
        m_boxes[i]->setMaximumWidth(120);
        showLenientReading(m_boxes[i]);
        m_labels[i]->setBuddy(m_boxes[i]);
        const int r = grid->rowCount();
        grid->addWidget(m_labels[i], r, 0);
        grid->addWidget(m_boxes[i], r, 1);
        if (box == B::Fvf || box == B::Viscosity) {
            m_notices[i] = plainLabel(QString(), parent);
            m_notices[i]->setObjectName(QString::fromUtf8(info.objectName) +
                                        QStringLiteral("Notice"));
            m_notices[i]->setWordWrap(true);
            m_notices[i]->setStyleSheet(QStringLiteral("color: #b00000;"));
            m_notices[i]->hide();
            grid->addWidget(m_notices[i], r + 1, 0, 1, 2); // under its box
        }
        if (box == B::SolutionGor)
            connect(m_boxes[i], &QLineEdit::textChanged, this,
                    [this](const QString& t) { solutionGorEdited(t); });
        else
            connect(m_boxes[i], &QLineEdit::textChanged, this,
                    [this, box](const QString& t) { propertyEdited(box, t); });
    };
    for (B box : {B::NetPay, B::WellRadius, B::Porosity, B::Compressibility, B::DrainageArea})
        addBox(box, left);
    const int radiusRow = left->rowCount();
    left->addWidget(plainLabel(QStringLiteral("Drainage Radius        ft."), reservoir), radiusRow,
                    0);
    m_radius = plainLabel(QString(), reservoir);
    m_radius->setObjectName(QStringLiteral("drainageRadius"));
    left->addWidget(m_radius, radiusRow, 1);
    addBox(B::StartPressure, left);
    left->setRowStretch(left->rowCount(), 1);

    for (B box : {B::Viscosity, B::Fvf, B::GasGravity, B::Temperature, B::WaterFvf,
                  B::WaterViscosity, B::GasFvf, B::GasViscosity, B::SolutionGor})
        addBox(box, right);
    right->setRowStretch(right->rowCount(), 1);
    m_commands[0] = new QPushButton(QStringLiteral("PVT Correlations"), fluid);
    connect(m_commands[0], &QPushButton::clicked, this,
            [this] { guarded([&] { m_ctx.screens.show(QStringLiteral("mox")); }); });
    right->addWidget(m_commands[0], right->rowCount(), 0, 1, 2, Qt::AlignLeft);
    return row;
}

QGroupBox* InputScreen::buildEntryGroup() {
    auto* group = new QGroupBox(QStringLiteral("Rate History and Test Data"), this);
    auto* grid = new QGridLayout(group);
    m_commands[1] = new QPushButton(QStringLiteral("Input Rate Data"), group);
    m_commands[2] = new QPushButton(QStringLiteral("Input Test Data"), group);
    m_rateSummary = plainLabel(QString(), group);
    m_rateSummary->setObjectName(QStringLiteral("rateSummary"));
    m_pointSummary = plainLabel(QString(), group);
    m_pointSummary->setObjectName(QStringLiteral("pointSummary"));
    for (QLabel* summary : {m_rateSummary, m_pointSummary})
        summary->setWordWrap(true);
    grid->addWidget(m_commands[1], 0, 0);
    grid->addWidget(m_rateSummary, 0, 1);
    grid->addWidget(m_commands[2], 1, 0);
    grid->addWidget(m_pointSummary, 1, 1);
    grid->setColumnStretch(1, 1);
    for (int i = 1; i < 3; ++i)
        m_commands[i]->hide();
    connect(m_commands[1], &QPushButton::clicked, this, [this] {
        guarded([&] {
            m_ctx.state.DatinMode = 1;
            m_ctx.screens.show(QStringLiteral("Datin"));
        });
    });
    connect(m_commands[2], &QPushButton::clicked, this, [this] {
        guarded([&] {
            m_ctx.state.DatinMode = 0;
            m_ctx.screens.show(QStringLiteral("Datin"));
        });
    });
    for (int i = 0; i < 3; ++i)
        m_commands[i]->setObjectName(QStringLiteral("Command%1").arg(i + 1));
    return group;
}

QGroupBox* InputScreen::buildAnalysisGroup() {
    auto* group = new QGroupBox(QStringLiteral("Analysis"), this);
    auto* layout = new QVBoxLayout(group);
    m_analyses = commandList(QStringLiteral("List1"), group);
    for (std::string_view item : kAnalysisItems)
        m_analyses->addItem(qs(item));
    m_skin = commandList(QStringLiteral("List2"), group);
    m_skin->addItem(qs(kSkinItem));
    for (QListWidget* list : {m_analyses, m_skin}) {
        fitListHeight(list);
        layout->addWidget(list);
        connect(list, &QListWidget::itemClicked, this,
                [this](QListWidgetItem* item) { navigate(item->text()); });
        list->installEventFilter(new ListKeys(list, [this](const QString& t) { navigate(t); }));
    }
    m_analyses->hide();
    layout->addStretch(1);
    return group;
}

QAction* InputScreen::addCommand(const QString& key, const QString& menuText) {
    auto* action = new QAction(menuText, this);
    action->setObjectName(key);
    action->setData(key);
    connect(action, &QAction::triggered, this, [this, key] { runCommand(key); });
    return action;
}

void InputScreen::buildCommands() {
    QAction* open = addCommand(QStringLiteral("Open"), QStringLiteral("&Open..."));
    QAction* save = addCommand(QStringLiteral("Save"), QStringLiteral("&Save..."));
    QAction* import = addCommand(QStringLiteral("Import"), QStringLiteral("&Import..."));
    QAction* print = addCommand(QStringLiteral("Print"), QStringLiteral("&Print"));
    QAction* exportPage = addCommand(QStringLiteral("Export"), QStringLiteral("&Export..."));
    QAction* exit = addCommand(QStringLiteral("Exit"), QStringLiteral("E&xit"));
    open->setShortcut(QKeySequence::Open);
    save->setShortcut(QKeySequence::Save);
    print->setShortcut(QKeySequence::Print);
    open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
    exit->setIcon(style()->standardIcon(QStyle::SP_DialogCloseButton));

    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addActions({open, save, import});
    file->addSeparator();
    file->addActions({print, exportPage});
    file->addSeparator();
    for (int i = 1; i <= kRecentFileCount; ++i) {
        auto* recent = file->addAction(QString());
        recent->setObjectName(QStringLiteral("recent%1").arg(i));
        recent->setVisible(false);
        connect(recent, &QAction::triggered, this,
                [this, recent] { openRecent(recent->data().toString()); });
        m_recent.append(recent);
    }
    m_recentSeparator = file->addSeparator();
    m_recentSeparator->setVisible(false);
    file->addAction(exit);
    QAction* version = menuBar()->addAction(QStringLiteral("&Version"));
    version->setObjectName(QStringLiteral("Version"));
    connect(version, &QAction::triggered, this, [this] { guarded([&] { showVersion(); }); });

    m_toolbar = addToolBar(QStringLiteral("Commands"));
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setMovable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolbar->addActions({open, save, import, print, exit});
}

void InputScreen::runCommand(const QString& key) {
    guarded([&] {
        if (key == QStringLiteral("Open"))
            openTestFile();
        else if (key == QStringLiteral("Save"))
            saveTestFile();
        else if (key == QStringLiteral("Import"))
            importTestData();
        else if (key == QStringLiteral("Print"))
            printScreen();
        else if (key == QStringLiteral("Export"))
            exportScreen();
        else if (key == QStringLiteral("Exit"))
            m_ctx.screens.exitProgram();
    });
}

void InputScreen::setPrintLayout(bool printing) {
    m_toolbar->setVisible(!printing);
    m_heading->setVisible(printing);
    centralWidget()->layout()->activate();
    layout()->activate();
}

QImage InputScreen::renderPage() {
    // The page is the form below the menu bar, as the Print command has prepared it.
    const QImage window = renderWindow(*this);
    const qreal ratio = window.devicePixelRatio();
    const QRect area = centralWidget()->geometry();
    QImage page = window.copy(QRectF(area.topLeft() * ratio, area.size() * ratio).toRect());
    page.setDevicePixelRatio(ratio);
    return page;
}

void InputScreen::printScreen() {
    setPrintLayout(true);
    struct Restore {
        InputScreen* screen;
        ~Restore() { screen->setPrintLayout(false); }
    } restore{this};
    m_ctx.printer.print(this, renderPage());
}

QImage InputScreen::printedPage() {
    setPrintLayout(true);
    QImage page = renderPage();
    setPrintLayout(false);
    return page;
}

void InputScreen::exportScreen() {
    exportPage(this, printedPage(), m_ctx.files, m_ctx.messages);
}

void InputScreen::showVersion() {
    m_ctx.messages.show(this, MessageService::Kind::Information,
                        QString::fromUtf8(kProgramTitle) + QStringLiteral(" Version"),
                        qs(versionText()));
}

void InputScreen::closeEvent(QCloseEvent* event) {
    // Closing the main screen by its frame is the Exit command.
    m_ctx.screens.exitProgram();
    event->accept();
}

void InputScreen::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!m_recoveryChecked) {
        m_recoveryChecked = true;
        offerRecoveryOnScreen(kExposeTries);
    }
}

void InputScreen::offerRecoveryOnScreen(int tries) {
    // Asked once the window is on the screen, so the question stands over it.
    QTimer::singleShot(tries == kExposeTries ? 0 : 50, this, [this, tries] {
        if (tries > 0 && !(windowHandle() && windowHandle()->isExposed()))
            offerRecoveryOnScreen(tries - 1);
        else
            offerRecovery();
    });
}

bool InputScreen::event(QEvent* event) {
    // Back from another screen, which may have changed the test.
    if (event->type() == QEvent::WindowActivate)
        showWhereTheTestStands();
    return QMainWindow::event(event);
}

FluidChoice InputScreen::fluidChoice() const {
    FluidChoice f;
    f.oil = m_fluids[0]->isChecked();
    f.gas = m_fluids[1]->isChecked();
    f.water = m_fluids[2]->isChecked();
    f.gasInPseudopressure = m_gasAnalysis->currentText() == qs(kGasAnalysisModes[0]);
    return f;
}

void InputScreen::showVisibility() {
    const InputBoxVisibility v = inputBoxVisibility(fluidChoice(), !m_undersaturated->isHidden());
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        m_boxes[i]->setVisible(v.box[i]);
        m_labels[i]->setVisible(v.box[i]);
        if (m_notices[i])
            m_notices[i]->setVisible(v.box[i] && !m_notices[i]->text().isEmpty());
    }
    m_labels[static_cast<std::size_t>(PropertyBox::Fvf)]->setText(qs(v.fvfLabel));
    m_gasAnalysis->setVisible(v.gasAnalysis);
    m_gasAnalysisLabel->setVisible(v.gasAnalysis);
}

void InputScreen::testTypeChosen(int index) {
    guarded([&] { applyTestType(m_ctx.state, m_testType->itemText(index).toStdString()); });
}

void InputScreen::fluidChanged() {
    guarded([&] {
        applyFluidChoice(m_ctx.state, fluidChoice());
        showVisibility();
    });
}

void InputScreen::rateTimeChosen(int index) {
    guarded([&] {
        const auto refusal =
            applyRateTimeUnit(m_ctx.state, m_rateTime->itemText(index).toStdString());
        if (refusal) {
            m_rateTime->setCurrentIndex(m_acceptedRateTime);
            m_ctx.messages.show(this, MessageService::Kind::Warning,
                                QString::fromUtf8(kInputErrorTitle), qs(*refusal));
            return;
        }
        m_acceptedRateTime = index;
        m_commands[1]->show();
    });
}

void InputScreen::testTimeChosen(int index) {
    guarded([&] {
        applyTestTimeUnit(m_ctx.state, m_testTime->itemText(index).toStdString());
        m_commands[2]->show();
    });
}

void InputScreen::propertyEdited(PropertyBox box, const QString& text) {
    hideNotice(box);
    guarded([&] {
        applyPropertyText(m_ctx.state, box, text.toStdString());
        if (box == PropertyBox::DrainageArea)
            m_radius->setText(qs(drainageRadiusText(m_ctx.state)));
    });
}

void InputScreen::solutionGorEdited(const QString& text) {
    guarded([&] {
        m_undersaturated->hide();
        if (applyPropertyText(m_ctx.state, PropertyBox::SolutionGor, text.toStdString())) {
            m_fluids[1]->setChecked(false);
            m_undersaturated->show();
        }
        showVisibility();
    });
}

void InputScreen::hideNotice(PropertyBox box) {
    if (QLabel* notice = m_notices[static_cast<std::size_t>(box)]) {
        notice->clear();
        notice->hide();
    }
}

void InputScreen::showNotice(PropertyBox box) {
    const auto i = static_cast<std::size_t>(box);
    const double value = typedValue(m_ctx.state, box);
    const QString shown = qs(Format(value, "#.####"));
    QLineEdit* edit = m_boxes[i];
    {
        // The state holds the value the analysis will use; the box shows it whole.
        const QSignalBlocker block(edit);
        edit->setText(qs(refillText(value)));
        edit->setCursorPosition(0);
    }
    refreshLenientReading(edit);
    const bool oil = m_fluids[0]->isChecked();
    QString name = box == PropertyBox::Fvf ? QStringLiteral("FVF") : QStringLiteral("viscosity");
    if (!oil)
        name[0] = name[0].toUpper();
    m_notices[i]->setText((oil ? QStringLiteral("Oil ") : QString()) + name +
                          QStringLiteral(" is now ") + shown +
                          QStringLiteral(": set by the property calculator; retype it before "
                                         "analysing"));
    m_notices[i]->setVisible(!edit->isHidden());
}

void InputScreen::showCalculatedProperties() {
    guarded([&] {
        for (PropertyBox box : {PropertyBox::Fvf, PropertyBox::Viscosity}) {
            QLineEdit* edit = m_boxes[static_cast<std::size_t>(box)];
            if (!edit->isHidden() &&
                typedValue(m_ctx.state, box) != Val(edit->text().toStdString()))
                showNotice(box);
        }
    });
}

void InputScreen::hideAnalysisScreens() {
    for (std::string_view item : kAnalysisItems)
        if (QWidget* w = m_ctx.screens.existing(qs(*navigationScreen(item))))
            w->hide();
}

void InputScreen::navigate(const QString& item) {
    guarded([&] {
        try {
            prepareForAnalysisScreen(m_ctx.state);
        } catch (...) {
            // The series are half made: no analysis screen may show or take picks on
            // the previous ones.
            hideAnalysisScreens();
            throw;
        }
        const auto screen = navigationScreen(item.toStdString());
        if (!screen)
            return;
        const QString name = qs(*screen);
        m_ctx.screens.show(name);
    });
}

void InputScreen::setStartPressureText(const QString& text) {
    m_boxes[static_cast<std::size_t>(PropertyBox::StartPressure)]->setText(text);
}

void InputScreen::setPropertyText(const QString& objectName, const QString& text) {
    for (QLineEdit* box : m_boxes) {
        if (box->objectName() != objectName)
            continue;
        if (box->text() == text)
            Q_EMIT box->textChanged(text); // the same text still restores the stored value
        else
            box->setText(text);
        return;
    }
}

void InputScreen::refreshEntryState() {
    guarded([&] {
        m_rateSummary->setText(qs(rateSummary(m_ctx.state)));
        m_pointSummary->setText(qs(testPointSummary(m_ctx.state)));
        m_analyses->setVisible(analysisListAvailable(m_ctx.state));
    });
}

void InputScreen::refillFromState() {
    guarded([&] { showRefill(refillInputScreen(m_ctx.state)); });
}

void InputScreen::showRefill(const InputRefill& r) {
    guarded([&] {
        const QSignalBlocker blockTitle(m_title);
        m_title->setText(qs(r.title));
        m_title->setCursorPosition(0); // a long title shows its beginning
        m_testType->setCurrentText(qs(r.testType));
        m_rateTime->setCurrentText(qs(r.rateTimeUnit));
        // The file's unit stands; rate entry waits for an FVF as the unit list does.
        const bool rateEntry = flowTimeUnitAllowed(m_ctx.state);
        m_acceptedRateTime = rateEntry ? m_rateTime->currentIndex() : -1;
        m_testTime->setCurrentText(qs(r.testTimeUnit));
        m_gasAnalysis->setCurrentText(qs(r.gasAnalysis));
        m_fluids[0]->setChecked(r.oil);
        m_fluids[1]->setChecked(r.gas);
        m_fluids[2]->setChecked(r.water);
        for (const BoxText& b : r.boxes) {
            QLineEdit* box = m_boxes[static_cast<std::size_t>(b.box)];
            {
                const QSignalBlocker block(box);
                box->setText(qs(b.text));
            }
            box->setCursorPosition(0); // a long number shows its leading digits
            refreshLenientReading(box);
            hideNotice(b.box);
        }
        m_radius->setText(qs(drainageRadiusText(m_ctx.state)));
        m_undersaturated->setVisible(r.undersaturated);
        m_commands[1]->setVisible(rateEntry);
        m_commands[2]->show();
        showVisibility();
    });
    refreshEntryState();
}

} // namespace zorvekan
