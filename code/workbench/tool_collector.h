// SPDX-License-Identifier: MIT
#ifndef TOOL_COLLECTOR_H
#define TOOL_COLLECTOR_H

#include "board.h"

#include <QHash>

/** Groups the holes of a step into tools, however many holes there are. */
class ToolCollector
{
public:
    explicit ToolCollector(const QString& stepName) { mStep.name = stepName; }

    /** Index of a layer for add(). */
    size_t layer(const QString& name);

    /** Adds a tool's holes to those that are alike.
     *
     * @return false if the tool has more holes than a host can count
     */
    bool add(size_t layer, const Tool& tool);

    Step& step() { return mStep; }

    /** The step, without layers that got no holes; the collector is empty then. */
    Step take();

private:
    struct Key
    {
        size_t layer;
        Tool tool;
        bool operator==(const Key& other) const
        {
            return layer == other.layer && tool.isLike(other.tool);
        }
    };
    friend size_t qHash(const Key& key, size_t seed);

    Step mStep;
    QHash<QString, size_t> mLayers;
    QHash<Key, size_t> mTools; ///< index in the layer's tools
};

#endif
