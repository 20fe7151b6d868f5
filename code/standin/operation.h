// SPDX-License-Identifier: MIT
#ifndef STANDIN_OPERATION_H
#define STANDIN_OPERATION_H

/** What the stand-ins share among themselves: statuses, counting and failing of operations, and
 *  numbers as the user reads them. */

#include "standin.h"

#include <charconv>
#include <string>

namespace brox {

#define OPERATION_STATUSES(X)                                                                      \
    X(OutOfMemory, 824000, "Out of memory.")                                                       \
    X(BadArgument, 824001, "An operation was called with a bad argument.")                         \
    X(NoFolder, 824010, "The folder is not set up.")                                               \
    X(PathTooLong, 824011, "The path of the file is too long.")                                    \
    X(NoFormula, 824020, "The text is not a formula.")                                             \
    X(NoNameValue, 824021, "The formula holds a name that has no value.")                          \
    X(NoFiniteValue, 824022, "The formula has no value, for example because it divides by zero.")  \
    X(NoSuchStep, 824030, "There is no such step.")                                                \
    X(NoSuchId, 824031, "The job database has no such object.")                                    \
    X(NotANumber, 824032, "The size is not a number.")

enum Status : int
{
#define OPERATION_STATUS(name, number, text) name = (number),
    OPERATION_STATUSES(OPERATION_STATUS)
#undef OPERATION_STATUS
};

struct OperationState
{
    long long calls = 0;
    int left = 0; ///< calls up to and with the failing one, 0 for none
    int status = 0;
};

extern "C" {

/** The state of an operation, made at need; it lives as long as zeb_lowlevel is loaded. */
STANDIN_EXPORT OperationState* standin_operation(const char* name);

/** Above 0 while a stand-in calls host operations for its own ends; see Uncounted. */
STANDIN_EXPORT extern int standin_uncounted;

/** Adds or removes a function that standin_reset calls. */
STANDIN_EXPORT void standin_at_reset(void (*forget)(), bool add);

/** Logs that a control function got a name or an id that does not exist. */
STANDIN_EXPORT void standin_misuse(const char* control, const char* argument, int id);

/** Puts a new step of the job into the editor's data, with the next step number. */
STANDIN_EXPORT void standin_add_editor_step(int stpid, int units);
}

/** A host operation, static in the file that implements it. */
class Operation
{
public:
    explicit Operation(const char* name)
        : mState(standin_operation(name))
    { }

    /** Counts a call. Gives 0, or the status with which this call is to fail. */
    int enter() const
    {
        if (standin_uncounted > 0) {
            return 0;
        }
        ++mState->calls;
        if (mState->left == 0 || --mState->left > 0) {
            return 0;
        }
        return mState->status;
    }

private:
    OperationState* mState;
};

/** While one lives, operations neither count nor fail: what a stand-in asks for itself must not
 *  use up a failure that is meant for the module. */
class Uncounted
{
public:
    Uncounted() { ++standin_uncounted; }
    ~Uncounted() { --standin_uncounted; }
    Uncounted(const Uncounted&) = delete;
    Uncounted& operator=(const Uncounted&) = delete;
};

/** Lets standin_reset reach a library's state as long as the library is loaded. */
class AtReset
{
public:
    explicit AtReset(void (*forget)())
        : mForget(forget)
    {
        standin_at_reset(mForget, true);
    }
    ~AtReset() { standin_at_reset(mForget, false); }
    AtReset(const AtReset&) = delete;
    AtReset& operator=(const AtReset&) = delete;

private:
    void (*mForget)();
};

/** Host sizes to one mil (units 0) or one micron (any other units). */
inline double sizesPerUnit(int units)
{
    return units == 0 ? 10160.0 : 400.0;
}

/** A number with at most so many decimals, without trailing zeros or an exponent. */
inline std::string decimalText(double number, int decimals)
{
    char buffer[512]; // the longest double has 309 digits before the point
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, decimals);
    std::string text(buffer, end.ptr);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

} // namespace brox

#endif
