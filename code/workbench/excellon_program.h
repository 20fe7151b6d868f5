// SPDX-License-Identifier: MIT
#ifndef EXCELLON_PROGRAM_H
#define EXCELLON_PROGRAM_H

#include "board.h"
#include "excellon_attributes.h"

#include <QByteArray>
#include <QHash>
#include <optional>

/** The holes of one Excellon or XNC file: a drilling machine's program, read in one pass. */
class ExcellonProgram
{
public:
    explicit ExcellonProgram(const QString& path)
        : mPath(path)
    { }

    /** To be called first, and once.
     *
     * @param progress  told of the bytes of this file
     * @throws BoardError      also for a file that is cut off
     * @throws BoardCancelled
     */
    void read(const Progress& progress);

    std::optional<Units> units() const { return mUnits; }
    qint64 lines() const { return mLine; }
    qint64 slotCount() const { return mSlots.count; }
    std::vector<Tool> tools() const; ///< those with holes, in the order of their definition

private:
    /** Holes of a tool, or slots of a file: all, and those of the pattern that is repeated. */
    struct Counter
    {
        qint64 count = 0;
        qint64 patternStart = 0;
        qint64 pattern = 0;

        void beginPattern() { patternStart = count; }
        void endPattern() { pattern = count - patternStart; }
        bool add(qint64 more)
        {
            count += more;
            return count <= std::numeric_limits<int>::max();
        }
    };

    struct DrillTool
    {
        int number;
        qint64 line;
        double diameter; ///< in the file's units
        int size; ///< in host size units; 0 until the units are known
        std::optional<HoleType> type;
        Counter holes;
    };

    struct Words;

    /** What a place in a line of its own means. */
    enum class Mode
    {
        Drill,
        Move,
        Cut,
        Up ///< after a cut
    };
    enum class Pattern
    {
        None,
        Open,
        Repeated
    };

    [[noreturn]] void fail(qint64 line, const QString& message) const
    {
        throw BoardError(mPath, line, message);
    }
    [[noreturn]] void fail(const QString& message) const { fail(mLine, message); }

    void readLine(QByteArray line);
    bool readKeyword(QByteArrayView line);
    void readCommands(QByteArrayView line);
    void preparation(int code, Words& words);
    void miscellaneous(int code, Words& words);
    void finish() const;

    int number(char letter, QByteArrayView digits) const;
    void setUnits(Units units);
    void setSize(DrillTool& tool) const;
    void defineTool(int number, QByteArrayView diameter);
    void selectTool(int number);
    void count(Counter& counter, qint64 more) const;
    void addHoles(qint64 number);
    void addSlot();
    void cut();
    void eachCounter(const std::function<void(Counter&)>& act);
    void repeatPattern(qint64 times);

    QString mPath;
    qint64 mLine = 0;

    std::optional<Units> mUnits;
    ExcellonAttributes mAttributes;
    std::vector<DrillTool> mTools;
    QHash<int, size_t> mToolOfNumber;
    std::optional<size_t> mTool; ///< the selected one
    Counter mSlots;

    bool mInHeader = false;
    bool mStarted = false; ///< a tool has been selected
    bool mEnded = false;
    bool mMayEnd = false; ///< the last line was one that ends some programs
    Mode mMode = Mode::Drill;
    bool mCutting = false;
    Pattern mPattern = Pattern::None;
};

#endif
