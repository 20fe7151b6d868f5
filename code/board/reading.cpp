// SPDX-License-Identifier: MIT
#include "reading.h"

QString noHoleText(const std::vector<Layer>& layers)
{
    size_t contours = 0;
    size_t backDrills = 0;
    for (const Layer& layer : layers) {
        contours += layer.contours.size();
        for (const Tool& tool : layer.backDrills) {
            backDrills += tool.holes.size();
        }
    }
    return QStringLiteral("no drilled hole and no slot; contours: %1, back drills: %2")
        .arg(contours)
        .arg(backDrills);
}
