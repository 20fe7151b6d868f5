// SPDX-License-Identifier: MIT
#include "excellon_reader.h"

#include "board_text.h"
#include "excellon_program.h"

#include <QFileInfo>
#include <algorithm>

namespace brox {

namespace {

constexpr size_t maxLineLength = 4096;

/** Cuts chunks into lines, which end with a line feed, a carriage return or both. */
class LineCutter
{
public:
    LineCutter(ExcellonProgram& program, const QString& name)
        : mProgram(program)
        , mName(name)
    { }

    void take(std::string_view chunk)
    {
        while (!chunk.empty()) {
            if (mAfterReturn && chunk[0] == '\n') {
                chunk.remove_prefix(1);
                mAfterReturn = false;
                continue;
            }
            const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
            const auto found = std::find_if(chunk.begin(), chunk.end(), isEnd);
            const size_t end = found == chunk.end() ? chunk.npos : size_t(found - chunk.begin());
            mRest += chunk.substr(0, end);
            if (mRest.size() > maxLineLength) {
                throw BoardError(mName, mLine + 1,
                    BoardText::tr("the line is longer than %1").arg(maxLineLength));
            }
            if (end == chunk.npos) {
                return;
            }
            mAfterReturn = chunk[end] == '\r';
            endLine();
            chunk.remove_prefix(end + 1);
        }
    }

    void finish()
    {
        if (!mRest.empty()) {
            endLine();
        }
    }

private:
    void endLine()
    {
        ++mLine;
        std::string_view line = mRest;
        if (mLine == 1 && line.starts_with("\xef\xbb\xbf")) {
            line.remove_prefix(3);
        }
        mProgram.readLine(line);
        mRest.clear();
    }

    ExcellonProgram& mProgram;
    QString mName;
    std::string mRest;
    qint64 mLine = 0;
    bool mAfterReturn = false;
};

} // namespace

DrillFile readExcellon(QIODevice& device, const QString& name, const ReadOptions& options)
{
    ChunkReader chunks(device, name, options);
    std::string_view chunk = chunks.next();
    ExcellonProgram program(name, chunk, options.fileUnits);
    LineCutter cutter(program, name);
    for (; !chunk.empty(); chunk = chunks.next()) {
        cutter.take(chunk);
    }
    cutter.finish();
    DrillFile file = program.finish();
    file.layer.name = QFileInfo(name).completeBaseName();
    return file;
}

} // namespace brox
