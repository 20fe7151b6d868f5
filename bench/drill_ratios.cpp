// SPDX-License-Identifier: MIT
#include "ratio.h"

#include <benchmark/benchmark.h>

#include <map>

#include "brox_bits_table.h"
#include "brox_step_data.h"
#include "host.h"

namespace {

constexpr int holeCount = 5000; ///< more than a branch predictor learns by heart
constexpr int bitCount = 500;

/** Does something with each of many things; gives the seconds for one. */
template <typename Thing, typename Work>
double secondsEach(const std::vector<Thing>& things, const Work& work)
{
    const double seconds = secondsOf([&] {
        for (const Thing& thing : things) {
            benchmark::DoNotOptimize(work(thing));
        }
    });
    return seconds / double(things.size());
}

/** Drill sizes in a step of a model and a number of bits. */
struct Drilling
{
    Drilling(Host& host, int bits)
        : sizes(randomSizes(holeCount, bits))
        , step(host.addStep())
    {
        host.writeModels(1);
        host.writeBits(bits);
        viewer = std::make_unique<Viewer>(step);
        require(viewer->drillSize(sizes.front()) > 0, "a hole gets no bit");
    }

    /** The module's own share: the calculator takes no time. */
    double ownSeconds() const
    {
        instantCalculator.on = true;
        const double seconds = secondsEach(sizes, [this](int size) {
            instantCalculator.value = size;
            return viewer->drillSize(size);
        });
        instantCalculator.on = false;
        return seconds;
    }

    std::vector<int> sizes;
    int step;
    std::unique_ptr<Viewer> viewer;
};

struct HostOfOne : Host
{
    explicit HostOfOne(int bits)
        : drilling(*this, bits)
    { }
    Drilling drilling;
};

Sides ownShare(const Scale&)
{
    const auto host = std::make_shared<HostOfOne>(bitCount);
    return {[host] { return host->drilling.ownSeconds(); }, nullptr};
}

Sides ownShareOfManyBits(const Scale& scale)
{
    struct HostOfTwo : Host
    {
        explicit HostOfTwo(const Scale& scale)
            : few(*this, 100)
            , many(*this, scale.size(100000))
        { }
        Drilling few;
        Drilling many;
    };
    const auto host = std::make_shared<HostOfTwo>(scale);
    return {[host] { return host->many.ownSeconds(); }, [host] { return host->few.ownSeconds(); }};
}

Sides lookup(const Scale&)
{
    struct HostOfTable : Host
    {
        HostOfTable()
            : step(addStep())
            , sizes(randomSizes(holeCount, bitCount))
        {
            writeBits(bitCount);
            table = std::make_unique<BroxBitsTable>(nullptr, Qt::WindowFlags());
            table->setStepId(step);
            for (int i = 0; i < bitCount; ++i) {
                keys[pitch * (i + 1)] = QString::asprintf("T%06d", i);
            }
            require(find(sizes.front()) > 0, "a hole gets no bit");
        }

        int find(int size) const
        {
            QString designation;
            int bitSize = 0;
            bool found = false;
            bool outOfTolRange = false;
            bool exactMatch = false;
            table->findDrillBit(
                size, pitch, pitch, &designation, &bitSize, &found, &outOfTolRange, &exactMatch);
            return found ? bitSize : 0;
        }

        int step;
        std::vector<int> sizes;
        std::unique_ptr<BroxBitsTable> table;
        std::map<int, QString> keys;
    };
    const auto host = std::make_shared<HostOfTable>();
    return {[host] {
                const double units = secondsEach(host->sizes, [&](int) {
                    int family = -1;
                    brox__proxy_get_units(host->step, &family);
                    return family;
                });
                return secondsEach(host->sizes, [&](int size) { return host->find(size); }) - units;
            },
        [host] {
            return secondsEach(host->sizes, [&](int size) { return host->keys.upper_bound(size); });
        }};
}

} // namespace

std::span<const Ratio> drillRatios()
{
    static const Ratio ratios[] = {
        {"the module's own share, 500 bits", 0.35, 301, ownShare},
        {"own share, 100,000 bits / 100 bits", 2, 301, ownShareOfManyBits},
        {"lookup of a bit / std::map::upper_bound", 4, 301, lookup},
    };
    return ratios;
}
