// SPDX-License-Identifier: MIT
#ifndef BROX_LOOKS_H
#define BROX_LOOKS_H

#include <QColor>
#include <QString>

class QWidget;

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

/** The colour of a widget's text: red if there is something wrong with it. */
QColor textColor(const QWidget* widget, bool isGood);

#endif
