// SPDX-License-Identifier: MIT
#ifndef DRILL_TABLE_H
#define DRILL_TABLE_H

#include "host_session.h"

/** The drill tools of a step with the drill sizes that a model gives them, as texts. */
class DrillTable
{
public:
    /** @throws HostError */
    DrillTable(HostSession& session, size_t step, const QString& model);

    QString toText() const; ///< columns side by side, numbers to the right
    QString toCsv() const;

    /** Tools to which model and formula give no drill size; their cells are empty. */
    int toolsWithoutDrill() const { return mToolsWithoutDrill; }

private:
    QList<QStringList> mRows; ///< the first is the header
    int mToolsWithoutDrill = 0;
};

#endif
