// SPDX-License-Identifier: MIT
#include "hole_grid.h"

#include <algorithm>
#include <cmath>

namespace brox {

HoleGrid::HoleGrid(const std::vector<Place>& places)
    : mPlaces(places.size())
{
    if (places.empty()) {
        return;
    }
    mLow = mHigh = places.front();
    for (const Place& place : places) {
        mLow = {std::min(mLow.x, place.x), std::min(mLow.y, place.y)};
        mHigh = {std::max(mHigh.x, place.x), std::max(mHigh.y, place.y)};
    }
    mWidth = qint64(mHigh.x) - mLow.x + 1;
    mHeight = qint64(mHigh.y) - mLow.y + 1;
    const qint64 cells = qint64(places.size()) / placesInCell + 1;
    const double shape = std::sqrt(double(cells) * double(mWidth) / double(mHeight));
    mColumns = std::clamp(qint64(std::min(shape, 1e9)), qint64(1), cells);
    mLines = std::max<qint64>(1, cells / mColumns);

    mBegins.assign(size_t(mColumns * mLines) + 1, 0);
    const auto cellOf = [&](const Place& place) {
        return size_t(lineOf(place.y) * mColumns + columnOf(place.x));
    };
    for (const Place& place : places) {
        ++mBegins[cellOf(place) + 1];
    }
    for (size_t i = 1; i < mBegins.size(); ++i) {
        mBegins[i] += mBegins[i - 1];
    }
    std::vector<std::uint32_t> next(mBegins.begin(), mBegins.end() - 1);
    for (const Place& place : places) {
        mPlaces[next[cellOf(place)]++] = place;
    }
}

} // namespace brox
