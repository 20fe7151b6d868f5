// SPDX-License-Identifier: MIT
#ifndef BROX_XML_FILE_H
#define BROX_XML_FILE_H

#include "brox_report.h"

#include <QString>

class QDomDocument;

/** One of the module's two XML files: where it is, how it is read and written.
 *
 * Failures go to the host's log under the name of the source that owns the file.
 */
class BroxXmlFile
{
public:
    /** What the log says of a file; text keys, with these arguments. */
    struct Messages
    {
        const char* missing; ///< path
        const char* unreadable; ///< path
        const char* malformed; ///< path, parser's text, line, column
        const char* foreign; ///< path
    };

    /**
     * @param name  the file's name, below the module's folder in the host's data folder
     * @param root  tag of the document element
     */
    constexpr BroxXmlFile(BroxSource source, const char* name, const char* root, Messages messages)
        : mSource(source)
        , mName(name)
        , mRoot(root)
        , mMessages(messages)
    { }

    constexpr const char* name() const { return mName; }
    constexpr const char* root() const { return mRoot; }

    /** The path of the file; null if there is none. The host knows where. */
    QString existingPath() const;

    /** The path to write, its folder made if it was missing; null if that can't be. */
    QString pathForSaving() const;

    /** Reads a file whole; false, and the document is of no use, if it is no XML. */
    bool read(const QString& path, QDomDocument* document) const;

    /** Whether a document that was read is one of this kind, letter case aside. */
    bool checkRoot(const QString& path, const QDomDocument& document) const;

    /** Writes a document in place; false if the file can't be opened or written whole. */
    bool write(const QString& path, const QDomDocument& document) const;

private:
    QString locate(bool* exists) const;

    BroxSource mSource;
    const char* mName;
    const char* mRoot;
    Messages mMessages;
};

/** A text without the characters that XML can't hold: they would make a file unreadable. */
QString xmlText(const QString& text);

/** How a file says yes and no. */
inline QString yesOrNo(bool yes)
{
    return yes ? QStringLiteral("yes") : QStringLiteral("no");
}

#endif
