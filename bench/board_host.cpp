// SPDX-License-Identifier: MIT
#include "board_host.h"

#include <QFile>

#include "ratio.h"

BoardHost::BoardHost(int holeCount)
    : holes(size_t(holeCount))
{
    writeBoard(holeCount);
    writeProgram(holeCount);
}

void BoardHost::writeBoard(int holeCount) const
{
    QFile out(file);
    require(out.open(QFile::WriteOnly), "a board can't be written");
    out.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<IPC-2581 revision=\"C\" xmlns=\"http://webstds.ipc.org/2581\">\n"
              " <Content><StepRef name=\"board\"/></Content>\n"
              " <Ecad name=\"job\">\n  <CadHeader units=\"MILLIMETER\"/>\n  <CadData>\n"
              "   <Layer name=\"DRILL\" layerFunction=\"DRILL\"/>\n"
              "   <Step name=\"board\">\n    <LayerFeature layerRef=\"DRILL\">\n");
    for (int i = 0; i < holeCount; ++i) {
        const char* const status[] = {"PLATED", "VIA", "NONPLATED"};
        out.write(QString::asprintf("     <Set><Hole name=\"H%d\" diameter=\"%.2f\" "
                                    "platingStatus=\"%s\" plusTol=\"0.05\" minusTol=\"0.05\" "
                                    "x=\"%.3f\" y=\"%.3f\"/></Set>\n",
            i, 0.2 + 0.05 * (i % 40), status[i % 3], 0.254 * (i % 1000), 0.254 * (i / 1000))
                      .toUtf8());
    }
    out.write("    </LayerFeature>\n   </Step>\n  </CadData>\n </Ecad>\n</IPC-2581>\n");
    require(out.flush(), "a board can't be written");
}

void BoardHost::writeProgram(int holeCount) const
{
    QFile out(program);
    require(out.open(QFile::WriteOnly), "a drill file can't be written");
    out.write("M48\nMETRIC\nT1C0.3\n%\nT1\n");
    for (int i = 0; i < holeCount; ++i) {
        out.write(
            QString::asprintf("X%.3fY%.3f\n", 0.254 * (i % 1000), 0.254 * (i / 1000)).toUtf8());
    }
    out.write("M30\n");
    require(out.flush(), "a drill file can't be written");
}
