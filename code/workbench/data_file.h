// SPDX-License-Identifier: MIT
#ifndef DATA_FILE_H
#define DATA_FILE_H

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

namespace brox {

/** One of the two files that the module keeps in a data folder, seen from outside. */
class DataFile
{
    Q_DECLARE_TR_FUNCTIONS(DataFile)

public:
    enum class Kind
    {
        Models,
        Bits
    };
    static constexpr Kind kinds[] = {Kind::Models, Kind::Bits};

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

    /** The same without a look at the content: only a file that can't be read has a fault. */
    Content readUnchecked() const;

    /** Why the module would refuse these bytes, in one line; empty if it takes them. */
    static QString faultOf(Kind kind, const QByteArray& bytes);

    /** What is wrong with the files of a data folder, a line each; empty if nothing is. */
    static QString complaints(const QString& dataDir);

    /** Replaces the file by a temporary one and a rename, so that a crash leaves the old or the
     *  new bytes; what is written is on the disk then.
     *
     * @param inPlaceAtNeed  write into the file itself where the folder takes no other
     * @return what went wrong, or an empty text
     */
    QString write(const QByteArray& bytes, bool inPlaceAtNeed = false) const;

private:
    Kind mKind;
    QString mPath;
};

/** As DataFile::write, for any path. */
QString writeDurably(const QString& path, const QByteArray& bytes, bool inPlaceAtNeed = false);

} // namespace brox

#endif
