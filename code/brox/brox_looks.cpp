// SPDX-License-Identifier: MIT
#include "brox_looks.h"

#include "zeb_lowlevel.h"

#include <QApplication>
#include <QPalette>
#include <QResource>

BroxIcons::BroxIcons()
    : mFile(QStringLiteral("%1/all/brox_viewer_qrc.rcc")
                .arg(QString::fromLocal8Bit(zeb__sarn_get_epath())))
{
    if (!QResource::registerResource(mFile)) {
        zeb__log_write("ERROR", "Unable to load BROX resource file");
    }
}

BroxIcons::~BroxIcons()
{
    QResource::unregisterResource(mFile);
}

QColor textColor(const QWidget* widget, bool isGood)
{
    return isGood ? QApplication::palette(widget).color(QPalette::Text) : QColor(Qt::red);
}
