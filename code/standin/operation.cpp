// SPDX-License-Identifier: MIT
#include "operation.h"

#include "zeb_lowlevel.h"

#include <algorithm>
#include <climits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

using namespace brox;

int brox::standin_uncounted = 0;

namespace {

using Registry = std::map<std::string, OperationState, std::less<>>;

// Made at first use, since operations register while libraries are being loaded.
Registry& registry()
{
    static Registry operations;
    return operations;
}

std::vector<void (*)()>& resetters()
{
    static std::vector<void (*)()> functions;
    return functions;
}

OperationState* find(const char* control, const char* operation)
{
    const auto it = registry().find(std::string_view(operation ? operation : ""));
    if (it != registry().end()) {
        return &it->second;
    }
    standin_misuse(control, operation ? operation : "null", 0);
    return nullptr;
}

} // namespace

OperationState* brox::standin_operation(const char* name)
{
    return &registry()[name];
}

void brox::standin_at_reset(void (*forget)(), bool add)
{
    if (add) {
        resetters().push_back(forget);
    } else {
        std::erase(resetters(), forget);
    }
}

void brox::standin_misuse(const char* control, const char* argument, int id)
{
    const Uncounted quiet;
    zeb__log_write("INTERNAL", "%s: there is no %s (%d)", control, argument, id);
}

void standin_reset(void)
{
    for (auto& [name, state] : registry()) {
        state = {};
    }
    for (void (*forget)() : resetters()) {
        forget();
    }
}

void standin_fail(const char* operation, int nth, int status)
{
    if (OperationState* state = find("standin_fail", operation)) {
        state->left = std::max(nth, 0);
        state->status = status != 0 ? status : int(OutOfMemory);
    }
}

int standin_calls(const char* operation)
{
    const OperationState* state = find("standin_calls", operation);
    return state ? int(std::min<long long>(state->calls, INT_MAX)) : 0;
}
