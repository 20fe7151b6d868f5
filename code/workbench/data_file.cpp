// SPDX-License-Identifier: MIT
#include "data_file.h"

#include "file_set.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <algorithm>
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

constexpr qsizetype maxBackups = 10;
constexpr int patience = 2000; ///< milliseconds that another workbench may take for a save
const char timeFormat[] = "yyyyMMdd'T'HHmmss.zzz'Z'";

QFileInfo nameOf(DataFile::Kind kind)
{
    return QFileInfo(DataFile::nameOf(kind));
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

QStringList DataFile::lostAmounts(const QString& dataDir)
{
    static const QStringList types{"Pth", "Via", "Laser", "Photo", "PressFit", "NPth"};
    static const QStringList numbers{"amount", "oversized", "os_amount"};
    const DataFile file(dataDir, Kind::Models);
    QStringList lines;
    QXmlStreamReader xml(file.readUnchecked().bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        const bool isAmounts = xml.isStartElement() && xml.name() == QLatin1String("HoleType");
        for (const auto& attribute : isAmounts ? xml.attributes() : QXmlStreamAttributes()) {
            const QString name = attribute.name().toString();
            const QString value = attribute.value().toString();
            bool isNumber = false;
            value.toInt(&isNumber);
            if ((name == "name" && !types.contains(value))
                || (numbers.contains(name) && !isNumber)) {
                lines << QStringLiteral("%1: line %2: %3=\"%4\" is no %5 and counts as %6")
                             .arg(file.path())
                             .arg(xml.lineNumber())
                             .arg(name, value, name == "name" ? "type of hole" : "whole number",
                                 name == "name" ? "none" : "0");
            }
        }
    }
    return lines;
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

Backups::Backups(const QString& dataDir)
    : mDataDir(dataDir)
    , mFolder(QDir(dataDir).absoluteFilePath("backups"))
{ }

std::unique_ptr<FileLock> Backups::lock() const
{
    auto lock = std::make_unique<FileLock>();
    // A folder that can't be written in needs no lock.
    const bool isBusy =
        lock->take(QDir(mDataDir).filePath("saving.lock"), patience) == FileLock::Result::Busy;
    return isBusy ? nullptr : std::move(lock);
}

QString Backups::keep(DataFile::Kind kind, const QByteArray& bytes)
{
    for (const Backup& backup : all(kind)) {
        if (QFileInfo(backup.path).size() == bytes.size() && backup.bytes() == bytes) {
            QFile::rename(backup.path, newPath(kind)); // in vain: it is kept under its old number
            return {};
        }
    }
    const QString error = writeFile(newPath(kind), bytes);
    if (!error.isEmpty()) {
        return error;
    }
    for (const Backup& backup : all(kind).mid(maxBackups)) {
        QFile::remove(backup.path);
    }
    return {};
}

QString Backups::replace(const DataFile& file, const DataFile::Content& before,
    const QByteArray& bytes, bool inPlaceAtNeed)
{
    const bool isMoved = before.exists && before.bytes.isNull();
    const QString moved = newPath(file.kind());
    if (isMoved && !(QDir().mkpath(mFolder) && QFile::rename(file.path(), moved))) {
        return DataFile::tr("it can't be moved to the backups");
    }
    QString fault = file.write(bytes, inPlaceAtNeed);
    if (fault.isEmpty() && file.readUnchecked().bytes != bytes) {
        fault = DataFile::tr("what was read back differs from what was saved");
    }
    if (fault.isEmpty()) {
        keep(file.kind(), bytes); // in vain: the next save tries again
        return {};
    }
    const DataFile::Content after = file.read();
    if (isMoved && !after.exists) {
        QFile::rename(moved, file.path());
    } else if (!before.bytes.isNull() && !after.fault.isEmpty() && after.bytes != before.bytes) {
        file.write(before.bytes, true);
    }
    return fault;
}

QString Backups::replace(const DataFile& file, const QByteArray& bytes)
{
    const std::unique_ptr<FileLock> held = lock();
    if (!held) {
        return DataFile::tr("another workbench is saving");
    }
    const DataFile::Content before = file.readUnchecked();
    if (!before.bytes.isNull()) {
        const QString error = keep(file.kind(), before.bytes);
        if (!error.isEmpty()) {
            return DataFile::tr("no backup could be made: %1").arg(error);
        }
    }
    return replace(file, before, bytes, false);
}

QByteArray Backups::Backup::bytes() const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<Backups::Backup> Backups::all(DataFile::Kind kind) const
{
    const QRegularExpression form(
        QStringLiteral("^%1-(?:(\\d{6,12})-)?(\\d{8}T\\d{6}\\.\\d{3}Z)\\.%2$")
            .arg(nameOf(kind).completeBaseName(), nameOf(kind).suffix()));
    QList<Backup> backups;
    for (const QFileInfo& file : QDir(mFolder).entryInfoList(QDir::Files | QDir::Hidden)) {
        const QRegularExpressionMatch match = form.match(file.fileName());
        QDateTime time = QDateTime::fromString(match.captured(2), timeFormat);
        time.setTimeSpec(Qt::UTC);
        if (match.hasMatch() && time.isValid()) {
            backups << Backup{file.filePath(), match.captured(1).toLongLong(), time};
        }
    }
    std::sort(backups.begin(), backups.end(), [](const Backup& a, const Backup& b) {
        return std::pair(a.number, a.time) > std::pair(b.number, b.time);
    });
    return backups;
}

std::optional<Backups::Backup> Backups::newestGood(DataFile::Kind kind) const
{
    for (const Backup& backup : all(kind)) {
        if (DataFile::faultOf(kind, backup.bytes()).isEmpty()) {
            return backup;
        }
    }
    return {};
}

/** A name behind all that are there. */
QString Backups::newPath(DataFile::Kind kind) const
{
    const QList<Backup> backups = all(kind);
    const QString name =
        QStringLiteral("%1-%2-%3.%4")
            .arg(nameOf(kind).completeBaseName())
            .arg(backups.isEmpty() ? 1 : backups.first().number + 1, 6, 10, QChar('0'))
            .arg(QDateTime::currentDateTimeUtc().toString(timeFormat), nameOf(kind).suffix());
    return QDir(mFolder).filePath(name);
}

} // namespace brox
