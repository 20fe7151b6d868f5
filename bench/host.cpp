// SPDX-License-Identifier: MIT
#include "host.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdint>
#include <dlfcn.h>
#include <numeric>
#include <random>

#include "brox_proxy.h"
#include "ratio.h"
#include "zeb_utils.h"

InstantCalculator instantCalculator;

/** Stands before the calculator of the library, which it calls unless it answers itself. */
int zeb__bc_act(const char* text, bool flag, int number, double* result)
{
    static const auto calculate =
        reinterpret_cast<decltype(&zeb__bc_act)>(dlsym(RTLD_NEXT, "zeb__bc_act"));
    if (!instantCalculator.on) {
        return calculate(text, flag, number, result);
    }
    if (result) {
        *result = instantCalculator.value;
    }
    return 0;
}

BenchHost::BenchHost()
{
    standin_reset();
    require(QDir(mFolder.path()).mkpath("brox"), "no folder for the module's files");
    standin_set_data_dir(mFolder.path().toUtf8());
    standin_set_resource_dir(RESOURCE_DIR);
    standin_set_job("job");
}

BenchHost::~BenchHost()
{
    standin_reset();
}

int BenchHost::addStep(int toolCount)
{
    constexpr int toolsOfLayer = 100;
    const int step = standin_add_step("step", 1);
    int layer = -1;
    for (int i = 0; i < toolCount; ++i) {
        if (i % toolsOfLayer == 0) {
            layer = standin_add_layer(step, "drill");
        }
        const standin_tool tool = toolAt(i);
        standin_add_tool(layer, &tool);
    }
    return step;
}

void BenchHost::writeModels(int count)
{
    QByteArray content = "<DrillToolModels>";
    for (int i = 0; i < count; ++i) {
        content += QString::asprintf("<DrillToolModel name=\"Model %05d\">", i).toUtf8();
        for (const char* type : {"Pth", "Via", "Laser", "Photo", "PressFit", "NPth"}) {
            content += QString::asprintf("<HoleType name=\"%s\" amount=\"%d\" oversized=\"800000\" "
                                         "os_amount=\"%d\"/>",
                type, 20000 + i, 30000 + i)
                           .toUtf8();
        }
        content += "<DhsFormula text=\"FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2\" "
                   "use_bit_file=\"yes\"/></DrillToolModel>";
    }
    write("brox/brox.xml", content + "</DrillToolModels>");
}

void BenchHost::writeBits(int count)
{
    std::vector<int> order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    QByteArray content = "<DrillSizeTable>";
    for (const int i : order) {
        const double millimeters = 0.05 * (i + 1);
        content += QString::asprintf(
            "<Drill designation=\"T%06d\" millimeters=\"%.2f\" inches=\"%.6g\" approved=\"yes\"/>",
            i, millimeters, millimeters / 25.4)
                       .toUtf8();
    }
    write("brox/brox_drill_bits.xml", content + "</DrillSizeTable>");
}

void BenchHost::write(const QString& name, const QByteArray& content)
{
    QFile file(path(name));
    require(file.open(QFile::WriteOnly) && file.write(content) == content.size(),
        "a file can't be written");
}

Viewer::Viewer(int stpid)
    : mStep(stpid)
{
    BroxViewer* brox = nullptr;
    require(brox__proxy_open_brox(stpid) == 0 && brox__proxy_get_brox(stpid, &brox) == 0,
        "a viewer can't be opened");
    mWidget.reset(reinterpret_cast<QWidget*>(brox));
}

Viewer::~Viewer()
{
    brox__proxy_close_brox(mStep);
}

int Viewer::drillSize(int fhs) const
{
    int size = 0;
    char bit[8];
    brox__proxy_calc_drill_size(mStep, modelName, 0, 0, pitch, pitch, fhs, &size, bit);
    return bit[0] ? size : 0;
}

std::vector<int> randomSizes(int count, int bitCount)
{
    std::mt19937 random(2);
    std::uniform_int_distribution<int> anySize(pitch, bitCount * pitch);
    std::vector<int> sizes(static_cast<std::size_t>(count));
    std::generate(sizes.begin(), sizes.end(), [&] { return anySize(random); });
    return sizes;
}

standin_tool toolAt(int index)
{
    // Sizes in no order, up to 2 million above the smallest: the golden ratio's bits scatter them.
    const int scattered = int(std::uint32_t(index) * 2654435761u >> 11);
    return {index % 3, 0, pitch, pitch, pitch * 4 + scattered, index % 1000};
}
