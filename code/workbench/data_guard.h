// SPDX-License-Identifier: MIT
#ifndef DATA_GUARD_H
#define DATA_GUARD_H

#include "data_file.h"

#include <QObject>
#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace brox {

class StepData;

/** Stands between the module and a data folder, so that no save loses what was saved before.
 *
 * The module writes in place, without a look at what is there or at what comes of it. So it is
 * given a path of a temporary file for a save; what is in it then is looked at and takes the
 * file's place. Before that the file as it stands goes to the backups. Where the file is not what
 * the saving step has read, or is broken, or has no backup, the user decides.
 */
class DataGuard : public QObject
{
    Q_OBJECT

public:
    explicit DataGuard(const QString& dataDir);
    ~DataGuard() override;

    /** Lets the host's libraries ask here for the places of files; a reset makes them forget it. */
    void answerHost();

    /** What of a viewer is in no file, while the viewer is made anew. */
    struct Edits
    {
        std::array<QByteArray, 2> contents; ///< by kind; null: nothing is unsaved
        std::array<QByteArray, 2> known; ///< marks of the files as the viewer has read them
    };

    /** Takes the edits out of a viewer that is about to be closed; null if it did not give them. */
    std::optional<Edits> takeEdits(StepData& data);

    /** Has a step's viewer made, which reads the files, and watches it from then on.
     *
     * @param edits  what it shows, as unsaved, in place of the files
     * @return owned by the viewer
     */
    StepData* open(const QString& step, const std::function<QWidget*()>& make, const Edits& edits);

    /** Whether the files have been saved by others since a viewer read or wrote them. */
    bool isOlder(const StepData& data) const;

    /** Whether a viewer may close. Asks for its bits, its models and what a save has lost.
     *
     * @param askModule  has the module ask for the models
     */
    bool canClose(StepData& data, const std::function<bool()>& askModule);

signals:
    /** Something of a viewer came to be unsaved, or no longer is. */
    void unsavedChanged();

    void saved(const QString& path);

private:
    /** A save on its way. */
    struct Save
    {
        DataFile::Kind kind;
        QPointer<StepData> data; ///< of the step that saves
        std::shared_ptr<FileLock> lock = {}; ///< from the look at the file to its replacement
        DataFile::Content before = {};
        bool hasBackup = true;
    };

    QByteArray pathFor(const QString& name);
    QString stagePath(DataFile::Kind kind);
    QByteArray pathForReading(DataFile::Kind kind);
    QByteArray pathForSaving(DataFile::Kind kind);
    void finishSave(StepData* data);
    bool prepare(Save* save);
    bool waitForOthers(Save* save);
    void replace(Save* save, const QByteArray& bytes);
    void saveAgain(StepData* data, DataFile::Kind kind, const QByteArray& bytes);
    void settle(Save* save, const QByteArray& bytes, const QString& fault);
    bool canLose(StepData& data, DataFile::Kind kind);
    StepData* saver(DataFile::Kind kind) const;

    QString mDataDir;
    Backups mBackups;
    std::unique_ptr<QTemporaryDir> mStage; ///< where the module writes; made for the first save
    QByteArray mAnswer; ///< the host's libraries use it until the next question
    const Edits* mOpening = nullptr; ///< edits of the viewer that is being made; null: none is
    bool mIsTaking = false; ///< a save only hands over the edits
    QList<QPointer<StepData>> mSteps;
    StepData* mClosing = nullptr;
    std::optional<Save> mSave; ///< the module is at it
};

} // namespace brox

#endif
