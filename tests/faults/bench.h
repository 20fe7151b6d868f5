// SPDX-License-Identifier: MIT
#ifndef FAULTS_BENCH_H
#define FAULTS_BENCH_H

#include <QVariant>

#include <map>

#include "fixture.h"

class QFileDialog;

/** What the host's callback was told, as "old>new" or "old>-". */
extern QStringList heard;

/** Whether all takes many times its time, since a tool watches each access, and
 *  memory may be kept for that. */
inline bool isSlowRun()
{
#ifdef __SANITIZE_ADDRESS__
    return true;
#else
    return qEnvironmentVariableIsSet("BROX_SLOW_RUN");
#endif
}

/** Answers every dialog as a user would who wants it done; what boxes said is noted. */
class Agreeable : public QTimer
{
public:
    Agreeable();

    QStringList texts;

private:
    void answer();

    QFileDialog* mAsked = nullptr;
};

/** A host with a job, two models and two bits; its viewer is never shown. */
class Bench
{
public:
    Bench();
    ~Bench();

    /** Ends the viewer and writes both files anew. */
    void restore();

    QWidget* viewer();
    QTableWidget* table(const char* name) { return child<QTableWidget>(viewer(), name); }
    void click(const char* name);
    void trigger(const char* name);
    void set(const char* name, int row, int column, const QVariant& value);

    /** What the host was told, all that the viewer shows, and the two files. */
    QString state();

    Host host;
    Agreeable dialogs;

private:
    std::map<QString, QByteArray> mFiles;
};

#endif
