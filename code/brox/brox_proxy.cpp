// SPDX-License-Identifier: MIT
#include "brox_proxy.h"

#include "brox_proxy_internal.h"
#include "brox_report.h"
#include "brox_viewer.h"
#include "qor_data.h"
#include "vex_data.h"
#include "zeb_lowlevel.h"

#include <QMap>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr BroxSource source("brox_proxy");
constexpr int maxBitLength = 7;

/** The viewers by step. A lookup of an unknown step leaves an entry with a null viewer. */
QMap<int, BroxViewer*> viewers;
brox_model_renamed_deleted_cb modelRenamedDeleted = nullptr;

bool checkPointer(const void* pointer, const char* name, int line = __builtin_LINE())
{
    return source.checkPointers({{pointer, name}}, line);
}

/** A viewer, or null if there was no memory for all of it. */
BroxViewer* newViewer(int stpid)
{
    try {
        return new (std::nothrow) BroxViewer(stpid, nullptr, {});
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int openViewer(int stpid, BroxViewer** viewer)
{
    if (int status = source.checkStatus(brox__proxy_open_brox(stpid))) {
        return status;
    }
    return source.checkStatus(brox__proxy_get_brox(stpid, viewer));
}

/** The step's number in the editor's data, negative if it is not there. */
int stepNumber(int stpid, int* number, int line = __builtin_LINE())
{
    *number = -1;
    return source.checkStatus(vex__data_stpid2vex_num(stpid, number), line);
}

/** The ids of a step's layers, a block of the host's that goes back to it. */
class LayerIds
{
public:
    LayerIds() = default;
    ~LayerIds()
    {
        if (mIds) {
            zeb__mem_free(mIds, 1, source.name(), __LINE__);
        }
    }
    Q_DISABLE_COPY_MOVE(LayerIds)

    int fetch(int stpid)
    {
        return source.checkStatus(qor__lst_lyr_stp_ids(stpid, "*", 192, 3, -1, &mIds, &mCount));
    }

    const int* begin() const { return mIds; }
    const int* end() const { return mIds ? mIds + std::max(mCount, 0) : nullptr; }

private:
    int* mIds = nullptr;
    int mCount = 0;
};

/** Converts a size or number of a step; the output stays as it is if the step has no number. */
template <typename Convert>
int convertForStep(int stpid, Convert convert, int line = __builtin_LINE())
{
    int number = -1;
    const int status = stepNumber(stpid, &number, line);
    if (status != 0 || number < 0) {
        return status;
    }
    return source.checkStatus(convert(number), line);
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

int countTools(const LayerIds& layerIds, int* count)
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
int fillDrillSizes(const LayerIds& layerIds, drill_size_info* infos, int* count)
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

int brox__proxy_open_brox(int stpid)
{
    if (!source.check(stpid != -1, "stpid != -1")) {
        return BROX_BAD_ARGUMENT;
    }
    BroxViewer* brox = viewers[stpid];
    if (!brox) {
        brox = newViewer(stpid);
        viewers[stpid] = brox;
    }
    return checkPointer(brox, "brox") ? 0 : BROX_BAD_ARGUMENT;
}

int brox__proxy_can_close(int stpid, int* ok)
{
    if (!checkPointer(ok, "ok")) {
        return BROX_BAD_ARGUMENT;
    }
    *ok = 1;
    if (BroxViewer* viewer = viewers[stpid]) {
        *ok = viewer->canClose() ? 1 : 0;
    }
    return 0;
}

int brox__proxy_close_brox(int stpid)
{
    if (!source.check(stpid != -1, "stpid != -1")) {
        return BROX_BAD_ARGUMENT;
    }
    viewers[stpid] = nullptr;
    return 0;
}

int brox__proxy_get_brox(int stpid, BroxViewer** brox)
{
    if (!checkPointer(brox, "brox")) {
        return BROX_BAD_ARGUMENT;
    }
    *brox = viewers[stpid];
    return 0;
}

int brox__proxy_set_parent_viewer(BroxViewer* brox, QObject* parent_viewer)
{
    if (brox && parent_viewer) {
        brox->setParentViewer(parent_viewer);
    }
    return 0;
}

int brox__proxy_set_model_renamed_deleted_cb(brox_model_renamed_deleted_cb callback)
{
    if (!modelRenamedDeleted) {
        modelRenamedDeleted = callback;
    }
    return 0;
}

int brox__proxy_get_model_list(int stpid, char*** models, int* num_models)
{
    if (!checkPointer(models, "models") || !checkPointer(num_models, "num_models")) {
        return BROX_BAD_ARGUMENT;
    }
    *models = nullptr;
    *num_models = 0;
    BroxViewer* viewer = nullptr;
    if (int status = openViewer(stpid, &viewer)) {
        return status;
    }
    const DrillTypeManager* drillTypeManager = DrillTypeManager::instance();
    if (!checkPointer(drillTypeManager, "drillTypeManager")) {
        return BROX_BAD_ARGUMENT;
    }
    const int count = viewer->modelCount();
    *num_models = count;
    if (count == 0) {
        return 0;
    }
    *models = static_cast<char**>(
        zeb__mem_calloc(std::size_t(count), sizeof(char*), 1, source.name(), __LINE__));
    if (!source.check(*models != nullptr, "(*models) != 0")) {
        return BROX_OUT_OF_MEMORY;
    }
    for (int i = 0; i < count; ++i) {
        const QByteArray name = viewer->modelNameAt(i).toLocal8Bit();
        (*models)[i] = zeb__str_dup_fn(name.constData(), source.name(), __LINE__);
    }
    return 0;
}

int brox__proxy_calc_drill_size(int stpid, const char* model_name, int tool_type, int tool_sub_type,
    int min_tol, int max_tol, int fhs, int* drill_size, char* bit)
{
    if (!checkPointer(model_name, "model_name") || !checkPointer(drill_size, "drill_size")
        || !checkPointer(bit, "bit")) {
        return BROX_BAD_ARGUMENT;
    }
    *drill_size = 0;
    bit[0] = '\0';
    BroxViewer* viewer = nullptr;
    if (int status = openViewer(stpid, &viewer)) {
        return status;
    }
    int drillType = DrillTypeManager::Undefined;
    if (int status =
            source.checkStatus(brox__proxy_drill_type(tool_type, tool_sub_type, &drillType))) {
        return status;
    }

    QString designation;
    bool success = false;
    bool outOfTolRange = false;
    bool exactMatch = false;
    viewer->calcDrillSize(QString(model_name), DrillTypeManager::DrillType(drillType), fhs, min_tol,
        max_tol, drill_size, &designation, &success, &outOfTolRange, &exactMatch);

    const QByteArray ba = designation.toLocal8Bit();
    source.check(std::strlen(ba.constData()) <= maxBitLength,
        "((ba.data())?(int)strlen(ba.data()):0) <= (sizeof(bit)-1)");
    zeb__str_ncpy(bit, ba.constData(), maxBitLength);
    return 0;
}

int brox__proxy_model_renamed_deleted(int stpid, const char* old_name, const char* new_name)
{
    if (!modelRenamedDeleted) {
        return 0;
    }
    int number = -1;
    const int status = stepNumber(stpid, &number);
    if (status != 0 || number < 0) {
        return status;
    }
    modelRenamedDeleted(number, old_name, new_name);
    return 0;
}

int brox__proxy_drill_type(int tool_type, int tool_sub_type, int* brox_drill_type)
{
    if (!checkPointer(brox_drill_type, "brox_drill_type")) {
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
    if (!checkPointer(drill_sizes, "drill_sizes")
        || !checkPointer(drill_size_num, "drill_size_num")) {
        return BROX_BAD_ARGUMENT;
    }
    LayerIds layerIds;
    if (int status = layerIds.fetch(stpid)) {
        return status;
    }
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
    if (!checkPointer(units, "units")) {
        return BROX_BAD_ARGUMENT;
    }
    int number = -1;
    const int status = stepNumber(stpid, &number);
    if (status != 0 || number < 0) {
        return status;
    }
    int family = -1;
    if (int unitsStatus = source.checkStatus(vex__data_get_units(number, &family))) {
        return unitsStatus;
    }
    *units = family == 0 ? ZEB_UNITS_MILS : family == 1 ? ZEB_UNITS_MICRONS : family;
    return 0;
}

int brox__proxy_get_units_str(int stpid, const char** units_str)
{
    if (!checkPointer(units_str, "units_str")) {
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
    if (!checkPointer(val_str, "val_str")) {
        return BROX_BAD_ARGUMENT;
    }
    val_str[0] = '\0';
    return convertForStep(
        stpid, [=](int number) { return vex__size_p2s_milmicron(number, val, 1, val_str); });
}

int brox__proxy_size_to_double(int stpid, int val, double* dval)
{
    if (!checkPointer(dval, "dval")) {
        return BROX_BAD_ARGUMENT;
    }
    *dval = 0.0;
    return convertForStep(
        stpid, [=](int number) { return vex__size_p2milmicron(number, val, 1, dval); });
}

int brox__proxy_double_to_size(int stpid, double dval, int* val)
{
    if (!checkPointer(val, "val")) {
        return BROX_BAD_ARGUMENT;
    }
    *val = 0;
    return convertForStep(
        stpid, [=](int number) { return vex__size_milmicron2p(number, dval, 1, val); });
}
