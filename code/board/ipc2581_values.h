// SPDX-License-Identifier: MIT
#ifndef IPC2581_VALUES_H
#define IPC2581_VALUES_H

#include "xml_pass.h"

namespace brox {

/** Attributes of an IPC-2581 file as numbers, sizes and places. All throw a BoardError that names
 *  the line for what has no meaning. */
class Ipc2581Values
{
public:
    /** @param pass  over the file; outlives the values */
    explicit Ipc2581Values(const XmlPass& pass)
        : mPass(pass)
    { }

    [[noreturn]] void fail(const QString& message) const { mPass.fail(message); }
    [[noreturn]] void fail(qint64 line, const QString& message) const { mPass.fail(line, message); }
    qint64 line() const { return mPass.line(); }

    /** @param name  of the attribute, for messages */
    double number(const char* text, const char* name) const;
    double numberOr(const XmlAttributes& attributes, const char* name, double other) const;

    /** Host sizes to one of the units that an element names; 0 if it names none. */
    double unitOf(const XmlAttributes& attributes) const;

    /** A length of a shape in host sizes, not negative; 0 if there is none. */
    double length(const XmlAttributes& attributes, const char* name, double unit) const;

    /** Of a tolerance; not negative. */
    Size size(const char* text, const char* name, double unit) const;

    /** Of a hole; above 0. */
    Size holeSize(const char* text, const char* name, double unit) const;

    /** Of a shape, as XML and some exporters write it; false if it is not told. */
    bool isTrue(const XmlAttributes& attributes, const char* name) const;

    /** How often something is repeated; 1 if it is not told. */
    int repeats(const XmlAttributes& attributes, const char* name) const;

    /** Rounded. */
    Place place(double x, double y) const;

private:
    [[noreturn]] void fail(const char* name, const char* text, const QString& what) const;

    const XmlPass& mPass;
};

} // namespace brox

#endif
