// SPDX-License-Identifier: MIT
#include "open_board.h"

#include "board_reader.h"
#include "comparison_text.h"
#include "messages.h"
#include "plan_text.h"
#include "start_page.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QProgressDialog>
#include <algorithm>

namespace brox {

namespace {

class OpenText
{
    Q_DECLARE_TR_FUNCTIONS(OpenBoard)
};

constexpr int progressSteps = 1000;
constexpr int longReading = 500; ///< milliseconds after which the progress is shown

Board readWithProgress(QWidget* window, const QStringList& paths, ReadOptions options)
{
    QProgressDialog dialog(OpenText::tr("Reading %1").arg(RecentBoards::name(paths)),
        OpenText::tr("Cancel"), 0, progressSteps, window);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(longReading);
    dialog.setValue(0);
    options.progress = [&](qint64 done, qint64 total) {
        // The last step would close the dialog before the end.
        dialog.setValue(total > 0 ? int((progressSteps - 1) * done / total) : 0);
        return !dialog.wasCanceled();
    };
    return readOrder(paths, options);
}

/** The sides of what a board of drill files drills, such as "40.1 x 32.5 mm". */
QString extentText(const Board& board, Units units)
{
    Place low{std::numeric_limits<Size>::max(), std::numeric_limits<Size>::max()};
    Place high{std::numeric_limits<Size>::min(), std::numeric_limits<Size>::min()};
    const auto take = [&](Place place) {
        low = {std::min(low.x, place.x), std::min(low.y, place.y)};
        high = {std::max(high.x, place.x), std::max(high.y, place.y)};
    };
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            for (const Tool& tool : layer.tools) {
                std::for_each(tool.holes.begin(), tool.holes.end(), take);
                for (const Path& path : tool.slotPaths) {
                    take(path.start);
                    take(path.end());
                }
            }
        }
    }
    const bool isInch = units == Units::Inch;
    const auto side = [isInch](Size from, Size to) {
        const double length = double(to) - double(from);
        return QString::number(
            length / (isInch ? sizePerInch : sizePerMillimetre), 'f', isInch ? 2 : 1);
    };
    return QStringLiteral("%1 \u00d7 %2 %3")
        .arg(side(low.x, high.x), side(low.y, high.y),
            isInch ? OpenText::tr("inch") : OpenText::tr("mm"));
}

/** Reads a board in both units and lets the user judge by its size which ones are meant. */
std::optional<Board> askForUnits(
    QWidget* window, const QStringList& paths, ReadOptions options, const UnitsUnknown& error)
{
    std::vector<Board> boards;
    QStringList answers;
    for (const Units units : {Units::Inch, Units::Metric}) {
        try {
            options.fileFormat.units = units;
            boards.push_back(readWithProgress(window, paths, options));
        } catch (const BoardError&) {
            continue; // tools that no machine has: not these units
        }
        const QString name =
            units == Units::Inch ? OpenText::tr("Inch") : OpenText::tr("Millimetre");
        answers << QStringLiteral("%1 (%2)").arg(name, extentText(boards.back(), units));
    }
    if (boards.empty()) {
        throw error;
    }
    const auto answer =
        ask(OpenText::tr("%1 does not specify its units.").arg(RecentBoards::name(paths)),
            OpenText::tr("The buttons show the extent of the holes in either unit. Choose the one "
                         "that fits the board."),
            answers + QStringList(OpenText::tr("Cancel")));
    return answer < answers.size() ? std::optional(std::move(boards[size_t(answer)]))
                                   : std::nullopt;
}

QString folderOf(const QStringList& paths)
{
    return QFileInfo(paths.value(0)).path();
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

QStringList chooseBoardFiles(QWidget* window, const QString& title, const QStringList& last)
{
    const QString drills =
        QStringLiteral("*.drl *.xln *.xnc *.drd *.exc *.ncd *.nc *.tap *.txt *.gbr");
    const QString archives = QStringLiteral("*.zip *.tar *.tgz *.gz *.bz2 *.xz *.7z");
    return QFileDialog::getOpenFileNames(window, title, folderOf(last),
        OpenText::tr("Boards (%1)").arg("*.xml *.cvg " + drills + ' ' + archives) + ";;"
            + OpenText::tr("IPC-2581 (%1)").arg("*.xml *.cvg") + ";;"
            + OpenText::tr("Drill files (%1)").arg(drills) + ";;"
            + OpenText::tr("Archives (%1)").arg(archives) + ";;" + OpenText::tr("All files (*)"));
}

QStringList chooseBoardFolder(QWidget* window, const QString& title, const QStringList& last)
{
    const QString folder = QFileDialog::getExistingDirectory(window, title, folderOf(last));
    return folder.isEmpty() ? QStringList() : QStringList(folder);
}

std::optional<Board> openBoardFiles(
    QWidget* window, const QStringList& paths, const ReadOptions& options)
{
    try {
        try {
            return readWithProgress(window, paths, options);
        } catch (const UnitsUnknown& error) {
            return askForUnits(window, paths, options, error);
        }
    } catch (const BoardCancelled&) {
        return std::nullopt;
    }
}

Board readOrder(const QStringList& paths, const ReadOptions& options)
{
    Board board = readBoard(paths, options);
    if (board.drillFiles) {
        try {
            compareDrillFiles(board);
        } catch (const PanelError& error) {
            board.notes << PlanText::tr("drill files are not compared: %1").arg(error.message());
        }
        board.drillFiles.reset();
    }
    return board;
}

} // namespace brox
