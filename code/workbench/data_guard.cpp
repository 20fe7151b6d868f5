// SPDX-License-Identifier: MIT
#include "data_guard.h"

#include "file_set.h"
#include "messages.h"
#include "standin.h"
#include "step_data.h"

#include <QCryptographicHash>
#include <QDir>
#include <QScopedValueRollback>
#include <QTimer>
#include <algorithm>

namespace brox {

namespace {

/** A mark of a content; null if there is none. */
QByteArray markOf(const DataFile::Content& content)
{
    return content.exists ? QCryptographicHash::hash(content.bytes, QCryptographicHash::Sha256)
                          : QByteArray();
}

} // namespace

DataGuard::DataGuard(const QString& dataDir)
    : mDataDir(dataDir)
    , mBackups(dataDir)
{ }

DataGuard::~DataGuard() = default;

void DataGuard::answerHost()
{
    standin_set_path_hook(
        [](const char* name, void* guard) {
            auto* self = static_cast<DataGuard*>(guard);
            self->mAnswer = self->pathFor(QString::fromUtf8(name));
            return self->mAnswer.isNull() ? nullptr : self->mAnswer.constData();
        },
        this);
}

StepData* DataGuard::open(
    const QString& step, const std::function<QWidget*()>& make, const Edits& edits)
{
    std::array<QByteArray, 2> known = edits.known;
    for (DataFile::Kind kind : DataFile::moduleKinds) {
        if (edits.contents[size_t(kind)].isNull()) {
            known[size_t(kind)] = markOf(DataFile(mDataDir, kind).readUnchecked());
        }
    }
    const QScopedValueRollback opening(mOpening, &edits);
    auto* data = new StepData(make(), step);
    for (DataFile::Kind kind : DataFile::moduleKinds) {
        const QByteArray& content = edits.contents[size_t(kind)];
        StepData::File& file = data->file(kind);
        file.known = known[size_t(kind)];
        if (!content.isNull() && !data->markEdited(kind)) {
            file.isLost = true; // an empty list of models has nothing to edit
            file.unsaved = content;
            file.fault = tr("it was not saved before");
        }
    }
    connect(data, &StepData::edited, this, [this, data](DataFile::Kind kind, bool isEdited) {
        if (!isEdited && mSave && mSave->kind == kind) {
            finishSave(data);
        }
        emit unsavedChanged();
    });
    mSteps.removeAll(nullptr); // viewers that are gone
    mSteps << data;
    return data;
}

std::optional<DataGuard::Edits> DataGuard::takeEdits(StepData& data)
{
    Edits edits;
    const QScopedValueRollback taking(mIsTaking, true);
    for (DataFile::Kind kind : DataFile::moduleKinds) {
        const StepData::File& file = data.file(kind);
        QByteArray& content = edits.contents[size_t(kind)];
        edits.known[size_t(kind)] = file.known;
        if (file.isLost) {
            content = file.unsaved;
        }
        if (!file.isEdited) {
            continue;
        }
        QFile staged(stagePath(kind));
        staged.remove();
        data.save(kind);
        if (!staged.open(QIODevice::ReadOnly)) {
            return std::nullopt;
        }
        content = staged.readAll();
        if (!DataFile::faultOf(kind, content).isEmpty()) {
            return std::nullopt;
        }
    }
    return edits;
}

bool DataGuard::isOlder(const StepData& data) const
{
    return std::ranges::any_of(DataFile::moduleKinds, [&](DataFile::Kind kind) {
        return data.file(kind).known != markOf(DataFile(mDataDir, kind).readUnchecked());
    });
}

bool DataGuard::canClose(StepData& data, const std::function<bool()>& askModule)
{
    const QScopedValueRollback closing(mClosing, &data);
    return data.closeBits() && askModule()
        && std::ranges::all_of(
            DataFile::moduleKinds, [&](DataFile::Kind kind) { return canLose(data, kind); });
}

/** Only while a viewer is being made does the module ask for reading. */
QByteArray DataGuard::pathFor(const QString& name)
{
    for (DataFile::Kind kind : DataFile::moduleKinds) {
        if (name == DataFile::nameOf(kind)) {
            return mOpening ? pathForReading(kind)
                : mIsTaking ? stagePath(kind).toUtf8()
                            : pathForSaving(kind);
        }
    }
    return QDir(mDataDir).filePath(name).toUtf8();
}

/** The file, or a copy of edits that are in no file. */
QByteArray DataGuard::pathForReading(DataFile::Kind kind)
{
    const QByteArray& content = mOpening->contents[size_t(kind)];
    if (content.isNull()) {
        const QFileInfo info(DataFile(mDataDir, kind).path());
        const bool isReadable = info.isFile() || !info.exists();
        // Anything else the module might read for ever.
        return (isReadable ? info.filePath() : info.filePath() + "/none").toUtf8();
    }
    const QString path = stagePath(kind);
    const QString error = writeFile(path, content);
    if (!error.isEmpty()) {
        ask(tr("The changes could not be kept: %1").arg(error), {}, {tr("Close")});
    }
    return path.toUtf8();
}

/** Where the module writes and reads what is not in its file; empty: nowhere. */
QString DataGuard::stagePath(DataFile::Kind kind)
{
    if (!mStage || !mStage->isValid()) {
        mStage = std::make_unique<QTemporaryDir>();
    }
    return mStage->isValid()
        ? mStage->filePath(kind == DataFile::Kind::Models ? "models.xml" : "bits.xml")
        : QString();
}

QByteArray DataGuard::pathForSaving(DataFile::Kind kind)
{
    if (mSave) {
        finishSave(mSave->data); // the module was done with it without a mark
    }
    Save save{kind, saver(kind)};
    if (!prepare(&save)) {
        return {};
    }
    const QString path = stagePath(kind);
    if (path.isEmpty()) {
        ask(tr("Nothing could be saved: %1").arg(mStage->errorString()), {}, {tr("Close")});
        return {};
    }
    QFile::remove(path); // so that one that is there afterwards is new
    mSave = save;
    // The mark of the viewer goes down when the module is done. Should it not, this comes next.
    QTimer::singleShot(0, this, [this] {
        if (mSave) {
            finishSave(mSave->data);
        }
    });
    return path.toUtf8();
}

/** What the module has written takes the file's place. */
void DataGuard::finishSave(StepData* data)
{
    Save save = *mSave;
    mSave.reset();
    save.data = data;
    QFile staged(stagePath(save.kind));
    const QByteArray bytes = staged.open(QIODevice::ReadOnly) ? staged.readAll() : QByteArray();
    const QString fault =
        staged.isOpen() ? DataFile::faultOf(save.kind, bytes) : staged.errorString();
    if (fault.isEmpty()) {
        replace(&save, bytes);
    } else {
        settle(&save, {},
            tr("it could not be written completely to %1 (%2)").arg(QDir::tempPath(), fault));
    }
}

bool DataGuard::waitForOthers(Save* save)
{
    while (!save->lock) {
        save->lock = mBackups.lock();
        if (!save->lock
            && ask(tr("Another workbench is saving to %1.").arg(mDataDir),
                   tr("Cancel: nothing is saved."), {tr("Try Again"), tr("Cancel")})
                != 0) {
            return false;
        }
    }
    return true;
}

/** What is to be known and decided before a file is replaced; false: it must not be. */
bool DataGuard::prepare(Save* save)
{
    if (!waitForOthers(save)) {
        return false;
    }
    const DataFile file(mDataDir, save->kind);
    save->before = file.read();
    if (!save->before.exists) {
        return true;
    }
    const bool isOthers = save->data && save->data->file(save->kind).known != markOf(save->before);
    const QString matter = !save->before.fault.isEmpty()
        ? tr("%1 can't be read: %2").arg(file.path(), save->before.fault)
        : isOthers ? tr("%1 has changed since step %2 read it: another step or another program has "
                        "saved it.")
                         .arg(file.path(), save->data->step())
                   : QString();
    if (!matter.isEmpty()
        && ask(matter,
               tr("Overwrite: the present content is kept as a backup.\nKeep: nothing is saved."),
               {tr("Overwrite"), tr("Keep")})
            != 0) {
        return false;
    }
    if (save->before.bytes.isNull()) {
        return true; // no copy can be made; it is moved itself
    }
    const QString error = mBackups.keep(save->kind, save->before.bytes);
    save->hasBackup = error.isEmpty();
    return save->hasBackup
        || ask(tr("No backup of %1 could be made: %2").arg(file.path(), error),
               tr("Save: if the computer fails meanwhile, the file may be lost.\n"
                  "Cancel: nothing is saved."),
               {tr("Save"), tr("Cancel")})
        == 0;
}

void DataGuard::replace(Save* save, const QByteArray& bytes)
{
    const DataFile file(mDataDir, save->kind);
    settle(save, bytes, mBackups.replace(file, save->before, bytes, !save->hasBackup));
}

/** Reports what came of a save, and tries again as long as the user wants that.
 *
 * @param bytes  what was to be saved; null if there is nothing whole to try again with
 */
void DataGuard::settle(Save* save, const QByteArray& bytes, const QString& fault)
{
    save->lock.reset();
    const QString path = DataFile(mDataDir, save->kind).path();
    if (StepData* data = save->data) {
        StepData::File& file = data->file(save->kind);
        file.isLost = !fault.isEmpty();
        file.unsaved = file.isLost ? bytes : QByteArray();
        file.fault = fault;
        if (!file.isLost) {
            file.known = markOf({true, bytes, {}});
        }
    }
    emit unsavedChanged();
    if (fault.isEmpty()) {
        emit saved(path);
        return;
    }
    QStringList answers{tr("Close")};
    if (!bytes.isNull()) {
        answers.prepend(tr("Save Again"));
    }
    const qsizetype answer = ask(tr("%1 could not be saved: %2").arg(path, fault),
        tr("The file is as it was. Your changes are still unsaved."), answers);
    if (answer < answers.size() - 1) {
        saveAgain(save->data, save->kind, bytes);
    }
}

void DataGuard::saveAgain(StepData* data, DataFile::Kind kind, const QByteArray& bytes)
{
    Save save{kind, data};
    if (prepare(&save)) {
        replace(&save, bytes);
    }
}

/** Whether what a save has lost may go with the viewer. */
bool DataGuard::canLose(StepData& data, DataFile::Kind kind)
{
    const StepData::File& file = data.file(kind);
    if (!file.isLost) {
        return true;
    }
    QStringList answers{tr("Discard"), tr("Cancel")};
    if (!file.unsaved.isNull()) {
        answers.prepend(tr("Save Again"));
    }
    const qsizetype answer =
        ask(tr("%1 could not be saved: %2").arg(DataFile(mDataDir, kind).path(), file.fault),
            tr("Unsaved data will be lost."), answers);
    if (answer < answers.size() - 2) {
        saveAgain(&data, kind, QByteArray(file.unsaved));
        return !file.isLost;
    }
    return answer == answers.size() - 2;
}

/** The step that saves: the one that is being closed, or in front of the user. */
StepData* DataGuard::saver(DataFile::Kind kind) const
{
    StepData* found = nullptr;
    for (const QPointer<StepData>& data : mSteps) {
        if (!data || !data->file(kind).isEdited) {
            continue;
        }
        if (data == mClosing) {
            return data;
        }
        if (!found || data->isInFront(kind)) {
            found = data;
        }
    }
    return found;
}

} // namespace brox
