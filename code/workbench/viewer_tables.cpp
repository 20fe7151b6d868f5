// SPDX-License-Identifier: MIT
#include "viewer_tables.h"

#include "messages.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QStyle>
#include <QTableWidget>
#include <algorithm>

namespace brox {

namespace {

/** Puts a widget where the table is in its layout, and the table below it. */
void putAbove(QWidget* widget, QWidget* table)
{
    auto* grid = qobject_cast<QGridLayout*>(table->parentWidget()->layout());
    if (!grid) {
        return;
    }
    int row = 0;
    int column = 0;
    int rows = 1;
    int columns = 1;
    grid->getItemPosition(grid->indexOf(table), &row, &column, &rows, &columns);
    grid->removeWidget(table);
    grid->addWidget(widget, row, column, 1, columns);
    grid->addWidget(table, row + 1, column, 1, columns);
}

/** Columns of the viewer's table. */
enum Column
{
    LayerColumn,
    TypeColumn,
    MinTolColumn = 4,
    MaxTolColumn = 5,
    BitColumn = 7
};

constexpr double hintStrength = 0.7;
constexpr int leastLayerWidth = 70; ///< pixels, as the other columns have
constexpr int mostLayerWidth = 150;

QString toolTipOf(const DraftRow& row)
{
    QString text = row.rule;
    if (row.flags.contains(PlanFlag::TypeAssumed)) {
        text += (text.isEmpty() ? QString() : QStringLiteral("\n"))
            + JobTable::tr("The board does not specify the type.");
    }
    return text;
}

} // namespace

TableFilter::TableFilter(QTableWidget* table, std::function<bool(int)> isToCheck)
    : QWidget(table->parentWidget())
    , mTable(table)
    , mIsToCheck(std::move(isToCheck))
    , mText(new QLineEdit)
{
    setObjectName("tableFilter");
    mText->setObjectName("filterLineEdit");
    mText->setPlaceholderText(tr("Filter (Ctrl+F)"));
    mText->setAccessibleName(tr("Filter rows"));
    mText->setToolTip(tr("Shows the rows that hold all of these words."));
    mText->setClearButtonEnabled(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mText, 1);
    connect(mText, &QLineEdit::textChanged, this, &TableFilter::apply);
    if (mIsToCheck) {
        mOnlyToCheck = new QCheckBox(tr("Only rows to check"));
        mOnlyToCheck->setObjectName("onlyToCheckCheckBox");
        layout->addWidget(mOnlyToCheck);
        connect(mOnlyToCheck, &QCheckBox::toggled, this, &TableFilter::apply);
    }
    followPalette();
    putAbove(this, table);
    setTabOrder(mText, table);
    table->installEventFilter(this);
    mText->installEventFilter(this);
}

/** Half transparent, as it is by itself, the hint can't be read on dark windows. */
void TableFilter::followPalette()
{
    QPalette colours = mText->palette();
    QColor hint = palette().color(QPalette::Text);
    hint.setAlphaF(hintStrength);
    colours.setColor(QPalette::PlaceholderText, hint);
    mText->setPalette(colours);
}

void TableFilter::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        followPalette();
    }
    QWidget::changeEvent(event);
}

bool TableFilter::isShown(int row, const QStringList& words) const
{
    if (mOnlyToCheck && mOnlyToCheck->isChecked() && !mIsToCheck(row)) {
        return false;
    }
    QString text;
    for (int column = 0; column < mTable->columnCount(); ++column) {
        const QTableWidgetItem* item = mTable->item(row, column);
        text += item ? item->text() + '\n' : QString();
    }
    return std::all_of(words.begin(), words.end(),
        [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

void TableFilter::apply()
{
    const QStringList words = mText->text().split(' ', Qt::SkipEmptyParts);
    for (int row = 0; row < mTable->rowCount(); ++row) {
        mTable->setRowHidden(row, !isShown(row, words));
    }
}

void TableFilter::clear()
{
    mText->clear();
    if (mOnlyToCheck) {
        mOnlyToCheck->setChecked(false);
    }
}

bool TableFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    if (watched == mTable && key->matches(QKeySequence::Find)) {
        mText->setFocus();
        mText->selectAll();
        return true;
    }
    if (watched == mText && (key->key() == Qt::Key_Down || key->key() == Qt::Key_Escape)) {
        if (key->key() == Qt::Key_Escape) {
            clear();
        }
        mTable->setFocus();
        return true;
    }
    return false;
}

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
        bit->setToolTip(plainTip((flags + QStringList(toolTipOf(row))).join('\n').trimmed()));
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

/** What was assumed, or chosen by the user, is slanted, and a rule that acted is shown in a tip. */
void JobTable::mark()
{
    for (int i = 0; i < mTable->rowCount(); ++i) {
        const DraftRow& row = mDraft.rows[size_t(i)];
        const QString tip = toolTipOf(row);
        for (int column = 0; column < mTable->columnCount(); ++column) {
            QTableWidgetItem* item = mTable->item(i, column);
            item->setToolTip(plainTip(tip));
            const bool isTolerance = column == MinTolColumn || column == MaxTolColumn;
            QFont font = item->font();
            font.setItalic((column == TypeColumn
                               && (row.isTypeChosen || row.flags.contains(PlanFlag::TypeAssumed)))
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
    menu.addAction(tr("As &Specified by the Board"));
    if (const QAction* chosen = menu.exec(mTable->viewport()->mapToGlobal(at))) {
        const QVariant type = chosen->data();
        emit typeChosen(
            layer, tool, type.isValid() ? std::optional(HoleType(type.toInt())) : std::nullopt);
    }
}

} // namespace brox
