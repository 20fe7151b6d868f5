// SPDX-License-Identifier: MIT
#ifndef PLAN_TEXT_H
#define PLAN_TEXT_H

#include "board.h"

#include <QCoreApplication>

namespace brox {

/** The words of plans. Tables, drill programs and files have them in English whatever the language,
 *  since other programs read them; what people read has them spoken. */

/** What plans, maps, reports and failing exports say to the user, in the language of the program.
 */
class PlanText
{
    Q_DECLARE_TR_FUNCTIONS(PlanText)
};

/** A word of tables in the language of the program. */
inline QString spoken(const QString& word)
{
    return PlanText::tr(word.toUtf8().constData());
}

/** What a user should look at before drilling. */
enum class PlanFlag
{
    OutOfTolerance, ///< "out-of-tolerance": the bit lies outside of the hole's tolerances
    NoBit, ///< "no-bit": the model uses bits and none fits
    NoSize, ///< "no-size": model and formula give none
    UnapprovedBit, ///< "unapproved-bit": the list of bits does not approve the bit
    ToleranceAssumed, ///< "tolerance-assumed": by a rule of the shop
    TypeAssumed, ///< "type-assumed": plating or kind was a guess or a rule's
    DigitsDoubtful, ///< "digits-doubtful": its places may be ten times as far from each other, or
                    ///< less
    AsDrilled, ///< "as-drilled": the file has drill sizes, which are drilled as they are
    Merged ///< "merged": shares the bit of others, so that there are fewer tools
};

/** "out-of-tolerance" and so on. */
QString flagWord(PlanFlag flag);

/** Whether no one should drill before having looked. */
bool isAlarming(PlanFlag flag);

/** "Plated", "Non-plated", "Via", "Press-fit"; of slots "Plated slot", "Non-plated slot". */
QString typeWord(HoleType type, bool isSlot);

/** As rules have it: "plated", "nonplated", "via", "press-fit". */
QString typeKey(HoleType type);

/** At most three decimals and no trailing zeros. */
QString shortNumber(double number);

/** A size as a user reads it, in mils or microns. */
QString sizeText(Size size, Units units);

/** "mil" or "micron", in the language of the program. */
QString unitName(Units units);

} // namespace brox

#endif
