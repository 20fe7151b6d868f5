// SPDX-License-Identifier: MIT
#include "job_table.h"
#include "table_filter.h"

#include <QMenu>
#include <QStyle>
#include <QTableWidget>

namespace brox {

namespace {

/** Columns of the viewer's table. */
enum Column
{
    LayerColumn,
    TypeColumn,
    MinTolColumn = 4,
    MaxTolColumn = 5,
    BitColumn = 7
};

constexpr int leastLayerWidth = 70; ///< pixels, as the other columns have
constexpr int mostLayerWidth = 150;

QString toolTipOf(const DraftRow& row)
{
    QString text = row.rule;
    if (row.flags.contains(PlanFlag::TypeAssumed)) {
        text += (text.isEmpty() ? QString() : QStringLiteral("\n"))
            + JobTable::tr("The board does not tell the type.");
    }
    return text;
}

} // namespace

JobTable::JobTable(QWidget* viewer, const DrillDraft& draft)
    : QObject(viewer)
    , mDraft(draft)
    , mTable(viewer->findChild<QTableWidget*>("jobDrillDataTableWidget"))
{
    if (!mTable || mTable->rowCount() != int(draft.hostRows())) {
        return;
    }
    mFilter = new TableFilter(mTable, [this](int row) { return mToCheck.contains(row); });
    mTable->resizeColumnToContents(LayerColumn);
    mTable->setColumnWidth(
        LayerColumn, qBound(leastLayerWidth, mTable->columnWidth(LayerColumn), mostLayerWidth));
    mark();
    mTable->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(mTable, &QWidget::customContextMenuRequested, this, &JobTable::offerTypes);
}

void JobTable::follow(const DrillPlan& plan)
{
    if (!mFilter || plan.rows.size() != mDraft.rows.size()) {
        return;
    }
    mToCheck.clear();
    const QIcon warning = mTable->style()->standardIcon(QStyle::SP_MessageBoxWarning);
    for (int i = 0; i < mTable->rowCount(); ++i) {
        const PlanRow& row = plan.rows[size_t(i)];
        if (isAlarming(row)) {
            mToCheck << i;
        }
        QStringList flags;
        for (const PlanFlag flag : row.flags) {
            if (isAlarming(flag)) {
                flags << spoken(flagWord(flag));
            }
        }
        QTableWidgetItem* bit = mTable->item(i, BitColumn);
        bit->setIcon(flags.isEmpty() ? QIcon() : warning);
        bit->setToolTip((flags + QStringList(toolTipOf(row))).join('\n').trimmed());
    }
    mFilter->apply();
}

void JobTable::goToNextToCheck()
{
    for (int i = 1; mFilter && i <= mTable->rowCount(); ++i) {
        const int row = (mTable->currentRow() + i) % mTable->rowCount();
        if (mToCheck.contains(row)) {
            if (mTable->isRowHidden(row)) {
                mFilter->clear();
            }
            mTable->setCurrentCell(row, BitColumn);
            mTable->scrollToItem(mTable->item(row, BitColumn));
            mTable->setFocus();
            return;
        }
    }
}

/** What was assumed is slanted, and a rule that acted is shown in a tip. */
void JobTable::mark()
{
    for (int i = 0; i < mTable->rowCount(); ++i) {
        const DraftRow& row = mDraft.rows[size_t(i)];
        const QString tip = toolTipOf(row);
        for (int column = 0; column < mTable->columnCount(); ++column) {
            QTableWidgetItem* item = mTable->item(i, column);
            item->setToolTip(tip);
            const bool isTolerance = column == MinTolColumn || column == MaxTolColumn;
            QFont font = item->font();
            font.setItalic((column == TypeColumn && row.flags.contains(PlanFlag::TypeAssumed))
                || (isTolerance && row.flags.contains(PlanFlag::ToleranceAssumed)));
            item->setFont(font);
        }
    }
}

void JobTable::offerTypes(const QPoint& at)
{
    // The menu key asks at the current row, the mouse where it is.
    const QTableWidgetItem* item = mTable->itemAt(at);
    const int index = item ? item->row() : mTable->currentRow();
    if (index < 0) {
        return;
    }
    const DraftRow& row = mDraft.rows[size_t(index)];
    const QString layer = mDraft.layers[row.layer].name;
    Tool tool = *mDraft.tool(row).tool;
    tool.holes.clear();
    tool.slotPaths.clear();

    QMenu menu;
    menu.setObjectName("toolTypeMenu");
    std::vector<HoleType> types = {HoleType::Plated, HoleType::NonPlated};
    if (!row.isSlot) {
        types.insert(types.end(), {HoleType::Via, HoleType::PressFit});
    }
    for (const HoleType type : types) {
        QAction* action = menu.addAction(spoken(typeWord(type, row.isSlot)));
        action->setCheckable(true);
        action->setChecked(type == row.type);
        action->setData(int(type));
    }
    menu.addSeparator();
    menu.addAction(tr("As the &Board Has It"));
    if (const QAction* chosen = menu.exec(mTable->viewport()->mapToGlobal(at))) {
        const QVariant type = chosen->data();
        emit typeChosen(
            layer, tool, type.isValid() ? std::optional(HoleType(type.toInt())) : std::nullopt);
    }
}

} // namespace brox
