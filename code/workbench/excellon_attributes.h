// SPDX-License-Identifier: MIT
#ifndef EXCELLON_ATTRIBUTES_H
#define EXCELLON_ATTRIBUTES_H

#include "board.h"

#include <QByteArray>
#include <optional>

/** What the comments of an Excellon or XNC file tell of its holes. */
class ExcellonAttributes
{
public:
    /** @param comment  without the mark of comments */
    void readComment(const QByteArray& comment);

    /** The type of a tool that is defined here; null: that of the file. */
    std::optional<HoleType> toolType() const { return mToolType ? mToolType : mSectionType; }

    /** The type of all other tools of the file; known at its end.
     *
     * @param fileName  tells it when the comments don't
     */
    HoleType fileType(const QString& fileName) const;

private:
    std::optional<HoleType> mFileType;
    std::optional<HoleType> mSectionType; ///< of the tools below a comment
    std::optional<HoleType> mToolType;
};

#endif
