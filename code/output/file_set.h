// SPDX-License-Identifier: MIT
#ifndef FILE_SET_H
#define FILE_SET_H

#include "reading.h"

#include <QStringList>
#include <set>
#include <stdexcept>
#include <vector>

namespace brox {

/** Something that can't be written, told in one line. */
class OutputError : public std::runtime_error
{
public:
    explicit OutputError(const QString& message)
        : std::runtime_error(message.simplified().toStdString())
    { }
};

/** Tells how much of the work is done.
 *
 * @throws BoardCancelled  if the user wants no more of it
 */
void tell(const Progress& progress, qint64 done, qint64 total);

/** Files that appear together or not at all.
 *
 * Each is written under another name beside its place; commit() renames them all. What does not
 * come to a commit leaves nothing, and files of the same names stay as they were.
 */
class FileSet
{
public:
    FileSet() = default;
    ~FileSet();
    Q_DISABLE_COPY_MOVE(FileSet)

    /** Writes a file's content; folders that are missing are made.
     *
     * @throws OutputError
     */
    void add(const QString& name, const QByteArray& content);

    /** Puts all files in place, or none.
     *
     * @throws OutputError
     */
    void commit();

    /** Paths in the order in which they were added. */
    QStringList paths() const;

private:
    struct File
    {
        QString path;
        QString temporary;
        QString backup; ///< what was there before; empty: nothing
        bool isPlaced = false;
    };

    static void place(File& file);
    static void putBack(File& file);

    std::vector<File> mFiles;
    std::set<QString> mPlaces; ///< the same for each of a file's paths
};

} // namespace brox

#endif
