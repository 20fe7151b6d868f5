// SPDX-License-Identifier: MIT
#include "brox_xml_depth.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <string_view>

namespace {

constexpr int maxDepth = 1000;

/** Follows the tags of a text in an encoding that agrees with ASCII, without reading it as XML:
 *  a parser in front of the parser would take half of its time again. */
class TagScanner
{
public:
    explicit TagScanner(std::string_view xml)
        : mXml(xml)
    { }

    /** The place of the tag that opens one level too many; npos if there is none. */
    std::size_t tooDeep()
    {
        int depth = 0;
        while ((mPosition = mXml.find('<', mPosition)) != std::string_view::npos) {
            if (startsWith("<!--")) {
                skipPast("-->");
            } else if (startsWith("<![CDATA[")) {
                skipPast("]]>");
            } else if (startsWith("<?")) {
                skipPast("?>");
            } else if (startsWith("</")) {
                --depth;
                skipPast(">");
            } else {
                const std::size_t tag = mPosition;
                if (!skipTag() && ++depth > maxDepth) {
                    return tag;
                }
            }
        }
        return std::string_view::npos;
    }

private:
    bool startsWith(std::string_view text) const
    {
        return mXml.compare(mPosition, text.size(), text) == 0;
    }

    void skipPast(std::string_view end)
    {
        const std::size_t found = mXml.find(end, mPosition);
        mPosition = found == std::string_view::npos ? mXml.size() : found + end.size();
    }

    /** Goes behind a start tag, over the values of its attributes; true if it closes itself. */
    bool skipTag()
    {
        for (std::size_t i = mPosition + 1; i < mXml.size(); ++i) {
            const char character = mXml[i];
            if (character == '"' || character == '\'') {
                i = std::min(mXml.find(character, i + 1), mXml.size());
            } else if (character == '>') {
                mPosition = i + 1;
                return mXml[i - 1] == '/';
            }
        }
        mPosition = mXml.size();
        return true;
    }

    std::string_view mXml;
    std::size_t mPosition = 0;
};

/** Whether a text's declaration names another encoding than the scanner reads. */
bool namesOtherEncoding(std::string_view head)
{
    const std::size_t encoding = head.find("encoding");
    if (encoding == head.npos) {
        return false;
    }
    const std::size_t name = head.find_first_not_of(" \t\r\n=\"'", encoding + 8);
    return name == head.npos
        || (head.substr(name, 5) != "UTF-8" && head.substr(name, 5) != "utf-8");
}

/** Whether the scanner sees what the parser sees: the same encoding, and no entities, whose text
 *  may hold tags. */
bool isPlain(std::string_view xml)
{
    const bool hasDeclaration = xml.substr(0, 8).find("<?xml") != xml.npos; // behind a mark
    const std::string_view head =
        xml.substr(0, hasDeclaration ? std::max<std::size_t>(512, xml.find("?>")) : 512);
    return head.find('\0') == head.npos && xml.find("<!DOCTYPE") == xml.npos
        && !namesOtherEncoding(head);
}

qint64 parsedTooDeep(const QByteArray& xml)
{
    QXmlStreamReader reader(xml);
    int depth = 0;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement && ++depth > maxDepth) {
            return reader.characterOffset();
        }
    }
    return -1;
}

} // namespace

bool nestsTooDeeply(const QByteArray& xml, QString* error, int* line, int* column)
{
    const std::string_view view(xml.constData(), std::size_t(xml.size()));
    const qint64 place = isPlain(view) ? qint64(TagScanner(view).tooDeep()) : parsedTooDeep(xml);
    if (place < 0) {
        return false;
    }
    const QByteArray before = xml.left(place);
    *error = QStringLiteral("elements are nested more than %1 deep").arg(maxDepth);
    *line = int(before.count('\n')) + 1;
    *column = int(place - before.lastIndexOf('\n'));
    return true;
}
