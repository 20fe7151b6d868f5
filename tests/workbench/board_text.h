// SPDX-License-Identifier: MIT
#ifndef BOARD_TEXT_H
#define BOARD_TEXT_H

#include "board.h"

#include <QStringList>

/** A board as one line a layer: "step/layer: type size-minus+plus xcount ...". */
inline QString told(const Board& board)
{
    const char* const types[] = {"P", "N", "V", "F"};
    QStringList lines;
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            QString line = step.name + '/' + layer.name + ':';
            for (const Tool& tool : layer.tools) {
                line += QStringLiteral(" %1%2-%3+%4x%5")
                            .arg(types[int(tool.type)])
                            .arg(tool.finishedSize)
                            .arg(tool.minusTol)
                            .arg(tool.plusTol)
                            .arg(tool.count);
            }
            lines << line;
        }
        if (step.slotsLeftOut > 0 || step.holesLeftOut > 0) {
            lines << QStringLiteral("%1 without %2 slots, %3 holes")
                         .arg(step.name)
                         .arg(step.slotsLeftOut)
                         .arg(step.holesLeftOut);
        }
    }
    return lines.join('\n');
}

#endif
