// SPDX-License-Identifier: MIT
#include "file_menus.h"

#include "bits_list.h"
#include "data_file.h"
#include "drill_map.h"
#include "drill_program.h"
#include "drill_report.h"
#include "drill_table.h"
#include "file_set.h"
#include "live_plan.h"
#include "messages.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLayout>
#include <QProgressDialog>
#include <QSettings>
#include <algorithm>

namespace brox {

namespace {

constexpr int longWriting = 500; ///< milliseconds after which the progress is shown

/** A name for files of a step. */
QString fileStem(const PlannedStep& step)
{
    return QStringLiteral("%1-%2").arg(step.board->job, step.boardStep().name).replace('/', '_');
}

void addTable(const DrillPlan& plan, const QString& path, FileSet& files, const Progress&)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == "json") {
        writePlanJson(files.open(path), plan);
    } else if (suffix == "txt") {
        files.add(path, planText(plan).toUtf8());
    } else if (suffix == "csv") {
        files.add(path, (planCsvHeader(plan.units) + planCsvRows(plan, plan.units)).toUtf8());
    } else {
        throw OutputError(
            ExportMenu::tr("%1: a table is written as .csv, .json or .txt").arg(path));
    }
}

/** All that leaves the workbench, into one folder. */
void addAll(const DrillPlan& plan, const QString& folder, FileSet& files, const Progress& progress)
{
    const QString stem = QDir(folder).filePath(fileStem(plan) + "-drill-");
    addDrillPrograms(plan, folder, files, progress);
    addDrillReport(plan, stem + "report.html", files, progress);
    addDrillMap(plan, stem + "map.pdf", files, progress);
    addTable(plan, stem + "table.csv", files, progress);
}

/** The names of files, as many as a box has room for. */
QString namesOf(const QStringList& paths)
{
    constexpr qsizetype most = 10;
    QStringList names;
    for (const QString& path : paths.mid(0, most)) {
        names << QFileInfo(path).fileName();
    }
    return names.join('\n') + (paths.size() > most ? "\n..." : "");
}

/** Of an export into a folder, whose files nobody has named. */
bool mayOverwrite(const QString& folder, const FileSet& files)
{
    QStringList existing = files.paths();
    existing.removeIf([](const QString& path) { return !QFileInfo::exists(path); });
    return existing.isEmpty()
        || ask(ExportMenu::tr("%1 already holds some of these files.").arg(folder),
               namesOf(existing), {ExportMenu::tr("Overwrite"), ExportMenu::tr("Cancel")})
        == 0;
}

/** What was written, and what the user should know of it. */
QString writtenText(const DrillPlan& plan, const FileSet& files)
{
    QString text =
        ExportMenu::tr("Written with model %1: %2").arg(plan.model.name, files.paths().join(", "));
    if (plan.model.unsaved || plan.model.isOlder) {
        text += ExportMenu::tr(" (models and bits: %1)").arg(spoken(fileState(plan.model)));
    }
    if (plan.toolCount() < plan.toolsBefore()) {
        text += ExportMenu::tr(" (%n tool(s) instead of %1)", "", plan.toolCount())
                    .arg(plan.toolsBefore());
    }
    if (const qsizetype alarming = alarmingRows(plan)) {
        text += ExportMenu::tr(" (%n row(s) to check)", "", int(alarming));
    }
    return text;
}

bool mayRemove(const QString& folder, const QStringList& stale)
{
    return !stale.isEmpty()
        && ask(ExportMenu::tr("%1 holds programs of an earlier export of this board and step that "
                              "this one no longer has. Remove them?")
                   .arg(folder),
               namesOf(stale), {ExportMenu::tr("Remove"), ExportMenu::tr("Keep")})
        == 0;
}

} // namespace

ExportMenu::ExportMenu(LivePlan& plan, QWidget* parent)
    : QMenu(tr("&Export"), parent)
    , mLive(plan)
{
    setObjectName("exportMenu");
    addKind(tr("&Drill Programs..."),
        {tr("Export Drill Programs"), addDrillPrograms, "export/programs", {}});
    addKind(tr("&Report..."),
        {tr("Export Report"), addDrillReport, "export/report", tr("HTML (*.html);;PDF (*.pdf)")});
    addKind(tr("&Map..."),
        {tr("Export Map"), addDrillMap, "export/map", tr("SVG (*.svg);;PDF (*.pdf);;PNG (*.png)")});
    addKind(tr("&Table..."),
        {tr("Export Table"), addTable, "export/table",
            tr("Comma-separated values (*.csv);;JSON (*.json);;Text (*.txt)")});
    addSeparator();
    addKind(tr("&All into a Folder..."),
        {tr("Export Drill Programs, Report, Map and Table"), addAll, {}, {}})
        ->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_E);
}

QAction* ExportMenu::addKind(const QString& text, const Kind& kind)
{
    return addAction(text, this, [this, kind] { choosePath(kind); });
}

/** The plan of this moment; null, after a word about why, if nothing can be exported. */
const DrillPlan* ExportMenu::current()
{
    const DrillPlan* plan = mRefusal.isEmpty() ? mLive.current() : nullptr;
    const QString reason = mRefusal.isEmpty() ? mLive.fault() : mRefusal;
    if (!plan && !reason.isEmpty()) {
        emit failed(reason);
    }
    return plan;
}

