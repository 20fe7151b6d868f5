// SPDX-License-Identifier: MIT
#include "brox_report.h"

#include "zeb_lowlevel.h"

#include <string>

bool BroxSource::check(bool holds, const char* condition, int line) const
{
    if (!holds) {
        zeb__log_write("INTERNAL", "(%s) at %s %d\n", condition, mName, line);
        zeb__err_sound();
    }
    return holds;
}

/** Always false: the condition that does not hold. */
bool BroxSource::reportPointers(std::initializer_list<Pointer> pointers, int line) const
{
    std::string condition;
    for (const Pointer& pointer : pointers) {
        condition += condition.empty() ? "" : " && ";
        condition += std::string("((ullong)(") + pointer.name + ") > 1000)";
    }
    return check(false, condition.c_str(), line);
}

int BroxSource::checkStatus(int status, int line) const
{
    if (status != 0) {
        zeb__log_status_check(mName, line);
    }
    return status;
}
