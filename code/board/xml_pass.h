// SPDX-License-Identifier: MIT
#ifndef XML_PASS_H
#define XML_PASS_H

#include "reading.h"

#include <QString>
#include <cstring>
#include <exception>
#include <memory>

struct XML_ParserStruct;

namespace brox {

/** The attributes of an element, as long as its start is told. */
class XmlAttributes
{
public:
    /** @param list  names and values by turns, and a null */
    explicit XmlAttributes(const char** list)
        : mList(list)
    { }

    /** UTF-8; null if there is none of this name. */
    const char* value(const char* name) const
    {
        for (const char** at = mList; *at; at += 2) {
            if (**at == *name && std::strcmp(*at, name) == 0) {
                return at[1];
            }
        }
        return nullptr;
    }

    QString text(const char* name) const { return QString::fromUtf8(value(name)); }

    /** Shows all, in the order of the file. */
    template <typename Visit>
    void forEach(const Visit& visit) const
    {
        for (const char** at = mList; *at; at += 2) {
            visit(at[0], at[1]);
        }
    }

private:
    const char** mList;
};

/** Hears of the elements of a file. What it throws ends the pass and comes out of it. */
class XmlListener
{
public:
    /** @param name  without its prefix
     *  @return false to hear neither of what is in the element nor of its end */
    virtual bool start(std::string_view name, const XmlAttributes& attributes) = 0;
    virtual void end() = 0;

protected:
    ~XmlListener() = default;
};

/** One pass over one XML file, of which nothing is kept. */
class XmlPass
{
public:
    /** @param name  path for messages; outlives the pass */
    explicit XmlPass(const QString& name);

    /** @throws BoardError  also for a file that is not well-formed
     *  @throws BoardCancelled */
    void run(QIODevice& device, const ReadOptions& options, XmlListener& listener);

    /** Where the pass is; from 1. */
    qint64 line() const;

    [[noreturn]] void fail(qint64 line, const QString& message) const
    {
        throw BoardError(mName, line, message);
    }
    [[noreturn]] void fail(const QString& message) const { fail(line(), message); }

private:
    static void onStart(void* pass, const char* name, const char** attributes);
    static void onEnd(void* pass, const char* name);
    template <typename Work>
    void guarded(const Work& work);
    void parse(std::string_view bytes, bool isLast);

    const QString& mName;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_ParserStruct*)> mParser;
    XmlListener* mListener = nullptr;
    std::exception_ptr mFailure; ///< may not cross expat's frames
    size_t mDepth = 0;
    size_t mSkippedDepth = 0; ///< of the element of which nothing is heard; 0: none
};

} // namespace brox

#endif
