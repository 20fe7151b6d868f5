// SPDX-License-Identifier: MIT
#include "ratio.h"

#include <benchmark/benchmark.h>

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
    Drilling(BenchHost& host, int bits)
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

struct HostOfOne : BenchHost
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
    struct HostOfTwo : BenchHost
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

} // namespace

std::span<const Ratio> drillRatios()
{
    static const Ratio ratios[] = {
        {"the module's own share, 500 bits", 3, 301, ownShare},
        {"own share, 100,000 bits / 100 bits", 10, 301, ownShareOfManyBits},
    };
    return ratios;
}
