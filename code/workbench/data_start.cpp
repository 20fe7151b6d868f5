// SPDX-License-Identifier: MIT
#include "data_start.h"

#include "host_session.h"
#include "messages.h"
#include "ui_restore_dialog.h"

#include <QDir>
#include <QLocale>
#include <QPushButton>

namespace brox {

namespace {

constexpr int contentRole = Qt::UserRole; ///< what would be restored

} // namespace

DataStart::DataStart(const QString& dataDir)
    : mDataDir(dataDir)
    , mBackups(dataDir)
    , mLock(QDir(dataDir).absoluteFilePath("workbench.lock"))
{
    mLock.setStaleLockTime(0); // it goes with its process, however long that lives
}

void DataStart::fill(const QString& dataDir)
{
    for (const DataFile::Kind kind : DataFile::kinds) {
        const QString path = DataFile(dataDir, kind).path();
        const qsizetype length = QFile::encodeName(path).size();
        if (length > DataFile::pathLimit) {
            throw HostError(tr("%1: the path is too long: %2 bytes of at most %3")
                                .arg(path)
                                .arg(length)
                                .arg(DataFile::pathLimit));
        }
    }
    if (!QDir().mkpath(dataDir)) {
        throw HostError(tr("%1: the folder can't be made").arg(dataDir));
    }
    const std::unique_ptr<FileLock> lock = Backups(dataDir).lock(); // another may start as well
    for (const DataFile::Kind kind : DataFile::kinds) {
        const DataFile file(dataDir, kind);
        const QString error =
            QFileInfo::exists(file.path()) ? QString() : file.write(DataFile::defaults(kind));
        if (!error.isEmpty()) {
            throw HostError(QStringLiteral("%1: %2").arg(file.path(), error));
        }
    }
}

bool DataStart::lock()
{
    if (mLock.tryLock(0)) {
        clearUp();
        return true;
    }
    if (mLock.error() != QLockFile::LockFailedError) {
        return true; // a folder that can't be written in needs no lock
    }
    qint64 process = 0;
    QString host;
    QString program;
    mLock.getLockInfo(&process, &host, &program);
    return ask(tr("Another workbench is open on %1 (process %2 on %3).")
                   .arg(mDataDir)
                   .arg(process)
                   .arg(host),
               tr("Neither sees what the other changes until it opens a step. A save over what the "
                  "other has saved is asked about first."),
               {tr("Open"), tr("Quit")})
        == 0;
}

void DataStart::clearUp()
{
    for (const char* folder : {"brox", "backups"}) {
        try {
            mNotes << FileSet::tidy(QDir(mDataDir).filePath(folder));
        } catch (const OutputError&) {
            // Somebody is at work there.
        }
    }
    mNotes.removeAll(QString());
}

void DataStart::repair()
{
    for (DataFile::Kind kind : DataFile::kinds) {
        const DataFile file(mDataDir, kind);
        const DataFile::Content content = file.read();
        if (!content.fault.isEmpty()) {
            offerBackup(file, content);
        }
    }
}

void DataStart::offerBackup(const DataFile& file, const DataFile::Content& content)
{
    QString details = tr("Restore Defaults: the defaults replace the file.\n"
                         "Its present content is kept as a backup.")
        + '\n'
        + (file.kind() == DataFile::Kind::Rules
                ? tr(
                    "Leave: the file stays as it is, and nothing is exported until it can be read.")
                : tr("Leave: the file stays as it is; before you save over it you are asked."));
    QStringList answers{tr("Restore Defaults"), tr("Leave")};
    QList<QByteArray> contents{DataFile::defaults(file.kind())};
    if (const auto backup = mBackups.newestGood(file.kind())) {
        const QString time = QLocale().toString(backup->time.toLocalTime(), QLocale::ShortFormat);
        contents.prepend(backup->bytes());
        details.prepend(tr("Restore: the backup of %1 replaces the file (%2).")
                            .arg(time, DataFile::summaryOf(file.kind(), contents.first()))
            + '\n');
        answers.prepend(tr("Restore"));
    }
    const qsizetype answer =
        ask(tr("%1 can't be read: %2").arg(file.path(), content.fault), details, answers);
    if (answer < contents.size()) {
        const QString error = mBackups.replace(file, contents[answer]);
        if (!error.isEmpty()) {
            ask(tr("%1 can't be restored: %2").arg(file.path(), error), {}, {tr("Close")});
        }
    }
}

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
