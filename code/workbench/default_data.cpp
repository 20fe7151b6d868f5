// SPDX-License-Identifier: MIT
#include "default_data.h"

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

/** Number drills #1 to #80, in ten-thousandths of an inch. */
constexpr int numberDrills[] = {2280, 2210, 2130, 2090, 2055, 2040, 2010, 1990, 1960, 1935, //
    1910, 1890, 1850, 1820, 1800, 1770, 1730, 1695, 1660, 1610, //
    1590, 1570, 1540, 1520, 1495, 1470, 1440, 1405, 1360, 1285, //
    1200, 1160, 1130, 1110, 1100, 1065, 1040, 1015, 995, 980, //
    960, 935, 890, 860, 820, 810, 785, 760, 730, 700, //
    670, 635, 595, 550, 520, 465, 430, 420, 410, 400, //
    390, 380, 370, 360, 350, 330, 320, 310, 292, 280, //
    260, 250, 240, 225, 210, 200, 180, 160, 145, 135};

void writeModels(QXmlStreamWriter& xml)
{
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
}

void writeBits(QXmlStreamWriter& xml)
{
    const auto writeBit = [&](const QString& designation, double inches) {
        xml.writeEmptyElement("Drill");
        xml.writeAttribute("designation", designation);
        xml.writeAttribute("millimeters", QString::number(inches * 25.4, 'g', 6));
        // As many digits as the module keeps of them.
        xml.writeAttribute("inches", QString::number(inches, 'g', 6));
        xml.writeAttribute("approved", "yes");
    };
    xml.writeStartElement("DrillSizeTable");
    for (int size = 10; size <= 635; size += 5) {
        // Large drills are stocked in steps of a tenth.
        if (size <= 320 || size % 10 == 0) {
            writeBit(QString::number(size / 100.0, 'f', 2), size / 2540.0);
        }
    }
    // The finest break too easily in laminate, the largest are hardly asked for.
    for (int number = 76; number > 8; --number) {
        writeBit(QStringLiteral("#%1").arg(number), numberDrills[number - 1] / 10000.0);
    }
    xml.writeEndElement();
}

QString create(const DataFile& file, const std::function<void(QXmlStreamWriter&)>& write)
{
    if (QFileInfo::exists(file.path())) {
        return {};
    }
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    write(xml);
    const QString error = file.write(bytes + '\n');
    return error.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(file.path(), error);
}

} // namespace

QString createDefaultData(const QString& dataDir)
{
    const QString error = create(DataFile(dataDir, DataFile::Kind::Models), writeModels);
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
    return create(DataFile(dataDir, DataFile::Kind::Bits), writeBits);
}

} // namespace brox
