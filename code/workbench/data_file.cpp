// SPDX-License-Identifier: MIT
#include "data_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <fcntl.h>
#include <unistd.h>

namespace brox {

namespace {

constexpr int deepest = 1000; ///< levels of elements that the module takes

struct Traits
{
    const char* name;
    const char* root;
};

constexpr Traits traits[] = {
    {"brox/brox.xml", "DrillToolModels"}, {"brox/brox_drill_bits.xml", "DrillSizeTable"}};

const Traits& traitsOf(DataFile::Kind kind)
{
    return traits[size_t(kind)];
}

/** A rename is only on the disk when its folder is. */
void syncFolder(const QString& path)
{
    const int folder =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

} // namespace

DataFile::DataFile(const QString& dataDir, Kind kind)
    : mKind(kind)
    , mPath(QDir(dataDir).absoluteFilePath(nameOf(kind)))
{ }

const char* DataFile::nameOf(Kind kind)
{
    return traitsOf(kind).name;
}

DataFile::Content DataFile::read() const
{
    Content content = readUnchecked();
    if (content.exists && content.fault.isEmpty()) {
        content.fault = faultOf(mKind, content.bytes);
    }
    return content;
}

DataFile::Content DataFile::readUnchecked() const
{
    Content content;
    const QFileInfo info(mPath);
    content.exists = info.exists();
    QFile file(mPath);
    if (file.open(QIODevice::ReadOnly)) {
        content.bytes = file.readAll();
    }
    if (content.exists && file.error() != QFileDevice::NoError) {
        content.fault = file.errorString();
    }
    return content;
}

QString DataFile::faultOf(Kind kind, const QByteArray& bytes)
{
    QXmlStreamReader xml(bytes);
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement()) {
            --depth;
        } else if (xml.isStartElement() && ++depth > deepest) {
            return tr("line %1: nested too deeply").arg(xml.lineNumber());
        } else if (xml.isStartElement() && depth == 1
            && xml.qualifiedName().compare(QLatin1String(traitsOf(kind).root), Qt::CaseInsensitive)
                != 0) {
            return tr("line %1: the root element is \"%2\", not \"%3\"")
                .arg(xml.lineNumber())
                .arg(xml.qualifiedName(), QLatin1String(traitsOf(kind).root));
        }
    }
    return xml.hasError() ? tr("line %1, column %2: %3")
                                .arg(xml.lineNumber())
                                .arg(xml.columnNumber())
                                .arg(xml.errorString().simplified())
                          : QString();
}

QString DataFile::complaints(const QString& dataDir)
{
    QStringList lines;
    for (Kind kind : kinds) {
        const DataFile file(dataDir, kind);
        const QString fault = file.read().fault;
        if (!fault.isEmpty()) {
            lines << QStringLiteral("%1: %2").arg(file.path(), fault);
        }
    }
    return lines.join('\n');
}

QString DataFile::write(const QByteArray& bytes, bool inPlaceAtNeed) const
{
    return writeDurably(mPath, bytes, inPlaceAtNeed);
}

QString writeDurably(const QString& path, const QByteArray& bytes, bool inPlaceAtNeed)
{
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) {
        return DataFile::tr("the folder %1 can't be made").arg(folder);
    }
    QSaveFile file(path);
    file.setDirectWriteFallback(inPlaceAtNeed);
    if (!file.open(QIODevice::WriteOnly)) {
        return file.errorString();
    }
    // A commit alone takes a file that was cut off when its buffer was written for a whole one.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        return file.errorString();
    }
    if (fsync(file.handle()) != 0) {
        return qt_error_string();
    }
    if (!file.commit()) {
        return file.errorString();
    }
    syncFolder(folder);
    return {};
}

} // namespace brox
