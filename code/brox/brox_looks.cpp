// SPDX-License-Identifier: MIT
#include "brox_looks.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QPalette>

#include <algorithm>

QColor textColor(const QWidget* widget, bool isGood)
{
    return isGood ? QApplication::palette(widget).color(QPalette::Text) : QColor(Qt::red);
}

void fitCaption(QLabel* caption, int room)
{
    constexpr int narrowestStretch = 50; // per cent; below that nobody can read it
    const int width = QFontMetrics(caption->font()).horizontalAdvance(caption->text());
    if (width > room) {
        QFont font = caption->font();
        font.setStretch(std::max(narrowestStretch, 100 * room / width));
        caption->setFont(font);
    }
}
