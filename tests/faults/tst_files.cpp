// SPDX-License-Identifier: MIT
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QStringEncoder>
#include <unistd.h>

#include "fixture.h"

namespace {

constexpr int deep = 200'000;
constexpr qint64 timeLimit = 10'000; // ms; the slowest takes a small part of it

/** One of the two files. An entry is a model or a bit. */
struct Kind
{
    const char* file;
    QByteArray root;
    QByteArray entry;
    const char* source;
    const char* load; ///< the button or action that loads
    const char* table;
};

const Kind kinds[] = {
    {"brox.xml", "DrillToolModels", "<DrillToolModel name=\"new\"/>", "brox_viewer",
        "loadToolButton", "broxModelTableWidget"},
    {"brox_drill_bits.xml", "DrillSizeTable", "<Drill designation=\"new\" millimeters=\"0.7\"/>",
        "brox_bits_table", "actionOpen", "drillBitsTableWidget"},
};

QByteArray document(const Kind& kind, const QByteArray& inner)
{
    return "<" + kind.root + ">" + inner + "</" + kind.root + ">";
}

QByteArray nested(const QByteArray& before = "<a>", const QByteArray& after = "</a>")
{
    return before.repeated(deep) + after.repeated(deep);
}

QByteArray encoded(QStringConverter::Encoding encoding, const QByteArray& utf8)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder(QString::fromUtf8(utf8));
}

