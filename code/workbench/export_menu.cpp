// SPDX-License-Identifier: MIT
#include "export_menu.h"

#include "drill_map.h"
#include "drill_program.h"
#include "drill_report.h"
#include "drill_table.h"
#include "file_set.h"
#include "host_session.h"
#include "step_tabs.h"

#include <QDir>
#include <QFileDialog>
#include <QProgressDialog>
#include <QSettings>
#include <algorithm>

namespace brox {

namespace {

constexpr int longWriting = 500; ///< milliseconds after which the progress is shown

/** As comma-separated values, or by the suffix in another form. */
void addTable(const DrillPlan& plan, const QString& path, FileSet& files, const Progress&)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == "json") {
        files.add(path, planJson(plan));
    } else if (suffix == "txt") {
        files.add(path, planText(plan).toUtf8());
    } else {
        files.add(path, (planCsvHeader(plan.units) + planCsvRows(plan, plan.units)).toUtf8());
    }
}

} // namespace

ExportMenu::ExportMenu(HostSession& session, const StepTabs& tabs, QWidget* parent)
    : QMenu(tr("&Export"), parent)
    , mSession(session)
    , mTabs(tabs)
{
    setObjectName("exportMenu");
    addAction(tr("&Drill Programs..."), this, &ExportMenu::exportPrograms);
    addAction(tr("&Report..."), this, [this] {
        exportFile(tr("Export Report"), "report", tr("HTML (*.html);;PDF (*.pdf)"), "html",
            addDrillReport);
    });
    addAction(tr("&Map..."), this, [this] {
        exportFile(tr("Export Map"), "map", tr("SVG (*.svg);;PDF (*.pdf);;PNG (*.png)"), "svg",
            addDrillMap);
    });
    addAction(tr("&Table..."), this, [this] {
        exportFile(tr("Export Table"), "table",
            tr("Comma-separated values (*.csv);;JSON (*.json);;Text (*.txt)"), "csv", addTable);
    });
}

QString ExportMenu::lastFolder(const char* key) const
{
    const QString folder = QSettings().value(QStringLiteral("export/%1").arg(key)).toString();
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

void ExportMenu::exportPrograms()
{
    const QString folder = QFileDialog::getExistingDirectory(
        parentWidget(), tr("Export Drill Programs"), lastFolder("programs"));
    if (!folder.isEmpty()) {
        write("programs", folder, addDrillPrograms);
    }
}

void ExportMenu::exportFile(const QString& title, const char* key, const QString& filter,
    const QString& suffix, Write writeFile)
{
    const std::optional<size_t> step = mTabs.currentStep();
    if (!step) {
        return;
    }
    const DrillDraft& draft = mSession.draft(*step);
    QString name = QStringLiteral("%1-%2").arg(draft.board->job, draft.boardStep().name);
    name.replace('/', '_');
    QFileDialog dialog(parentWidget(), title, lastFolder(key), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    // The suffix says in which form the file is written, so it follows the filter.
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& chosen) {
        dialog.setDefaultSuffix(chosen.section("*.", 1).section(')', 0, 0));
    });
    dialog.selectFile(name);
    if (dialog.exec() == QDialog::Accepted) {
        write(key, dialog.selectedFiles().value(0), writeFile);
    }
}

void ExportMenu::write(const char* key, const QString& path, Write writeFiles)
{
    const std::optional<size_t> step = mTabs.currentStep();
    if (!step) {
        return;
    }
    QProgressDialog progress(tr("Writing %1").arg(path), tr("Cancel"), 0, 0, parentWidget());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(longWriting);
    try {
        const DrillPlan plan = planOf(mSession, *step);
        FileSet files;
        writeFiles(plan, path, files, [&progress](qint64 done, qint64 total) {
            progress.setMaximum(int(total));
            progress.setValue(int(done));
            return !progress.wasCanceled();
        });
        files.commit();
        progress.reset();
        QSettings().setValue(
            QStringLiteral("export/%1").arg(key), QFileInfo(files.paths().value(0)).absolutePath());
        QString message =
            tr("Written by model %1: %2").arg(plan.model.name, files.paths().join(", "));
        if (plan.model.unsaved) {
            message += tr(" (with edits that are not saved)");
        }
        if (const qsizetype alarming = alarmingRows(plan)) {
            message += tr(" (tools to be looked at: %1)").arg(alarming);
        }
        emit exported((QStringList(message) + files.notes()).join("; "));
    } catch (const BoardCancelled&) {
        emit exported(tr("Nothing was written"));
    } catch (const std::exception& error) {
        progress.reset();
        emit failed(QString::fromUtf8(error.what()));
    }
}

} // namespace brox
