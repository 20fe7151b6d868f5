// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QProcess>
#include <QStringEncoder>

#include <optional>
#include <unistd.h>

namespace {

/** One of the two files. An entry is a model or a bit. */
struct Kind
{
    const char* file;
    const char* root;
    const char* entry;
    const char* source;
    const char* table;
    const char* load; ///< the button or action
    std::vector<const char*> edit;
    const char* save;
    QByteArray edited; ///< what is then in the file
};

const Kind kinds[] = {
    {"brox.xml", "DrillToolModels", "<DrillToolModel name=\"new\"/>", "brox_viewer",
        "broxModelTableWidget", "loadToolButton", {"newToolButton", "useBitFileCheckBox"},
        "saveToolButton", "use_bit_file=\"no\""},
    {"brox_drill_bits.xml", "DrillSizeTable", "<Drill designation=\"new\" millimeters=\"0.7\"/>",
        "brox_bits_table", "drillBitsTableWidget", "actionOpen", {"actionAdd_Size"}, "actionSave",
        "designation=\"\""},
};

/** Why a file is refused: the condition of the report. */
constexpr char malformed[] = "setContentStatus == true";
constexpr char foreign[] = "mainElement.tagName().compare(\"ROOT\", Qt::CaseInsensitive) == 0";
constexpr char unreadable[] = "file.open(QFile::ReadOnly | QFile::Text)";

/** What a file holds: ROOT, ENTRY and their small letters stand for those of its kind. */
struct Content
{
    const char* name;
    QByteArray text;
    const char* refusal; ///< null: the file is read
    int entries = 1; ///< that are then there
    std::optional<QStringConverter::Encoding> encoding = {};
};

QByteArray inside(const QByteArray& inner)
{
    return "<ROOT>" + inner + "</ROOT>";
}

QByteArray nested(int levels)
{
    return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
}

const std::vector<Content> contents = {
    {"zero bytes", "", malformed},
    {"cut off", inside("ENTRY").chopped(1), malformed},
    {"wrong root", "<a/>", foreign},
    {"root of another case", "<root>ENTRY</root>", nullptr},
    {"entry of another case", inside("entry"), nullptr, 0},
    {"UTF-16 LE", inside("ENTRY"), nullptr, 1, QStringConverter::Utf16LE},
    {"Latin-1", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + inside("<a b=\"\xe9\"/>ENTRY"),
        nullptr},
    {"deep", inside(nested(200'000)), malformed},
    {"deep in no other's way", inside(nested(900) + "ENTRY"), nullptr},
};

QByteArray forKind(QByteArray text, const Kind& kind)
{
    return text.replace("ROOT", kind.root)
        .replace("ENTRY", kind.entry)
        .replace("root", QByteArray(kind.root).toLower())
        .replace("entry", QByteArray(kind.entry).toLower());
}

enum class Saving
{
    Writes,
    IsLost, ///< counts as saved all the same: only the log says so
    IsRefused ///< all stays unsaved
};

/** Where a file should be: what is in its way, and what then comes of reading and of saving. */
struct Place
{
    const char* name;
    const char* make; ///< shell command
    const char* refusal; ///< of reading; null: there is nothing to be read
    Saving saving;
    bool hasDataFolder = true;
};

const std::vector<Place> places = {
    {"no file", "", nullptr, Saving::Writes},
    {"no folder", "rm -r $FOLDER", nullptr, Saving::Writes},
    {"dangling link", "ln -s none $FILE", nullptr, Saving::Writes},
    {"link to itself", "ln -s $FILE $FILE", nullptr, Saving::IsLost},
    {"directory", "mkdir $FILE", unreadable, Saving::IsLost},
    {"no rights", "touch $FILE && chmod 0 $FILE", unreadable, Saving::IsLost},
    {"folder without rights", "chmod 500 $FOLDER", nullptr, Saving::IsLost},
    {"file in the folder's place", "rm -r $FOLDER && touch $FOLDER", nullptr, Saving::IsRefused},
    {"no data folder", "", nullptr, Saving::IsRefused, false},
};

void shell(const Kind& kind, JobHost& host, const char* command)
{
    qputenv("FOLDER", host.path(".").toUtf8().chopped(2));
    qputenv("FILE", host.path(kind.file).toUtf8());
    QCOMPARE(QProcess::execute("sh", {"-c", command}), 0);
}

/** The names of the entries that a table shows; a row that is none has no name. */
QStringList namesIn(JobHost& host, const Kind& kind)
{
    QStringList names = columnTexts(host.table(kind.table), 0);
    names.removeAll("-");
    return names;
}

QByteArray bitFor(JobHost& host)
{
    return host.drill("A", 196000, 4000, 4000).bit;
}

/** Nothing is logged of a file that is read; a refusal is a report, a message and a sound. */
void checkLog(const JobHost& host, const Kind& kind, const char* refusal)
{
    QCOMPARE(host.log.size(), refusal ? 2 : 0);
    if (refusal) {
        QCOMPARE(
            host.log[0], QString("INTERNAL|(%1) at %2").arg(forKind(refusal, kind), kind.source));
        QVERIFY(host.log[1].startsWith("ERROR|"));
        QVERIFY(host.log[1].contains(host.path(kind.file)));
    }
}

} // namespace

/** Each test goes for both files. */
class TestFiles : public QObject
{
    Q_OBJECT

private slots:
    void content_data() { addRows(contents); }

    /** Loads a file into a viewer that has models and bits, and into a new viewer. */
    void content()
    {
        QFETCH(Content, data);
        for (const Kind& kind : kinds) {
            JobHost host;
            const QStringList names = namesIn(host, kind);
            QCOMPARE(bitFor(host), QByteArray("T1"));
            QByteArray bytes = forKind(data.text, kind);
            if (data.encoding) {
                QStringEncoder encoder(*data.encoding, QStringConverter::Flag::WriteBom);
                bytes = encoder(QString(bytes));
            }
            host.write(kind.file, bytes);
            click(host.viewer(), kind.load);
            checkLog(host, kind, data.refusal);
            QCOMPARE(namesIn(host, kind), data.refusal ? names : QStringList(data.entries, "new"));
            if (data.refusal) {
                // A foreign root empties the lookup of bits, but not the table.
                const bool isFound = &kind == &kinds[0] || data.refusal != foreign;
                QCOMPARE(bitFor(host), QByteArray(isFound ? "T1" : ""));
            }
            host.endViewer();
            host.log.clear();
            QCOMPARE(namesIn(host, kind), QStringList(data.refusal ? 0 : data.entries, "new"));
            checkLog(host, kind, data.refusal);
            auto* noModels = child<QWidget>(host.viewer(), "noModelsMessageFrame");
            QCOMPARE(noModels->isHidden(), !data.refusal || &kind != &kinds[0]);
        }
    }

    void place_data() { addRows(places); }

    void place()
    {
        QFETCH(Place, data);
        if (geteuid() == 0 && QByteArray(data.make).contains("chmod")) {
            QSKIP("root may do everything");
        }
        for (const Kind& kind : kinds) {
            JobHost host;
            shell(kind, host, "rm $FILE");
            shell(kind, host, data.make);
            if (!data.hasDataFolder) {
                standin_set_data_dir(nullptr);
            }
            host.log.clear();
            QCOMPARE(namesIn(host, kind), QStringList());
            checkLog(host, kind, data.refusal);

            for (const char* name : kind.edit) {
                click(host.viewer(), name);
            }
            host.log.clear();
            click(host.viewer(), kind.save);
            const bool isLost = data.saving == Saving::IsLost;
            QCOMPARE(host.log.join('\n').left(6), QString(isLost ? "ERROR|" : ""));
            const bool isUnsaved = &kind == &kinds[0]
                ? hasChanges(host.viewer())
                : host.table(kind.table)->window()->windowTitle().endsWith('*');
            QCOMPARE(isUnsaved, data.saving == Saving::IsRefused);
            const bool isWritten = data.saving == Saving::Writes;
            QCOMPARE(host.read(kind.file).contains(kind.edited), isWritten);
            if (isWritten) {
                QFile::remove(host.path(kind.file));
                click(host.viewer(), kind.save); // nothing has changed since
                QVERIFY(!QFile::exists(host.path(kind.file)));
            }
            shell(kind, host, "chmod 700 $FOLDER || true"); // for the clearing up
        }
    }

    /** A write that fails after the file was opened is reported as well. */
    void fullDisk()
    {
        for (const Kind& kind : kinds) {
            JobHost host;
            for (const char* name : kind.edit) {
                click(host.viewer(), name);
            }
            shell(kind, host, "ln -sf /dev/full $FILE");
            host.log.clear();
            click(host.viewer(), kind.save);
            QCOMPARE(host.log.filter("ERROR|" + host.path(kind.file)).size(), 1);
        }
    }
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
