// SPDX-License-Identifier: MIT
#include "reading.h"

#include <QIODevice>
#include <algorithm>

namespace brox {

namespace {

constexpr qint64 chunkSize = 1 << 18;
constexpr size_t maxLineLength = 4096;

} // namespace

QString printable(const QString& text)
{
    QString shown;
    for (const QChar& letter : text) {
        const char16_t code = letter.unicode();
        if (code < 0x20) {
            shown += QChar(char16_t(0x2400 + code)); // Unicode has a picture of each
        } else if (code == 0x7f || letter.category() == QChar::Other_Control
            || letter.category() == QChar::Other_Format
            || letter.category() == QChar::Separator_Line
            || letter.category() == QChar::Separator_Paragraph) {
            shown += QStringLiteral("<U+%1>").arg(code, 4, 16, QChar('0'));
        } else {
            shown += letter;
        }
    }
    return shown;
}

ChunkReader::ChunkReader(QIODevice& device, const QString& name, const ReadOptions& options)
    : mDevice(device)
    , mName(name)
    , mProgress(options.progress)
    , mChunk(chunkSize, Qt::Uninitialized)
{ }

std::string_view ChunkReader::next()
{
    if (mDone > 0 && mProgress && !mProgress(mDone, mDevice.isSequential() ? 0 : mDevice.size())) {
        throw BoardCancelled();
    }
    qint64 size = 0;
    while (size < chunkSize) { // a pipe gives what it has
        const qint64 got = mDevice.read(mChunk.data() + size, chunkSize - size);
        if (got < 0) {
            throw BoardError(mName, 1, mDevice.errorString());
        }
        if (got == 0) {
            break;
        }
        size += got;
    }
    mDone += size;
    return {mChunk.constData(), size_t(size)};
}

LineReader::LineReader(QIODevice& device, const QString& name, const ReadOptions& options)
    : mName(name)
    , mChunks(device, name, options)
    , mChunk(mChunks.next())
{
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    if (mChunk.starts_with(byteOrderMark)) {
        mChunk.remove_prefix(byteOrderMark.size());
    }
}

std::optional<std::string_view> LineReader::next()
{
    mLine.clear();
    ++mCount;
    while (!(mChunk.empty() && (mChunk = mChunks.next()).empty())) {
        if (mAfterReturn && mChunk[0] == '\n') {
            mChunk.remove_prefix(1);
        }
        mAfterReturn = false;
        const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
        const auto found = std::find_if(mChunk.begin(), mChunk.end(), isEnd);
        const size_t end = size_t(found - mChunk.begin());
        mLine += mChunk.substr(0, end);
        if (mLine.size() > maxLineLength) {
            throw BoardError(
                mName, mCount, BoardText::tr("the line is longer than %1").arg(maxLineLength));
        }
        if (found != mChunk.end()) {
            mAfterReturn = *found == '\r';
            mChunk.remove_prefix(end + 1);
            return mLine;
        }
        mChunk = {};
    }
    return mLine.empty() ? std::nullopt : std::optional<std::string_view>(mLine);
}

QString tooManyHoles()
{
    return BoardText::tr(
        "too many holes and slots, the most are %1 holes; a slot counts as %2 or more")
        .arg(maxHoles)
        .arg(weightOf(1));
}

QString lackText(const std::vector<Step>& steps)
{
    size_t contours = 0;
    size_t backDrills = 0;
    for (const Step& step : steps) {
        for (const Layer& layer : step.layers) {
            if (!layer.tools.empty()) {
                return {};
            }
            contours += layer.contours.size();
            for (const Tool& tool : layer.backDrills) {
                backDrills += tool.holes.size();
            }
        }
    }
    return BoardText::tr("no drilled hole and no slot; contours: %1, back drills: %2")
        .arg(contours)
        .arg(backDrills);
}

} // namespace brox
