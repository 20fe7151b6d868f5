// SPDX-License-Identifier: MIT
#include "boxes.h"
#include "data_file.h"
#include "data_start.h"
#include "host_session.h"
#include "main_window.h"

#include <QAction>
#include <QApplication>
#include <QDirIterator>
#include <QProcess>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <cstdio>
#include <unistd.h>

using namespace brox;

namespace {

/** A board of empty steps. */
Board boardOf(const QStringList& steps)
{
    Board board;
    board.job = "job";
    for (const QString& step : steps) {
        board.steps.emplace_back().name = step;
    }
    return board;
}

/** Changes the first model or bit of a step. */
void edit(QWidget* viewer, DataFile::Kind kind, const QString& name)
{
    const bool isModel = kind == DataFile::Kind::Models;
    auto* table =
        viewer->findChild<QTableWidget*>(isModel ? "broxModelTableWidget" : "drillBitsTableWidget");
    table->item(0, 0)->setText(name);
}

void save(QWidget* viewer, DataFile::Kind kind)
{
    if (kind == DataFile::Kind::Models) {
        viewer->findChild<QToolButton*>("saveToolButton")->click();
    } else {
        viewer->findChild<QAction*>("actionSave")->trigger();
    }
}

/** What befalls a data folder between the opening of a step and a save. */
struct Accident
{
    const char* name;
    const char* command; ///< for a shell; $FILE is the file, and the data folder is where it runs
    const char* question; ///< of the first box that comes with the save; empty: none comes
    QStringList answers;
    bool isSaved;
    bool fillsTemporary = false; ///< the disk of temporary files is that of the data
};

const Accident accidents[] = {
    {"none", "", "", {}, true},
    {"the same again", "touch $FILE", "", {}, true},
    {"gone", "rm $FILE", "", {}, true},
    {"broken, kept", "echo '<a' >$FILE", "can't be read", {"Enter"}, false},
    {"broken, overwritten", "echo '<a' >$FILE", "can't be read", {"Overwrite"}, true},
    {"cut off, kept", "truncate -s 400 $FILE", "can't be read", {"Keep"}, false},
    {"another root", "echo '<a/>' >$FILE", "can't be read", {"Overwrite"}, true},
    {"changed meanwhile, kept", "echo >>$FILE", "has changed since", {"Escape"}, false},
    {"changed meanwhile, overwritten", "echo >>$FILE", "has changed since", {"Overwrite"}, true},
    {"no rights to read", "chmod 0 $FILE", "can't be read", {"Overwrite"}, true},
    {"no rights to write", "chmod 400 $FILE", "could not be saved", {"Close"}, false},
    {"a folder instead", "mv $FILE old && mkdir $FILE && mv old $FILE/x", "can't be read",
        {"Overwrite"}, true},
    {"a pipe instead", "rm $FILE && mkfifo $FILE", "can't be read", {"Overwrite"}, true},
    {"another workbench is at it",
        "flock saving.lock sleep 5 >/dev/null 2>&1 & while flock -n saving.lock true; do :; done",
        "is saving", {"Cancel"}, false},
    {"no place for backups, broken off", "touch backups", "No backup", {"Cancel"}, false},
    {"no place for backups, saved", "touch backups", "No backup", {"Save"}, true},
    {"no rights at all", "chmod 500 . brox", "No backup", {"Save"}, true},
    {"full disk", "cat /dev/zero >fill", "No backup", {"Save", "Save Again", "Save", "Close"},
        false},
    {"full disk of temporary files", "cat /dev/zero >fill", "No backup", {"Save", "Close"}, false,
        true},
};

} // namespace

Q_DECLARE_METATYPE(Accident)

/** Accidents of a data folder: whatever was saved before is there afterwards, in the file or among
 *  the backups, and what could not be saved counts as unsaved. */
class DataTest : public QObject
{
    Q_OBJECT

private:
    static int shell(const QString& command, const QString& folder, const DataFile& file)
    {
        qputenv("FILE", file.path().toUtf8());
        QProcess process;
        process.setWorkingDirectory(folder);
        process.start("sh", {"-c", command});
        process.waitForFinished();
        return process.exitCode();
    }

    /** Whether a content is in some file of the folder. */
    static bool holds(const QString& folder, const QByteArray& content)
    {
        QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && file.readAll() == content) {
                return true;
            }
        }
        return false;
    }

