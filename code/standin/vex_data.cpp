// SPDX-License-Identifier: MIT
#pragma GCC visibility push(default)
#include "vex_data.h"
#pragma GCC visibility pop

#include "operation.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

using namespace brox;

namespace {

const Operation stpid2vexNum("vex__data_stpid2vex_num");
const Operation getUnits("vex__data_get_units");
const Operation p2milmicron("vex__size_p2milmicron");
const Operation p2sMilmicron("vex__size_p2s_milmicron");
const Operation milmicron2p("vex__size_milmicron2p");

struct EditorStep
{
    int units;
    bool inEditor;
};

std::vector<EditorStep> steps; ///< by step number
std::unordered_map<int, int> numbers; ///< step numbers by stpid

const AtReset reset([] {
    steps.clear();
    numbers.clear();
});

EditorStep* stepOf(int number)
{
    const bool known = number >= 0 && size_t(number) < steps.size();
    return known && steps[size_t(number)].inEditor ? &steps[size_t(number)] : nullptr;
}

EditorStep* stepToControl(const char* control, int stpid)
{
    const auto it = numbers.find(stpid);
    if (it != numbers.end()) {
        return &steps[size_t(it->second)];
    }
    standin_misuse(control, "step", stpid);
    return nullptr;
}

} // namespace

int vex__data_stpid2vex_num(int stpid, int* vex_num)
{
    if (const int status = stpid2vexNum.enter()) {
        return status;
    }
    if (!vex_num) {
        return BadArgument;
    }
    const auto it = numbers.find(stpid);
    *vex_num = it != numbers.end() && stepOf(it->second) ? it->second : -1;
    return 0;
}

int vex__data_get_units(int vex_num, int* units)
{
    if (const int status = getUnits.enter()) {
        return status;
    }
    const EditorStep* step = stepOf(vex_num);
    if (!units || !step) {
        return units ? NoSuchStep : BadArgument;
    }
    *units = step->units;
    return 0;
}

int vex__size_p2milmicron(int vex_num, int size, int, double* value)
{
    if (const int status = p2milmicron.enter()) {
        return status;
    }
    const EditorStep* step = stepOf(vex_num);
    if (!value || !step) {
        return value ? NoSuchStep : BadArgument;
    }
    *value = size / sizesPerUnit(step->units);
    return 0;
}

int vex__size_p2s_milmicron(int vex_num, int size, int, char* text)
{
    if (const int status = p2sMilmicron.enter()) {
        return status;
    }
    const EditorStep* step = stepOf(vex_num);
    if (!text || !step) {
        return text ? NoSuchStep : BadArgument;
    }
    // Down to one host size, which is 0.0025 microns or 0.0001 mils, and no wider than a column.
    constexpr int decimals = 4;
    strcpy(text, decimalText(size / sizesPerUnit(step->units), decimals).c_str());
    return 0;
}

int vex__size_milmicron2p(int vex_num, double value, int, int* size)
{
    if (const int status = milmicron2p.enter()) {
        return status;
    }
    const EditorStep* step = stepOf(vex_num);
    if (!size || !step) {
        return size ? NoSuchStep : BadArgument;
    }
    if (std::isnan(value)) {
        return NotANumber;
    }
    const double exact = std::round(value * sizesPerUnit(step->units));
    *size = int(std::clamp<double>(exact, INT_MIN, INT_MAX));
    return 0;
}

void brox::standin_add_editor_step(int stpid, int units)
{
    numbers[stpid] = int(steps.size());
    steps.push_back({units, true});
}

void standin_set_units(int stpid, int units)
{
    if (EditorStep* step = stepToControl("standin_set_units", stpid)) {
        step->units = units;
    }
}

void standin_set_in_editor(int stpid, bool in_editor)
{
    if (EditorStep* step = stepToControl("standin_set_in_editor", stpid)) {
        step->inEditor = in_editor;
    }
}