QByteArray bomb(const Kind& kind, const QByteArray& leaf, const QByteArray& use)
{
    QByteArray entities = "<!ENTITY e0 '" + leaf + "'>";
    for (int i = 1; i <= 9; ++i) {
        entities += "<!ENTITY e" + QByteArray::number(i) + " '"
            + QByteArray("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
    }
    return "<!DOCTYPE r [" + entities + "]>" + document(kind, use + kind.entry);
}

/** Why a file is refused: the condition of the report. */
constexpr char malformed[] = "setContentStatus == true";
constexpr char foreign[] = "mainElement.tagName().compare(\"%1\", Qt::CaseInsensitive) == 0";
constexpr char unreadable[] = "file.open(QFile::ReadOnly | QFile::Text)";

struct Content
{
    const char* name;
    std::function<QByteArray(const Kind&)> make;
    const char* refusal; ///< null: the file is read
    int entries = 1; ///< that are then there
};

const Content contents[] = {
    {"zero bytes", [](const Kind&) { return QByteArray(); }, malformed},
    {"binary", [](const Kind&) { return QByteArray("\x7f\0ELF\xff\xfe\x01", 8); }, malformed},
    {"wrong root", [](const Kind&) { return QByteArray("<a/>"); }, foreign},
    {"root of another case",
        [](const Kind& kind) {
            return "<" + kind.root.toLower() + ">" + kind.entry + "</" + kind.root.toLower() + ">";
        },
        nullptr},
    {"entry of another case", [](const Kind& kind) { return document(kind, kind.entry.toLower()); },
        nullptr, 0},
    {"doubled attribute",
        [](const Kind& kind) {
            return document(kind, QByteArray(kind.entry).replace("/>", " a=\"1\" a=\"2\"/>"));
        },
        malformed},
    {"two roots", [](const Kind& kind) { return document(kind, {}) + document(kind, {}); },
        malformed},
    {"entity bomb in text", [](const Kind& kind) { return bomb(kind, "x", "&e9;"); }, malformed},
    {"entity bomb in an attribute",
        [](const Kind& kind) { return bomb(kind, "x", "<a b=\"&e9;\"/>"); }, malformed},
    {"entity bomb of elements", [](const Kind& kind) { return bomb(kind, "<a/>", "&e9;"); },
        malformed},
    {"entity of itself",
        [](const Kind& kind) {
            return "<!DOCTYPE r [<!ENTITY a '&a;'>]>" + document(kind, "&a;" + kind.entry);
        },
        malformed},
    {"entity of a file",
        [](const Kind& kind) {
            return "<!DOCTYPE r [<!ENTITY a SYSTEM 'file:///etc/passwd'>]>"
                + document(kind, "&a;" + kind.entry);
        },
        nullptr},
    {"UTF-8 with mark",
        [](const Kind& kind) { return "\xef\xbb\xbf" + document(kind, kind.entry); }, nullptr},
    {"UTF-16 LE",
        [](const Kind& kind) {
            return encoded(QStringConverter::Utf16LE, document(kind, kind.entry));
        },
        nullptr},
    {"UTF-16 BE",
        [](const Kind& kind) {
            return encoded(QStringConverter::Utf16BE, document(kind, kind.entry));
        },
        nullptr},
    {"Latin-1",
        [](const Kind& kind) {
            return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
                + document(kind, QByteArray(kind.entry).replace("/>", " a=\"\xe9\"/>"));
        },
        nullptr},
    {"Latin-1 undeclared",
        [](const Kind& kind) {
            return document(kind, QByteArray(kind.entry).replace("/>", " a=\"\xe9\"/>"));
        },
        malformed},
    {"unknown encoding",
        [](const Kind& kind) {
            return "<?xml version=\"1.0\" encoding=\"x-none\"?>" + document(kind, kind.entry);
        },
        malformed},
    {"deep", [](const Kind& kind) { return document(kind, nested()); }, malformed},
    {"deep, never closed",
        [](const Kind& kind) { return document(kind, QByteArray("<a>").repeated(deep)); },
        malformed},
    {"deep in UTF-16",
        [](const Kind& kind) {
            return encoded(QStringConverter::Utf16LE, document(kind, nested()));
        },
        malformed},
    {"deep in declared Latin-1",
        [](const Kind& kind) {
            return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + document(kind, nested());
        },
        malformed},
    {"deep in an encoding that is declared late",
        [](const Kind& kind) {
            return "<?xml version=\"1.0\"" + QByteArray(600, ' ') + " encoding=\"UTF-16LE\"?>"
                + encoded(QStringConverter::Utf16LE, document(kind, nested())).mid(2);
        },
        malformed},
    {"deep in an encoding unlike ASCII",
        [](const Kind& kind) {
            QByteArray inner = nested();
            for (char& character : inner) {
                character = character == '<' ? '\x4c'
                    : character == '>'       ? '\x6e'
                    : character == '/'       ? '\x61'
                                             : '\x81'; // "a"
            }
            return "<?xml version=\"1.0\"" + QByteArray(600, ' ') + " encoding=\"IBM037\"?>" + inner
                + kind.root;
        },
        malformed},
    {"deep with comments that close",
        [](const Kind& kind) { return document(kind, nested("<a><!-- </a> -->")); }, malformed},
    {"deep with sections that close",
        [](const Kind& kind) { return document(kind, nested("<a><![CDATA[</a>]]>")); }, malformed},
    {"deep with values that close",
        [](const Kind& kind) { return document(kind, nested("<a b=\"/>\">")); }, malformed},
    {"deep by entities",
        [](const Kind& kind) {
            const QByteArray open("<a>");
            return "<!DOCTYPE r [<!ENTITY o '" + open.repeated(100) + "'>]>"
                + document(kind, QByteArray("&o;").repeated(deep / 100));
        },
        malformed},
    {"deep by one entity",
        [](const Kind& kind) {
            return "<!DOCTYPE r [<!ENTITY o '" + nested() + "'>]>" + document(kind, "&o;");
        },
        malformed},
    {"tags in a comment",
        [](const Kind& kind) {
            return document(kind, "<!--" + QByteArray("<a>").repeated(deep) + "-->" + kind.entry);
        },
        nullptr},
    {"tags in a section",
        [](const Kind& kind) {
            return document(
                kind, "<![CDATA[" + QByteArray("<a>").repeated(deep) + "]]>" + kind.entry);
        },
        nullptr},
    {"tags in an instruction",
        [](const Kind& kind) {
            return document(kind, "<?p " + QByteArray("<a>").repeated(deep) + "?>" + kind.entry);
        },
        nullptr},
    {"deep in no other's way",
        [](const Kind& kind) {
            const QByteArray open("<a>");
            const QByteArray close("</a>");
            return document(kind, open.repeated(900) + close.repeated(900) + kind.entry);
        },
        nullptr},
};

/** The names of the entries that a table shows; a row that is none has no name. */
QStringList namesIn(JobHost& host, const Kind& kind)
{
    QStringList names = columnTexts(host.table(kind.table), 0);
    names.removeAll("-");
    return names;
}

void load(JobHost& host, const Kind& kind)
{
    if (&kind == &kinds[0]) {
        click(host.viewer(), kind.load);
    } else {
        click(host.viewer(), kind.load);
    }
}

QStringList refusalOf(const Kind& kind, const char* refusal)
{
    const QString condition = QString(refusal).replace("%1", kind.root);
    return {QString("INTERNAL|(%1) at %2").arg(condition, kind.source), "ERROR|"};
}

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

private slots:
    void content_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("content");
        for (int kind = 0; kind < int(std::size(kinds)); ++kind) {
            for (int i = 0; i < int(std::size(contents)); ++i) {
                QTest::addRow("%s: %s", kinds[kind].file, contents[i].name) << kind << i;
            }
        }
    }

    /** Loads a file into a viewer that has models and bits, and into a new viewer. */
    void content()
    {
        QFETCH(int, kind);
        QFETCH(int, content);
        const Kind& of = kinds[kind];
        const Content& file = contents[content];
        JobHost host;
        const QStringList names = namesIn(host, of);
        const Host::Drill drill = drillSize(host);
        QCOMPARE(drill.bit, QByteArray("T1"));

        host.write(of.file, file.make(of));
        host.log.clear();
        QElapsedTimer time;
        time.start();
        load(host, of);
        checkLog(host, of, file.refusal);
        if (!file.refusal) {
            QCOMPARE(namesIn(host, of), QStringList(file.entries, "new"));
        } else {
            QCOMPARE(namesIn(host, of), names);
            // A foreign root empties the lookup, but not the table.
            const bool isFound = kind == 0 || file.refusal != foreign;
            QCOMPARE(drillSize(host).bit, isFound ? drill.bit : QByteArray());
        }

        host.endViewer();
        host.log.clear();
        QCOMPARE(namesIn(host, of), QStringList(file.refusal ? 0 : file.entries, "new"));
        checkLog(host, of, file.refusal);
        QVERIFY(isSlowRun() || time.elapsed() < timeLimit);
    }

    /** A file that breaks off anywhere is refused, and what is in memory stays. */
    void truncated()
    {
        JobHost host;
        for (const Kind& kind : kinds) {
            const QStringList names = namesIn(host, kind);
            const QByteArray whole = document(kind, "<!-- c -->" + kind.entry);
            for (qsizetype size = 0; size < whole.size(); ++size) {
                host.write(kind.file, whole.left(size));
                host.log.clear();
                load(host, kind);
                checkLog(host, kind, malformed);
                if (QTest::currentTestFailed()) {
                    QFAIL(qPrintable(QString("%1 bytes of %2").arg(size).arg(kind.file)));
                }
                QCOMPARE(namesIn(host, kind), names);
            }
        }
        QCOMPARE(drillSize(host).bit, QByteArray("T1"));
    }

    void placeOfReading_data()
    {
        QTest::addColumn<std::function<void(const QString&)>>("make");
        QTest::addColumn<QString>("refusal");
        const auto row = [](const char* name, std::function<void(const QString&)> make,
                             const char* refusal) { QTest::newRow(name) << make << refusal; };
        row(
            "missing", [](const QString&) {}, "");
        row(
            "directory", [](const QString& path) { QDir().mkpath(path); }, unreadable);
        row(
            "no rights",
            [](const QString& path) {
                QFile file(path);
                QVERIFY(file.open(QFile::WriteOnly));
                QVERIFY(file.setPermissions({}));
            },
            unreadable);
        row(
            "dangling link", [](const QString& path) { QFile::link("none", path); }, "");
        row(
            "link to itself", [](const QString& path) { QFile::link(path, path); }, "");
    }

    void placeOfReading()
    {
        QFETCH(std::function<void(const QString&)>, make);
        QFETCH(QString, refusal);
        if (geteuid() == 0 && QByteArray(QTest::currentDataTag()) == "no rights") {
            QSKIP("root may read everything");
        }
        for (const Kind& kind : kinds) {
            JobHost host;
            QFile::remove(host.path(kind.file));
            make(host.path(kind.file));
            host.log.clear();
            QVERIFY(namesIn(host, kind).isEmpty());
            if (refusal.isEmpty()) {
                QVERIFY(host.log.isEmpty());
            } else {
                checkLog(host, kind, qPrintable(refusal));
            }
            QDir(host.path(kind.file)).removeRecursively(); // not to be in the way of others
        }
    }

    void placeOfWriting_data()
    {
        QTest::addColumn<std::function<void(const QString&, const QString&)>>("make");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<bool>("logged");
        using Make = std::function<void(const QString&, const QString&)>;
        const auto row = [](const char* name, Make make, bool saved, bool logged) {
            QTest::newRow(name) << make << saved << logged;
        };
        row(
            "no folder",
            [](const QString& folder, const QString&) { QDir(folder).removeRecursively(); }, true,
            false);
        row(
            "file in the folder's place",
            [](const QString& folder, const QString&) {
                QDir(folder).removeRecursively();
                QFile file(folder);
                QVERIFY(file.open(QFile::WriteOnly));
            },
            false, false);
        row(
            "no data folder", [](const QString&, const QString&) { standin_set_data_dir(nullptr); },
            false, false);
        row(
            "path too long",
            [](const QString&, const QString&) {
                standin_set_data_dir(QByteArray("/tmp/").append(520, 'x').constData());
            },
            false, false);
        // What could not be opened counts as saved all the same: only the log tells.
        row(
            "directory in the file's place",
            [](const QString&, const QString& file) {
                QFile::remove(file);
                QDir().mkpath(file);
            },
            true, true);
        row(
            "folder without rights",
            [](const QString& folder, const QString& file) {
                QFile::remove(file);
                QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
            },
            true, true);
    }

    void placeOfWriting()
    {
        using Make = std::function<void(const QString&, const QString&)>;
        QFETCH(Make, make);
        QFETCH(bool, saved);
        QFETCH(bool, logged);
        if (geteuid() == 0 && QByteArray(QTest::currentDataTag()) == "folder without rights") {
            QSKIP("root may write everywhere");
        }
        for (const Kind& kind : kinds) {
            JobHost host;
            host.viewer();
            const bool ofModels = &kind == &kinds[0];
            ofModels ? host.set("amountsTableWidget", 0, 0, 25.0)
                     : click(host.viewer(), "actionAdd_Size");
            make(QFileInfo(host.path(kind.file)).path(), host.path(kind.file));
            host.log.clear();
            ofModels ? click(host.viewer(), "saveToolButton") : click(host.viewer(), "actionSave");
            const QString expected = logged ? "ERROR|" : QString();
            QCOMPARE(host.log.join(' ').left(6), expected);
            const bool unsaved = ofModels
                ? child<QWidget>(host.viewer(), "recalcPushButton")->isEnabled()
                : host.table(kind.table)->window()->windowTitle().endsWith('*');
            QCOMPARE(!unsaved, saved);
            const QByteArray edit = ofModels ? "amount=\"10000\"" : "designation=\"\"";
            QCOMPARE(host.read(kind.file).contains(edit), saved && !logged);
            QFile::setPermissions(host.path({}), QFile::Permissions(0x7700));
            QDir(host.path({})).removeRecursively();
            QFile::remove(host.path({}).chopped(1));
        }
    }

    /** The file is read in a time that grows with its size; asked for by BROX_LONG_TESTS. */
    void large_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("count");
        QTest::newRow("50 MB of models") << 0 << 1'700'000;
        QTest::newRow("a million bits") << 1 << 1'000'000;
    }

    void large()
    {
        QFETCH(int, kind);
        QFETCH(int, count);
        const bool isLong = qEnvironmentVariableIsSet("BROX_LONG_TESTS");
        const int entries = isLong ? count : isSlowRun() ? count / 500 : count / 50;
        JobHost host;
        host.write(kinds[kind].file, document(kinds[kind], kinds[kind].entry.repeated(entries)));
        QElapsedTimer time;
        time.start();
        QCOMPARE(host.table(kinds[kind].table)->rowCount(), entries);
        qInfo("%d entries in %lld ms", entries, time.elapsed());
        QVERIFY(isSlowRun() || time.elapsed() < (isLong ? 120'000 : timeLimit));
    }

private:
    static Host::Drill drillSize(JobHost& host)
    {
        Host::Drill drill = {};
        char bit[8] = "unread";
        host.viewer();
        drill.status =
            brox__proxy_calc_drill_size(host.step, "A", 0, 0, 4000, 4000, 196000, &drill.size, bit);
        drill.bit = bit;
        return drill;
    }

    /** Nothing is logged of a file that is read; a refusal is a report and a message. */
    static void checkLog(const JobHost& host, const Kind& kind, const char* refusal)
    {
        if (!refusal) {
            QCOMPARE(host.log, QStringList());
            return;
        }
        const QStringList expected = refusalOf(kind, refusal);
        QCOMPARE(host.log.size(), 2);
        QCOMPARE(host.log[0], expected[0]);
        QVERIFY(host.log[1].startsWith(expected[1]));
        QVERIFY(host.log[1].contains(host.path(kind.file)));
    }
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
