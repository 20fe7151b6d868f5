// SPDX-License-Identifier: MIT
#include "data_file.h"

#include "file_set.h"

#include <QDir>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <unistd.h>

namespace brox {

namespace {

constexpr int deepest = 1000; ///< levels of elements that the module takes

constexpr qsizetype namesOfSummary = 4;

struct Traits
{
    const char* name;
    const char* root;
    const char* entry;
    const char* entryName; ///< attribute
};

constexpr Traits traits[] = {{"brox/brox.xml", "DrillToolModels", "DrillToolModel", "name"},
    {"brox/brox_drill_bits.xml", "DrillSizeTable", "Drill", "designation"},
    {"brox/shop_rules.json", nullptr, nullptr, nullptr}};

const Traits& traitsOf(DataFile::Kind kind)
{
    return traits[size_t(kind)];
}

QString faultOfRules(const QByteArray& json)
{
    try {
        ShopRules::fromJson(json);
        return {};
    } catch (const RulesError& error) {
        return QString::fromUtf8(error.what()).trimmed();
    }
}

QString writeInPlace(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        return file.errorString();
    }
    return fsync(file.handle()) == 0 ? QString() : qt_error_string();
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
    if (content.exists && !info.isFile()) {
        content.fault = info.isDir() ? tr("it is a folder") : tr("it is no regular file");
        return content;
    }
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
    if (kind == Kind::Rules) {
        return faultOfRules(bytes);
    }
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

QString DataFile::summaryOf(Kind kind, const QByteArray& bytes)
{
    if (!faultOf(kind, bytes).isEmpty()) {
        return tr("can't be read");
    }
    QStringList names;
    if (kind == Kind::Rules) {
        names = ShopRules::fromJson(bytes).lines();
    }
    QXmlStreamReader xml(kind == Kind::Rules ? QByteArray() : bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String(traitsOf(kind).entry)) {
            names << xml.attributes().value(QLatin1String(traitsOf(kind).entryName)).toString();
        }
    }
    const QString first = names.mid(0, namesOfSummary).join(", ");
    const qsizetype others = names.size() - namesOfSummary;
    return others > 0     ? tr("%1 and %2 more").arg(first).arg(others)
        : first.isEmpty() ? tr("empty")
                          : first;
}

QByteArray DataFile::defaults(Kind kind)
{
    if (kind == Kind::Rules) {
        return ShopRules::starter().toJson();
    }
    QFile file(QStringLiteral(":/defaults/") + QFileInfo(nameOf(kind)).fileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString DataFile::write(const QByteArray& bytes, bool inPlaceAtNeed) const
{
    const QString folder = QFileInfo(mPath).path();
    if (!QDir().mkpath(folder)) {
        return tr("the folder %1 can't be made").arg(folder);
    }
    if (inPlaceAtNeed && !QFileInfo(folder).isWritable()) {
        return writeInPlace(mPath, bytes);
    }
    return writeFile(mPath, bytes);
}

ShopRules loadRules(const QString& dataDir)
{
    const DataFile file(dataDir, DataFile::Kind::Rules);
    const DataFile::Content content = file.read();
    if (!content.fault.isEmpty()) {
        throw RulesError(QStringLiteral("%1: %2").arg(file.path(), content.fault));
    }
    return content.exists ? ShopRules::fromJson(content.bytes) : ShopRules::starter();
}

} // namespace brox
