// SPDX-License-Identifier: MIT
#ifndef FILE_SET_H
#define FILE_SET_H

#include "reading.h"

#include <QDate>
#include <QFile>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace brox {

/** Something that can't be written, in one line. */
class OutputError : public Error
{
public:
    explicit OutputError(const QString& message)
        : Error(message.simplified())
    { }

    OutputError(const QString& path, const QString& reason);

    /** Without the path, as far as it is known which that is. */
    QString reason() const { return mReason; }

private:
    QString mReason = message();
};

/** A file that only one process at a time has; it is gone when the object or the process is. */
class FileLock
{
public:
    FileLock() = default;
    ~FileLock() { release(); }
    Q_DISABLE_COPY_MOVE(FileLock)

    enum class Result
    {
        Taken,
        Busy, ///< another process, or another object, has it
        Impossible ///< errno says why; the folder is missing or can't be written in
    };

    /** @param milliseconds  to wait for another */
    Result take(const QString& path, int milliseconds);
    void release();

private:
    QString mPath;
    int mFile = -1;
};

/** Reports how much of the work is done.
 *
 * @throws BoardCancelled  if the user wants no more of it
 */
void tell(const Progress& progress, qint64 done, qint64 total);

/** Files that appear together or not at all, on the disk when commit() returns.
 *
 * What does not come to a commit leaves nothing, and files of the same names stay as they were.
 * A process that is killed in the midst of a commit leaves the rest to the next set in that folder.
 */
class FileSet
{
public:
    FileSet();
    ~FileSet();
    Q_DISABLE_COPY_MOVE(FileSet)

    /** Opens a file of the set for writing. What goes wrong with the device, commit() says.
     *
     * @param name  of the folders in it only the last may be missing, and is made then
     * @return the set's own, to be used until the commit
     * @throws OutputError
     */
    QIODevice& open(const QString& name);

    /** The same with all of the content at once. */
    void add(const QString& name, const QByteArray& content);

    /** Puts all files in place, or none.
     *
     * @throws OutputError
     */
    void commit();

    /** Paths in the order in which they were added. */
    QStringList paths() const;

    /** What killed processes had left in the folders, and what became of it: a line each. */
    const QStringList& notes() const { return mNotes; }

    /** Sees to what a killed process left in a folder, which exists.
     *
     * @return what became of it, in one line; empty: nothing
     * @throws OutputError
     */
    static QString tidy(const QString& folder);

private:
    class Staging;
    struct File
    {
        QString path;
        QString name; ///< in its folder
        Staging* staging = nullptr;
        QFile device;
        bool isPlaced = false;
    };

    void makeFolder(const QString& folder);
    static void finish(File& file);
    void placeAll();
    void putBackAll();

    std::map<QString, std::unique_ptr<Staging>> mStagings; ///< by the folder's canonical path
    std::vector<std::unique_ptr<File>> mFiles;
    std::set<QString> mPlaces; ///< the same for each of a file's paths
    QStringList mMade; ///< folders that were missing
    QStringList mNotes;
};

/** The day that outputs bear: today, or that of SOURCE_DATE_EPOCH, in seconds since 1970, with
 * which the same board gives the same files on any day. */
QDate outputDate();
bool hasGivenDate();

/** A set of one file.
 *
 * @return what went wrong, or an empty text
 */
QString writeFile(const QString& path, const QByteArray& content);

} // namespace brox

#endif
