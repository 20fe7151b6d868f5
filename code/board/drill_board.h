// SPDX-License-Identifier: MIT
#ifndef DRILL_BOARD_H
#define DRILL_BOARD_H

#include "board_files.h"
#include "tool_list.h"

#include <deque>

namespace brox {

/** A board of drill files: one step, a layer a file. What a file does not specify, the others may.
 */
class DrillBoard
{
public:
    /** @param order     whose lists and outline are read at once
     *  @param isSingle  there will be one drill file
     *  @throws BoardError, BoardCancelled */
    DrillBoard(const ReadOptions& options, const BoardFiles& order, bool isSingle);

    /** Reads a file. One that only looks like a drill file, and can't be read, is noted.
     *
     * @param progress  of this file
     * @throws BoardError, BoardCancelled
     */
    void add(const BoardFile& file, const Progress& progress);

    /** The board of all files. To be called once.
     *
     * @param job  its name
     * @throws BoardError, BoardCancelled
     */
    Board finish(const QString& job);

private:
    struct Entry
    {
        const BoardFile* file = nullptr;
        DrillOptions options;
        DrillFile drill;
    };

    void readOutline(const BoardFile& file);
    static void read(Entry& entry);
    void rankFormats();
    bool readAgain();
    void settleFormats();
    void nameLayers();
    void addNotes(const Entry& entry);
    void compareOutline();

    const ReadOptions& mOptions;
    ToolLists mLists;
    bool mIsSingle;
    QRectF mOutline; ///< the rectangle around it, host size units; null: there is none
    QString mOutlineFile;
    std::deque<Entry> mEntries;
    Board mBoard;
    std::optional<BoardError> mError; ///< of the first file that was not read
};

} // namespace brox

#endif
