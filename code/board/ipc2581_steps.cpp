// SPDX-License-Identifier: MIT
#include "ipc2581_steps.h"

#include "board_text.h"
#include "panel.h"

#include <algorithm>

namespace brox {

namespace {

constexpr int maxRepeatDepth = 64;

} // namespace

void Ipc2581Steps::begin(const QString& name)
{
    if (mStepOfName.contains(name)) {
        mPass.fail(BoardText::tr("a second step \"%1\"").arg(name));
    }
    mStepOfName.insert(name, mSteps.size());
    mSteps.emplace_back().name = name;
    mDatums.emplace_back();
}

void Ipc2581Steps::addRepeat(const Ipc2581Attributes& attributes)
{
    if (mPass.unit() == 0) {
        mPass.fail(BoardText::tr("no CadHeader tells the units of this repeat"));
    }
    const Place grid = attributes.place("dx", "dy");
    mRepeats.push_back({mSteps.size() - 1, attributes.text("stepRef"),
        Repeat{0, attributes.place("x", "y"), attributes.repeats("nx"), attributes.repeats("ny"),
            grid.x, grid.y, attributes.number("angle"), attributes.isTrue("mirror")},
        mPass.line()});
}

/** Moves a repeat so that the datum of the step, and not its origin, lies where it should. */
void Ipc2581Steps::placeDatum(Repeat& repeat)
{
    const Place datum = mDatums[repeat.step];
    if (datum != Place{}) {
        const Place turned = Transform({}, repeat.angle, repeat.mirror).map(datum);
        repeat.at = mPass.place(double(repeat.at.x) - turned.x, double(repeat.at.y) - turned.y);
        mPlacedByDatum.insert(repeat.step);
    }
}

void Ipc2581Steps::checkCircles(size_t step, std::vector<char>& state, int depth) const
{
    enum : char
    {
        Unseen,
        Open,
        Done
    };
    if (state[step] == Done) {
        return;
    }
    if (state[step] == Open || depth == maxRepeatDepth) {
        const auto named = std::find_if(mRepeats.begin(), mRepeats.end(),
            [&](const NamedRepeat& each) { return each.repeat.step == step; });
        mPass.fail(named == mRepeats.end() ? 1 : named->line,
            BoardText::tr("step \"%1\" repeats itself, or repeats are nested too deeply")
                .arg(mSteps[step].name));
    }
    state[step] = Open;
    for (const Repeat& repeat : mSteps[step].repeats) {
        checkCircles(repeat.step, state, depth + 1);
    }
    state[step] = Done;
}

void Ipc2581Steps::finish(Board& board, const QString& mainStep)
{
    for (NamedRepeat& named : mRepeats) {
        const auto found = mStepOfName.constFind(named.step);
        if (found == mStepOfName.constEnd()) {
            mPass.fail(named.line, BoardText::tr("no step \"%1\" to repeat").arg(named.step));
        }
        named.repeat.step = *found;
        placeDatum(named.repeat);
        mSteps[named.owner].repeats.push_back(named.repeat);
    }
    for (const size_t step : mPlacedByDatum) {
        board.notes << BoardText::tr(
            "copies of step \"%1\" are placed by its datum, which is not its origin")
                           .arg(mSteps[step].name);
    }
    std::vector<char> state(mSteps.size(), 0);
    for (size_t i = 0; i < mSteps.size(); ++i) {
        checkCircles(i, state, 0);
    }
    if (mSteps.size() > 1 && !mStepOfName.contains(mainStep)) {
        board.notes << BoardText::tr("the file does not tell its main step; \"%1\" is taken")
                           .arg(mSteps.front().name);
    }
    board.steps = std::move(mSteps);
    board.mainStep = mStepOfName.value(mainStep, 0);
}

} // namespace brox
