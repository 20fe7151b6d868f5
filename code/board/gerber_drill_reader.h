// SPDX-License-Identifier: MIT
#ifndef GERBER_DRILL_READER_H
#define GERBER_DRILL_READER_H

#include "drill_canvas.h"

namespace brox {

/** Reads a drill file in the Gerber format (X2): flashes of round apertures are holes, what is
 *  drawn with them are slots, regions are contours.
 *
 * @throws BoardError  also for what cannot be holes, such as a flash of an aperture macro
 * @throws BoardCancelled
 */
DrillFile readGerberDrill(QIODevice& device, const QString& name, const DrillOptions& options = {});

} // namespace brox

#endif
