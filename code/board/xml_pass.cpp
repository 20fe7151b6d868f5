// SPDX-License-Identifier: MIT
#include "xml_pass.h"

#include "board_text.h"

#include <expat.h>

namespace brox {

namespace {

constexpr size_t maxDepth = 1000;

std::string_view localName(const XML_Char* name)
{
    const char* colon = std::strchr(name, ':');
    return colon ? colon + 1 : name;
}

} // namespace

XmlPass::XmlPass(const QString& name)
    : mName(name)
    , mParser(XML_ParserCreate(nullptr), XML_ParserFree)
{
    if (!mParser) {
        throw std::bad_alloc();
    }
    XML_SetUserData(mParser.get(), this);
    XML_SetElementHandler(mParser.get(), onStart, onEnd);
}

qint64 XmlPass::line() const
{
    return qint64(XML_GetCurrentLineNumber(mParser.get()));
}

template <typename Work>
void XmlPass::guarded(const Work& work)
{
    try {
        work();
    } catch (...) {
        mFailure = std::current_exception();
        XML_StopParser(mParser.get(), XML_FALSE);
    }
}

void XmlPass::onStart(void* pass, const char* name, const char** attributes)
{
    auto* self = static_cast<XmlPass*>(pass);
    if (self->mFailure) {
        return;
    }
    ++self->mDepth;
    if (self->mSkippedDepth == 0 || self->mDepth > maxDepth) {
        self->guarded([&] {
            if (self->mDepth > maxDepth) {
                self->fail(BoardText::tr("elements are nested more than %1 deep").arg(maxDepth));
            }
            if (!self->mListener->start(localName(name), XmlAttributes(attributes))) {
                self->mSkippedDepth = self->mDepth;
            }
        });
    }
}

void XmlPass::onEnd(void* pass, const char*)
{
    auto* self = static_cast<XmlPass*>(pass);
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

void XmlPass::parse(std::string_view bytes, bool isLast)
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
}

void XmlPass::run(QIODevice& device, const ReadOptions& options, XmlListener& listener)
{
    mListener = &listener;
    ChunkReader chunks(device, mName, options);
    for (std::string_view chunk = chunks.next(); !chunk.empty(); chunk = chunks.next()) {
        parse(chunk, false);
    }
    parse({}, true);
}

} // namespace brox
