// SPDX-License-Identifier: MIT
#include "board_reader.h"
#include "fuzz_host.h"
#include "tool_list.h"

using namespace brox;

/** Any bytes as a board file, drilled or in XML, and as a list of tools beside one. */
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString path = fuzzFile("board", data, size);
    try {
        const Board board = readBoard({path});
        fuzzCheck(board.mainStep < board.steps.size(), "there is a main step");
        for (const Step& step : board.steps) {
            for (const Layer& layer : step.layers) {
                for (const Tool& tool : layer.tools) {
                    fuzzCheck(tool.finishedSize > 0 || tool.holes.empty(), "a hole has a size");
                    const Tolerance tolerance = tool.tolerance.value_or(Tolerance());
                    fuzzCheck(tolerance.minus >= 0 && tolerance.plus >= 0, "they are magnitudes");
                    fuzzCheck(!tool.holes.empty() || !tool.slotPaths.empty(), "a tool is used");
                }
            }
        }
    } catch (const BoardError& error) {
        fuzzCheck(error.message().startsWith(path), "an error names its file");
        fuzzCheck(!error.message().contains('\n'), "an error is one line");
    }
    ToolLists lists;
    lists.add({reinterpret_cast<const char*>(data), qsizetype(size)}, path);
    for (const auto& [number, remark] : lists.about(path, true).tools) {
        fuzzCheck(number >= 0 && remark.size >= 0, "a listed tool has a number and a size");
    }
    return 0;
}
