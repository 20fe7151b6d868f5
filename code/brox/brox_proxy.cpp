// SPDX-License-Identifier: MIT
#include "brox_proxy.h"

#include "brox_report.h"
#include "brox_step_data.h"
#include "brox_viewer.h"
#include "zeb_lowlevel.h"

#include <QMap>

#include <cstring>
#include <new>

namespace {

constexpr BroxSource source("brox_proxy");
constexpr int maxBitLength = 7;

/** The viewers by step. A lookup of an unknown step leaves an entry with a null viewer. */
QMap<int, BroxViewer*> viewers;

/** Gives the viewer of a step, made if there is none yet. */
int openViewer(int stpid, BroxViewer** viewer)
{
    const int status = source.checkStatus(brox__proxy_open_brox(stpid));
    return status != 0 ? status : source.checkStatus(brox__proxy_get_brox(stpid, viewer));
}

} // namespace

int brox__proxy_open_brox(int stpid)
{
    if (!source.check(stpid != -1, "stpid != -1")) {
        return BROX_BAD_ARGUMENT;
    }
    if (!viewers[stpid]) {
        viewers[stpid] = new (std::nothrow) BroxViewer(stpid, nullptr, {});
    }
    return source.checkPointer(viewers[stpid], "brox") ? 0 : BROX_BAD_ARGUMENT;
}

int brox__proxy_can_close(int stpid, int* ok)
{
    if (!source.checkPointer(ok, "ok")) {
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
    if (!source.checkPointer(brox, "brox")) {
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
    registerRenamedDeletedCallback(callback);
    return 0;
}

int brox__proxy_get_model_list(int stpid, char*** models, int* num_models)
{
    if (!source.checkPointer(models, "models") || !source.checkPointer(num_models, "num_models")) {
        return BROX_BAD_ARGUMENT;
    }
    *models = nullptr;
    *num_models = 0;
    BroxViewer* viewer = nullptr;
    if (int status = openViewer(stpid, &viewer)) {
        return status;
    }
    const DrillTypeManager* drillTypeManager = DrillTypeManager::instance();
    if (!source.checkPointer(drillTypeManager, "drillTypeManager")) {
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
    if (!source.checkPointer(model_name, "model_name")
        || !source.checkPointer(drill_size, "drill_size") || !source.checkPointer(bit, "bit")) {
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
