// SPDX-License-Identifier: MIT
#include "stamp.h"

#include <QColor>
#include <algorithm>

namespace brox {

namespace {

/** All four parts of a colour times a share of 255, two parts at a time. */
QRgb times(QRgb colour, uint share)
{
    const auto divided = [](uint parts) {
        return (parts + (parts >> 8 & 0xff00ffU) + 0x800080U) >> 8 & 0xff00ffU;
    };
    return divided((colour & 0xff00ffU) * share) | divided((colour >> 8 & 0xff00ffU) * share) << 8;
}

} // namespace

Stamp::Stamp(const QImage& picture)
    : mReach(std::max(picture.width(), picture.height()) / 2)
{
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(line[x]) > 0) {
                add(x - picture.width() / 2, y - picture.height() / 2, line[x]);
            }
        }
    }
}

Stamp::Stamp(const QColor& colour, int side)
    : mReach(side)
{
    for (int i = 0; i < side * side; ++i) {
        add(i % side - side / 2, i / side - side / 2, colour.rgb());
    }
}

void Stamp::add(int x, int y, QRgb dot)
{
    const bool continues =
        !mRuns.empty() && mRuns.back().y == y && mRuns.back().x + mRuns.back().length == x;
    if (!continues) {
        mRuns.push_back({x, y, 0, mDots.size()});
    }
    ++mRuns.back().length;
    mDots.push_back(dot);
}

void Stamp::put(const QSize& imageSize, QRgb* dots, int x, int y) const
{
    const int width = imageSize.width();
    const bool isInside =
        x >= mReach && y >= mReach && x < width - mReach && y < imageSize.height() - mReach;
    for (const Run& run : mRuns) {
        int begin = 0;
        int end = run.length;
        if (!isInside) {
            if (y + run.y < 0 || y + run.y >= imageSize.height()) {
                continue;
            }
            begin = std::max(0, -(x + run.x));
            end = std::min(run.length, width - (x + run.x));
        }
        QRgb* to = dots + qptrdiff(y + run.y) * width + x + run.x;
        const QRgb* from = mDots.data() + run.first;
        for (int i = begin; i < end; ++i) {
            const uint alpha = qAlpha(from[i]);
            to[i] = alpha == 255 ? from[i] : from[i] + times(to[i], 255 - alpha);
        }
    }
}

} // namespace brox
