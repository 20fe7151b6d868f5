// SPDX-License-Identifier: MIT
#include "brox_report.h"

#include "zeb_lowlevel.h"

#include <string>

void BroxSource::report(const char* condition, const Place& place) const
{
    zeb__log_write("INTERNAL", "(%s) at %s %d\n", condition, mName, int(place.line()));
    zeb__err_sound();
}

/** Always false: the condition that does not hold. */
bool BroxSource::reportPointers(std::initializer_list<Pointer> pointers, const Place& place) const
{
    std::string condition;
    for (const Pointer& pointer : pointers) {
        condition += condition.empty() ? "" : " && ";
        condition += std::string("((ullong)(") + pointer.name + ") > 1000)";
    }
    return check(false, condition.c_str(), place);
}

int BroxSource::checkStatus(int status, const Place& place) const
{
    if (status != 0) {
        zeb__log_status_check(mName, int(place.line()));
    }
    return status;
}
