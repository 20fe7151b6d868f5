// SPDX-License-Identifier: MIT
#ifndef STEP_TABS_H
#define STEP_TABS_H

#include "board.h"

#include <QTabWidget>
#include <functional>
#include <optional>

namespace brox {

class HostSession;
class JobTable;

/** The viewers of the open steps of a board, a tab each. */
class StepTabs : public QTabWidget
{
    Q_OBJECT

public:
    /** @param session  outlives the tabs */
    explicit StepTabs(HostSession& session);

    /** Viewers that are still open are closed without a question. */
    ~StepTabs() override;

    /** Shows a step's viewer, which is opened if there is none yet.
     *
     * @throws HostError
     */
    void openStep(size_t step);

    /** The step in front; null if none is open. */
    std::optional<size_t> currentStep() const;

    /** Whether any step has models or bits that are in no file. */
    bool hasUnsaved() const;

    /** Closes a step unless the user wants to keep it.
     *
     * @throws HostError
     */
    void closeTab(int tab);

    /** Closes all steps, or none if the user wants to keep one: then false.
     *
     * @throws HostError
     */
    bool closeAll();

    /** The steps with a viewer. */
    std::vector<size_t> openSteps() const;

    /** Has all open viewers made anew around a change of the session's that needs them closed.
     *  Each shows the model again that was selected, and what is in no file, still unsaved.
     *
     * @throws HostError
     */
    void remake(const std::function<void()>& change);

    /** Has all viewers read their files again after a change of these.
     *
     * @return false, without the change, if the user wants to keep what is in no file
     * @throws HostError
     */
    bool changeFiles(const std::function<void()>& change);

    /** Has those viewers read their files again that have nothing unsaved and are older than them.
     *
     * @return names of the steps
     * @throws HostError
     */
    QStringList rereadFiles();

    /** The same for an open step, whatever it has unsaved.
     *
     * @throws HostError
     */
    void reread(size_t step);

    /** What the workbench adds to the table of tools in front; null if no step is open. */
    JobTable* jobTable() const;

signals:
    /** The user wants another type for a tool of the board; null: its own again. */
    void typeChosen(const QString& layer, const Tool& tool, std::optional<HoleType> type);

    /** Another step is in front, or none is left, or something came to be saved or unsaved. */
    void stepChanged();

private:
    void markUnsaved();
    QString titleOf(size_t step) const;
    size_t stepOf(int tab) const;
    int tabOf(size_t step) const;
    void reopen(int tab, const QString& model);
    void discard(int tab);
    void fill(int tab);

    HostSession& mSession;
};

} // namespace brox

#endif
