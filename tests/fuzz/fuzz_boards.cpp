// SPDX-License-Identifier: MIT
#include "board_reader.h"
#include "fuzz_host.h"

#include <limits>

namespace {

/** What every board has, so that the host can show it. */
void check(const Board& board)
{
    constexpr int most = std::numeric_limits<int>::max();
    fuzzCheck(board.mainStep < board.steps.size(), "there is a main step");
    for (const Step& step : board.steps) {
        fuzzCheck(step.slotsLeftOut >= 0 && step.slotsLeftOut <= most, "slots are counted");
        for (const Layer& layer : step.layers) {
            fuzzCheck(!layer.tools.empty(), "a layer has tools");
            for (const Tool& tool : layer.tools) {
                fuzzCheck(tool.finishedSize > 0, "a hole has a size");
                fuzzCheck(tool.minusTol >= 0 && tool.plusTol >= 0, "tolerances are magnitudes");
                fuzzCheck(tool.count > 0 && tool.count <= most, "holes are counted");
            }
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString path = fuzzFile("board", data, size);
    try {
        check(readBoard({path}));
    } catch (const BoardError& error) {
        fuzzCheck(error.message().startsWith(path + ':'), "an error names its file");
        fuzzCheck(!error.message().contains('\n'), "an error is one line");
    }
    return 0;
}
