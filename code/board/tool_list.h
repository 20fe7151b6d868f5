// SPDX-License-Identifier: MIT
#ifndef TOOL_LIST_H
#define TOOL_LIST_H

#include "drill_canvas.h"

#include <QByteArrayView>

namespace brox {

/** Lists of tools that programs write beside drill files, as texts for people. They have what some
 *  drill files lack: sizes of tools, digits and zeros of numbers, plating, tolerances, and pairs of
 *  layers. */

constexpr qint64 maxListSize = 1 << 20; ///< bytes that are read of one
constexpr qint64 maxListsSize = 8 * maxListSize; ///< of those of an order

/** Whether a text is such a list, by its beginning. */
bool isToolList(QByteArrayView beginning);

/** The lists of an order. */
class ToolLists
{
public:
    /** @param name  path of the list; its last part is shown to the user */
    void add(QByteArrayView content, const QString& name);

    /** What they say of a drill file: those that name it, or its name but for the suffix if that is
     *  the name of no other; those that name no file if it is the only one. Digits, zeros and units
     *  of lists that name no file are those of all files.
     *
     * @param drillFile  its path
     * @param isOnly     there is no other in the order
     */
    ListedTools about(const QString& drillFile, bool isOnly) const;

private:
    /** What a list says of some drill files. */
    struct Section
    {
        QString list; ///< name
        QStringList files; ///< small letters; empty: it names none
        QStringList stems; ///< of these without the suffix, or of the list
        NumberFormat format;
        bool isIncremental = false;
        std::optional<Span> span;
        std::optional<bool> plated;
        double unit = 0; ///< host sizes to that of sizes without one; 0: unspecified
        double inchUnit = 0; ///< or this, where places are in inches, else millimetres
        bool hasBareSizes = false; ///< of which only the units of places say what they are
        std::map<int, ToolRemark> tools; ///< by number
    };

    static void take(Section& section, const QRegularExpressionMatch& fact);
    static void takeTool(Section& section, const QRegularExpressionMatch& fact);
    std::vector<const Section*> sectionsOf(const QString& drillFile, bool isOnly) const;

    std::vector<Section> mSections;
};

} // namespace brox

#endif
