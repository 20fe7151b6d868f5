// SPDX-License-Identifier: MIT
#ifndef FILE_KIND_H
#define FILE_KIND_H

#include <QByteArrayView>
#include <QString>

namespace brox {

/** What a file is, by its content. */
enum class FileKind
{
    DrillProgram, ///< Excellon or XNC, or at least nothing else
    Xml,
    GerberDrill, ///< a Gerber file whose FileFunction is that of a drill file
    Gerber,
    Job, ///< of the open image format: lists a board's files
    Eia, ///< punched tape in EIA code instead of ASCII
    Archive,
    Rar, ///< an archive that can't be read
    Picture,
    Document, ///< for people to read
    Design, ///< of a CAD program
    Binary,
    ToolList, ///< beside drill files
    Text, ///< a report and the like
    Empty
};

constexpr qsizetype fileKindBytes = 1 << 16; ///< that decide a file's kind

FileKind fileKind(QByteArrayView beginning);

/** How surely a text that could be a drill program is one; folders hold all sorts of texts. */
enum class Sureness
{
    None,
    Likely, ///< more than one line is a place
    Sure ///< a line sets up a drilling machine
};
Sureness drillSureness(QByteArrayView beginning);

/** "a Gerber file" and so on, for messages. */
QString kindText(FileKind kind);

} // namespace brox

#endif
