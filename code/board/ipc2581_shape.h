// SPDX-License-Identifier: MIT
#ifndef IPC2581_SHAPE_H
#define IPC2581_SHAPE_H

#include "panel.h"
#include "slot_shape.h"

#include <string>
#include <unordered_map>

namespace brox {

/** A primitive of an IPC-2581 file, as slots and their dictionaries have it; in host sizes. */
struct Ipc2581Shape
{
    enum class Kind
    {
        None,
        Circle, ///< of a width
        Oval, ///< round ends
        Rectangle, ///< sharp corners
        Stroke, ///< a path of a width
        Outline,
        StandardReference,
        UserReference
    };
    Kind kind = Kind::None;
    double width = 0;
    double height = 0;
    double lineWidth = 0; ///< of a stroke; 0 until it is told
    Path path;
    std::string reference;
    bool isCompound = false; ///< of several parts, or of one that is moved: not understood
};

using Ipc2581Shapes = std::unordered_map<std::string, Ipc2581Shape>;

/** A slot, or a contour if the shape has no one width. */
struct Ipc2581Opening
{
    std::optional<SlotShape> slot;
    Path contour; ///< if there is no slot
};

Path rectanglePath(Place lowerLeft, Place upperRight);

/** What a shape without references cuts out, about its own origin.
 *
 * @return null for a shape that cuts nothing or is not known
 */
std::optional<Ipc2581Opening> openingOf(const Ipc2581Shape& shape);

} // namespace brox

#endif
