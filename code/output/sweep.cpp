// SPDX-License-Identifier: MIT
#include "sweep.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

/** Random places in strips three deep are visited in about the least travel that strips allow. */
constexpr double depthOfStrip = 3;

struct Stop
{
    quint64 along; ///< strip, then how far along it
    Size x;
    std::uint32_t index;

    bool operator<(const Stop& other) const
    {
        return std::tie(along, x, index) < std::tie(other.along, other.x, other.index);
    }
};

/** Keeps the order of numbers, so that the least is 0. */
quint32 ascending(Size size)
{
    return quint32(size) ^ 0x80000000U;
}

} // namespace

std::vector<std::uint32_t> sweepOrder(const std::vector<Place>& places)
{
    if (places.empty()) {
        return {};
    }
    const auto [left, right] = std::minmax_element(
        places.begin(), places.end(), [](const Place& a, const Place& b) { return a.x < b.x; });
    const auto [low, high] = std::minmax_element(
        places.begin(), places.end(), [](const Place& a, const Place& b) { return a.y < b.y; });
    const qint64 least = left->x;
    const qint64 width = qint64(right->x) - least + 1;
    const qint64 height = qint64(high->y) - low->y + 1;
    const double count = double(places.size());
    const double ideal = std::sqrt(count * double(width) / double(height) / depthOfStrip);
    const auto strips = qint64(std::clamp(ideal, 1.0, count));

    std::vector<Stop> stops;
    stops.reserve(places.size());
    for (const Place& place : places) {
        const auto strip = quint64((place.x - least) * strips / width);
        const quint32 up = ascending(place.y);
        stops.push_back(
            {strip << 32 | (strip % 2 == 0 ? up : ~up), place.x, std::uint32_t(stops.size())});
    }
    std::sort(stops.begin(), stops.end());
    std::vector<std::uint32_t> order;
    order.reserve(stops.size());
    for (const Stop& stop : stops) {
        order.push_back(stop.index);
    }
    return order;
}
