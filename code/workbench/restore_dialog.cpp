// SPDX-License-Identifier: MIT
#include "restore_dialog.h"

#include "ui_restore_dialog.h"

#include <QLocale>
#include <QPushButton>

namespace brox {

namespace {

constexpr int contentRole = Qt::UserRole; ///< what would be restored

} // namespace

RestoreDialog::RestoreDialog(const QString& dataDir, QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::RestoreDialog>())
    , mDataDir(dataDir)
    , mBackups(dataDir)
{
    mUi->setupUi(this);
    QPushButton* restore = mUi->buttonBox->button(QDialogButtonBox::Ok);
    restore->setText(tr("Restore"));
    restore->setEnabled(false);
    connect(mUi->backupsTree, &QTreeWidget::itemSelectionChanged, this,
        [this, restore] { restore->setEnabled(!mUi->backupsTree->selectedItems().isEmpty()); });
    list(DataFile::Kind::Models, tr("Models"));
    list(DataFile::Kind::Bits, tr("Bits"));
    list(DataFile::Kind::Rules, tr("Shop rules"));
    mUi->backupsTree->expandAll();
    mUi->backupsTree->resizeColumnToContents(0);
}

RestoreDialog::~RestoreDialog() = default;

void RestoreDialog::list(DataFile::Kind kind, const QString& title)
{
    auto* file = new QTreeWidgetItem(mUi->backupsTree, {title}, int(kind));
    file->setFlags(Qt::ItemIsEnabled);
    const auto add = [&](const QString& name, const QByteArray& bytes) {
        auto* item = new QTreeWidgetItem(file, {name, DataFile::summaryOf(kind, bytes)}, int(kind));
        item->setData(0, contentRole, bytes);
        if (!DataFile::faultOf(kind, bytes).isEmpty()) {
            item->setDisabled(true);
        }
    };
    for (const Backups::Backup& backup : mBackups.all(kind)) {
        add(QLocale().toString(backup.time.toLocalTime(), QLocale::ShortFormat), backup.bytes());
    }
    add(tr("Defaults"), DataFile::defaults(kind));
}

void RestoreDialog::accept()
{
    const QTreeWidgetItem* item = mUi->backupsTree->selectedItems().value(0);
    if (!item) {
        return;
    }
    mKind = DataFile::Kind(item->type());
    const DataFile file(mDataDir, mKind);
    const QString error = mBackups.replace(file, item->data(0, contentRole).toByteArray());
    if (error.isEmpty()) {
        QDialog::accept();
    } else {
        mUi->errorLabel->setText(tr("%1 can't be restored: %2").arg(file.path(), error));
    }
}

} // namespace brox
