// SPDX-License-Identifier: MIT
#include "brox_xml_file.h"

#include "zeb_lowlevel.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <QXmlStreamReader>

namespace {

constexpr int dataLocation = 2;
constexpr int maxPathLength = 512;
constexpr int indent = 4;
constexpr int maxDepth = 1000;

/** Whether XML 1.0 can hold a character. */
bool isXmlCharacter(char32_t code)
{
    return (code >= 0x20 && code != 0xfffe && code != 0xffff) || code == '\t' || code == '\n'
        || code == '\r';
}

/** Whether elements nest deeper than a document of ours ever would; says where.
 *
 * A document object model is destroyed by recursion, so a file of many thousand levels would
 * exhaust the stack: it has to be refused before it is built. A text that is no XML is not judged.
 */
bool nestsTooDeeply(const QByteArray& xml, QString* error, int* line, int* column)
{
    QXmlStreamReader reader(xml);
    int depth = 0;
    while (depth <= maxDepth && !reader.atEnd()) {
        reader.readNext();
        depth += reader.isStartElement() - reader.isEndElement();
    }
    if (depth > maxDepth) {
        *error = QStringLiteral("elements are nested more than %1 deep").arg(maxDepth);
        *line = int(reader.lineNumber());
        *column = int(reader.columnNumber());
    }
    return depth > maxDepth;
}

} // namespace

QString BroxXmlFile::existingPath() const
{
    bool exists = false;
    const QString path = locate(&exists);
    return exists ? path : QString();
}

QString BroxXmlFile::pathForSaving() const
{
    bool exists = false; // a file that is not there yet is as good
    const QString path = locate(&exists);
    const QFileInfo info(path);
    const QDir folder = info.dir();
    if (path.isNull() || (!folder.exists() && !folder.mkpath(folder.path()))) {
        return {};
    }
    return info.absoluteFilePath();
}

bool BroxXmlFile::read(const QString& path, QDomDocument* document) const
{
    const QFileInfo info(path);
    const QByteArray localPath = info.filePath().toLocal8Bit();
    if (!mSource.check(info.exists(), "fi.exists()")) {
        zeb__log_write("ERROR", mMessages.missing, localPath.constData());
        return false;
    }
    QFile file(info.filePath());
    if (!mSource.check(
            file.open(QFile::ReadOnly | QFile::Text), "file.open(QFile::ReadOnly | QFile::Text)")) {
        zeb__log_write("ERROR", mMessages.unreadable, localPath.constData());
        return false;
    }
    const QByteArray content = file.readAll();
    file.close();

    QString error;
    int errorLine = 0;
    int errorColumn = 0;
    const bool isXml = !nestsTooDeeply(content, &error, &errorLine, &errorColumn)
        && document->setContent(content, true, &error, &errorLine, &errorColumn);
    if (!mSource.check(isXml, "setContentStatus == true")) {
        zeb__log_write("ERROR", mMessages.malformed, localPath.constData(),
            error.toLocal8Bit().constData(), errorLine, errorColumn);
    }
    return isXml;
}

bool BroxXmlFile::checkRoot(const QString& path, const QDomDocument& document) const
{
    const QString tag = document.documentElement().tagName();
    const QByteArray condition =
        QByteArray("mainElement.tagName().compare(\"") + mRoot + "\", Qt::CaseInsensitive) == 0";
    if (!mSource.check(
            tag.compare(QLatin1String(mRoot), Qt::CaseInsensitive) == 0, condition.constData())) {
        zeb__log_write(
            "ERROR", mMessages.foreign, QFileInfo(path).filePath().toLocal8Bit().constData());
        return false;
    }
    return true;
}

bool BroxXmlFile::write(const QString& path, const QDomDocument& document) const
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly | QFile::Text)) {
        zeb__log_write("ERROR", "%s", file.errorString().toLocal8Bit().constData());
        return false;
    }
    QTextStream stream(&file);
    document.save(stream, indent);
    stream.flush();
    if (stream.status() != QTextStream::Ok || !file.flush()) {
        const QString text = QStringLiteral("%1: %2").arg(path, file.errorString());
        zeb__log_write("ERROR", "%s", text.toLocal8Bit().constData());
        return false;
    }
    return true;
}

/** The full path, also of a file that is not there; null if the host has none. */
QString BroxXmlFile::locate(bool* exists) const
{
    const QByteArray name = QByteArray("brox/") + mName;
    char path[maxPathLength + 1] = {};
    const int status =
        zeb__sarn_get_dir(dataLocation, name.constData(), path, maxPathLength, exists);
    return status == 0 ? QString::fromLocal8Bit(path) : QString();
}

QString xmlText(const QString& text)
{
    QString kept;
    for (const uint code : text.toUcs4()) { // half a surrogate pair becomes a replacement character
        if (isXmlCharacter(code)) {
            kept += QChar::fromUcs4(code);
        }
    }
    return kept;
}
