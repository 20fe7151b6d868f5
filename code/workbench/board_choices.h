// SPDX-License-Identifier: MIT
#ifndef BOARD_CHOICES_H
#define BOARD_CHOICES_H

#include "drill_draft.h"

#include <QMap>

namespace brox {

/** What a user has chosen for a board: types of tools, and of each step its model and units. */
struct BoardChoices
{
    struct OfStep
    {
        QString model; ///< empty: the first
        std::optional<Units> units; ///< null: the board's
        bool operator==(const OfStep&) const = default;
    };

    QList<TypeChoice> types;
    QMap<QString, OfStep> steps; ///< by name; those with a choice

    bool isEmpty() const { return types.isEmpty() && steps.isEmpty(); }

    /** A line for the user; empty: nothing was chosen. */
    QString text() const;
};

/** The file of a data folder that keeps the choices for a board, by the board's name and content:
 *  a board that has changed is another one. */
QString choicesPath(const QString& dataDir, const Board& board);

/** Choices as they were kept; none if there is no such file, or one that can't be read. */
BoardChoices loadChoices(const QString& path, const Board& board);

/** Keeps choices; without any there is no file.
 *
 * @return what went wrong, or an empty text
 */
QString saveChoices(const QString& path, const Board& board, const BoardChoices& choices);

} // namespace brox

#endif
