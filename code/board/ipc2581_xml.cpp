// SPDX-License-Identifier: MIT
#include "ipc2581_xml.h"

#include <charconv>
#include <cmath>
#include <expat.h>
#include <limits>

namespace brox {

namespace {

constexpr size_t maxDepth = 1000;
constexpr qint64 maxTokenSize = 1 << 20; ///< of a tag with its attributes, a comment and such
constexpr int maxRepeats = 10000; ///< in one direction of a panel

bool isSize(double number)
{
    return std::abs(number) <= std::numeric_limits<Size>::max();
}

bool readNumber(std::string_view digits, double& value)
{
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

/** Most numbers are a few digits and a point, and cost a third of what others do. Digits and power
 *  are exact, so that dividing them rounds as it should.
 *  @return false for any other number */
bool readPlain(const char* text, double& value)
{
    static constexpr double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    constexpr qint64 limit = 1'000'000'000'000'000;
    qint64 digits = 0;
    const auto readDigits = [&] {
        const char* const start = text;
        for (; *text >= '0' && *text <= '9' && digits < limit; ++text) {
            digits = 10 * digits + (*text - '0');
        }
        return text - start;
    };
    const bool isNegative = *text == '-';
    text += isNegative;
    const std::ptrdiff_t whole = readDigits();
    const bool hasPoint = *text == '.';
    text += hasPoint;
    const std::ptrdiff_t decimals = hasPoint ? readDigits() : 0;
    if (*text || whole + decimals == 0 || decimals >= std::ssize(powers) || digits >= limit) {
        return false;
    }
    value = double(isNegative ? -digits : digits) / powers[decimals];
    return true;
}

std::string_view localName(const XML_Char* name)
{
    const char* colon = std::strchr(name, ':');
    return colon ? colon + 1 : name;
}

} // namespace

void Ipc2581Attributes::fail(const char* name, const QString& what) const
{
    mPass.fail(QStringLiteral("%1=\"%2\" %3").arg(QLatin1String(name), text(name).left(40), what));
}

double Ipc2581Attributes::number(const char* name, double other) const
{
    const char* text = value(name);
    double number = other;
    if (text && !readPlain(text, number) && !readNumber(text, number)) {
        const QByteArray trimmed = QByteArrayView(text).trimmed().toByteArray();
        if (!readNumber(trimmed.constData() + trimmed.startsWith('+'), number)) {
            fail(name, BoardText::tr("is no number"));
        }
    }
    return number;
}

double Ipc2581Attributes::length(const char* name) const
{
    return number(name) * mPass.unit();
}

double Ipc2581Attributes::extent(const char* name) const
{
    const double size = length(name);
    if (!(size >= 0 && isSize(size))) {
        fail(name, BoardText::tr("is no size of a shape"));
    }
    return size;
}

Size Ipc2581Attributes::tolerance(const char* name) const
{
    const double size = length(name);
    if (size < 0) {
        fail(name, BoardText::tr("is negative"));
    }
    if (!isSize(size)) {
        fail(name, BoardText::tr("is too large"));
    }
    return Size(std::lround(size));
}

Size Ipc2581Attributes::diameter() const
{
    const Size hole = tolerance("diameter");
    if (hole < 1) {
        fail("diameter", BoardText::tr("is no size of a hole"));
    }
    if (hole > maxDiameter) {
        fail("diameter", BoardText::tr("is too large for a hole, the most are 500 mm"));
    }
    return hole;
}

Place Ipc2581Attributes::place(const char* x, const char* y) const
{
    return mPass.place(length(x), length(y));
}

bool Ipc2581Attributes::isTrue(const char* name, bool other) const
{
    if (!value(name)) {
        return other;
    }
    const QByteArray word = QByteArray(value(name)).trimmed().toLower();
    if (word == "true" || word == "1") {
        return true;
    }
    if (!word.isEmpty() && word != "false" && word != "0") {
        fail(name, BoardText::tr("is neither true nor false"));
    }
    return false;
}

int Ipc2581Attributes::repeats(const char* name) const
{
    if (!value(name)) {
        return 1;
    }
    bool ok = false;
    const int times = QByteArrayView(value(name)).trimmed().toInt(&ok);
    if (!ok || times < 1 || times > maxRepeats) {
        fail(name, BoardText::tr("is no number from 1 to %1").arg(maxRepeats));
    }
    return times;
}

double Ipc2581Attributes::unit() const
{
    const QString units = text("units").toUpper();
    if (units.isEmpty()) {
        return 0;
    }
    if (units == QLatin1String("MILLIMETER")) {
        return sizePerMillimetre;
    }
    if (units == QLatin1String("MICRON")) {
        return sizePerMicron;
    }
    if (units == QLatin1String("INCH")) {
        return sizePerInch;
    }
    mPass.fail(BoardText::tr("unknown units \"%1\"; known are MILLIMETER, MICRON and INCH")
                   .arg(units.left(40)));
}

Place Ipc2581Pass::place(double x, double y) const
{
    if (!isSize(x) || !isSize(y)) {
        fail(BoardText::tr("a place further than 5 m from the origin"));
    }
    return {Size(std::lround(x)), Size(std::lround(y))};
}

Ipc2581Pass::Ipc2581Pass(const QString& name)
    : mName(name)
    , mParser(XML_ParserCreate(nullptr), XML_ParserFree)
{
    if (!mParser) {
        throw std::bad_alloc();
    }
    XML_SetUserData(mParser.get(), this);
    XML_SetElementHandler(mParser.get(), onStart, onEnd);
    XML_SetStartDoctypeDeclHandler(mParser.get(), onDoctype);
    XML_SetEntityDeclHandler(mParser.get(), onEntity);
    XML_SetSkippedEntityHandler(mParser.get(), onSkipped);
}

qint64 Ipc2581Pass::line() const
{
    return qint64(XML_GetCurrentLineNumber(mParser.get()));
}

template <typename Work>
void Ipc2581Pass::guarded(const Work& work)
{
    try {
        work();
    } catch (...) {
        mFailure = std::current_exception();
        XML_StopParser(mParser.get(), XML_FALSE);
    }
}

/** What stands in another file is not read, and whatever might be missing then is no board. */
void Ipc2581Pass::refuseEntity(const char* name)
{
    guarded([&] {
        fail(BoardText::tr("\"%1\" stands for text of another file, which is not read")
                 .arg(QString::fromUtf8(name).left(40)));
    });
}

void Ipc2581Pass::onDoctype(void* pass, const char*, const char* system, const char*, int)
{
    if (system) {
        static_cast<Ipc2581Pass*>(pass)->refuseEntity(system);
    }
}

void Ipc2581Pass::onEntity(void* pass, const char* name, int isParameter, const char* value, int,
    const char*, const char*, const char*, const char*)
{
    if (isParameter || !value) {
        static_cast<Ipc2581Pass*>(pass)->refuseEntity(name);
    }
}

void Ipc2581Pass::onSkipped(void* pass, const char* name, int)
{
    static_cast<Ipc2581Pass*>(pass)->refuseEntity(name);
}

void Ipc2581Pass::onStart(void* pass, const char* name, const char** attributes)
{
    auto* self = static_cast<Ipc2581Pass*>(pass);
    if (self->mFailure) {
        return;
    }
    ++self->mDepth;
    if (self->mSkippedDepth == 0 || self->mDepth > maxDepth) {
        self->guarded([&] {
            if (self->mDepth > maxDepth) {
                self->fail(BoardText::tr("elements are nested more than %1 deep").arg(maxDepth));
            }
            if (!self->mListener->start(localName(name), Ipc2581Attributes(*self, attributes))) {
                self->mSkippedDepth = self->mDepth;
            }
        });
    }
}

void Ipc2581Pass::onEnd(void* pass, const char*)
{
    auto* self = static_cast<Ipc2581Pass*>(pass);
    if (self->mFailure) {
        return;
    }
    if (self->mSkippedDepth == 0) {
        self->guarded([self] { self->mListener->end(); });
    } else if (self->mSkippedDepth == self->mDepth) {
        self->mSkippedDepth = 0;
    }
    --self->mDepth;
}

void Ipc2581Pass::parse(std::string_view bytes, bool isLast)
{
    const XML_Status status = XML_Parse(mParser.get(), bytes.data(), int(bytes.size()), isLast);
    if (mFailure) {
        std::rethrow_exception(mFailure);
    }
    if (status != XML_STATUS_OK) {
        const XML_Error error = XML_GetErrorCode(mParser.get());
        const bool isCutOff = isLast
            && (error == XML_ERROR_NO_ELEMENTS || error == XML_ERROR_UNCLOSED_TOKEN
                || error == XML_ERROR_UNCLOSED_CDATA_SECTION || error == XML_ERROR_PARTIAL_CHAR);
        fail(isCutOff ? BoardText::tr("the XML does not end; the file is cut off")
                      : BoardText::tr("no well-formed XML: %1")
                            .arg(QString::fromUtf8(XML_ErrorString(error))));
    }
    // Expat looks at a token again from its beginning whenever more of it has come.
    mParsed += qint64(bytes.size());
    if (!isLast && mParsed - XML_GetCurrentByteIndex(mParser.get()) > maxTokenSize) {
        fail(BoardText::tr("a tag or a comment of more than %1 MiB").arg(maxTokenSize >> 20));
    }
}

void Ipc2581Pass::run(QIODevice& device, const ReadOptions& options, Ipc2581Listener& listener)
{
    mListener = &listener;
    ChunkReader chunks(device, mName, options);
    for (std::string_view chunk = chunks.next(); !chunk.empty(); chunk = chunks.next()) {
        parse(chunk, false);
    }
    parse({}, true);
}

} // namespace brox
