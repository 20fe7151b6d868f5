// SPDX-License-Identifier: MIT
#ifndef BROX_BITS_TABLE_H
#define BROX_BITS_TABLE_H

#include "brox_looks.h"
#include "ui_brox_bits_table.h"
#include "zeb_lowlevel.h"

#include <QMainWindow>
#include <QMap>
#include <QTableWidgetItem>

class QDomElement;

/** A cell that sorts by the number in its text; a text that is no number counts as 0. */
class NumericTableWidgetItem : public QTableWidgetItem
{
public:
    explicit NumericTableWidgetItem(const QString& text);
    ~NumericTableWidgetItem() override = default;

    bool operator<(const QTableWidgetItem& other) const override;
};

/** The drill bits: their table and its editor window, their file, and the lookup of a bit.
 *
 * The rows stand in the window's table alone, in microns and mils. Lookups read two indices, one
 * for metric steps and one for inch steps, which every edit brings up to date at once. All sizes
 * of the interface are in host size units.
 */
class BroxBitsTable : public QMainWindow
{
    Q_OBJECT

public:
    BroxBitsTable(QWidget* parent, Qt::WindowFlags flags);
    ~BroxBitsTable() override = default;

    /** @param stepId  the step whose units decide which index serves a lookup */
    void setStepId(int stepId);

    /** Finds the bit nearest to a drill hole size.
     *
     * The bits of the tolerance range and the first one above it are examined; a smaller bit
     * than the range allows is never taken.
     *
     * @param minTol, maxTol  magnitudes, counted away from dhs
     * @param drillDes        the bit's designation; untouched if there is none
     * @param bitSize         the bit's size, or 0
     */
    void findDrillBit(int dhs, int minTol, int maxTol, QString* drillDes, int* bitSize, bool* found,
        bool* outOfTolRange, bool* exactMatch);

    /** A number as text to host size units; beyond 32 bits it is the nearest size there is. */
    int textToSize(const QString& text, zeb_units_enum unit) const;

    /** Host size units to a number as text of six significant digits. */
    void sizeToText(int size, QString* text, zeb_units_enum unit) const;

    /** Reads a row; leaves the outputs alone if there is none, or none with a designation cell. */
    void rowValues(int row, QString* designation, int* mmSize, int* inchSize, bool* approved) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private slots:
    void on_actionOpen_triggered();
    void on_actionSave_triggered();
    void on_actionClose_triggered();
    void on_actionAdd_Size_triggered();
    void on_actionDelete_Size_triggered();
    void on_drillBitsTableWidget_itemChanged(QTableWidgetItem* item);

private:
    bool loadDefaultBits();
    void saveDefaultBits();
    bool loadBitsFile(QString path);
    void saveBitsFile(QString path);
    void setDataChanged(bool changed);
    bool canClose();
    void showLoadDialog();

    void addRow();
    void deleteCurrentRow();
    void fillRow(int row, const QDomElement& drill);
    void setRow(int row, const QString& designation, const QString& microns, const QString& mils,
        QTableWidgetItem* approved);
    bool hasCells(int row) const;
    QString cellText(int row, int column) const;
    bool isApproved(int row) const;

    Ui::BroxBitsTable ui;
    int mStepId = -1;
    bool mUpdating = false;
    QString mFileName;
    QMap<int, QString> mMillimeterBits;
    QMap<int, QString> mInchBits;
    bool mDataChanged = false;
    BroxIcons mIcons; // the last, and so the first to go
};

#endif
