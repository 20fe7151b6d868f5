// SPDX-License-Identifier: MIT
#include "brox_report.h"

#include "zeb_lowlevel.h"

#include <algorithm>
#include <cstdint>
#include <string>

bool BroxSource::check(bool holds, const char* condition, int line) const
{
    if (!holds) {
        zeb__log_write("INTERNAL", "(%s) at %s %d\n", condition, mName, line);
        zeb__err_sound();
    }
    return holds;
}

bool BroxSource::checkPointers(std::initializer_list<Pointer> pointers, int line) const
{
    const auto isValid = [](const Pointer& pointer) {
        return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer.value)) > 1000;
    };
    if (std::all_of(pointers.begin(), pointers.end(), isValid)) {
        return true;
    }

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
