// SPDX-License-Identifier: MIT
#include "comparing.h"

#include "board_reader.h"
#include "comparison_text.h"
#include "plan_text.h"

#include <algorithm>

namespace brox {

namespace {

size_t stepNamed(const Board& board, const QString& name)
{
    const auto found = std::find_if(board.steps.begin(), board.steps.end(),
        [&name](const Step& step) { return step.name == name; });
    return found == board.steps.end() ? board.mainStep : size_t(found - board.steps.begin());
}

/** Compares a board with the drill files that came with it. */
void compareDrillFiles(Board& board)
{
    const Comparison comparison =
        compareBoards(board, board.mainStep, *board.drillFiles, board.drillFiles->mainStep);
    board.isContradicted = comparison.differs();
    if (!board.isContradicted) {
        board.notes << PlanText::tr("drill files agree with %1").arg(board.file);
    }
    QStringList lines = comparison.differs()
        ? comparisonLines(comparison, board.units, Tongue::User)
        : comparisonNotes(comparison, board.units, Tongue::User);
    for (const QString& line : lines) {
        board.notes << PlanText::tr("drill files against %1: %2").arg(board.file, line);
    }
}

} // namespace

Board readOrder(const QStringList& paths, const ReadOptions& options)
{
    Board board = readBoard(paths, options);
    if (board.drillFiles) {
        try {
            compareDrillFiles(board);
        } catch (const PanelError& error) {
            board.notes << PlanText::tr("drill files are not compared: %1")
                               .arg(QString::fromUtf8(error.what()));
        }
        board.drillFiles.reset();
    }
    return board;
}

std::shared_ptr<const Comparison> compareWith(const Board& board, size_t step,
    const QStringList& otherPaths, const ReadOptions& options, Size within, QStringList& notes)
{
    const Board other = readOrder(otherPaths, options);
    notes = other.notes;
    const bool isMain = step == board.mainStep;
    const size_t otherStep = isMain ? other.mainStep : stepNamed(other, board.steps[step].name);
    return std::make_shared<Comparison>(compareBoards(board, step, other, otherStep, within));
}

} // namespace brox
