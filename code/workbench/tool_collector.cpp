// SPDX-License-Identifier: MIT
#include "tool_collector.h"

#include <limits>

size_t qHash(const ToolCollector::Key& key, size_t seed)
{
    return qHashMulti(seed, key.layer, int(key.tool.type), key.tool.finishedSize, key.tool.minusTol,
        key.tool.plusTol);
}

size_t ToolCollector::layer(const QString& name)
{
    const auto found = mLayers.constFind(name);
    if (found != mLayers.constEnd()) {
        return *found;
    }
    mStep.layers.push_back({name, {}});
    return *mLayers.insert(name, mStep.layers.size() - 1);
}

bool ToolCollector::add(size_t layer, const Tool& tool)
{
    std::vector<Tool>& tools = mStep.layers[layer].tools;
    const Key key{layer, tool};
    const auto found = mTools.constFind(key);
    if (found == mTools.constEnd()) {
        mTools.insert(key, tools.size());
        tools.push_back(tool);
        return tool.count <= std::numeric_limits<int>::max();
    }
    qint64& count = tools[*found].count;
    count += tool.count;
    return count <= std::numeric_limits<int>::max();
}

Step ToolCollector::take()
{
    std::erase_if(mStep.layers, [](const Layer& layer) { return layer.tools.empty(); });
    mLayers.clear();
    mTools.clear();
    return std::exchange(mStep, {});
}
