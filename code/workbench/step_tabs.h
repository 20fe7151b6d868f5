// SPDX-License-Identifier: MIT
#ifndef STEP_TABS_H
#define STEP_TABS_H

#include "board.h"

#include <QTabWidget>
#include <functional>
#include <optional>

namespace brox {

class HostSession;

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

    /** Has all open viewers made anew around a change of the session's that needs them closed.
     *  Each shows the model again that was selected.
     *
     * @return false, without the change, if the user wants to keep a viewer as it is
     * @throws HostError
     */
    bool remake(const std::function<void()>& change);

signals:
    /** The user wants another type for a tool of the board; null: its own again. */
    void typeChosen(const QString& layer, const Tool& tool, std::optional<HoleType> type);

    /** Another step is in front, or none is left, or something came to be saved or unsaved. */
    void stepChanged();

private:
    void markUnsaved();
    QString titleOf(size_t step) const;
    size_t stepOf(int tab) const;
    void discard(int tab);
    void fill(int tab);

    HostSession& mSession;
};

} // namespace brox

#endif
