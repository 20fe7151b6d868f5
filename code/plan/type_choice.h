// SPDX-License-Identifier: MIT
#ifndef TYPE_CHOICE_H
#define TYPE_CHOICE_H

#include "drill_draft.h"

namespace brox {

/** Chooses types by a text such as "drill:T3=press-fit" or "drill:0.8mm=via": for the tools of a
 *  layer that have a number in their file, or a finished size.
 *
 * @throws RulesError  also if no tool of the board is meant
 */
void chooseType(Job& job, const QString& text);

} // namespace brox

#endif
