// SPDX-License-Identifier: MIT
#include "ratio.h"

#include <QDomDocument>
#include <QFile>
#include <QTextStream>
#include <QXmlStreamReader>

#include "board_reader.h"
#include "brox_man.h"
#include "brox_models_file.h"
#include "host.h"

namespace {

/** A models file, and the set of its models. */
struct ModelsHost : Host
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

/** A board with a million holes. */
struct BoardHost : Host
{
    explicit BoardHost(int holeCount)
    {
        QFile out(file);
        require(out.open(QFile::WriteOnly), "a board can't be written");
        out.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                  "<IPC-2581 revision=\"C\" xmlns=\"http://webstds.ipc.org/2581\">\n"
                  " <Content><StepRef name=\"board\"/></Content>\n"
                  " <Ecad name=\"job\">\n  <CadHeader units=\"MILLIMETER\"/>\n  <CadData>\n"
                  "   <Layer name=\"DRILL\" layerFunction=\"DRILL\"/>\n"
                  "   <Step name=\"board\">\n    <LayerFeature layerRef=\"DRILL\">\n");
        for (int i = 0; i < holeCount; ++i) {
            const char* const status[] = {"PLATED", "VIA", "NONPLATED"};
            out.write(QString::asprintf("     <Set><Hole name=\"H%d\" diameter=\"%.2f\" "
                                        "platingStatus=\"%s\" plusTol=\"0.05\" minusTol=\"0.05\" "
                                        "x=\"%.3f\" y=\"%.3f\"/></Set>\n",
                i, 0.2 + 0.05 * (i % 40), status[i % 3], 0.254 * (i % 1000), 0.254 * (i / 1000))
                          .toUtf8());
        }
        out.write("    </LayerFeature>\n   </Step>\n  </CadData>\n </Ecad>\n</IPC-2581>\n");
        require(out.flush(), "a board can't be written");
    }

    QString file = path("board.xml");
};

Sides readLargeBoard(const Scale& scale)
{
    const auto host = std::make_shared<BoardHost>(scale.size(1000000));
    return {[host] {
                return secondsOf([&] {
                    const Board board = readBoard(
                        QStringList(host->file), {{}, [](qint64, qint64) { return true; }});
                    require(board.steps.size() == 1, "the board is not read");
                });
            },
        [host] {
            return secondsOf([&] {
                QFile file(host->file);
                require(file.open(QFile::ReadOnly), "the board can't be read");
                QXmlStreamReader xml(&file);
                while (!xml.atEnd()) {
                    xml.readNext();
                }
                require(!xml.hasError(), "the board is no XML");
            });
        }};
}

} // namespace

std::span<const Ratio> fileRatios()
{
    static const Ratio ratios[] = {
        {"loading 10,000 models / parsing them into a document", 2.2, 21, loadModels},
        {"saving 10,000 models / building and saving a document", 1.3, 21, saveModels},
        {"reading a board of 1,000,000 holes / QXmlStreamReader", 1.5, 7, readLargeBoard},
    };
    return ratios;
}
