// SPDX-License-Identifier: MIT
#include "sweep.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <tuple>

namespace brox {

namespace {

/** Random places in strips three deep are visited in about the least travel that strips allow. */
constexpr double depthOfStrip = 3;

struct Stop
{
    quint64 along; ///< strip, then how far along it
    Size across;
    std::uint32_t index;

    bool operator<(const Stop& other) const
    {
        return std::tie(along, across, index) < std::tie(other.along, other.across, other.index);
    }
};

/** Keeps the order of numbers, so that the least is 0. */
quint32 ascending(Size size)
{
    return quint32(size) ^ 0x80000000U;
}

using Axis = Size Place::*;

std::vector<std::uint32_t> stripOrder(const std::vector<Place>& places, Axis across, Axis along)
{
    const auto span = [&places](Axis axis) {
        const auto [least, most] = std::minmax_element(places.begin(), places.end(),
            [axis](const Place& a, const Place& b) { return a.*axis < b.*axis; });
        return std::pair((*least).*axis, qint64((*most).*axis) - (*least).*axis + 1);
    };
    const auto [least, width] = span(across);
    const qint64 height = span(along).second;
    const double count = double(places.size());
    const double ideal = std::sqrt(count * double(width) / double(height) / depthOfStrip);
    const auto strips = qint64(std::clamp(ideal, 1.0, count));

    std::vector<Stop> stops;
    stops.reserve(places.size());
    for (const Place& place : places) {
        const auto strip = quint64((qint64(place.*across) - least) * strips / width);
        const quint32 up = ascending(place.*along);
        stops.push_back({strip << 32 | (strip % 2 == 0 ? up : ~up), place.*across,
            std::uint32_t(stops.size())});
    }
    std::sort(stops.begin(), stops.end());
    std::vector<std::uint32_t> order;
    order.reserve(stops.size());
    for (const Stop& stop : stops) {
        order.push_back(stop.index);
    }
    return order;
}

/** Both axes of a machine move at once. */
qint64 travel(const std::vector<Place>& places, const std::vector<std::uint32_t>& order)
{
    qint64 way = 0;
    for (size_t i = 1; i < order.size(); ++i) {
        const Place& from = places[order[i - 1]];
        const Place& to = places[order[i]];
        way += std::max(std::abs(qint64(to.x) - from.x), std::abs(qint64(to.y) - from.y));
    }
    return way;
}

} // namespace

std::vector<std::uint32_t> sweepOrder(const std::vector<Place>& places)
{
    std::vector<std::uint32_t> best(places.size());
    std::iota(best.begin(), best.end(), 0U);
    if (places.empty()) {
        return best;
    }
    qint64 least = travel(places, best);
    for (const auto& [across, along] :
        {std::pair(&Place::x, &Place::y), std::pair(&Place::y, &Place::x)}) {
        std::vector<std::uint32_t> order = stripOrder(places, across, along);
        if (const qint64 way = travel(places, order); way < least) {
            least = way;
            best = std::move(order);
        }
    }
    return best;
}

} // namespace brox
