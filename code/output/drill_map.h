// SPDX-License-Identifier: MIT
#ifndef DRILL_MAP_H
#define DRILL_MAP_H

#include "drill_plan.h"
#include "map_shapes.h"
#include "reading.h"

#include <QRectF>

class QIODevice;
class QPainter;

namespace brox {

/** The drill maps of a plan on paper: a sheet for each layer with holes or slots.
 *
 * Each hole is a circle of its drill size, with a symbol and a colour that say which tool; slots
 * are the area that is cut. Beside it stands the legend, below it the scale.
 */
class DrillMap
{
public:
    /** Size of a sheet in its own unit, a tenth of a millimetre: A4, the long side across. */
    static constexpr int width = 2970;
    static constexpr int height = 2100;

    /** @param plan  outlives the map
     *  @throws PanelError
     */
    explicit DrillMap(const DrillPlan& plan);

    size_t sheetCount() const { return mSheets.size(); }

    /** The sheet's layer. */
    QString title(size_t sheet) const;

    /** What the board's outline takes, or else its holes and slots: "160 x 100 mm from 0, 0". */
    QString extentText() const;

    /** Paints a sheet with its corner at the painter's origin, a unit a tenth of a millimetre.
     *
     * @param progress  receives how many holes and slots are painted, those of the sheets before it
     * too
     * @throws BoardCancelled
     */
    void paint(QPainter& painter, size_t sheet, const Progress& progress = {}) const;

private:
    struct Entry
    {
        const Program* program;
        const ProgramTool* tool;
        size_t look; ///< of toolSymbol and toolColour; counted through all sheets
    };
    struct Sheet
    {
        size_t layer;
        std::vector<Entry> entries;
    };
    class Painting; ///< paints a sheet

    const DrillPlan& mPlan;
    std::vector<RowPlaces> mPlaces;
    std::vector<Path> mOutlines;
    std::vector<std::vector<Path>> mContours; ///< by layer
    QRectF mBoardExtent;
    QRectF mExtent; ///< with what is compared
    std::vector<Sheet> mSheets;
};

class FileSet;

/** Adds a plan's map to the files that are to be written: SVG or PNG with the sheets one below
 *  the other, or PDF with a page a sheet, by the file's suffix.
 *
 * @param progress  receives how many holes and slots of how many are painted
 *
 * @throws OutputError  also for another suffix, and if nothing is drilled
 * @throws PanelError, BoardCancelled
 */
void addDrillMap(
    const DrillPlan& plan, const QString& path, FileSet& files, const Progress& progress = {});

/** Writes a sheet as the SVG element of a page.
 *
 * @throws BoardCancelled
 */
void writeSheet(QIODevice& file, const DrillMap& map, size_t sheet, const Progress& progress = {});

} // namespace brox

#endif
