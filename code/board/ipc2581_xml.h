// SPDX-License-Identifier: MIT
#ifndef IPC2581_XML_H
#define IPC2581_XML_H

#include "reading.h"

#include <QString>
#include <cstring>
#include <exception>
#include <memory>

struct XML_ParserStruct;

namespace brox {

/** One pass over the XML of an IPC-2581 file, of which nothing is kept, and what attributes mean.
 */

class Ipc2581Pass;

/** The attributes of an element, as long as its start is handled. All but value() and text() throw
 * a BoardError that names the line for what has no meaning. */
class Ipc2581Attributes
{
public:
    /** @param list  names and values by turns, and a null */
    Ipc2581Attributes(const Ipc2581Pass& pass, const char** list)
        : mPass(pass)
        , mList(list)
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

    /** @param other  the number if there is none */
    double number(const char* name, double other = 0) const;

    /** In host sizes, perhaps negative; 0 if there is none. */
    double length(const char* name) const;

    /** Of a shape in host sizes, not negative; 0 if there is none. */
    double extent(const char* name) const;

    /** Of a tolerance, not negative; 0 if there is none. */
    Size tolerance(const char* name) const;

    /** Of a hole; above 0. */
    Size diameter() const;

    Place place(const char* x, const char* y) const;

    /** As XML and some exporters write it; false if there is none. */
    bool isTrue(const char* name, bool other = false) const;

    /** How often something is repeated; 1 if unspecified. */
    int repeats(const char* name) const;

    /** Host sizes to one of the units that the element names; 0 if it names none. */
    double unit() const;

private:
    [[noreturn]] void fail(const char* name, const QString& what) const;

    const Ipc2581Pass& mPass;
    const char** mList;
};

/** Hears of the elements of a file. What it throws ends the pass and comes out of it. */
class Ipc2581Listener
{
public:
    /** @param name  without its prefix
     *  @return false to hear neither of what is in the element nor of its end */
    virtual bool start(std::string_view name, const Ipc2581Attributes& attributes) = 0;
    virtual void end() = 0;

protected:
    ~Ipc2581Listener() = default;
};

class Ipc2581Pass
{
public:
    /** @param name  path for messages; outlives the pass */
    explicit Ipc2581Pass(const QString& name);

    /** @throws BoardError  also for a file that is not well-formed
     *  @throws BoardCancelled */
    void run(QIODevice& device, const ReadOptions& options, Ipc2581Listener& listener);

    /** Host sizes to the unit of all lengths from here on; 0: unspecified. */
    void setUnit(double unit) { mUnit = unit; }
    double unit() const { return mUnit; }

    /** Rounded. @throws BoardError  for what lies too far away */
    Place place(double x, double y) const;

    /** Where the pass is; from 1. */
    qint64 line() const;

    [[noreturn]] void fail(qint64 line, const QString& message) const
    {
        throw BoardError(mName, line, message);
    }
    [[noreturn]] void fail(const QString& message) const { fail(line(), message); }

private:
    static void onDoctype(void* pass, const char*, const char* system, const char*, int);
    static void onEntity(void* pass, const char* name, int isParameter, const char* value, int,
        const char*, const char*, const char*, const char*);
    static void onSkipped(void* pass, const char* name, int);
    static void onStart(void* pass, const char* name, const char** attributes);
    static void onEnd(void* pass, const char* name);
    template <typename Work>
    void guarded(const Work& work);
    void refuseEntity(const char* name);
    void parse(std::string_view bytes, bool isLast);

    const QString& mName;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_ParserStruct*)> mParser;
    Ipc2581Listener* mListener = nullptr;
    std::exception_ptr mFailure; ///< may not cross expat's frames
    qint64 mParsed = 0; ///< bytes
    size_t mDepth = 0;
    size_t mSkippedDepth = 0; ///< of the element of which nothing is heard; 0: none
    double mUnit = 0;
};

} // namespace brox

#endif
