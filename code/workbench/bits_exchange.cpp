// SPDX-License-Identifier: MIT
#include "bits_exchange.h"

#include "backups.h"

#include <QFile>

namespace brox {

namespace {

const QString readyPrefix = QStringLiteral("ready:");

DrillBits readySet(const QString& key)
{
    QStringList keys;
    for (const ReadySet& set : readySets()) {
        if (key == QLatin1String(set.key)) {
            return set.bits();
        }
        keys << readyPrefix + QLatin1String(set.key);
    }
    throw BitsError(DataFile::tr("no ready set \"%1\"; there are: %2").arg(key, keys.join(", ")));
}

} // namespace

DrillBits readBits(const QString& name)
{
    if (name.startsWith(readyPrefix)) {
        return readySet(name.mid(readyPrefix.size()));
    }
    QFile file(name);
    if (!file.open(QFile::ReadOnly)) {
        throw BitsError(QStringLiteral("%1: %2").arg(name, file.errorString()));
    }
    try {
        const DrillBits bits = bitsFromCsv(file.readAll());
        if (bits.isEmpty()) {
            throw BitsError(DataFile::tr("1: no bits"));
        }
        return bits;
    } catch (const BitsError& error) {
        throw BitsError(QStringLiteral("%1:%2").arg(name, QString::fromUtf8(error.what())));
    }
}

DrillBits savedBits(const QString& dataDir)
{
    const DataFile file(dataDir, DataFile::Kind::Bits);
    const DataFile::Content content = file.read();
    if (!content.fault.isEmpty()) {
        throw BitsError(QStringLiteral("%1: %2").arg(file.path(), content.fault));
    }
    return bitsFromXml(content.bytes);
}

void replaceBits(const QString& dataDir, const DrillBits& bits)
{
    const DataFile file(dataDir, DataFile::Kind::Bits);
    const QString error = Backups(dataDir).replace(file, bitsToXml(bits));
    if (!error.isEmpty()) {
        throw BitsError(QStringLiteral("%1: %2").arg(file.path(), error));
    }
}

} // namespace brox
