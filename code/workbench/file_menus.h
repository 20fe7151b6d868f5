// SPDX-License-Identifier: MIT
#ifndef FILE_MENUS_H
#define FILE_MENUS_H

#include "bits_list.h"
#include "drill_plan.h"
#include "reading.h"

#include <QMenu>
#include <functional>

class QFileDialog;

namespace brox {

class FileSet;
class LivePlan;

/** File > Export: what leaves the workbench of the step in front, as the selected model and the
 *  current formula make it, saved or not. Each kind remembers its folder. */
class ExportMenu : public QMenu
{
    Q_OBJECT

public:
    /** @param plan  outlives the menu */
    ExportMenu(LivePlan& plan, QWidget* parent);

    /** Where all files at once are offered to go. */
    void setBoardFolder(const QString& folder) { mBoardFolder = folder; }

    /** From now on nothing is exported, for this reason; empty: everything is again. */
    void refuse(const QString& reason) { mRefusal = reason; }

signals:
    /** What was written, or why nothing was. */
    void exported(const QString& message);
    void failed(const QString& message);

private:
    struct Kind
    {
        QString title; ///< of the dialog
        void (*write)(
            const DrillPlan& plan, const QString& path, FileSet& files, const Progress& progress);
        QString key; ///< of the folder in the settings; empty: that of the board is offered
        QString filter; ///< of the dialog; empty: files go to a folder
    };

    QAction* addKind(const QString& text, const Kind& kind);
    const DrillPlan* current();
    void choosePath(const Kind& kind);
    bool runDialog(QFileDialog& dialog);
    void write(const Kind& kind, const QString& path);

    LivePlan& mLive;
    QString mBoardFolder;
    QString mRefusal;
    bool mWithFewestTools = false; ///< as in the last dialog
};

/** File > Drill Bits: lists of bits in and out of the data folder, and ready sets. */
class BitsMenu : public QMenu
{
    Q_OBJECT

public:
    /** @param dataDir  folder of the bits
     *  @param change   has the open viewers read a change of the files; false: the user wants none
     */
    BitsMenu(const QString& dataDir, std::function<bool(const std::function<void()>&)> change,
        QWidget* parent);

signals:
    void done(const QString& message);

private:
    void importBits();
    void exportBits();
    void replace(const QString& name);

    QString mDataDir;
    std::function<bool(const std::function<void()>&)> mChange;
};

} // namespace brox

#endif
