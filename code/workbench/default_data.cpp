// SPDX-License-Identifier: MIT
#include "default_data.h"

#include "bits_list.h"
#include "data_file.h"
#include "shop_rules.h"

#include <QFileInfo>
#include <QXmlStreamWriter>
#include <functional>
#include <vector>

namespace brox {

namespace {

/** By how much a kind of hole is drilled larger, in microns. */
struct Amounts
{
    const char* holeType;
    int amount;
    int largeFrom; ///< finished size from which the amount for large holes applies; 0: none
    int largeAmount;
};

struct Model
{
    const char* name;
    const char* formula;
    bool useBits;
    std::vector<Amounts> amounts;
};

constexpr int hostSizesPerMicron = 400;

constexpr char middleOfRange[] = "FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2";

// Thin finishes need little room, hot air levelling more, and thick copper most. Press-fit holes
// are drilled for their copper as well as for the pin, so they get more than other plated ones.
const std::vector<Model> models = {
    {"ENIG", middleOfRange, true,
        {{"Pth", 100, 3000, 125}, {"Via", 50, 0, 0}, {"Laser", 0, 0, 0}, {"Photo", 0, 0, 0},
            {"PressFit", 125, 0, 0}, {"NPth", 0, 0, 0}}},
    {"HASL", middleOfRange, true,
        {{"Pth", 125, 3000, 150}, {"Via", 75, 0, 0}, {"Laser", 0, 0, 0}, {"Photo", 0, 0, 0},
            {"PressFit", 150, 0, 0}, {"NPth", 50, 0, 0}}},
    {"Heavy copper", middleOfRange, true,
        {{"Pth", 200, 2000, 250}, {"Via", 150, 0, 0}, {"PressFit", 225, 2000, 250},
            {"NPth", 50, 0, 0}}},
    {"Immersion silver", middleOfRange, true,
        {{"Pth", 90, 3000, 115}, {"Via", 50, 0, 0}, {"Laser", 0, 0, 0}, {"Photo", 0, 0, 0},
            {"PressFit", 115, 0, 0}, {"NPth", 0, 0, 0}}},
    {"Unplated", "FHS", false, {}},
};

QByteArray modelsXml()
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    const auto hostSize = [](int microns) { return QString::number(microns * hostSizesPerMicron); };
    xml.writeStartElement("DrillToolModels");
    for (const Model& model : models) {
        xml.writeStartElement("DrillToolModel");
        xml.writeAttribute("name", model.name);
        for (const Amounts& amounts : model.amounts) {
            xml.writeEmptyElement("HoleType");
            xml.writeAttribute("name", amounts.holeType);
            xml.writeAttribute("amount", hostSize(amounts.amount));
            xml.writeAttribute("oversized", hostSize(amounts.largeFrom));
            xml.writeAttribute("os_amount", hostSize(amounts.largeAmount));
        }
        xml.writeEmptyElement("DhsFormula");
        xml.writeAttribute("text", model.formula);
        xml.writeAttribute("use_bit_file", model.useBits ? "yes" : "no");
        xml.writeEndElement();
    }
    xml.writeEndElement();
    return bytes + '\n';
}

QString create(const DataFile& file, const std::function<QByteArray()>& content)
{
    if (QFileInfo::exists(file.path())) {
        return {};
    }
    const QString error = file.write(content());
    return error.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(file.path(), error);
}

} // namespace

QString createDefaultData(const QString& dataDir)
{
    const QString error = create(DataFile(dataDir, DataFile::Kind::Models), modelsXml);
    if (!error.isEmpty()) {
        return error;
    }
    if (!QFileInfo::exists(ShopRules::path(dataDir))) {
        try {
            ShopRules::starter().save(dataDir);
        } catch (const RulesError& failure) {
            return QString::fromUtf8(failure.what());
        }
    }
    return create(DataFile(dataDir, DataFile::Kind::Bits),
        [] { return bitsToXml(readySets().first().bits()); });
}

} // namespace brox
