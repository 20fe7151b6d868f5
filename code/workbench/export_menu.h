// SPDX-License-Identifier: MIT
#ifndef EXPORT_MENU_H
#define EXPORT_MENU_H

#include "drill_plan.h"
#include "reading.h"

#include <QMenu>

namespace brox {

class FileSet;
class HostSession;
class StepTabs;

/** File > Export: what leaves the workbench of the step in front, as the selected model and the
 *  current formula make it, saved or not. Each kind remembers its folder. */
class ExportMenu : public QMenu
{
    Q_OBJECT

public:
    /** @param session, tabs  outlive the menu */
    ExportMenu(HostSession& session, const StepTabs& tabs, QWidget* parent);

signals:
    /** What was written, or why nothing was. */
    void exported(const QString& message);
    void failed(const QString& message);

private:
    using Write = void (*)(
        const DrillPlan& plan, const QString& path, FileSet& files, const Progress& progress);

    void exportPrograms();
    void exportFile(const QString& title, const char* key, const QString& filter,
        const QString& suffix, Write write);
    void write(const char* key, const QString& path, Write write);
    QString lastFolder(const char* key) const;

    HostSession& mSession;
    const StepTabs& mTabs;
};

} // namespace brox

#endif
