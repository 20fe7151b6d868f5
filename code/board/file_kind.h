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
    Binary,
    Text, ///< a report, a list of drills and the like
    Empty
};

constexpr qsizetype fileKindBytes = 1 << 16; ///< that tell a file's kind

FileKind fileKind(QByteArrayView beginning);

/** "a Gerber file" and so on, for messages. */
QString kindText(FileKind kind);

} // namespace brox

#endif
