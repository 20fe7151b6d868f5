// SPDX-License-Identifier: MIT
#ifndef IPC2581_STEPS_H
#define IPC2581_STEPS_H

#include "ipc2581_xml.h"

#include <QHash>
#include <set>

namespace brox {

/** The steps of an IPC-2581 file and how they repeat each other, by names until all are known. */
class Ipc2581Steps
{
public:
    explicit Ipc2581Steps(const Ipc2581Pass& pass)
        : mPass(pass)
    { }

    void begin(const QString& name);
    Step& current() { return mSteps.back(); }

    /** The point of the current step that repeats of it place; its origin if unspecified. */
    void setDatum(const Ipc2581Attributes& attributes)
    {
        mDatums.back() = attributes.place("x", "y");
    }

    /** Repeats another step in the current one. */
    void addRepeat(const Ipc2581Attributes& attributes);

    /** Gives a board the steps.
     *
     * @param mainStep  name; the first step if there is none of it
     * @throws BoardError  for repeats of unknown steps, or in circles
     */
    void finish(Board& board, const QString& mainStep);

private:
    struct NamedRepeat
    {
        size_t owner;
        QString step;
        Repeat repeat;
        qint64 line;
    };

    void placeDatum(Repeat& repeat);
    void checkCircles(size_t step, std::vector<char>& state, int depth) const;

    const Ipc2581Pass& mPass;
    std::vector<Step> mSteps;
    std::vector<Place> mDatums; ///< by step
    std::set<size_t> mPlacedByDatum;
    QHash<QString, size_t> mStepOfName;
    std::vector<NamedRepeat> mRepeats;
};

} // namespace brox

#endif
