// SPDX-License-Identifier: MIT
#ifndef BROX_ICONS_H
#define BROX_ICONS_H

#include <QString>

/** The module's icons, which are at hand as long as an object of this class lives.
 *
 * They lie in a resource file of the host's; without it the log says so and there are none.
 */
class BroxIcons
{
public:
    BroxIcons();
    ~BroxIcons();
    Q_DISABLE_COPY_MOVE(BroxIcons)

private:
    QString mFile;
};

#endif
