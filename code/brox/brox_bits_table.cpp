// SPDX-License-Identifier: MIT
#include "brox_bits_table.h"

#include "brox_editors.h"
#include "brox_nls.h"
#include "brox_report.h"
#include "brox_size.h"
#include "brox_sorting.h"
#include "brox_step_data.h"
#include "brox_xml_file.h"
#include "zeb_gui.h"

#include <QCloseEvent>
#include <QDomDocument>
#include <QScopedValueRollback>

#include <optional>
#include <utility>

namespace {

enum Column
{
    DesignationColumn,
    MicronsColumn,
    MilsColumn,
    ApprovedColumn,
    ColumnCount
};

constexpr int numberColumnWidth = 70;
constexpr int decimals = 6;
constexpr double highestNumber = 200000.0; // mils or microns: below what 32 bits hold of either

constexpr BroxSource source("brox_bits_table");
constexpr BroxXmlFile bitsFile(source, "brox_drill_bits.xml", "DrillSizeTable",
    {BROX_KEY("brox_bits_table", "Unable to find BROX Bits XML file: %s", "318"),
        BROX_KEY("brox_bits_table", "Error reading BROX Bits XML file: %s", "331"),
        BROX_KEY("brox_bits_table",
            "Error reading BROX Bits XML file: %s\nparsing error message: %s\n"
            "in line %d column %d.",
            "339"),
        BROX_KEY("brox_bits_table", "%s is not a legal BROX Bits XML file.", "351")});

int roundedSize(double units)
{
    return sizeFrom(units < 0 ? units - 0.5 : units + 0.5);
}

QTableWidgetItem* newCell(int column, const QString& text)
{
    return column == MicronsColumn || column == MilsColumn ? new NumericTableWidgetItem(text)
                                                           : new QTableWidgetItem(text);
}

// Bits in and out of an index: a size of 0 or below is that of no bit.

void insertSize(BitIndex& index, int size, const QString& designation)
{
    if (size > 0) {
        index.insert(size, designation);
    }
}

void appendSize(std::vector<Bit>& bits, int size, const QString& designation)
{
    if (size > 0) {
        bits.push_back({size, designation});
    }
}

void removeSize(BitIndex& index, int size)
{
    if (size > 0) {
        index.remove(size);
    }
}

} // namespace

NumericTableWidgetItem::NumericTableWidgetItem(const QString& text)
    : QTableWidgetItem(text, Type)
{ }

NumericTableWidgetItem::~NumericTableWidgetItem() = default;

bool NumericTableWidgetItem::operator<(const QTableWidgetItem& other) const
{
    return text().toDouble() < other.text().toDouble();
}

