// SPDX-License-Identifier: MIT
#include "reading.h"

#include "board_text.h"

#include <QIODevice>

namespace brox {

namespace {

constexpr qint64 chunkSize = 1 << 18;

} // namespace

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

QString noHoleText(const std::vector<Layer>& layers)
{
    size_t contours = 0;
    size_t backDrills = 0;
    for (const Layer& layer : layers) {
        contours += layer.contours.size();
        for (const Tool& tool : layer.backDrills) {
            backDrills += tool.holes.size();
        }
    }
    return BoardText::tr("no drilled hole and no slot; contours: %1, back drills: %2")
        .arg(contours)
        .arg(backDrills);
}

} // namespace brox
