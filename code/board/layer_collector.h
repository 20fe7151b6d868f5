// SPDX-License-Identifier: MIT
#ifndef LAYER_COLLECTOR_H
#define LAYER_COLLECTOR_H

#include "board.h"

#include <QHash>

namespace brox {

/** Groups the holes and slots of a step by layer and tool, however many there are, for formats
 *  that do not number tools. */
class LayerCollector
{
public:
    /** Begins or goes on with a layer. */
    Layer& layer(const QString& name);

    /** The tool of the current layer that is like one, made if there is none yet. */
    Tool& tool(const Tool& like, bool backDrill);

    /** The layers that got anything, in order of first appearance; the collector is empty then. */
    std::vector<Layer> take();

private:
    struct Key
    {
        size_t layer;
        bool backDrill;
        Tool tool; ///< without holes
        bool operator==(const Key& other) const
        {
            return layer == other.layer && backDrill == other.backDrill && tool.isLike(other.tool);
        }
    };
    friend size_t qHash(const Key& key, size_t seed)
    {
        const Tolerance tolerance = key.tool.tolerance.value_or(Tolerance{});
        return qHashMulti(seed, (quint64(key.tool.finishedSize) << 8) | quint64(key.tool.type),
            (quint64(tolerance.minus) << 32) | quint64(tolerance.plus));
    }

    std::vector<Layer> mLayers;
    QHash<QString, size_t> mLayerOfName;
    QHash<Key, size_t> mTools; ///< index in the layer's tools or back drills
    size_t mCurrent = 0;
};

} // namespace brox

#endif
