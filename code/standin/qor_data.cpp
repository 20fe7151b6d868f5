// SPDX-License-Identifier: MIT
#pragma GCC visibility push(default)
#include "qor_data.h"
#pragma GCC visibility pop

#include "operation.h"
#include "zeb_lowlevel.h"

#include <QString>
#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <unordered_map>
#include <vector>

using namespace brox;

namespace {

const Operation id2parent("qor__data_id2parent");
const Operation id2name("qor__data_id2name");
const Operation lyrStpIds("qor__lst_lyr_stp_ids");
const Operation toolsGet("qor__drl_tools_get");

struct Step
{
    QByteArray name;
    std::vector<int> layers;
};

struct Layer
{
    QByteArray name;
    std::vector<qor_drl_tool> tools;
};

struct Job
{
    QByteArray name;
    std::unordered_map<int, Step> steps;
    std::unordered_map<int, Layer> layers;
    std::vector<qor_drl_tool> handedOut; ///< a copy, so that use after its life shows
};

Job job;
int lastId = 1000; ///< ids must stay clear of step numbers, and never repeat
const AtReset reset([] { job = {}; });

template <typename T>
T* find(std::unordered_map<int, T>& objects, int id)
{
    const auto it = objects.find(id);
    return it != objects.end() ? &it->second : nullptr;
}

/** Copies a name into a host buffer for names, of 65 bytes. */
int giveName(const QByteArray* name, char* buffer)
{
    if (!buffer || !name) {
        return buffer ? NoSuchId : BadArgument;
    }
    const size_t length = std::min<size_t>(size_t(name->size()), 64);
    memcpy(buffer, name->constData(), length);
    buffer[length] = '\0';
    return 0;
}

QByteArray toLocal8Bit(const char* utf8)
{
    return QString::fromUtf8(utf8).toLocal8Bit();
}

} // namespace

int qor__data_id2parent(int id, int, char* name)
{
    if (const int status = id2parent.enter()) {
        return status;
    }
    return giveName(find(job.steps, id) ? &job.name : nullptr, name);
}

int qor__data_id2name(int id, char* name)
{
    if (const int status = id2name.enter()) {
        return status;
    }
    if (const Step* step = find(job.steps, id)) {
        return giveName(&step->name, name);
    }
    const Layer* layer = find(job.layers, id);
    return giveName(layer ? &layer->name : nullptr, name);
}

int qor__lst_lyr_stp_ids(
    int stpid, const char* pattern, int kinds, int depth, int other, int** ids, int* count)
{
    if (const int status = lyrStpIds.enter()) {
        return status;
    }
    const bool drillLayers =
        pattern && strcmp(pattern, "*") == 0 && kinds == 192 && depth == 3 && other == -1;
    if (!drillLayers || !ids || !count) {
        return BadArgument;
    }
    const Step* step = find(job.steps, stpid);
    if (!step) {
        return NoSuchId;
    }

    std::vector<int> found;
    std::copy_if(step->layers.begin(), step->layers.end(), std::back_inserter(found),
        [](int id) { return !job.layers[id].tools.empty(); });
    if (!found.empty()) {
        const Uncounted quiet;
        void* block = zeb__mem_calloc(found.size(), sizeof(int), 1, "qor_data", __LINE__);
        if (!block) {
            return OutOfMemory;
        }
        memcpy(block, found.data(), found.size() * sizeof(int));
        *ids = static_cast<int*>(block);
    }
    *count = int(found.size());
    return 0;
}

int qor__drl_tools_get(int layer_id, bool count_only, qor_drl_tools* result)
{
    if (const int status = toolsGet.enter()) {
        return status;
    }
    const Layer* layer = find(job.layers, layer_id);
    if (!result || !layer) {
        return result ? NoSuchId : BadArgument;
    }
    result->num_tools = int(layer->tools.size());
    job.handedOut = count_only ? std::vector<qor_drl_tool>() : std::vector(layer->tools);
    if (!count_only) {
        result->tools = job.handedOut.data();
    }
    return 0;
}

void standin_set_job(const char* name)
{
    job.name = toLocal8Bit(name);
}

int standin_add_step(const char* name, int units)
{
    const int id = ++lastId;
    job.steps[id].name = toLocal8Bit(name);
    standin_add_editor_step(id, units);
    return id;
}

int standin_add_layer(int stpid, const char* name)
{
    Step* step = find(job.steps, stpid);
    if (!step) {
        standin_misuse("standin_add_layer", "step", stpid);
        return -1;
    }
    const int id = ++lastId;
    step->layers.push_back(id);
    job.layers[id].name = toLocal8Bit(name);
    return id;
}

void standin_add_tool(int layer_id, const standin_tool* tool)
{
    Layer* layer = find(job.layers, layer_id);
    if (!layer || !tool) {
        standin_misuse("standin_add_tool", "layer or tool", layer_id);
        return;
    }
    qor_drl_tool record = {};
    record.tool_type = tool->tool_type;
    record.tool_sub_type = tool->tool_sub_type;
    record.min_tol = tool->min_tol;
    record.max_tol = tool->max_tol;
    record.finished_size = tool->finished_size;
    record.count = tool->count;
    layer->tools.push_back(record);
}
