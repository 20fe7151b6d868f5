// SPDX-License-Identifier: MIT
#include "brox_bits_table.h"

#include "brox_dialogs.h"
#include "brox_report.h"
#include "brox_step_data.h"
#include "brox_xml_file.h"
#include "zeb_gui.h"

#include <QCloseEvent>
#include <QDomDocument>
#include <QScopedValueRollback>

#include <limits>

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

// Bits in and out of an index: a size of 0 or below is that of no bit.

void insertSize(QMap<int, QString>& bits, int size, const QString& designation)
{
    if (size > 0) {
        bits[size] = designation;
    }
}

void removeSize(QMap<int, QString>& bits, int size)
{
    if (size > 0) {
        bits.remove(size);
    }
}

/** Moves a designation to another size; if several sizes hold it, the lowest gives way. */
void moveSize(QMap<int, QString>& bits, int size, const QString& designation)
{
    const int oldSize = bits.key(designation);
    bits.remove(oldSize);
    bits[size] = designation;
}

} // namespace

NumericTableWidgetItem::NumericTableWidgetItem(const QString& text)
    : QTableWidgetItem(text, Type)
{ }

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

    loadDefaultBits();
    setDataChanged(false);
}

void BroxBitsTable::setStepId(int stepId)
{
    mStepId = stepId;
}

