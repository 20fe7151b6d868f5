// SPDX-License-Identifier: MIT
#include "layer_collector.h"

namespace brox {

Layer& LayerCollector::layer(const QString& name)
{
    const auto found = mLayerOfName.constFind(name);
    if (found == mLayerOfName.constEnd()) {
        mCurrent = mLayers.size();
        mLayerOfName.insert(name, mCurrent);
        mLayers.push_back({name, {}, {}, {}, {}, {}});
    } else {
        mCurrent = *found;
    }
    return mLayers[mCurrent];
}

Tool& LayerCollector::tool(const Tool& like, bool backDrill)
{
    Layer& layer = mLayers[mCurrent];
    std::vector<Tool>& tools = backDrill ? layer.backDrills : layer.tools;
    // Holes of one kind mostly follow each other.
    if (!tools.empty() && tools.back().isLike(like)) {
        return tools.back();
    }
    const Key key{mCurrent, backDrill, like};
    const auto found = mTools.constFind(key);
    if (found != mTools.constEnd()) {
        return tools[*found];
    }
    mTools.insert(key, tools.size());
    tools.push_back(like);
    return tools.back();
}

std::vector<Layer> LayerCollector::take()
{
    std::erase_if(mLayers, [](const Layer& layer) {
        return layer.tools.empty() && layer.backDrills.empty() && layer.contours.empty();
    });
    mLayerOfName.clear();
    mTools.clear();
    return std::exchange(mLayers, {});
}

} // namespace brox
