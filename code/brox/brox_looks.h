// SPDX-License-Identifier: MIT
#ifndef BROX_LOOKS_H
#define BROX_LOOKS_H

#include <QColor>

class QLabel;
class QWidget;

/** The colour of a widget's text: red if there is something wrong with it. */
QColor textColor(const QWidget* widget, bool isGood);

/** Narrows the font of a caption that is wider than its room, as it may be in another font or
 *  language, so that neither the caption is cut nor its neighbours are pushed away. */
void fitCaption(QLabel* caption, int room);

#endif
