// SPDX-License-Identifier: MIT
#ifndef ZEB_UTILS_H
#define ZEB_UTILS_H

/** Host library zeb_utils: the calculator and the exception of a failed host call. */

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The host's calculator: evaluates statements separated by ";".
 *
 * @param text    assignments and, last, an expression, whose value goes to *result; local 8-bit
 * @param flag    always true
 * @param         always 0
 * @param result  null: the text is only judged, and a name without a value passes
 * @return 0, or a status when the text is no formula or has no value
 */
int zeb__bc_act(const char* text, bool flag, int, double* result);

#ifdef __cplusplus
}

/** A failed host call on its way to the user; thrown by value, caught by reference. */
class __attribute__((visibility("default"))) InternalException
{
public:
    /** @param status  the host's non-zero status */
    explicit InternalException(int status);

    /** What the user reads of this status; text owned by the host, local 8-bit. */
    char* getMessage() const;

    /** What the user reads of any other exception; text owned by the host, local 8-bit. */
    static char* getDefaultMsg();

private:
    int mStatus;
};
#endif

#endif
