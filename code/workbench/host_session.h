// SPDX-License-Identifier: MIT
#ifndef HOST_SESSION_H
#define HOST_SESSION_H

#include "board.h"
#include "data_guard.h"
#include "zeb_lowlevel.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <memory>
#include <vector>

/** Something that can't be done, told in one line. */
class HostError : public std::runtime_error
{
public:
    explicit HostError(const QString& message)
        : std::runtime_error(message.toStdString())
    { }
    QString message() const { return QString::fromUtf8(what()); }
};

/** What a viewer follows: the host's window of a step. */
class ParentViewer : public QObject
{
    Q_OBJECT

signals:
    void unitsChanged(zeb_units_enum units);
};

/** A host with a job: fills the host's libraries from a board and runs the module on it.
 *
 * There is one at a time. Steps are named by their index in the board; sizes are in host size
 * units. Functions that need the module throw HostError when it reports a status.
 */
class HostSession : public QObject
{
    Q_OBJECT

public:
    /** Loads the module.
     *
     * @param dataDir   folder of the module's two files
     * @param language  code of the language that the module speaks, such as "de"; "en" or empty:
     *                  its own texts
     * @throws HostError  if it isn't found or is no such module, or does not speak the language
     */
    explicit HostSession(const QString& dataDir, const QString& language = {});

    /** Viewers that are still open are deleted. */
    ~HostSession() override;

    QString dataDir() const { return QString::fromUtf8(mDataDir); }

    /** Replaces the job; every viewer must be closed. */
    void setBoard(Board board);
    const Board& board() const { return mBoard; }

    Units units(size_t step) const { return mSteps.at(step).units; }

    /** Changes a step's units and tells its viewer. */
    void setUnits(size_t step, Units units);

    /** A size as the user reads it, in mils or microns by the step's units. */
    QString sizeText(size_t step, int size) const;

    /** The step's viewer, which is opened if there is none yet. */
    QWidget* viewer(size_t step);

    /** Whether the step's viewer may close; may ask the user. */
    bool canClose(size_t step);

    /** Whether the step's viewer has models or bits that are in no file. */
    bool hasUnsaved(size_t step) const;

    /** Tells of saves and of what is unsaved. */
    const DataGuard& guard() const { return mGuard; }

    /** Closes and deletes the step's viewer. */
    void closeViewer(size_t step);

    QStringList models(size_t step);

    /** The model that is selected in the step's viewer; empty if there is none. */
    QString selectedModel(size_t step);

    /** Selects a model in the step's viewer, as a user does. */
    void selectModel(size_t step, const QString& model);

    struct Drill
    {
        int size; ///< 0 if model and formula give none
        QString bit; ///< designation, empty if no bit was chosen
    };
    Drill drill(size_t step, const QString& model, const Tool& tool);

signals:
    void logged(const QString& level, const QString& text);
    void modelRenamed(const QString& step, const QString& oldName, const QString& newName);
    void modelDeleted(const QString& step, const QString& name);

private:
    struct OpenStep
    {
        int stpid;
        Units units;
        std::unique_ptr<ParentViewer> parent;
        QPointer<QWidget> viewer;
    };
    struct Module;

    void setUpHost();
    static void log(const char* level, const char* text, void* session);
    static void modelRenamedOrDeleted(int stepNumber, const char* oldName, const char* newName);

    static HostSession* sSession; ///< the module's callback knows no context

    QByteArray mDataDir;
    QByteArray mCatalogue; ///< path; null for the module's own texts
    DataGuard mGuard;
    std::unique_ptr<Module> mModule;
    Board mBoard;
    std::vector<OpenStep> mSteps;
};

#endif
