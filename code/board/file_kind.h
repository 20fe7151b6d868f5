// SPDX-License-Identifier: MIT
#ifndef FILE_KIND_H
#define FILE_KIND_H

#include <QByteArrayView>
#include <QString>

namespace brox {

/** What a file is, by its content. */
enum class FileKind
{
    DrillProgram, ///< Excellon or XNC: a line sets up a drilling machine
    LikelyProgram, ///< more than one line is a place
    PossibleProgram, ///< a line may be one of a program; folders hold all sorts of texts
    Ipc2581,
    Xml, ///< of something else
    GerberDrill, ///< a Gerber file whose FileFunction is that of a drill file
    GerberProfile, ///< one whose FileFunction is the outline of the board
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

constexpr bool isXml(FileKind kind)
{
    return kind == FileKind::Ipc2581 || kind == FileKind::Xml;
}

constexpr bool isDrillProgram(FileKind kind)
{
    return kind <= FileKind::PossibleProgram;
}

constexpr qsizetype fileKindBytes = 1 << 16; ///< that decide a file's kind

FileKind fileKind(QByteArrayView beginning);

/** "a Gerber file" and so on, for messages. */
QString kindText(FileKind kind);

} // namespace brox

#endif
