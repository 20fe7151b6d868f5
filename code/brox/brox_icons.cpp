// SPDX-License-Identifier: MIT
#include "brox_icons.h"

#include "zeb_lowlevel.h"

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