void ExportMenu::choosePath(const Kind& kind)
{
    const DrillPlan* shown = current();
    if (!shown) {
        return;
    }
    const QString last =
        kind.key.isEmpty() ? mBoardFolder : QSettings().value(kind.key, mBoardFolder).toString();
    QFileDialog dialog(
        parentWidget(), kind.title, QFileInfo(last).isDir() ? last : QDir::homePath(), kind.filter);
    if (kind.filter.isEmpty()) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.selectFile(fileStem(*shown));
        // The suffix says in which form the file is written, so it follows the filter.
        const auto setSuffix = [&dialog](const QString& filter) {
            dialog.setDefaultSuffix(filter.section("*.", 1).section(')', 0, 0));
        };
        setSuffix(kind.filter);
        connect(&dialog, &QFileDialog::filterSelected, &dialog, setSuffix);
    }
    if (runDialog(dialog)) {
        write(kind, dialog.selectedFiles().value(0));
    }
}

/** Shows a dialog with the box of all exports below what it has itself. */
bool ExportMenu::runDialog(QFileDialog& dialog)
{
    dialog.setOption(QFileDialog::DontUseNativeDialog); // which takes no box
    auto* box = new QCheckBox(tr("Fewest &tools"), &dialog);
    box->setObjectName("fewestToolsCheckBox");
    box->setToolTip(tr("Holes share bits within their tolerances."));
    box->setChecked(mWithFewestTools);
    dialog.layout()->addWidget(box);
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    mWithFewestTools = isAccepted ? box->isChecked() : mWithFewestTools;
    return isAccepted;
}

void ExportMenu::write(const Kind& kind, const QString& path)
{
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // the dialog before goes
    const DrillPlan* shown = current();
    if (!shown) {
        return;
    }
    QProgressDialog progress(tr("Writing %1").arg(path), tr("Cancel"), 0, 0, parentWidget());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(longWriting);
    try {
        const DrillPlan plan = mWithFewestTools // the window lives on meanwhile
            ? mLive.withFewestTools().value_or(*shown)
            : *shown;
        FileSet files;
        kind.write(plan, path, files, [&progress](qint64 done, qint64 total) {
            progress.setMaximum(int(total));
            progress.setValue(int(done));
            return !progress.wasCanceled();
        });
        progress.reset();
        const QStringList stale =
            QFileInfo(path).isDir() ? stalePrograms(plan, path) : QStringList();
        if (QFileInfo(path).isDir() && !mayOverwrite(path, files)) {
            throw BoardCancelled();
        }
        const bool removes = mayRemove(path, stale);
        files.commit();
        for (const QString& file : removes ? stale : QStringList()) {
            QFile::remove(file);
        }
        if (!kind.key.isEmpty()) {
            QSettings().setValue(kind.key, QFileInfo(files.paths().value(0)).absolutePath());
        }
        emit exported((QStringList(writtenText(plan, files)) + files.notes()).join("; "));
    } catch (const BoardCancelled&) {
        emit exported(tr("Export cancelled: nothing was written to %1").arg(path));
    } catch (const std::exception& error) {
        progress.reset();
        emit failed(QString::fromUtf8(error.what()));
    }
}

BitsMenu::BitsMenu(const QString& dataDir, std::function<bool(const std::function<void()>&)> change,
    QWidget* parent)
    : QMenu(tr("Drill &Bits"), parent)
    , mDataDir(dataDir)
    , mChange(std::move(change))
{
    addAction(tr("&Import..."), this, &BitsMenu::importBits);
    addAction(tr("&Export..."), this, &BitsMenu::exportBits);
    QMenu* ready = addMenu(tr("&Ready Sets"));
    for (const ReadySet& set : readySets()) {
        ready->addAction(QApplication::translate("ReadySet", set.name), this,
            [this, key = QLatin1String(set.key)] {
                attempt([&] { replace(QStringLiteral("ready:") + key); });
            });
    }
}

void BitsMenu::importBits()
{
    const QString path = QFileDialog::getOpenFileName(parentWidget(), tr("Import Drill Bits"),
        QString(), tr("Comma-separated values (*.csv);;All files (*)"));
    if (!path.isEmpty()) {
        attempt([&] { replace(path); });
    }
}

void BitsMenu::replace(const QString& name)
{
    const DrillBits bits = readBits(name);
    const qsizetype former = savedBits(mDataDir).size();
    const QString lines =
        (doubtsAbout(bits) + QStringList(tr("The current bits are kept as a backup."))).join('\n');
    if (ask(tr("%n bit(s) will replace the table of bits.", "", int(bits.size())),
            tr("The table has %n bit(s) now.", "", int(former)) + '\n' + lines,
            {tr("Replace"), tr("Cancel")})
            == 0
        && mChange([&] { replaceBits(mDataDir, bits); })) {
        emit done(tr("%n bit(s) imported", "", int(bits.size())));
    }
}

void BitsMenu::exportBits()
{
    QFileDialog dialog(
        parentWidget(), tr("Export Drill Bits"), QString(), tr("Comma-separated values (*.csv)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("csv");
    dialog.selectFile("drill-bits.csv");
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    attempt([&] {
        const QString path = dialog.selectedFiles().value(0);
        const QString error = writeFile(path, bitsToCsv(savedBits(mDataDir)));
        if (!error.isEmpty()) {
            throw BitsError(QStringLiteral("%1: %2").arg(path, error));
        }
        emit done(tr("Drill bits exported, as they were saved last: %1").arg(path));
    });
}

} // namespace brox
