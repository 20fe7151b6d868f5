// SPDX-License-Identifier: MIT
#include "brox_step_data.h"

#include "brox_report.h"
#include "qor_data.h"
#include "vex_data.h"
#include "zeb_lowlevel.h"

#include <QScopeGuard>

#include <algorithm>
#include <limits>
#include <span>

namespace {

constexpr BroxSource source("brox_proxy"); // as the host's log knows these routines

brox_model_renamed_deleted_cb modelRenamedDeleted = nullptr;

/** Does something for the number of a step; nothing, and no failure, if the step has none. */
template <typename Work>
int withStepNumber(int stpid, Work work)
{
    int number = -1;
    const int status = source.checkStatus(vex__data_stpid2vex_num(stpid, &number));
    return status != 0 || number < 0 ? status : work(number);
}

int toDrillSize(int layerId, const qor_drl_tool& tool, drill_size_info* info)
{
    info->layer_id = layerId;
    info->count = tool.count;
    info->min_tol = tool.min_tol;
    info->max_tol = tool.max_tol;
    info->fhs = tool.finished_size == -1 ? 0 : tool.finished_size;
    return source.checkStatus(
        brox__proxy_drill_type(tool.tool_type, tool.tool_sub_type, &info->drill_type));
}

int countTools(std::span<const int> layerIds, int* count)
{
    qint64 sum = 0;
    for (int layerId : layerIds) {
        qor_drl_tools result = {};
        if (int status = source.checkStatus(qor__drl_tools_get(layerId, true, &result))) {
            return status;
        }
        sum += result.num_tools;
    }
    *count = int(std::min<qint64>(sum, std::numeric_limits<int>::max()));
    return 0;
}

/** Fills the records of all layers; a layer that has grown since the count stays within them. */
int fillDrillSizes(std::span<const int> layerIds, drill_size_info* infos, int* count)
{
    int filled = 0;
    for (int layerId : layerIds) {
        qor_drl_tools result = {};
        if (int status = source.checkStatus(qor__drl_tools_get(layerId, false, &result))) {
            return status;
        }
        const int layerCount = result.tools ? std::min(result.num_tools, *count - filled) : 0;
        for (int i = 0; i < layerCount; ++i, ++filled) {
            if (int status = toDrillSize(layerId, result.tools[i], &infos[filled])) {
                return status;
            }
        }
    }
    *count = filled; // no record without a tool, should a layer have shrunk
    return 0;
}

} // namespace

void registerRenamedDeletedCallback(brox_model_renamed_deleted_cb callback)
{
    if (!modelRenamedDeleted) {
        modelRenamedDeleted = callback;
    }
}

int brox__proxy_model_renamed_deleted(int stpid, const char* old_name, const char* new_name)
{
    if (!modelRenamedDeleted) {
        return 0;
    }
    return withStepNumber(stpid, [=](int number) {
        modelRenamedDeleted(number, old_name, new_name);
        return 0;
    });
}

int brox__proxy_drill_type(int tool_type, int tool_sub_type, int* brox_drill_type)
{
    if (!source.checkPointer(brox_drill_type, "brox_drill_type")) {
        return BROX_BAD_ARGUMENT;
    }
    constexpr DrillTypeManager::DrillType standardTypes[] = {
        DrillTypeManager::Pth, DrillTypeManager::NPth, DrillTypeManager::Via};
    *brox_drill_type = DrillTypeManager::Undefined;
    switch (tool_sub_type) {
    case 0:
        if (tool_type >= 0 && tool_type < int(std::size(standardTypes))) {
            *brox_drill_type = standardTypes[tool_type];
        }
        break;
    case 1:
        *brox_drill_type = DrillTypeManager::Laser;
        break;
    case 2:
        *brox_drill_type = DrillTypeManager::Photo;
        break;
    case 3:
        *brox_drill_type = DrillTypeManager::PressFit;
        break;
    }
    return 0;
}

int brox__proxy_get_drill_sizes(int stpid, drill_size_info** drill_sizes, int* drill_size_num)
{
    if (!source.checkPointer(drill_sizes, "drill_sizes")
        || !source.checkPointer(drill_size_num, "drill_size_num")) {
        return BROX_BAD_ARGUMENT;
    }
    int* ids = nullptr;
    int idCount = 0;
    const auto freeIds = qScopeGuard([&ids] {
        if (ids) {
            zeb__mem_free(ids, 1, source.name(), __LINE__);
        }
    });
    if (int status =
            source.checkStatus(qor__lst_lyr_stp_ids(stpid, "*", 192, 3, -1, &ids, &idCount))) {
        return status;
    }
    const std::span<const int> layerIds(ids, ids ? std::max(idCount, 0) : 0);
    int count = 0;
    if (int status = countTools(layerIds, &count)) {
        return status;
    }
    *drill_size_num = count;
    if (count <= 0) {
        return 0;
    }
    auto* drill_size_infos = static_cast<drill_size_info*>(
        zeb__mem_calloc(std::size_t(count), sizeof(drill_size_info), 1, source.name(), __LINE__));
    if (!source.check(drill_size_infos != nullptr, "(drill_size_info) != 0")) {
        return BROX_OUT_OF_MEMORY;
    }
    if (int status = fillDrillSizes(layerIds, drill_size_infos, drill_size_num)) {
        zeb__mem_free(drill_size_infos, 1, source.name(), __LINE__);
        return status;
    }
    *drill_sizes = drill_size_infos;
    return 0;
}

int brox__proxy_get_units(int stpid, int* units)
{
    if (!source.checkPointer(units, "units")) {
        return BROX_BAD_ARGUMENT;
    }
    return withStepNumber(stpid, [=](int number) {
        int family = -1;
        const int status = source.checkStatus(vex__data_get_units(number, &family));
        if (status == 0) {
            *units = family == 0 ? ZEB_UNITS_MILS : family == 1 ? ZEB_UNITS_MICRONS : family;
        }
        return status;
    });
}

int brox__proxy_get_units_str(int stpid, const char** units_str)
{
    if (!source.checkPointer(units_str, "units_str")) {
        return BROX_BAD_ARGUMENT;
    }
    // A step that is not in the editor's data has no units to be named: the asker keeps its text.
    int units = -1;
    const int status = source.checkStatus(brox__proxy_get_units(stpid, &units));
    if (status == 0 && units != -1) {
        *units_str = zeb__sarn_get_Units_str(zeb_units_enum(units));
    }
    return status;
}

int brox__proxy_size_to_str(int stpid, int val, char* val_str)
{
    if (!source.checkPointer(val_str, "val_str")) {
        return BROX_BAD_ARGUMENT;
    }
    val_str[0] = '\0';
    return withStepNumber(stpid, [=](int number) {
        return source.checkStatus(vex__size_p2s_milmicron(number, val, 1, val_str));
    });
}

int brox__proxy_size_to_double(int stpid, int val, double* dval)
{
    if (!source.checkPointer(dval, "dval")) {
        return BROX_BAD_ARGUMENT;
    }
    *dval = 0.0;
    return withStepNumber(stpid, [=](int number) {
        return source.checkStatus(vex__size_p2milmicron(number, val, 1, dval));
    });
}

int brox__proxy_double_to_size(int stpid, double dval, int* val)
{
    if (!source.checkPointer(val, "val")) {
        return BROX_BAD_ARGUMENT;
    }
    *val = 0;
    return withStepNumber(stpid, [=](int number) {
        return source.checkStatus(vex__size_milmicron2p(number, dval, 1, val));
    });
}
