// SPDX-License-Identifier: MIT
#ifndef DATA_FILE_H
#define DATA_FILE_H

#include "file_set.h"
#include "shop_rules.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>

namespace brox {

/** One of the files of a data folder: models and bits, which are the module's and seen here from
 *  outside, and the rules of the shop. */
class DataFile
{
    Q_DECLARE_TR_FUNCTIONS(DataFile)

public:
    enum class Kind
    {
        Models,
        Bits,
        Rules
    };
    static constexpr Kind kinds[] = {Kind::Models, Kind::Bits, Kind::Rules};
    static constexpr Kind moduleKinds[] = {Kind::Models, Kind::Bits};

    static constexpr qsizetype pathLimit = 512; ///< bytes; the module has room for no more

    DataFile(const QString& dataDir, Kind kind);

    /** The file's name in a data folder, such as "brox/brox.xml". */
    static const char* nameOf(Kind kind);

    Kind kind() const { return mKind; }
    QString path() const { return mPath; }

    struct Content
    {
        bool exists = false;
        QByteArray bytes; ///< null if they could not be read
        QString fault; ///< why the module would not read it; empty if it would, or there is none
    };
    Content read() const;

    /** The same without a look at the content: only a file that can't be read has a fault. Nothing
     *  but a regular file is opened, since others may never come to an end. */
    Content readUnchecked() const;

    /** Why the module, or the workbench, would refuse these bytes, in one line; empty if it takes
     *  them. */
    static QString faultOf(Kind kind, const QByteArray& bytes);

    /** What a user knows a content by: its first models or bits, or its rules. */
    static QString summaryOf(Kind kind, const QByteArray& bytes);

    /** What a new data folder has. */
    static QByteArray defaults(Kind kind);

    /** What is wrong with the files of a data folder, a line each; empty if nothing is. */
    static QString complaints(const QString& dataDir);

    /** Amounts that the module takes for 0 without a word, since their number or their type of hole
     *  is none; a line each. */
    static QStringList lostAmounts(const QString& dataDir);

    /** Replaces the file, as FileSet does, or makes it and its folders.
     *
     * @param inPlaceAtNeed  write into the file itself where its folder can't be written in
     * @return what went wrong, or an empty text
     */
    QString write(const QByteArray& bytes, bool inPlaceAtNeed = false) const;

private:
    Kind mKind;
    QString mPath;
};

/** A data folder's rules of the shop; those of a new one if there is no file.
 *
 * @throws RulesError  naming the file and what is wrong in it
 */
ShopRules loadRules(const QString& dataDir);

/** Former contents of a data folder's files, in its folder "backups", and the replacement of a file
 *  that makes one first.
 *
 * The last ten contents of each file are kept, each once, under the file's name, a running number
 * and the time when it was last seen (UTC). The number gives the order: a clock may be wrong.
 * Other files in the folder are nobody's business.
 */
class Backups
{
public:
    explicit Backups(const QString& dataDir);

    /** To be held from the look at a file to the end of its replacement, by one workbench at a
     *  time.
     *
     * @return null if another one keeps it
     */
    std::unique_ptr<FileLock> lock() const;

    /** Keeps a content, or numbers it anew if it is there.
     *
     * @return what went wrong, or an empty text: it is on the disk then
     */
    QString keep(DataFile::Kind kind, const QByteArray& bytes);

    /** Replaces a file whose content is kept, reads it back and keeps the new content.
     *
     * A file that can't be read is moved among the backups. What was there before is there again
     * if the file is broken afterwards.
     *
     * @param before         what is there
     * @param inPlaceAtNeed  as of DataFile::write
     * @return what went wrong, or an empty text
     */
    QString replace(const DataFile& file, const DataFile::Content& before, const QByteArray& bytes,
        bool inPlaceAtNeed);

    /** The whole of a replacement, its backup included, that needs no question. */
    QString replace(const DataFile& file, const QByteArray& bytes);

    struct Backup
    {
        QString path;
        qint64 number = 0; ///< 0: of a time when they had none
        QDateTime time;

        QByteArray bytes() const;
    };

    /** The latest first. */
    QList<Backup> all(DataFile::Kind kind) const;

    /** The latest that would be read. */
    std::optional<Backup> newestGood(DataFile::Kind kind) const;

private:
    QString newPath(DataFile::Kind kind) const;

    QString mDataDir;
    QString mFolder;
};

} // namespace brox

#endif
