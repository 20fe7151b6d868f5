// SPDX-License-Identifier: MIT
#include "file_kind.h"

#include "board_text.h"

#include <QRegularExpression>
#include <algorithm>

namespace brox {

namespace {

bool isArchive(QByteArrayView bytes)
{
    const QByteArrayView marks[] = {"PK\x03\x04", "PK\x05\x06", "\x1f\x8b", "7z\xbc\xaf\x27\x1c",
        "BZh", "\xfd\x37zXZ", "\x28\xb5\x2f\xfd"};
    return std::any_of(std::begin(marks), std::end(marks), [&](QByteArrayView mark) {
        return bytes.startsWith(mark);
    }) || (bytes.size() > 262 && bytes.sliced(257, 5) == "ustar");
}

/** Tapes in EIA code end their lines with a byte that no text begins or ends with. */
bool isEia(QByteArrayView bytes)
{
    const auto ends = std::count(bytes.begin(), bytes.end(), '\x80');
    const auto lines = std::count(bytes.begin(), bytes.end(), '\n');
    return ends > 2 && ends > lines && ends * 200 > bytes.size();
}

bool isBinary(QByteArrayView bytes)
{
    return std::any_of(bytes.begin(), bytes.end(),
        [](char c) { return c >= 0 && c < ' ' && !QByteArrayView("\t\n\r\f\v\x1a").contains(c); });
}

/** A line that only a drill program has: a tool's diameter, a place, the header's beginning. */
bool hasProgramLine(const QString& text)
{
    static const QRegularExpression line(
        QStringLiteral("^\\s*(?:M48|%|M7[12]|T\\d+(?:[FSBHZ][-+.\\d]*)*(?:C[.\\d]+.*)?|[GM]\\d\\d.*"
                       "|[XY][-+]?[.\\d]+.*|METRIC.*|INCH.*)\\s*$"),
        QRegularExpression::MultilineOption | QRegularExpression::CaseInsensitiveOption);
    return line.match(text).hasMatch();
}

bool isGerber(const QString& text)
{
    static const QRegularExpression mark(
        QStringLiteral("%FS[LT]?[AI]|%MO(?:IN|MM)\\*|%ADD\\d|^G04[^*]*\\*|^[XY]\\S*D0[123]\\*"),
        QRegularExpression::MultilineOption);
    return mark.match(text).hasMatch();
}

bool isGerberDrill(const QString& text)
{
    static const QRegularExpression function(
        QStringLiteral("TF\\.FileFunction,(?:Plated|NonPlated|MixedPlating)\\b"));
    return function.match(text).hasMatch();
}

} // namespace

FileKind fileKind(QByteArrayView beginning)
{
    QByteArrayView bytes = beginning.first(qMin(beginning.size(), fileKindBytes));
    if (isArchive(bytes)) {
        return FileKind::Archive;
    }
    const bool isUtf16 = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
    if (isUtf16 && bytes.first(qMin(bytes.size(), 4)).contains('<')) {
        return FileKind::Xml;
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
        return FileKind::Xml;
    }
    if (start.startsWith('{')) {
        return FileKind::Job;
    }
    const QString text = QString::fromLatin1(bytes);
    if (isGerber(text)) {
        return isGerberDrill(text) ? FileKind::GerberDrill : FileKind::Gerber;
    }
    return hasProgramLine(text) ? FileKind::DrillProgram : FileKind::Text;
}

QString kindText(FileKind kind)
{
    switch (kind) {
    case FileKind::DrillProgram:
        return BoardText::tr("a drill file");
    case FileKind::Xml:
        return BoardText::tr("an XML file");
    case FileKind::GerberDrill:
        return BoardText::tr("a Gerber drill file");
    case FileKind::Gerber:
        return BoardText::tr("a Gerber file");
    case FileKind::Job:
        return BoardText::tr("a job file, which lists the board's files and has no holes itself");
    case FileKind::Eia:
        return BoardText::tr("a tape in EIA code; write it in ASCII");
    case FileKind::Archive:
        return BoardText::tr("an archive");
    case FileKind::Binary:
        return BoardText::tr("a binary file");
    case FileKind::Text:
        return BoardText::tr("a text without drill commands");
    case FileKind::Empty:
        return BoardText::tr("an empty file");
    }
    return {};
}

} // namespace brox
