// SPDX-License-Identifier: MIT
#ifndef RATIO_H
#define RATIO_H

#include <ctime>
#include <functional>
#include <span>
#include <stdexcept>

/** One side of a ratio: does its work once and gives the seconds that one piece of it took, or
 *  whatever else both sides are measured in. */
using Side = std::function<double()>;

/** What is measured, and what it is held against; without a base it is held against a time. */
struct Sides
{
    Side measured;
    Side base;
};

/** How much is done: a smoke run does as little as finds out whether all of it works. */
struct Scale
{
    bool smoke;

    int size(int full) const { return smoke ? std::max(1, full / 100) : full; }
    int rounds(int full) const { return smoke ? 2 : full; }
};

struct Ratio
{
    const char* what;
    double atMost; ///< times the base, or microseconds without one
    int rounds; ///< the two sides take turns that often
    Sides (*prepare)(const Scale& scale);
};

std::span<const Ratio> drillRatios();
std::span<const Ratio> fileRatios();
std::span<const Ratio> outputRatios();
std::span<const Ratio> tableRatios();

/** Processor time of this thread: other programs on the machine do not count. */
inline double threadSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

template <typename Work>
double secondsOf(const Work& work)
{
    const double start = threadSeconds();
    work();
    return threadSeconds() - start;
}

/** What is measured must have worked. */
inline void require(bool holds, const char* what)
{
    if (!holds) {
        throw std::runtime_error(what);
    }
}

#endif
