// SPDX-License-Identifier: MIT
#include "file_kind.h"

#include "tool_list.h"

#include <QRegularExpression>
#include <algorithm>
#include <bit>

namespace brox {

namespace {

/** What the first bytes of a file say. */
FileKind markedKind(QByteArrayView bytes)
{
    static const std::pair<QByteArrayView, FileKind> marks[] = {{"PK\x03\x04", FileKind::Archive},
        {"PK\x05\x06", FileKind::Archive}, {"\x1f\x8b", FileKind::Archive},
        {"7z\xbc\xaf\x27\x1c", FileKind::Archive}, {"BZh", FileKind::Archive},
        {"\xfd\x37zXZ", FileKind::Archive}, {"\x28\xb5\x2f\xfd", FileKind::Archive},
        {"Rar!\x1a\x07", FileKind::Rar}, {"\x89PNG", FileKind::Picture},
        {"\xff\xd8\xff", FileKind::Picture}, {"GIF8", FileKind::Picture},
        {"%PDF-", FileKind::Document}, {"%!PS", FileKind::Document}, {"{\\rtf", FileKind::Document},
        {"\xd0\xcf\x11\xe0", FileKind::Design}, {"(kicad_", FileKind::Design},
        {"(footprint", FileKind::Design}, {"PCBNEW-", FileKind::Design},
        {"EESchema", FileKind::Design}, {"|RECORD=", FileKind::Design},
        {"*PADS-", FileKind::Design}, {"!PADS-", FileKind::Design},
        {"ACCEL_ASCII", FileKind::Design}, {"\x10\x80", FileKind::Design},
        {{"\x10\0", 2}, FileKind::Design}};
    for (const auto& [mark, kind] : marks) {
        if (bytes.startsWith(mark)) {
            return kind;
        }
    }
    const bool isTar = bytes.size() > 262 && bytes.sliced(257, 5) == "ustar";
    return isTar ? FileKind::Archive : FileKind::Empty;
}

/** Tapes in EIA code punch an odd number of holes for each character, and end their blocks with
 *  one that no text begins or ends with. */
bool isEia(QByteArrayView bytes)
{
    const auto ends = std::count(bytes.begin(), bytes.end(), '\x80');
    const bool isOdd = std::all_of(bytes.begin(), bytes.end(),
        [](char c) { return c == 0 || std::popcount(uchar(c)) % 2 == 1; });
    return isOdd && ends > 2 && ends * 200 > bytes.size();
}

bool isBinary(QByteArrayView bytes)
{
    return std::any_of(bytes.begin(), bytes.end(),
        [](char c) { return c >= 0 && c < ' ' && !QByteArrayView("\t\n\r\f\v\x1a").contains(c); });
}

bool isIpc2581(QByteArrayView bytes)
{
    static const QRegularExpression root(QStringLiteral("<(?:[\\w.]+:)?IPC-2581[\\s>]"));
    return root.match(QString::fromUtf8(bytes)).hasMatch();
}

/** By the function that a Gerber file specifies. */
FileKind gerberKind(const QString& text)
{
    static const QRegularExpression function(QStringLiteral(
        "TF\\.FileFunction,(?:(?<drilled>Plated|NonPlated|MixedPlating)\\b|Profile)"));
    const auto match = function.match(text);
    return match.hasCaptured(u"drilled") ? FileKind::GerberDrill
        : match.hasMatch()               ? FileKind::GerberProfile
                                         : FileKind::Gerber;
}

bool isGerber(const QString& text)
{
    static const QRegularExpression mark(
        QStringLiteral("%FS[LT]?[AI]|%MO(?:IN|MM)\\*|%ADD\\d|^G04[^*]*\\*|^[XY]\\S*D0[123]\\*"),
        QRegularExpression::MultilineOption);
    return mark.match(text).hasMatch();
}

/** By lines that only a drill program has, of those that folders hold. */
FileKind textKind(const QString& text, QByteArrayView bytes)
{
    constexpr auto options =
        QRegularExpression::MultilineOption | QRegularExpression::CaseInsensitiveOption;
    static const QRegularExpression setup(
        QStringLiteral(
            "^\\s*(?:M48|M30|T\\d+\\S*C[.\\d]+|G85|M15|M71|M72|M95|(?:METRIC|INCH)\\b.*)\\s*$"),
        options);
    static const QRegularExpression place(
        QStringLiteral("^\\s*(?:[XY][-+]?(?:\\d+\\.?\\d*|\\.\\d+)){1,2}\\s*$"),
        QRegularExpression::MultilineOption);
    static const QRegularExpression some(
        QStringLiteral("^\\s*(?:%|T\\d+(?:[FSBHZ][-+.\\d]*)*(?:C[.\\d]+.*)?|[GM]\\d\\d.*"
                       "|[XY][-+]?[.\\d]+.*|METRIC.*|INCH.*)\\s*$"),
        options);
    if (setup.match(text).hasMatch()) {
        return FileKind::DrillProgram;
    }
    auto places = place.globalMatch(text);
    if (places.hasNext() && (places.next(), places.hasNext())) {
        return FileKind::LikelyProgram;
    }
    if (isToolList(bytes)) {
        return FileKind::ToolList;
    }
    return some.match(text).hasMatch() ? FileKind::PossibleProgram : FileKind::Text;
}

} // namespace

FileKind fileKind(QByteArrayView beginning)
{
    QByteArrayView bytes = beginning.first(qMin(beginning.size(), fileKindBytes));
    if (const FileKind kind = markedKind(bytes); kind != FileKind::Empty) {
        return kind;
    }
    const bool isUtf16 = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
    if (isUtf16 && bytes.first(qMin(bytes.size(), 4)).contains('<')) {
        return FileKind::Ipc2581; // or the reader will see
    }
    if (bytes.startsWith("\xef\xbb\xbf")) {
        bytes = bytes.sliced(3);
    }
    if (isEia(bytes)) {
        return FileKind::Eia;
    }
    if (isBinary(bytes)) {
        return FileKind::Binary;
    }
    const QByteArrayView start = bytes.trimmed();
    if (start.isEmpty()) {
        return FileKind::Empty;
    }
    if (start.startsWith('<')) {
        const bool isDesign = start.first(qMin(start.size(), 400)).contains("<eagle");
        return isDesign ? FileKind::Design : isIpc2581(bytes) ? FileKind::Ipc2581 : FileKind::Xml;
    }
    if (start.startsWith('{')) {
        return FileKind::Job;
    }
    const QString text = QString::fromLatin1(bytes);
    return isGerber(text) ? gerberKind(text) : textKind(text, bytes);
}

QString kindText(FileKind kind)
{
    switch (kind) {
    case FileKind::Ipc2581:
    case FileKind::Xml:
        return BoardText::tr("an XML file");
    case FileKind::GerberDrill:
    case FileKind::GerberProfile:
    case FileKind::Gerber:
        return BoardText::tr("a Gerber file");
    case FileKind::Job:
        return BoardText::tr("a job file, which lists the board's files and has no holes itself");
    case FileKind::Eia:
        return BoardText::tr("a tape in EIA code; write it in ASCII");
    case FileKind::Archive:
        return BoardText::tr("an archive");
    case FileKind::Rar:
        return BoardText::tr("a RAR archive; pack the files as .zip");
    case FileKind::Picture:
        return BoardText::tr("a picture");
    case FileKind::Document:
        return BoardText::tr("a document");
    case FileKind::Design:
        return BoardText::tr("a design of a CAD program, which has to export drill files");
    case FileKind::Binary:
        return BoardText::tr("a binary file");
    case FileKind::ToolList:
        return BoardText::tr("a list of tools");
    case FileKind::DrillProgram:
    case FileKind::LikelyProgram:
    case FileKind::PossibleProgram: // of which a named one would have been read
    case FileKind::Text:
        return BoardText::tr("a text without drill commands");
    case FileKind::Empty:
        return BoardText::tr("an empty file");
    }
    return {};
}

} // namespace brox
