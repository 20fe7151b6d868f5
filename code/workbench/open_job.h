// SPDX-License-Identifier: MIT
#ifndef OPEN_JOB_H
#define OPEN_JOB_H

#include "drill_draft.h"

#include <QJsonObject>
#include <functional>

namespace brox {

class HostSession;
class StepTabs;

/** The board that the window has open, with the rules and choices that act on it: types of tools,
 *  what the sizes of layers are, and of each step its model and units. Any change makes another
 *  job, whose drafts go to the session while the viewers are closed. */
class OpenJob
{
public:
    /** @param session, tabs  outlive the job */
    OpenJob(HostSession& session, StepTabs& tabs);

    const Job& job() const { return mJob; }

    /** Takes a board in place of the one before, of which no viewer is open, with the choices that
     *  were kept for it.
     *
     * @param isKept  whether what is chosen for the board is kept from now on
     * @return what was chosen for it before; empty: nothing
     * @throws HostError, PanelError
     */
    QString open(Board board, bool isKept);

    /** Has open viewers made anew around a change, with what they have unsaved.
     *
     * @throws HostError, PanelError
     */
    void change(const std::function<void(Job&)>& edit);

    /** Whether anything is chosen for the board. */
    bool isChosen() const { return !mKept.isEmpty(); }

    /** Keeps what is chosen for the board, if it is another than before.
     *
     * @return what went wrong, or an empty text
     */
    QString keepChoices();

    /** Gives the board types, sizes, units and model back that it had without any choice.
     *
     * @throws HostError, PanelError
     */
    void forgetChoices();

private:
    void set(Job job);
    void applySteps();
    QJsonObject choices() const;
    QString choicesText() const;
    QString save() const;

    HostSession& mSession;
    StepTabs& mTabs;
    Job mJob;
    QJsonObject mSteps; ///< by name, what is chosen of each: "model" and "units"
    QString mPath; ///< of the file that keeps the choices; empty: none
    QJsonObject mKept; ///< what is in it; empty: nothing is chosen
};

} // namespace brox

#endif
