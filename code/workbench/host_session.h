// SPDX-License-Identifier: MIT
#ifndef HOST_SESSION_H
#define HOST_SESSION_H

#include "data_guard.h"
#include "step_data.h"
#include "zeb_lowlevel.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <memory>
#include <vector>

namespace brox {

/** Something that can't be done, described in one line. */
class HostError : public Error
{
    using Error::Error;
};

/** What a viewer follows: the host's window of a step. */
class ParentViewer : public QObject
{
    Q_OBJECT

signals:
    void unitsChanged(zeb_units_enum units);
};

/** A host with a job: fills the host's libraries with drafts and runs the module on them.
 *
 * There is one at a time. Steps are named by their index; sizes are in host size units. Functions
 * that need the module throw HostError when it reports a status.
 */
class HostSession : public QObject
{
    Q_OBJECT

public:
    /**
     * @param dataDir    folder of the module's two files
     * @param catalogue  file of the texts that the module speaks; empty: its own texts
     */
    explicit HostSession(const QString& dataDir, const QString& catalogue = {});

    /** Viewers that are still open are deleted. */
    ~HostSession() override;

    QString dataDir() const { return QString::fromUtf8(mDataDir); }

    /** Replaces the steps of the job; every viewer must be closed. */
    void setSteps(std::vector<DrillDraft> drafts);

    /** A step as it was given, in the units that it has now; rows as its viewer lists them. */
    const DrillDraft& draft(size_t step) const { return mSteps.at(step).draft; }

    /** Whether rows are to share bits within their tolerances. */
    enum class Sharing
    {
        None,
        ButPressFit,
        All
    };

    /** What a draft, which may be that of another board, comes to by the selected model and the
     *  current formula of a step's viewer, saved or not. Nothing that the viewer shows is changed.
     *
     * @param apart  takes what mergeDrills gives if rows share bits; may be null
     */
    DrillPlan plan(const DrillDraft& draft, size_t step, Sharing sharing = Sharing::None,
        std::vector<size_t>* apart = nullptr);

    /** Changes a step's units and notifies its viewer. */
    void setUnits(size_t step, Units units);

    /** The step's viewer, which is opened if there is none yet. */
    QWidget* viewer(size_t step) { return data(step).viewer(); }

    /** Names the model that a viewer of the step begins with, if it has it; else it is the first.
     */
    void setFirstModel(size_t step, const QString& model) { mSteps.at(step).firstModel = model; }

    /** Has the step's viewer calculate its table of tools by what it shows; what is being typed is
     *  entered first. Nothing happens if there is no viewer. */
    void recalculate(size_t step);

    /** Closes a viewer and keeps what of it is in no file for the one that is opened next.
     *
     * @throws HostError  if the viewer did not give that; it is still open then
     */
    void closeForAnother(size_t step);

    /** Whether models or bits have been saved by others since the step's viewer read them. */
    bool isOlder(size_t step) const;

    /** Whether the step's viewer may close; may ask the user. */
    bool canClose(size_t step);

    /** Whether the step's viewer has models or bits that are in no file. */
    bool hasUnsaved(size_t step) const;

    /** Reports saves and what is unsaved. */
    const DataGuard& guard() const { return mGuard; }

    /** Closes and deletes the step's viewer. */
    void closeViewer(size_t step);

    QStringList models(size_t step);

    /** The model that is selected in the step's viewer; empty if there is none. */
    QString selectedModel(size_t step) { return data(step).selectedModel(); }

    /** Selects a model in the step's viewer, as a user does. */
    void selectModel(size_t step, const QString& model);

    /** By the viewer's own button, which also enters what is being typed. */
    void saveModels(size_t step) { data(step).save(DataFile::Kind::Models); }

    /** Makes a copy of the selected model, as a user would by hand; its name is open for typing
     *  then, and nothing is saved. Does nothing if no model is selected. */
    void duplicateModel(size_t step) { data(step).duplicateModel(); }

signals:
    /** Something that the drill sizes of a step depend on may be another. */
    void edited(size_t step);

    void logged(const QString& level, const QString& text);
    void modelRenamed(const QString& step, const QString& oldName, const QString& newName);
    void modelDeleted(const QString& step, const QString& name);

private:
    struct OpenStep
    {
        int stpid;
        DrillDraft draft;
        std::unique_ptr<ParentViewer> parent;
        QPointer<StepData> data; ///< of the viewer, with which it goes; null: there is none
        QString firstModel = {};
        DataGuard::Edits edits = {}; ///< of the viewer that was closed for another
    };

    void fillHost();
    DrillModel model(size_t step);
    std::vector<Drill> drills(const DrillDraft& draft, const DrillModel& model, size_t step);
    Drill drill(const DraftRow& row, const DrillModel& model, size_t step);
    StepData& data(size_t step);
    void setUpHost();
    static void log(const char* level, const char* text, void* session);
    static void modelRenamedOrDeleted(int stepNumber, const char* oldName, const char* newName);

    static HostSession* sSession; ///< the module's callback knows no context

    QByteArray mDataDir;
    QByteArray mCatalogue; ///< path; null for the module's own texts
    DataGuard mGuard;
    std::vector<OpenStep> mSteps;
};

} // namespace brox

#endif
