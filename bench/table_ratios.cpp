// SPDX-License-Identifier: MIT
#include "ratio.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include "brox_bits_table.h"
#include "brox_man.h"
#include "brox_model_manager.h"
#include "brox_models_file.h"
#include "brox_proxy.h"
#include "host.h"

namespace {

constexpr int bitCount = 500;

/** Opening costs something even without any tool: that is not the tools' share. */
Sides openViewer(const Scale& scale)
{
    struct OpeningHost : BenchHost
    {
        explicit OpeningHost(const Scale& scale)
            : fewCount(scale.size(1000))
            , manyCount(scale.size(100000))
        {
            writeModels(1);
            writeBits(bitCount);
        }

        static double seconds(int step)
        {
            std::unique_ptr<Viewer> viewer;
            return secondsOf([&] { viewer = std::make_unique<Viewer>(step); });
        }

        double secondsPerTool(int step, int count) const
        {
            return (seconds(step) - seconds(empty)) / count;
        }

        int fewCount;
        int manyCount;
        int empty = addStep();
        int few = addStep(fewCount);
        int many = addStep(manyCount);
    };
    const auto host = std::make_shared<OpeningHost>(scale);
    return {[host] { return host->secondsPerTool(host->many, host->manyCount); },
        [host] { return host->secondsPerTool(host->few, host->fewCount); }};
}

Sides recalculate(const Scale& scale)
{
    struct RecalculatingHost : BenchHost
    {
        explicit RecalculatingHost(int tools)
            : toolCount(tools)
        {
            writeModels(1);
            writeBits(bitCount);
            viewer = std::make_unique<Viewer>(step);
            button = viewer->widget()->findChild<QPushButton*>("recalcPushButton");
            formula = viewer->widget()->findChild<QLineEdit*>("dhsLineEdit");
            require(button && formula, "no button or no formula");
        }

        /** Each time with another formula, so that all rows change. */
        double secondsPerTool() const
        {
            const QString usual = QStringLiteral("FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2");
            formula->setText(formula->text() == usual ? usual + " + 60000" : usual);
            button->setEnabled(true);
            const double seconds = secondsOf([&] { button->click(); });
            require(!button->isEnabled(), "nothing was calculated");
            return seconds / toolCount;
        }

        int toolCount;
        int step = addStep(toolCount);
        std::unique_ptr<Viewer> viewer;
        QPushButton* button = nullptr;
        QLineEdit* formula = nullptr;
    };
    const auto host = std::make_shared<RecalculatingHost>(scale.size(100000));
    return {[host] { return host->secondsPerTool(); },
        [host] {
            const double seconds = secondsOf([&] {
                for (int i = 0; i < host->toolCount; ++i) {
                    const standin_tool tool = toolAt(i);
                    int size = 0;
                    char bit[8];
                    brox__proxy_calc_drill_size(host->step, modelName, tool.tool_type,
                        tool.tool_sub_type, tool.min_tol, tool.max_tol, tool.finished_size, &size,
                        bit);
                }
            });
            return seconds / host->toolCount;
        }};
}

/** Here too, what the empty window costs is not the bits' share. */
Sides loadBits(const Scale& scale)
{
    struct BitsHost : BenchHost
    {
        double seconds(int count)
        {
            writeBits(count);
            std::unique_ptr<BroxBitsTable> table;
            const double seconds = secondsOf(
                [&] { table = std::make_unique<BroxBitsTable>(nullptr, Qt::WindowFlags()); });
            const auto* widget = table->findChild<QTableWidget*>("drillBitsTableWidget");
            require(widget && widget->isSortingEnabled() && widget->rowCount() == count,
                "the bits are not loaded and sorted");
            return seconds;
        }

        double secondsPerBit(int count) { return (seconds(count) - seconds(0)) / count; }
    };
    const auto host = std::make_shared<BitsHost>();
    const int few = scale.size(1000);
    const int many = scale.size(100000);
    return {[host, many] { return host->secondsPerBit(many); },
        [host, few] { return host->secondsPerBit(few); }};
}

Sides fillModels(const Scale& scale)
{
    struct Models
    {
        explicit Models(int count)
        {
            for (int i = 0; i < count; ++i) {
                set.createModel(QString::asprintf("Model %05d", i * 7919 % count));
            }
        }

        double secondsPerModel()
        {
            BroxModelManager manager;
            return secondsOf([&] { manager.setModelSet(&set); }) / set.modelCount();
        }

        BroxModelSet set;
    };
    const auto few = std::make_shared<Models>(100);
    const auto many = std::make_shared<Models>(scale.size(10000));
    return {[many] { return many->secondsPerModel(); }, [few] { return few->secondsPerModel(); }};
}

} // namespace

std::span<const Ratio> tableRatios()
{
    static const Ratio ratios[] = {
        {"opening a viewer, per tool, 100,000 tools / 1,000 tools", 1.3, 15, openViewer},
        {"recalculating, per tool, 100,000 tools / one drill size", 4, 15, recalculate},
        {"loading bits, per bit, 100,000 bits / 1,000 bits", 1.5, 15, loadBits},
        {"filling the models table, per model, 10,000 / 100", 2, 51, fillModels},
    };
    return ratios;
}
