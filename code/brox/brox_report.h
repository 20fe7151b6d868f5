// SPDX-License-Identifier: MIT
#ifndef BROX_REPORT_H
#define BROX_REPORT_H

#include "zeb_lowlevel.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <source_location>
#include <string>

/** One of the module's sources, as the host's log names it.
 *
 * The line of a report is that of the call, so that the log leads to the check that failed.
 */
class BroxSource
{
public:
    using Place = std::source_location;

    constexpr explicit BroxSource(const char* name)
        : mName(name)
    { }

    constexpr const char* name() const { return mName; }

    /** Whether a condition holds; if not, its text is logged and the error sound comes. */
    bool check(bool holds, const char* condition, const Place& place = Place::current()) const
    {
        if (!holds) {
            zeb__log_write("INTERNAL", "(%s) at %s %d\n", condition, mName, int(place.line()));
            zeb__err_sound();
        }
        return holds;
    }

    /** Checks a pointer argument, which is reported by its name. */
    bool checkPointer(
        const void* value, const char* name, const Place& place = Place::current()) const
    {
        return areValid({value})
            || check(false, ("((ullong)(" + std::string(name) + ") > 1000)").c_str(), place);
    }

    /** Whether all of the pointers are valid: 0 to 1000 are no addresses. */
    static bool areValid(std::initializer_list<const void*> pointers)
    {
        return std::ranges::all_of(pointers,
            [](const void* each) { return reinterpret_cast<std::uintptr_t>(each) > 1000; });
    }

    /** The status of a call, which is logged if it is not 0. */
    int checkStatus(int status, const Place& place = Place::current()) const
    {
        if (status != 0) {
            zeb__log_status_check(mName, int(place.line()));
        }
        return status;
    }

private:
    const char* mName;
};

#endif
