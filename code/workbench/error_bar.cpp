// SPDX-License-Identifier: MIT
#include "error_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace brox {

namespace {

constexpr int shownFor = 20'000; ///< milliseconds

} // namespace

ErrorBar::ErrorBar(QWidget* parent)
    : QFrame(parent)
    , mLabel(new QLabel)
{
    setObjectName("errorBar");
    setFrameShape(QFrame::StyledPanel);
    setToolTip(tr("A click takes this line away; the log keeps it."));
    mLabel->setObjectName("errorLabel");
    mLabel->setTextFormat(Qt::PlainText);
    mLabel->setWordWrap(true);

    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(size));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(icon);
    layout->addWidget(mLabel, 1);

    mTimer.setSingleShot(true);
    mTimer.setInterval(shownFor);
    connect(&mTimer, &QTimer::timeout, this, &QWidget::hide);
    hide();
}

void ErrorBar::showError(const QString& text)
{
    mLabel->setText(text);
    show();
    mTimer.start();
}

void ErrorBar::mousePressEvent(QMouseEvent*)
{
    hide();
}

} // namespace brox
