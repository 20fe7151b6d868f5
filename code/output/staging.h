// SPDX-License-Identifier: MIT
#ifndef STAGING_H
#define STAGING_H

#include <QString>
#include <stdexcept>

namespace brox {

/** Something that can't be written, in one line. */
class OutputError : public std::runtime_error
{
public:
    explicit OutputError(const QString& message)
        : std::runtime_error(message.simplified().toStdString())
    { }

    OutputError(const QString& path, const QString& reason);

    /** Without the path, as far as it is known which that is. */
    QString reason() const { return QString::fromStdString(mReason); }

private:
    std::string mReason = what();
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

    /** @param patience  milliseconds to wait for another */
    Result take(const QString& path, int patience);
    void release();

private:
    QString mPath;
    int mFile = -1;
};

/** The folder ".brox-writing" beside the places of files, in which they are made ready.
 *
 * release() is the moment from which on the new files count: what a killed process has released is
 * put in place by the next one that stages in the same folder, and everything else that it left is
 * cleared away. One process at a time has the folder. Functions throw
 * std::filesystem::filesystem_error.
 */
class Staging
{
public:
    /** Takes the folder and sees to what a killed process left in it.
     *
     * @param folder  exists
     * @throws OutputError  if it can't be made, or another process keeps it
     */
    explicit Staging(const QString& folder);

    /** Clears the folder away, unless released files are left in it. */
    ~Staging();
    Q_DISABLE_COPY_MOVE(Staging)

    /** Sees to what a killed process left in a folder.
     *
     * @return as note()
     */
    static QString tidy(const QString& folder);

    /** What a killed process had left and what became of it, in one line; empty: nothing. */
    QString note() const { return mNote; }

    /** Where a new file is to be written, by its name. */
    QString pathOfNew(const QString& name) const { return inside("new", name); }

    /** Gives the file that bears a name by now a second one, if there is such a file. */
    void keepOld(const QString& name) const;

    void release() const;

    /** Puts a released file in its place. */
    void place(const QString& name) const;

    /** Takes it back; what was there before is there again. */
    void putBack(const QString& name) const;

    /** Released files that were all put back count no more. */
    void withdraw() const;

    /** Files that are in place are so on the disk too. */
    void sync() const;

private:
    void lock();
    void finish();
    void clear() const;
    QString inside(const char* part, const QString& name = {}) const;

    QString mFolder;
    QString mPath;
    FileLock mLock;
    QString mNote;
};

} // namespace brox

#endif
