// SPDX-License-Identifier: MIT
#ifndef HOST_H
#define HOST_H

#include <QTemporaryDir>
#include <QWidget>

#include <memory>
#include <vector>

#include "standin.h"

/** Bits lie this far apart, which is also each tolerance of a hole: 0.05 mm. */
constexpr int pitch = 20000;

constexpr char modelName[] = "Model 00000";

/** Whether the calculator answers at once with a given value instead of calculating. */
struct InstantCalculator
{
    bool on = false;
    double value = 0;
};
extern InstantCalculator instantCalculator;

/** A host whose job has metric steps; there is one at a time. */
class BenchHost
{
public:
    BenchHost();
    ~BenchHost();
    Q_DISABLE_COPY_MOVE(BenchHost)

    /** Adds a step with drill tools, a hundred to a layer. */
    int addStep(int toolCount = 0);

    /** Writes the file that the next viewers read: models without end, or bits in no order. */
    void writeModels(int count);
    void writeBits(int count);

    QString path(const QString& name) const { return mFolder.filePath(name); }

private:
    void write(const QString& name, const QByteArray& content);

    QTemporaryDir mFolder;
};

/** A step's viewer, made by the module; it ends with this. */
class Viewer
{
public:
    explicit Viewer(int stpid);
    ~Viewer();
    Q_DISABLE_COPY_MOVE(Viewer)

    QWidget* widget() const { return mWidget.get(); }

    /** The size for a plated hole; its tolerances are the pitch. */
    int drillSize(int fhs) const;

private:
    int mStep;
    std::unique_ptr<QWidget> mWidget;
};

/** Sizes of holes from all over a number of bits, the same ones in each run. */
std::vector<int> randomSizes(int count, int bitCount);

/** The tool that a step has at a place. */
standin_tool toolAt(int index);

#endif
