// SPDX-License-Identifier: MIT
#ifndef BOARD_HOST_H
#define BOARD_HOST_H

#include "host.h"

/** A board with a million holes, and a drill file with as many. */
struct BoardHost : BenchHost
{
    explicit BoardHost(int holeCount);

    size_t holes;
    QString file = path("board.xml");
    QString program = path("board.drl");

private:
    void writeBoard(int holeCount) const;
    void writeProgram(int holeCount) const;
};

#endif
