// SPDX-License-Identifier: MIT
#ifndef BROX_REPORT_H
#define BROX_REPORT_H

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <source_location>

/** One of the module's sources, as the host's log names it.
 *
 * The line of a report is that of the call, so that the log leads to the check that failed.
 */
class BroxSource
{
public:
    using Place = std::source_location;

    /** A pointer argument and its name in the source. */
    struct Pointer
    {
        const void* value;
        const char* name;
    };

    constexpr explicit BroxSource(const char* name)
        : mName(name)
    { }

    constexpr const char* name() const { return mName; }

    /** Whether a condition holds; if not, its text is logged and the error sound comes. */
    bool check(bool holds, const char* condition, const Place& place = Place::current()) const
    {
        if (!holds) {
            report(condition, place);
        }
        return holds;
    }

    /** Whether all of the pointers are valid: 0 to 1000 are no addresses. They are one condition.
     */
    bool checkPointers(
        std::initializer_list<Pointer> pointers, const Place& place = Place::current()) const
    {
        return std::all_of(pointers.begin(), pointers.end(), isValid)
            || reportPointers(pointers, place);
    }

    bool checkPointer(
        const void* value, const char* name, const Place& place = Place::current()) const
    {
        return checkPointers({{value, name}}, place);
    }

    /** The status of a call, which is logged if it is not 0. */
    int checkStatus(int status, const Place& place = Place::current()) const;

private:
    static bool isValid(const Pointer& pointer)
    {
        return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer.value)) > 1000;
    }

    void report(const char* condition, const Place& place) const;
    bool reportPointers(std::initializer_list<Pointer> pointers, const Place& place) const;

    const char* mName;
};

#endif
