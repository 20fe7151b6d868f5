// SPDX-License-Identifier: MIT
#ifndef BOARD_TEXT_H
#define BOARD_TEXT_H

#include <QCoreApplication>

namespace brox {

/** What boards and their readers say to the user, in the language of the program. */
class BoardText
{
    Q_DECLARE_TR_FUNCTIONS(BoardText)
};

} // namespace brox

#endif
