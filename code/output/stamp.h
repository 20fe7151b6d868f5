// SPDX-License-Identifier: MIT
#ifndef STAMP_H
#define STAMP_H

#include <QImage>
#include <vector>

namespace brox {

/** A small picture that is put on an image a million times: of each line only the runs of dots
 *  that are seen. */
class Stamp
{
public:
    /** @param picture  premultiplied ARGB of odd width and height; its middle is put on places */
    explicit Stamp(const QImage& picture);

    /** A square of one colour. */
    Stamp(const QColor& colour, int side);

    /** What putting it once costs, in about the time of a dot. */
    qint64 cost() const { return qint64(mDots.size()) + 4 * qint64(mRuns.size()); }

    /** Puts it on an image of the format RGB32; what lies outside is cut off.
     *
     * @param dots  of the image
     */
    void put(const QSize& imageSize, QRgb* dots, int x, int y) const;

private:
    struct Run
    {
        int x; ///< from the middle
        int y;
        int length;
        size_t first; ///< index of its first dot
    };

    void add(int x, int y, QRgb dot);

    std::vector<Run> mRuns;
    std::vector<QRgb> mDots;
    int mReach;
};

} // namespace brox

#endif
