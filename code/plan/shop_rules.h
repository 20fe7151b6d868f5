// SPDX-License-Identifier: MIT
#ifndef SHOP_RULES_H
#define SHOP_RULES_H

#include "board.h"

#include <map>

namespace brox {

/** A rule that can't be read, described in one line. */
class RulesError : public Error
{
    using Error::Error;
};

/** A tolerance for holes and slots of a type, from a finished size on. */
struct ToleranceRule
{
    HoleType type = HoleType::Plated;
    Size from = 0; ///< up to where the next rule of the type begins
    Tolerance tolerance;
    bool operator==(const ToleranceRule&) const = default;
};

/** What smallest ranges of tolerances are given for; vias have none. */
enum class WindowKind
{
    None,
    Plated,
    PressFit,
    NonPlated,
    Slot
};

WindowKind windowKind(HoleType type, bool isSlot);

/** What a shop can drill. Null: no limit. */
struct CheckLimits
{
    std::optional<Size> holeToHole; ///< from edge to edge
    std::optional<Size> holeToEdge; ///< of the board
    std::optional<Size> largestDrill;
    std::optional<double> shortestSlot; ///< length, round ends included, by width
    std::optional<double> aspectRatio; ///< thickness of the board by drill size
    std::map<WindowKind, Size> windows; ///< from the smallest allowed size to the largest
    bool operator==(const CheckLimits&) const = default;
};

/** What a shop assumes where a board specifies nothing, and what it can drill. */
class ShopRules
{
public:
    /** Those of a new data folder. */
    static ShopRules starter();

    /** @throws RulesError  "line: what" or "member: what" */
    static ShopRules fromJson(const QByteArray& json);
    QByteArray toJson() const;

    /** Changes rules by a text such as "none" or "plated=-0.05/+0.10,via=+-2mil".
     *
     * Millimetres, unless mil stands behind. "none" takes all tolerances away, "via=none" those
     * of a type; any other replaces those of its type.
     *
     * @throws RulesError
     */
    void changeTolerances(const QString& text);

    /** By a size such as "0.45" or "18mil"; 0 or "none": never.
     *
     * @throws RulesError
     */
    void changeViasUpTo(const QString& text);

    std::vector<ToleranceRule> tolerances; ///< by type and size, no two of the same
    Size viasUpTo = 0; ///< plated holes up to this size are vias; 0: no such rule
    CheckLimits checks;

    /** The rule for a finished size; null: none. */
    const ToleranceRule* find(HoleType type, Size finishedSize) const;

    /** Puts tolerances in order.
     *
     * @throws RulesError  if two are for the same type and size
     */
    void sort();

    /** A line for each rule that is in force. */
    QStringList lines() const;

    bool operator==(const ShopRules&) const = default;
};

/** The type that a text such as "press-fit" means.
 *
 * @throws RulesError
 */
HoleType holeTypeOf(const QString& name);

/** A size such as "1.6" or "63mil", in millimetres if it names no unit.
 *
 * @throws RulesError
 */
Size sizeOf(const QString& text);

/** "-0.05/+0.1 mm", by the units in mils or millimetres. */
QString toleranceText(const Tolerance& tolerance);

} // namespace brox

#endif
