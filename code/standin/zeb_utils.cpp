// SPDX-License-Identifier: MIT
#pragma GCC visibility push(default)
#include "zeb_utils.h"
#pragma GCC visibility pop

#include "calculator.h"
#include "operation.h"
#include "standin.h"

#include <exception>
#include <map>
#include <optional>
#include <string>

using namespace brox;

namespace {

const Operation bcAct("zeb__bc_act");
Calculator calculator;
std::optional<double> lastValue;

/** Messages that were given out; callers may keep the pointers. */
std::map<int, std::string> messages;

std::string messageOf(int status)
{
    switch (status) {
#define OPERATION_STATUS(name, number, text)                                                       \
    case name:                                                                                     \
        return text;
        OPERATION_STATUSES(OPERATION_STATUS)
#undef OPERATION_STATUS
    }
    return "An operation failed with status " + std::to_string(status) + ".";
}

} // namespace

int zeb__bc_act(const char* text, bool, int, double* result)
{
    lastValue.reset();
    if (const int status = bcAct.enter()) {
        return status;
    }
    if (!text) {
        return BadArgument;
    }
    try {
        const int status = calculator.act(text, result);
        if (status == 0 && result) {
            lastValue = *result;
        }
        return status;
    } catch (const std::exception&) {
        return OutOfMemory;
    }
}

bool standin_last_value(double* value)
{
    if (lastValue) {
        *value = *lastValue;
    }
    return lastValue.has_value();
}

InternalException::InternalException(int status)
    : mStatus(status)
{ }

char* InternalException::getMessage() const
{
    std::string& message = messages[mStatus];
    if (message.empty()) {
        message = messageOf(mStatus);
    }
    return message.data();
}

char* InternalException::getDefaultMsg()
{
    static char message[] = "An unexpected error occurred.";
    return message;
}
