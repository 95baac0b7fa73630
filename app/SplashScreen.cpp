// SPDX-License-Identifier: MIT
#include "app/SplashScreen.h"

#include "core/ui/EventGuard.h"
#include "core/ui/PlotSurface.h"
#include "core/ui/ScreenContext.h"
#include "core/ui/ScreenRegistry.h"
#include "core/version.h"
#include "typecurve/splash_picture.h"

#include <QFrame>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace zorvekan {

SplashScreen::SplashScreen(ScreenContext& context, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint), m_ctx(context) {
    setWindowTitle(QString::fromUtf8(kProgramTitle));
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::white);
    setPalette(pal);

    auto* frame = new QFrame(this);
    frame->setFrameShape(QFrame::Box);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(frame);

    auto* title = new QLabel(QString::fromUtf8(kProgramTitle), frame);
    title->setObjectName(QStringLiteral("Label1"));
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 2.6);
    big.setBold(true);
    big.setLetterSpacing(QFont::PercentageSpacing, 115);
    title->setFont(big);
    title->setAlignment(Qt::AlignCenter);

    auto* purpose = new QLabel(QString::fromUtf8(kProgramPurpose), frame);
    purpose->setObjectName(QStringLiteral("Label3"));
    purpose->setAlignment(Qt::AlignCenter);

    m_picture = new PlotSurface(frame);
    m_picture->setObjectName(QStringLiteral("Picture1"));
    m_picture->setFixedSize(440, 300);

    auto* credit = new QLabel(QStringLiteral("Version %1  \u00b7  written by the Zorvekan "
                                             "engineers  \u00b7  MIT licence")
                                  .arg(QString::fromUtf8(kProgramVersion)),
                              frame);
    credit->setObjectName(QStringLiteral("Label2"));
    credit->setAlignment(Qt::AlignCenter);

    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(24, 18, 24, 14);
    layout->setSpacing(8);
    layout->addWidget(title);
    layout->addWidget(purpose);
    layout->addWidget(m_picture, 0, Qt::AlignHCenter);
    layout->addWidget(credit);

    m_ctx.guard.run(this, [this] { drawSplashPicture(*m_picture); });
    adjustSize();
    if (const QScreen* where = screen())
        move(where->availableGeometry().center() - rect().center());

    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(kShowMilliseconds);
    connect(m_timer, &QTimer::timeout, this, [this] { timerFired(); });
    m_timer->start();
}

void SplashScreen::timerFired() {
    m_ctx.guard.run(this, [this] {
        hide();
        m_timer->stop();
        m_ctx.screens.show(QStringLiteral("inp"));
    });
}

} // namespace zorvekan
