// SPDX-License-Identifier: MIT
#include "brox_bits_table.h"
#include "brox_man.h"
#include "brox_models_file.h"
#include "fuzz_host.h"

#include <QAction>
#include <QFile>
#include <QTableWidget>

namespace {

QByteArray written(const QString& path, const BroxModelSet& models)
{
    fuzzCheck(writeModels(path, models), "the models are written");
    QFile file(path);
    fuzzCheck(file.open(QFile::ReadOnly), "what was written opens");
    return file.readAll();
}

/** What is read is written so that it reads the same. */
void readModelsFile(const QString& path)
{
    BroxModelSet models;
    models.createModel("kept");
    if (!readModels(path, &models)) {
        fuzzCheck(models.modelCount() == 1, "a refused file leaves the models alone");
        return;
    }
    const int count = models.modelCount();
    const QByteArray first = written(path, models);
    fuzzCheck(readModels(path, &models) && models.modelCount() == count, "all models are read");
    fuzzCheck(written(path, models) == first, "what was written reads the same");
}

/** The designations of a table, in no order: the table sorts them. A row without cells is none. */
QStringList designations(const BroxBitsTable& table)
{
    QStringList found;
    const auto* rows = table.findChild<QTableWidget*>("drillBitsTableWidget");
    for (int row = 0; row < rows->rowCount(); ++row) {
        if (rows->item(row, 0)) {
            found << xmlText(rows->item(row, 0)->text());
        }
    }
    found.sort();
    return found;
}

/** Looks a bit up, saves them and reads them again. */
void readBitsFile()
{
    BroxBitsTable table(nullptr, {});
    table.setStepId(fuzzStep());
    QString bit;
    int size = 0;
    bool found = false;
    bool outOfRange = false;
    bool exact = false;
    table.findDrillBit(400000, 40000, 40000, &bit, &size, &found, &outOfRange, &exact);
    fuzzCheck(found == (size > 0), "a bit that is found has a size");
    table.findChild<QAction*>("actionAdd_Size")->trigger();
    table.findChild<QAction*>("actionSave")->trigger();
    const BroxBitsTable again(nullptr, {});
    fuzzCheck(designations(again) == designations(table), "the bits that were saved read the same");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    readModelsFile(fuzzFile("brox.xml", data, size));

    // Both files are read by one reader; a table is worth its time only for a file of bits.
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    if (input.toLower().contains("drillsizetable")) {
        fuzzFile("brox_drill_bits.xml", data, size);
        readBitsFile();
    }
    return 0;
}