BroxBitsTable::BroxBitsTable(QWidget* parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
{
    ui.setupUi(this);
    ui.actionOpen->setVisible(false);

    QTableWidget* table = ui.drillBitsTableWidget;
    table->horizontalHeaderItem(MicronsColumn)->setText(BROX_BITS_TABLE_TEXT("Microns", "146"));
    table->horizontalHeaderItem(MilsColumn)->setText(BROX_BITS_TABLE_TEXT("Mils", "147"));
    auto* delegate = new DoubleDelegate(this, decimals, highestNumber);
    table->setItemDelegateForColumn(MicronsColumn, delegate);
    table->setItemDelegateForColumn(MilsColumn, delegate);
    for (int column : {MicronsColumn, MilsColumn, ApprovedColumn}) {
        table->setColumnWidth(column, numberColumnWidth);
    }

    connect(
        table->model(), &QAbstractItemModel::layoutChanged, this, &BroxBitsTable::takeTypedRows);

    loadDefaultBits();
    setDataChanged(false);
}

BroxBitsTable::~BroxBitsTable() = default;

void BroxBitsTable::setStepId(int stepId)
{
    mStepId = stepId;
}

void BroxBitsTable::findDrillBit(int dhs, int minTol, int maxTol, QString* drillDes, int* bitSize,
    bool* found, bool* outOfTolRange, bool* exactMatch) const
{
    if (!source.checkPointer(bitSize, "bitSize")
        || !source.checkPointers(
            {{found, "found"}, {outOfTolRange, "outOfTolRange"}, {exactMatch, "exactMatch"}})) {
        return;
    }
    *bitSize = 0;
    *found = false;
    *outOfTolRange = false;
    *exactMatch = false;

    int units = -1;
    if (brox__proxy_get_units(mStepId, &units) != 0
        || (units != ZEB_UNITS_MILS && units != ZEB_UNITS_MICRONS)) {
        return;
    }
    const BitIndex& index = units == ZEB_UNITS_MILS ? mInchBits : mMillimeterBits;

    const qint64 lower = qint64(dhs) - minTol;
    const qint64 upper = qint64(dhs) + maxTol;
    std::optional<Bit> bit = index.nearest(dhs, lower, upper);
    *found = bit.has_value();
    if (bit) {
        *bitSize = bit->size;
        if (drillDes) {
            *drillDes = std::move(bit->designation);
        }
    }
    *outOfTolRange = *bitSize < lower || *bitSize > upper;
    *exactMatch = bit && bit->size == dhs;
}

int BroxBitsTable::textToSize(const QString& text, zeb_units_enum unit) const
{
    bool isNumber = false;
    const double read = text.toDouble(&isNumber);
    const double number = isNumber ? read : 0.0;
    switch (unit) {
    case ZEB_UNITS_INCHES:
        return roundedSize(number * 1000 * 10160);
    case ZEB_UNITS_MILLIMETERS:
        return roundedSize(number / 25.4 * 1000 * 10160);
    case ZEB_UNITS_MILS:
        return roundedSize(number * 10160);
    case ZEB_UNITS_MICRONS:
        return roundedSize(number * 400);
    }
    return 0;
}

void BroxBitsTable::sizeToText(int size, QString* text, zeb_units_enum unit) const
{
    double number = 0.0;
    switch (unit) {
    case ZEB_UNITS_INCHES:
        number = double(size) / 1000 / 10160;
        break;
    case ZEB_UNITS_MILLIMETERS:
        number = double(size) * 25.4 / 1000 / 10160;
        break;
    case ZEB_UNITS_MILS:
        number = double(size) / 10160;
        break;
    case ZEB_UNITS_MICRONS:
        number = double(size) / 400;
        break;
    }
    *text = QString::number(number, 'g', 6);
}

void BroxBitsTable::rowValues(
    int row, QString* designation, int* mmSize, int* inchSize, bool* approved) const
{
    if (!ui.drillBitsTableWidget->item(row, DesignationColumn)) {
        return;
    }
    *designation = cellText(row, DesignationColumn);
    *mmSize = textToSize(cellText(row, MicronsColumn), ZEB_UNITS_MICRONS);
    *inchSize = textToSize(cellText(row, MilsColumn), ZEB_UNITS_MILS);
    *approved = isApproved(row);
}

void BroxBitsTable::closeEvent(QCloseEvent* event)
{
    event->setAccepted(canClose());
}

void BroxBitsTable::on_actionOpen_triggered()
{
    command(this, [this] { showLoadDialog(); });
}

void BroxBitsTable::on_actionSave_triggered()
{
    command(this, [this] { saveDefaultBits(); });
}

void BroxBitsTable::on_actionClose_triggered()
{
    command(this, [this] { close(); });
}

void BroxBitsTable::on_actionAdd_Size_triggered()
{
    command(this, [this] { addRow(); });
}

void BroxBitsTable::on_actionDelete_Size_triggered()
{
    command(this, [this] { deleteCurrentRow(); });
}

void BroxBitsTable::on_drillBitsTableWidget_itemChanged(QTableWidgetItem* item)
{
    if (mUpdating || !item) {
        return;
    }
    const int column = item->column();
    const int row = item->row();
    std::optional<SortingPause> pause;
    if (!isCompleteRow(row)) {
        pause.emplace(ui.drillBitsTableWidget);
        completeRow(row); // which may replace the item
    }

    QString designation;
    int mmSize = 0;
    int inchSize = 0;
    bool approved = false;
    rowValues(row, &designation, &mmSize, &inchSize, &approved);
    switch (column) {
    case DesignationColumn:
        mMillimeterBits.insert(mmSize, designation);
        mInchBits.insert(inchSize, designation);
        break;
    case MicronsColumn:
        mMillimeterBits.move(mmSize, designation);
        break;
    case MilsColumn:
        mInchBits.move(inchSize, designation);
        break;
    case ApprovedColumn:
        if (approved) {
            insertSize(mMillimeterBits, mmSize, designation);
            insertSize(mInchBits, inchSize, designation);
        } else {
            removeSize(mMillimeterBits, mmSize);
            removeSize(mInchBits, inchSize);
        }
        break;
    }
    setDataChanged(true);
}

/** Takes in what was typed into rows without cells: where the table is sorted by that column, it
 *  puts the new cell in its place and tells of a new layout only, not of a changed cell. */
void BroxBitsTable::takeTypedRows()
{
    const QTableWidget* table = ui.drillBitsTableWidget;
    const int sortColumn = table->horizontalHeader()->sortIndicatorSection();
    for (int row = 0; row < table->rowCount() && !mUpdating; ++row) {
        QTableWidgetItem* cell = table->item(row, sortColumn);
        if (cell && !isCompleteRow(row)) {
            on_drillBitsTableWidget_itemChanged(cell);
        }
    }
}

bool BroxBitsTable::loadDefaultBits()
{
    const std::optional<QString> path = bitsFile.existingPath();
    return path && loadBitsFile(*path);
}

void BroxBitsTable::saveDefaultBits()
{
    if (!mDataChanged) {
        return;
    }
    const std::optional<QString> path = bitsFile.pathForSaving();
    if (!path) {
        return;
    }
    saveBitsFile(*path);
    setDataChanged(false);
}

bool BroxBitsTable::loadBitsFile(QString path)
{
    QDomDocument document;
    if (!bitsFile.read(path, &document)) {
        return false;
    }
    const QScopedValueRollback updating(mUpdating, true);
    mMillimeterBits.assign({});
    mInchBits.assign({});
    if (!bitsFile.checkRoot(path, document)) {
        return false;
    }

    QTableWidget* table = ui.drillBitsTableWidget;
    table->model()->removeRows(0, table->rowCount());
    const QDomElement root = document.documentElement();
    // A sorted table would move each row away while its cells are still to come.
    const SortingPause pause(table);
    table->setRowCount(root.childNodes().count());
    std::vector<Bit> millimeterBits;
    std::vector<Bit> inchBits;
    int row = 0;
    for (QDomNode node = root.firstChild(); !node.isNull(); node = node.nextSibling(), ++row) {
        const QDomElement drill = node.toElement();
        if (drill.tagName() != QLatin1String("Drill")) {
            continue;
        }
        const QString designation = drill.attribute("designation");
        const int mmSize = textToSize(drill.attribute("millimeters"), ZEB_UNITS_MILLIMETERS);
        const int inchSize = textToSize(drill.attribute("inches"), ZEB_UNITS_INCHES);
        QString microns;
        QString mils;
        sizeToText(mmSize, &microns, ZEB_UNITS_MICRONS);
        sizeToText(inchSize, &mils, ZEB_UNITS_MILS);
        table->setItem(row, DesignationColumn, newCell(DesignationColumn, designation));
        table->setItem(row, MicronsColumn, newCell(MicronsColumn, microns));
        table->setItem(row, MilsColumn, newCell(MilsColumn, mils));
        QTableWidgetItem* approved = newCell(ApprovedColumn, QString());
        approved->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        approved->setCheckState(
            drill.attribute("approved") == yesOrNo(true) ? Qt::Checked : Qt::Unchecked);
        table->setItem(row, ApprovedColumn, approved);
        appendSize(millimeterBits, mmSize, designation);
        appendSize(inchBits, inchSize, designation);
    }
    mMillimeterBits.assign(std::move(millimeterBits));
    mInchBits.assign(std::move(inchBits));
    return true;
}

void BroxBitsTable::saveBitsFile(QString path)
{
    if (path.isEmpty() || !mDataChanged) {
        return;
    }
    QDomDocument document;
    QDomElement root = document.createElement(bitsFile.root());
    document.appendChild(root);
    for (int row = 0; row < ui.drillBitsTableWidget->rowCount(); ++row) {
        // A node of the file that was no bit has left a row without cells.
        if (!ui.drillBitsTableWidget->item(row, DesignationColumn)) {
            continue;
        }
        QString designation;
        int mmSize = 0;
        int inchSize = 0;
        bool approved = false;
        rowValues(row, &designation, &mmSize, &inchSize, &approved);
        QString millimeters;
        QString inches;
        sizeToText(mmSize, &millimeters, ZEB_UNITS_MILLIMETERS);
        sizeToText(inchSize, &inches, ZEB_UNITS_INCHES);
        QDomElement drill = document.createElement("Drill");
        root.appendChild(drill);
        drill.setAttribute("designation", xmlText(designation));
        drill.setAttribute("millimeters", millimeters);
        drill.setAttribute("inches", inches);
        drill.setAttribute("approved", yesOrNo(approved));
    }
    if (bitsFile.write(path, document)) {
        mFileName = path;
        setDataChanged(false);
    }
}

void BroxBitsTable::setDataChanged(bool changed)
{
    mDataChanged = changed;
    setWindowTitle(changed ? BROX_BITS_TABLE_TEXT("Drill Size Table Editor *", "131")
                           : BROX_BITS_TABLE_TEXT("Drill Size Table Editor", "132"));
}

bool BroxBitsTable::canClose()
{
    return enterOpenEditors(this)
        && confirmClose(this, BROX_KEY("brox_bits_table", "Drill Size Table Editor", "103"),
            BROX_KEY("brox_bits_table",
                "Unsaved data will be lost.\nClick 'Save' to save data before closing.", "104"),
            mDataChanged, [this] {
                saveDefaultBits();
                return !mDataChanged;
            });
}

void BroxBitsTable::showLoadDialog()
{
    if (!canClose()) {
        return;
    }
    const QString path = chooseFileToLoad(this,
        {QStringLiteral("Drill Bits File"), BROX_BITS_TABLE_TEXT("BROX Bits XML File", "493"),
            BROX_BITS_TABLE_TEXT("All Files", "494"),
            BROX_BITS_TABLE_TEXT("Load Drill Bits XML file...", "520")},
        bitsFile.name(), mFileName);
    if (!path.isNull() && loadBitsFile(path)) {
        setDataChanged(false);
    }
}

void BroxBitsTable::addRow()
{
    QTableWidget* table = ui.drillBitsTableWidget;
    {
        const SortingPause pause(table);
        const QScopedValueRollback updating(mUpdating, true);
        const int row = table->rowCount();
        table->insertRow(row);
        completeRow(row);
        table->selectRow(row);
        setDataChanged(true);
    }
    table->scrollToItem(table->currentItem()); // the row has moved to its sorted place
}

void BroxBitsTable::deleteCurrentRow()
{
    QTableWidget* table = ui.drillBitsTableWidget;
    const int row = table->currentRow();
    if (row < 0 || row >= table->rowCount()) {
        return;
    }
    QString designation;
    int mmSize = 0;
    int inchSize = 0;
    bool approved = false;
    rowValues(row, &designation, &mmSize, &inchSize, &approved);
    if (approved && !designation.isEmpty()) {
        removeSize(mMillimeterBits, mmSize);
        removeSize(mInchBits, inchSize);
    }
    table->removeRow(row);
    setDataChanged(true);
}

bool BroxBitsTable::isCompleteRow(int row) const
{
    for (int column = 0; column < ColumnCount; ++column) {
        if (!ui.drillBitsTableWidget->item(row, column)) {
            return false;
        }
    }
    return true;
}

/** Gives a row the cells of a new bit, born approved, where it has none of its own.
 *
 * A cell that the user has typed into a row without cells is the table's own and plain; it gets
 * the class of its column.
 */
void BroxBitsTable::completeRow(int row)
{
    const QScopedValueRollback updating(mUpdating, true);
    QTableWidget* table = ui.drillBitsTableWidget;
    for (int column : {DesignationColumn, MicronsColumn, MilsColumn}) {
        const bool isNumber = column != DesignationColumn;
        const QTableWidgetItem* cell = table->item(row, column);
        table->setItem(row, column,
            newCell(column,
                cell           ? cell->text()
                    : isNumber ? "0"
                               : QString()));
    }
    QTableWidgetItem* approved = newCell(ApprovedColumn, QString());
    approved->setCheckState(Qt::Checked);
    table->setItem(row, ApprovedColumn, approved);
}

QString BroxBitsTable::cellText(int row, int column) const
{
    const QTableWidgetItem* cell = ui.drillBitsTableWidget->item(row, column);
    return cell ? cell->text() : QString();
}

bool BroxBitsTable::isApproved(int row) const
{
    const QTableWidgetItem* cell = ui.drillBitsTableWidget->item(row, ApprovedColumn);
    return cell && cell->checkState() == Qt::Checked;
}