private slots:
    void accident_data()
    {
        QTest::addColumn<Accident>("accident");
        for (const Accident& accident : accidents) {
            QTest::newRow(accident.name) << accident;
        }
    }

    void accident()
    {
        QFETCH(const Accident, accident);
        const bool isFull = QByteArray(accident.command).contains("fill");
        if (!isFull && geteuid() == 0 && QByteArray(accident.command).contains("chmod")) {
            QSKIP("root may do everything");
        }
        for (DataFile::Kind kind : DataFile::moduleKinds) {
            const QTemporaryDir folder;
            const DataFile file(folder.path(), kind);
            if (isFull && shell("mount -t tmpfs -o size=64k tmpfs .", folder.path(), file) != 0) {
                QSKIP("a small disk can't be mounted");
            }
            const auto unmount = qScopeGuard([&] {
                shell(
                    isFull ? "cd / && umount -l $OLDPWD" : "chmod -R u+rwX .", folder.path(), file);
            });
            DataStart::fill(folder.path());
            if (accident.fillsTemporary) {
                qputenv("TMPDIR", folder.path().toUtf8());
            }
            const auto otherDisk = qScopeGuard([] { qunsetenv("TMPDIR"); });
            HostSession session(folder.path());
            MainWindow window(session);
            window.show();
            window.openBoard({SAMPLES_DIR "/sensor.xml"});
            QWidget* viewer = session.viewer(window.job().board->mainStep);
            const QByteArray before = file.read().bytes;
            QVERIFY(!before.isEmpty());
            shell(accident.command, folder.path(), file);
            const DataFile::Content harmed = file.read();

            edit(viewer, kind, "Gold");
            QVERIFY(window.isWindowModified());
            Boxes boxes(accident.answers);
            save(viewer, kind);
            QVERIFY2(boxes.areAnswered(), qPrintable(boxes.seen.join('\n')));
            QVERIFY2(
                boxes.seen.value(0).contains(accident.question), qPrintable(boxes.seen.join('\n')));

            const DataFile::Content after = file.read();
            QCOMPARE(after.bytes.contains("Gold"), accident.isSaved);
            QCOMPARE(window.isWindowModified(), !accident.isSaved);
            QVERIFY(!accident.isSaved || after.fault.isEmpty());
            QVERIFY(accident.isSaved || after.bytes == harmed.bytes);
            const bool hasBackup = !accident.isSaved || !accident.answers.contains("Save");
            QVERIFY(!hasBackup || harmed.bytes.isNull() || holds(folder.path(), harmed.bytes));
            boxes.add({"Cancel"});
            QCOMPARE(window.close(), accident.isSaved);
        }
    }

    /** Ten backups, each once; the one that was current last is offered at the next start, also
     *  where a clock was ahead. Files of the shop's own are left alone. */
    void backups()
    {
        for (DataFile::Kind kind : DataFile::kinds) {
            const QTemporaryDir folder;
            const DataFile file(folder.path(), kind);
            DataStart::fill(folder.path());
            const QString stem = folder.filePath("backups/") + QFileInfo(file.path()).baseName();
            const QString end = '.' + QFileInfo(file.path()).suffix();
            const QStringList own{file.path() + ".backup", file.path() + ".251125",
                stem + "-mine" + end, stem + "-20251340T000000.000Z" + end};
            QStringList others = own;
            for (int day = 10; day < 20; ++day) {
                others << stem + QString("-299901%1T000000.000Z").arg(day) + end;
            }
            QDir(folder.path()).mkdir("backups");
            for (const QString& name : others) {
                QVERIFY(QFile::copy(file.path(), name));
            }
            HostSession session(folder.path());
            session.setSteps(Job(boardOf({"step"})).drafts());
            for (int i = 0; i < 24; ++i) {
                if (kind == DataFile::Kind::Rules) {
                    ShopRules rules;
                    rules.viasUpTo = i % 12 * sizePerMillimetre;
                    QCOMPARE(Backups(folder.path()).replace(file, rules.toJson()), "");
                } else {
                    edit(session.viewer(0), kind, QString("Gold %1").arg(i % 12));
                    save(session.viewer(0), kind);
                }
            }
            const QByteArray last = file.read().bytes;
            QVERIFY(last.contains(kind == DataFile::Kind::Rules ? " 11" : "Gold 11"));
            QCOMPARE(QDir(folder.filePath("backups")).entryList(QDir::Files).size(), 12);
            QCOMPARE(Backups(folder.path()).all(kind).first().bytes(), last);

            QVERIFY(QFile::resize(file.path(), last.size() / 2));
            const QByteArray broken = file.read().bytes;
            DataStart start(folder.path());
            QVERIFY(start.lock());
            Boxes boxes({"Leave", "Restore"});
            start.repair();
            QCOMPARE(file.read().bytes, broken);
            start.repair();
            QVERIFY(boxes.areAnswered());
            QCOMPARE(file.read().bytes, last);
            QVERIFY(holds(folder.path(), broken));

            boxes.add({"Restore Defaults"});
            QVERIFY(QFile::remove(file.path()) && QDir().mkdir(file.path()));
            start.repair();
            QCOMPARE(file.read().bytes, DataFile::defaults(kind));
            for (const QString& name : own) {
                QVERIFY2(QFileInfo::exists(name), qPrintable(name));
            }

            RestoreDialog dialog(folder.path());
            auto* tree = dialog.findChild<QTreeWidget*>();
            const QTreeWidgetItem* listed = tree->topLevelItem(int(kind));
            QTreeWidgetItem* item = nullptr;
            for (int i = 0; i < listed->childCount(); ++i) {
                const bool isLast = listed->child(i)->text(1) == DataFile::summaryOf(kind, last);
                item = isLast ? listed->child(i) : item;
            }
            QVERIFY(item && listed->child(listed->childCount() - 1)->text(0) == "Defaults");
            tree->setCurrentItem(item);
            dialog.accept();
            QCOMPARE(dialog.kind(), kind);
            QCOMPARE(file.read().bytes, last);

            boxes.add({"Quit"});
            QVERIFY(!DataStart(folder.path()).lock());
        }
    }

    /** The later save of two steps asks before it takes away what the earlier one has saved. */
    void twoSteps()
    {
        for (DataFile::Kind kind : DataFile::moduleKinds) {
            const QTemporaryDir folder;
            DataStart::fill(folder.path());
            HostSession session(folder.path());
            session.setSteps(Job(boardOf({"a", "b"})).drafts());
            for (size_t step : {0, 1}) {
                edit(session.viewer(step), kind, QString("Gold %1").arg(step));
            }
            session.viewer(0)->show();
            Boxes boxes;
            save(session.viewer(0), kind);
            session.viewer(0)->hide();
            session.viewer(1)->show();
            const bool isModels = kind == DataFile::Kind::Models; // bits have windows of their own
            if (isModels) {
                edit(session.viewer(0), kind, "Gold 2");
            }
            boxes.add({"Keep"});
            save(session.viewer(1), kind);
            QVERIFY2(boxes.areAnswered(), qPrintable(boxes.seen.join('\n')));
            QVERIFY(session.hasUnsaved(1) && session.hasUnsaved(0) == isModels);
            QVERIFY(DataFile(folder.path(), kind).read().bytes.contains("Gold 0"));
        }
    }

    /** A program that is killed while it saves again and again: what it said was saved is there. */
    void killed()
    {
        for (int moment = 0; moment < 20; ++moment) {
            const QTemporaryDir folder;
            QProcess program;
            program.start(QCoreApplication::applicationFilePath(), {"saver", folder.path()});
            QVERIFY(program.waitForReadyRead());
            QTest::qSleep(moment);
            program.kill();
            QVERIFY(program.waitForFinished());
            const QByteArray last = program.readAll().trimmed().split('\n').last();

            DataStart start(folder.path());
            QVERIFY(start.lock());
            for (const char* part : {"brox", "backups"}) {
                QVERIFY(!QFileInfo::exists(folder.filePath(part) + "/.brox-writing"));
            }
            const DataFile::Content content =
                DataFile(folder.path(), DataFile::Kind::Models).read();
            QCOMPARE(content.fault, "");
            const QByteArray next = QByteArray::number(last.toInt() + 1);
            QVERIFY(content.bytes.contains("\"Gold " + last + '"')
                || content.bytes.contains("\"Gold " + next + '"'));
        }
    }
};

/** Saves models until it is killed, and says how often. */
int saveForEver(const QString& folder)
{
    DataStart::fill(folder);
    HostSession session(folder);
    session.setSteps(Job(boardOf({"step"})).drafts());
    for (int i = 0;; ++i) {
        edit(session.viewer(0), DataFile::Kind::Models, QString("Gold %1").arg(i));
        save(session.viewer(0), DataFile::Kind::Models);
        printf("%d\n", i);
        fflush(stdout);
    }
}

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (app.arguments().value(1) == "saver") {
        return saveForEver(app.arguments().value(2));
    }
    DataTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_data.moc"
