// SPDX-License-Identifier: MIT
#ifndef DATA_FILE_H
#define DATA_FILE_H

#include "shop_rules.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

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

} // namespace brox

#endif
