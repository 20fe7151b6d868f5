// SPDX-License-Identifier: MIT
#ifndef UNITS_UNKNOWN_H
#define UNITS_UNKNOWN_H

#include "reading.h"

namespace brox {

/** A drill file that specifies no units, where the options give none either. */
class UnitsUnknown : public BoardError
{
    using BoardError::BoardError;
};

} // namespace brox

#endif
