// SPDX-License-Identifier: MIT
#include "excellon_attributes.h"

#include <QRegularExpression>

void ExcellonAttributes::readComment(const QByteArray& comment)
{
    const QByteArray text = comment.toUpper().simplified().replace(' ', "");
    if (text == "TYPE=PLATED") {
        mSectionType = HoleType::Plated;
    } else if (text == "TYPE=NON_PLATED" || text == "TYPE=NONPLATED") {
        mSectionType = HoleType::NonPlated;
    }
    if (!text.startsWith("#@!")) {
        return;
    }
    const QList<QByteArray> fields = text.sliced(3).split(',');
    const auto has = [&](const char* field) { return fields.contains(field); };
    std::optional<HoleType> type; // stays open where plating is mixed or not told
    if (has("NONPLATED")) {
        type = HoleType::NonPlated;
    } else if (has("PLATED")) {
        type = HoleType::Plated;
    }
    if (fields[0] == "TF.FILEFUNCTION") {
        mFileType = type;
    } else if (fields[0] == "TA.APERFUNCTION") {
        mToolType = type;
        if (type == HoleType::NonPlated) {
            return;
        }
        if (has("VIADRILL")) {
            mToolType = HoleType::Via;
        } else if (has("COMPONENTPRESSFITDRILL") || has("PRESSFIT")) {
            mToolType = HoleType::PressFit;
        }
    } else if (fields[0] == "TD" || fields[0] == "TD.APERFUNCTION") {
        mToolType.reset();
    }
}

HoleType ExcellonAttributes::fileType(const QString& fileName) const
{
    if (mFileType) {
        return *mFileType;
    }
    static const QRegularExpression unplated(
        QStringLiteral("npth|non[-_ ]?plated|unplated"), QRegularExpression::CaseInsensitiveOption);
    // Without any hint a hole counts as plated: most are, and it is the one whose drill has to be
    // larger than the hole.
    return fileName.contains(unplated) ? HoleType::NonPlated : HoleType::Plated;
}
