// SPDX-License-Identifier: MIT
#include "table_filter.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
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
    putAbove(this, table);
    setTabOrder(mText, table);
    table->installEventFilter(this);
    mText->installEventFilter(this);
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

} // namespace brox
