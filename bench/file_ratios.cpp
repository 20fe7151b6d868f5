// SPDX-License-Identifier: MIT
#include "ratio.h"

#include <QDomDocument>
#include <QFile>
#include <QTextStream>
#include <cstring>
#include <expat.h>
#include <memory>

#include "brox_man.h"
#include "brox_models_file.h"
#include "excellon_reader.h"
#include "ipc2581_reader.h"

#include "board_host.h" // last: a name of the host's is one of the module's parameters

using namespace brox;

namespace {

/** A models file, and the set of its models. */
struct ModelsHost : BenchHost
{
    explicit ModelsHost(int modelCount)
    {
        writeModels(modelCount);
        require(readModels(file, &models) && models.modelCount() == modelCount,
            "the models file is not read");
    }

    QString file = path("brox/brox.xml");
    BroxModelSet models;
};

Sides loadModels(const Scale& scale)
{
    const auto host = std::make_shared<ModelsHost>(scale.size(10000));
    return {[host] {
                BroxModelSet models;
                return secondsOf([&] { readModels(host->file, &models); });
            },
        [host] {
            return secondsOf([&] {
                QFile file(host->file);
                QDomDocument document;
                require(file.open(QFile::ReadOnly) && document.setContent(&file, true),
                    "the models file is no XML");
            });
        }};
}

/** An element as plain data, from which a document is built. */
struct Element
{
    explicit Element(const QDomElement& element)
        : tag(element.tagName())
    {
        const QDomNamedNodeMap map = element.attributes();
        for (int i = 0; i < map.size(); ++i) {
            attributes.emplace_back(map.item(i).nodeName(), map.item(i).nodeValue());
        }
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            children.emplace_back(child);
        }
    }

    QDomElement build(QDomDocument& document) const
    {
        QDomElement element = document.createElement(tag);
        for (const auto& [name, value] : attributes) {
            element.setAttribute(name, value);
        }
        for (const Element& child : children) {
            element.appendChild(child.build(document));
        }
        return element;
    }

    QString tag;
    std::vector<std::pair<QString, QString>> attributes;
    std::vector<Element> children;
};

Sides saveModels(const Scale& scale)
{
    struct SavingHost : ModelsHost
    {
        using ModelsHost::ModelsHost;

        Element content() const
        {
            QFile in(file);
            QDomDocument document;
            require(in.open(QFile::ReadOnly) && document.setContent(&in), "no models file");
            return Element(document.documentElement());
        }

        Element root = content();
    };
    const auto host = std::make_shared<SavingHost>(scale.size(10000));
    return {
        [host] { return secondsOf([&] { writeModels(host->path("saved.xml"), host->models); }); },
        [host] {
            return secondsOf([&] {
                QDomDocument document;
                document.appendChild(host->root.build(document));
                QFile file(host->path("bare.xml"));
                require(file.open(QFile::WriteOnly | QFile::Text), "a file can't be written");
                QTextStream stream(&file);
                document.save(stream, 4);
            });
        }};
}

/** Work of this thread on a file, with the number of the holes that it found. */
template <typename Read>
double secondsToRead(const QString& path, size_t holes, const Read& read)
{
    return secondsOf([&] {
        QFile file(path);
        require(file.open(QFile::ReadOnly), "a board can't be read");
        require(read(file) == holes, "the board is not read");
    });
}

size_t holesOf(const std::vector<Layer>& layers)
{
    size_t holes = 0;
    for (const Layer& layer : layers) {
        for (const Tool& tool : layer.tools) {
            holes += tool.holes.size();
        }
    }
    return holes;
}

double secondsOfBoard(const BoardHost& host)
{
    return secondsToRead(host.file, host.holes,
        [&](QFile& file) { return holesOf(readIpc2581(file, host.file, {}).steps.at(0).layers); });
}

/** A pass that looks at nothing but the names of elements. */
size_t passByExpat(QFile& file)
{
    size_t holes = 0;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    const auto count = [](void* counter, const XML_Char* name, const XML_Char**) {
        *static_cast<size_t*>(counter) += std::strcmp(name, "Hole") == 0;
    };
    XML_SetUserData(parser.get(), &holes);
    XML_SetElementHandler(parser.get(), count, [](void*, const XML_Char*) {});
    std::vector<char> chunk(1 << 18);
    for (qint64 size = 1; size > 0;) {
        size = file.read(chunk.data(), qint64(chunk.size()));
        require(XML_Parse(parser.get(), chunk.data(), int(size), size == 0) == XML_STATUS_OK,
            "the board is no XML");
    }
    return holes;
}

Sides readBoard(const Scale& scale)
{
    const auto host = std::make_shared<BoardHost>(scale.size(1000000));
    return {[host] { return secondsOfBoard(*host); },
        [host] { return secondsToRead(host->file, host->holes, passByExpat); }};
}

Sides readHits(const Scale& scale)
{
    const auto host = std::make_shared<BoardHost>(scale.size(1000000));
    return {[host] {
                return secondsToRead(host->program, host->holes, [&](QFile& file) {
                    return holesOf({readExcellon(file, host->program, {}).layer});
                });
            },
        [host] { return secondsOfBoard(*host); }};
}

/** Bytes of a key of Linux's account of this process. */
double bytesOf(const QByteArray& key)
{
    QFile status("/proc/self/status");
    require(status.open(QFile::ReadOnly), "there is no account of the memory");
    const QByteArray all = status.readAll();
    const qsizetype at = all.indexOf(key);
    require(at >= 0, "the account of the memory lacks a line");
    const QByteArray rest = all.mid(at + key.size(), 40);
    return rest.first(rest.indexOf("kB")).trimmed().toDouble() * 1024;
}

/** By how much the process grows at most while a board is read: memory instead of time. */
Sides holdBoard(const Scale& scale)
{
    const auto host = std::make_shared<BoardHost>(scale.size(1000000));
    return {[host] {
                QFile peak("/proc/self/clear_refs"); // 5 lowers the mark of the highest water
                require(peak.open(QFile::WriteOnly) && peak.write("5") == 1 && peak.flush(),
                    "the mark of the memory can't be reset");
                const double before = bytesOf("VmRSS:");
                secondsOfBoard(*host);
                return bytesOf("VmHWM:") - before;
            },
        [host] { return double(16 * host->holes); }};
}

} // namespace

std::span<const Ratio> fileRatios()
{
    static const Ratio ratios[] = {
        {"loading 10,000 models / parsing them into a document", 2.2, 21, loadModels},
        {"saving 10,000 models / building and saving a document", 1.3, 21, saveModels},
        {"reading a board of 1,000,000 holes / a bare pass of expat", 1.3, 31, readBoard},
        {"reading a drill file of 1,000,000 hits / that board", 1.0, 5, readHits},
        {"memory for that board at its peak / 16 bytes a hole", 1.0, 3, holdBoard},
    };
    return ratios;
}