void BroxBitsTable::findDrillBit(int dhs, int minTol, int maxTol, QString* drillDes, int* bitSize,
    bool* found, bool* outOfTolRange, bool* exactMatch)
{
    if (!source.checkPointer(bitSize, "bitSize")
        || !source.check(BroxSource::areValid({found, outOfTolRange, exactMatch}),
            "((ullong)(found) > 1000) && ((ullong)(outOfTolRange) > 1000) && "
            "((ullong)(exactMatch) > 1000)")) {
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
    const QMap<int, QString>& bits = units == ZEB_UNITS_MILS ? mInchBits : mMillimeterBits;

    constexpr int highest = std::numeric_limits<int>::max();
    const int lower = sizeFrom(double(dhs) - minTol);
    const int upper = sizeFrom(double(dhs) + maxTol);
    const auto above = bits.upperBound(upper);
    const int limit = above == bits.end() ? highest : above.key();
    qint64 best = highest;
    for (auto bit = bits.lowerBound(lower); bit != bits.end() && bit.key() <= limit; ++bit) {
        const qint64 distance = qAbs(qint64(dhs) - bit.key());
        if (distance < best) {
            best = distance;
            *bitSize = bit.key();
            *drillDes = bit.value();
        }
    }
    *found = best < highest;
    *outOfTolRange = *bitSize < lower || *bitSize > upper;
    *exactMatch = best == 0;
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
    command(ui.drillBitsTableWidget, [this] { showLoadDialog(); });
}

void BroxBitsTable::on_actionSave_triggered()
{
    command(ui.drillBitsTableWidget, [this] { saveDefaultBits(); });
}

void BroxBitsTable::on_actionClose_triggered()
{
    command(ui.drillBitsTableWidget, [this] { close(); });
}

void BroxBitsTable::on_actionAdd_Size_triggered()
{
    command(ui.drillBitsTableWidget, [this] { addRow(); });
}

void BroxBitsTable::on_actionDelete_Size_triggered()
{
    command(ui.drillBitsTableWidget, [this] { deleteCurrentRow(); });
}

void BroxBitsTable::on_drillBitsTableWidget_itemChanged(QTableWidgetItem* item)
{
    if (mUpdating || !item) {
        return;
    }
    const int column = item->column();
    const int row = item->row();
    QString designation;
    int mmSize = 0;
    int inchSize = 0;
    bool approved = false;
    rowValues(row, &designation, &mmSize, &inchSize, &approved);
    switch (column) {
    case DesignationColumn:
        mMillimeterBits[mmSize] = designation;
        mInchBits[inchSize] = designation;
        break;
    case MicronsColumn:
        moveSize(mMillimeterBits, mmSize, designation);
        break;
    case MilsColumn:
        moveSize(mInchBits, inchSize, designation);
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

bool BroxBitsTable::loadDefaultBits()
{
    const QString path = bitsFile.existingPath();
    return !path.isNull() && loadBitsFile(path);
}

void BroxBitsTable::saveDefaultBits()
{
    if (!mDataChanged) {
        return;
    }
    const QString path = bitsFile.pathForSaving();
    if (!path.isNull()) {
        saveBitsFile(path);
        setDataChanged(false);
    }
}

bool BroxBitsTable::loadBitsFile(QString path)
{
    QDomDocument document;
    if (!bitsFile.read(path, &document)) {
        return false;
    }
    const QScopedValueRollback updating(mUpdating, true);
    mMillimeterBits.clear();
    mInchBits.clear();
    if (!bitsFile.checkRoot(path, document)) {
        return false;
    }

    QTableWidget* table = ui.drillBitsTableWidget;
    table->model()->removeRows(0, table->rowCount());
    const QDomElement root = document.documentElement();
    // A sorted table would move each row away while its cells are still to come.
    const BroxSortingPause pause(table);
    table->setRowCount(root.childNodes().count());
    int row = 0;
    for (QDomNode node = root.firstChild(); !node.isNull(); node = node.nextSibling(), ++row) {
        const QDomElement drill = node.toElement();
        if (drill.tagName() == QLatin1String("Drill")) {
            fillRow(row, drill);
        }
    }
    return true;
}

void BroxBitsTable::fillRow(int row, const QDomElement& drill)
{
    const QString designation = drill.attribute("designation");
    const int mmSize = textToSize(drill.attribute("millimeters"), ZEB_UNITS_MILLIMETERS);
    const int inchSize = textToSize(drill.attribute("inches"), ZEB_UNITS_INCHES);
    QString microns;
    QString mils;
    sizeToText(mmSize, &microns, ZEB_UNITS_MICRONS);
    sizeToText(inchSize, &mils, ZEB_UNITS_MILS);
    auto* approved = new QTableWidgetItem(QString());
    approved->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
    setRow(row, designation, microns, mils, approved);
    approved->setCheckState(
        drill.attribute("approved") == yesOrNo(true) ? Qt::Checked : Qt::Unchecked);
    insertSize(mMillimeterBits, mmSize, designation);
    insertSize(mInchBits, inchSize, designation);
}

/** Puts the four cells of a bit into a row. */
void BroxBitsTable::setRow(int row, const QString& designation, const QString& microns,
    const QString& mils, QTableWidgetItem* approved)
{
    QTableWidget* table = ui.drillBitsTableWidget;
    table->setItem(row, DesignationColumn, new QTableWidgetItem(designation));
    table->setItem(row, MicronsColumn, new NumericTableWidgetItem(microns));
    table->setItem(row, MilsColumn, new NumericTableWidgetItem(mils));
    table->setItem(row, ApprovedColumn, approved);
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
        if (!hasCells(row)) {
            continue;
        }
        QDomElement drill = document.createElement("Drill");
        root.appendChild(drill);
        QString millimeters;
        QString inches;
        sizeToText(textToSize(cellText(row, MicronsColumn), ZEB_UNITS_MICRONS), &millimeters,
            ZEB_UNITS_MILLIMETERS);
        sizeToText(
            textToSize(cellText(row, MilsColumn), ZEB_UNITS_MILS), &inches, ZEB_UNITS_INCHES);
        drill.setAttribute("designation", xmlText(cellText(row, DesignationColumn)));
        drill.setAttribute("millimeters", millimeters);
        drill.setAttribute("inches", inches);
        drill.setAttribute("approved", yesOrNo(isApproved(row)));
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
    enterOpenCell(ui.drillBitsTableWidget);
    if (!mDataChanged) {
        return true;
    }
    const int answer = askUnsaved(this, BROX_BITS_TABLE_TEXT("Drill Size Table Editor", "103"),
        BROX_BITS_TABLE_TEXT(
            "Unsaved data will be lost.\nClick 'Save' to save data before closing.", "104"));
    if (answer == QMessageBox::Save) {
        saveDefaultBits();
        return !mDataChanged;
    }
    return answer != QMessageBox::Cancel;
}

void BroxBitsTable::showLoadDialog()
{
    if (mDataChanged && !canClose()) {
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
    const BroxSortingPause pause(table);
    const QScopedValueRollback updating(mUpdating, true);
    const int row = table->rowCount();
    table->insertRow(row);
    auto* approved = new QTableWidgetItem(QString());
    setRow(row, QString(), "0", "0", approved);
    approved->setCheckState(Qt::Checked);
    table->selectRow(row);
    setDataChanged(true);
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

bool BroxBitsTable::hasCells(int row) const
{
    for (int column = 0; column < ColumnCount; ++column) {
        if (ui.drillBitsTableWidget->item(row, column)) {
            return true;
        }
    }
    return false;
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
