// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QAction>
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QXmlStreamReader>

#include <optional>

namespace {

/** Two bits of one designation and one of its own; microns and mils have the same numbers. */
QByteArray threeBits()
{
    return bitsXml(
        {bitXml("A", "0.1", "0.1"), bitXml("A", "0.2", "0.2", "no"), bitXml("B", "0.3", "0.3")});
}

/** What a bits file holds, an entry for each bit. */
QStringList summary(const QByteArray& xml)
{
    QXmlStreamReader reader(xml);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("DrillSizeTable")) {
        return {"no table"};
    }
    QStringList list;
    while (reader.readNextStartElement()) {
        QStringList values;
        for (const char* name : {"designation", "millimeters", "inches", "approved"}) {
            values.append(reader.attributes().value(name).toString());
        }
        list.append(values.join(' '));
        reader.skipCurrentElement();
    }
    return list;
}

} // namespace

/** The Drill Size Table Editor. */
class TestBitsEditor : public QObject
{
    Q_OBJECT

private slots:
    // Numbers have a point, whatever the user's locale has.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

    void edits_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("metric"); // what a lookup finds, in microns or mils
        QTest::addColumn<QString>("inch");
        const auto row = [](const char* name, const char* steps, const char* metric,
                             const char* inch) {
            QTest::newRow(name) << QString(steps).split(", ") << metric << inch;
        };
        const char* const loaded = "100=A 200=A 300=B";
        row("a new bit enters no index", "add", loaded, loaded);
        row("name of a new bit", "add, name C", "0=C 100=A 200=A 300=B", "0=C 100=A 200=A 300=B");
        row("name, then sizes", "add, name C, microns 400, mils 500", "100=A 200=A 300=B 400=C",
            "100=A 200=A 300=B 500=C");
        row("name, then one size", "add, name C, microns 400", "100=A 200=A 300=B 400=C",
            "0=C 100=A 200=A 300=B");
        row("sizes, then name", "add, microns 400, mils 500",
            "100=A 200=A 300=B 400=", "100=A 200=A 300=B 500=");
        row("name after sizes", "add, microns 400, mils 500, name C", "100=A 200=A 300=B 400=C",
            "100=A 200=A 300=B 500=C");
        row("lowest size of a shared name gives way", "row 200, microns 500", "200=A 300=B 500=A",
            loaded);
        row("lowest size, in mils", "row 200, mils 500", loaded, "200=A 300=B 500=A");
        row("rename writes both, approved or not", "row 200, name C", "100=A 200=C 300=B",
            "100=A 200=C 300=B");
        row("emptied size is 0", "row 300, microns ", "0=B 100=A 200=A", loaded);
        row("size of another bit", "row 300, microns 100", "100=B 200=A", loaded);
        row("uncheck", "row 300, check", "100=A 200=A", "100=A 200=A");
        row("uncheck and check", "row 300, check, check", loaded, loaded);
        row("check of sizes 0", "row 300, microns 0, check, check", "0=B 100=A 200=A", loaded);
        row("delete", "row 300, delete", "100=A 200=A", "100=A 200=A");
        row("delete of an unapproved bit", "row 200, delete", loaded, loaded);
        row("delete without a name", "row 300, name , delete",
            "100=A 200=A 300=", "100=A 200=A 300=");
        row("delete of one of two of a size", "row 300, microns 100, delete", "200=A",
            "100=A 200=A");
    }

    /** Lookups follow each edit at once, though nothing is saved. */
    void edits()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, metric);
        QFETCH(QString, inch);
        open(threeBits());
        QVERIFY(!isMarked());
        for (const QString& step : steps) {
            const QString what = step.section(' ', 0, 0);
            const QString value = step.section(' ', 1);
            if (what == "add") {
                press(Qt::Key_N);
            } else if (what == "row") {
                mTable->setCurrentCell(findRow(mTable, 1, value), 0);
            } else if (what == "check") {
                toggle(mTable->currentRow());
            } else if (what == "delete") {
                press(Qt::Key_X);
            } else {
                const QStringList columns = {"name", "microns", "mils"};
                typeInto(mTable, mTable->currentRow(), int(columns.indexOf(what)), value);
            }
        }
        QCOMPARE(index(400), metric);
        standin_set_units(mHost->step, 0);
        QCOMPARE(index(10160), inch);
        QVERIFY(isMarked());
        QVERIFY(mHost->read("brox_drill_bits.xml") == threeBits());
    }

    void typedNumbers_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("point") << "0.5"
                               << "0.5";
        QTest::newRow("comma and letters are no keys") << "1,e5x"
                                                       << "15";
        QTest::newRow("sign is no key") << "-5"
                                        << "5";
        QTest::newRow("six decimals") << "1.2345678"
                                      << "1.234567";
        QTest::newRow("highest") << "200000"
                                 << "200000";
        QTest::newRow("above the highest") << "200001"
                                           << "20000";
        QTest::newRow("emptied") << ""
                                 << "";
    }

    void typedNumbers()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        open(bitsXml({bitXml("A", "0.1", "0.1")}));
        for (const int column : {1, 2}) {
            typeInto(mTable, 0, column, typed);
            QCOMPARE(cellText(mTable, 0, column).toDouble(), shown.toDouble());
            QCOMPARE(cellText(mTable, 0, column).isEmpty(), shown.isEmpty());
        }
    }

    /** Whatever the table is sorted by, the four cells of a bit stay together. */
    void sorting_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<Qt::SortOrder>("order");
        for (const int column : {0, 1, 2, 3}) {
            QTest::addRow("column %d ascending", column) << column << Qt::AscendingOrder;
            QTest::addRow("column %d descending", column) << column << Qt::DescendingOrder;
        }
    }

    void sorting()
    {
        QFETCH(int, column);
        QFETCH(Qt::SortOrder, order);
        QByteArrayList bits;
        for (const int i : {9, 100, 3, 20, 7, 1, 50, 1000, 30, 8}) {
            bits.append(bitXml(QByteArray::number(1100 - i), QByteArray::number(i / 1000.0),
                QByteArray::number((2000 - i) / 1000.0), i % 2 ? "yes" : "no"));
        }
        open("<DrillSizeTable/>");
        mTable->sortByColumn(column, order);
        mHost->write("other.xml", bitsXml(bits));
        Answers answers;
        answers.addFile(mHost->path("other.xml"));
        child<QAction>(mWindow, "actionOpen")->trigger();
        QVERIFY(areWhole(10, column, order));

        press(Qt::Key_N);
        fillCurrentRow(5);
        QVERIFY(areWhole(11, column, order));
        mTable->setCurrentCell(findRow(mTable, 1, "20"), 0);
        fillCurrentRow(2000);
        QVERIFY(areWhole(11, column, order));
        mTable->setCurrentCell(findRow(mTable, 1, "7"), 0);
        press(Qt::Key_X);
        QCOMPARE(findRow(mTable, 1, "7"), -1);
        QVERIFY(areWhole(10, column, order));
    }

    /** Nodes of a file that are no bits leave rows without cells. */
    void blankRows()
    {
        open("<DrillSizeTable><!-- c --><Drill designation='A' millimeters='0.1' inches='0.1' "
             "approved='yes'/><drill designation='x'/>text<Drill "
             "designation='B'/></DrillSizeTable>");
        QCOMPARE(mTable->rowCount(), 5);
        for (int column = 0; column < 4; ++column) {
            mTable->sortByColumn(column, Qt::DescendingOrder);
            mTable->sortByColumn(column, Qt::AscendingOrder);
        }
        mTable->selectRow(findRow(mTable, 0, "-"));
        press(Qt::Key_X);
        QCOMPARE(mTable->rowCount(), 4);
        const int blank = findRow(mTable, 0, "-");
        typeInto(mTable, blank, 1, "200"); // makes a bit of it
        const int made = findRow(mTable, 1, "200");
        QCOMPARE(rowTexts(mTable, made), QStringList({"", "200", "0", ""}));
        QCOMPARE(mTable->item(made, 3)->checkState(), Qt::Checked);
        QVERIFY(*mTable->item(findRow(mTable, 1, "100"), 1) < *mTable->item(made, 1));
        QCOMPARE(index(400), QString("100=A 200="));
        press(Qt::Key_S);
        QStringList saved = summary(mHost->read("brox_drill_bits.xml"));
        saved.sort();
        QCOMPARE(saved, QStringList({" 0.2 0 yes", "A 0.1 0.1 yes", "B 0 0 no"}));
    }

    /** A shop's table from nothing, without a mouse. */
    void byKeyboard()
    {
        open({});
        QVERIFY(mHost->log.isEmpty());
        const auto type = [](const char* keys, Qt::Key last) {
            for (const char* key = keys; *key; ++key) {
                QTest::keyClick(focus(), *key); // the first one opens an editor
            }
            QTest::keyClick(focus(), last);
            QCoreApplication::processEvents();
        };
        for (const auto& [name, microns, mils] :
            {std::tuple("80", "350", "13.8"), std::tuple("#9", "1000.5", "40")}) {
            press(Qt::Key_N);
            mTable->setFocus();
            type(name, Qt::Key_Tab);
            type(microns, Qt::Key_Tab);
            type(mils, Qt::Key_Return);
        }
        press(Qt::Key_N);
        press(Qt::Key_X);
        const QStringList bits = {"#9 1.0005 0.04 yes", "80 0.35 0.0138 yes"};
        QVERIFY(isMarked());
        press(Qt::Key_S);
        QVERIFY(!isMarked());
        QStringList saved = summary(mHost->read("brox_drill_bits.xml"));
        saved.sort();
        QCOMPARE(saved, bits);
        mHost->endViewer();
        QCOMPARE(mHost->drill("M", 140000).bit, QByteArray("80"));
    }

    void saving_data()
    {
        QTest::addColumn<int>("button"); // 0: saved by its key
        QTest::addColumn<std::function<void()>>("prepare");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<bool>("staysChanged");
        QTest::addColumn<bool>("isWritten");
        using Prepare = std::function<void()>;
        const Prepare nothing = [] {};
        const Prepare noFolder = [] { standin_set_data_dir(nullptr); };
        const Prepare noFile = [this] {
            QFile::remove(mHost->path("brox_drill_bits.xml"));
            QDir().mkpath(mHost->path("brox_drill_bits.xml"));
        };
        QTest::newRow("save") << 0 << nothing << false << false << true;
        QTest::newRow("save, no folder") << 0 << noFolder << false << true << false;
        QTest::newRow("save, no file") << 0 << noFile << false << false << false;
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << nothing << false << true << false;
        QTest::newRow("discard") << int(QMessageBox::Discard) << nothing << true << true << false;
        QTest::newRow("save at close")
            << int(QMessageBox::Save) << nothing << true << false << true;
        QTest::newRow("no folder at close")
            << int(QMessageBox::Save) << noFolder << false << true << false;
    }

    void saving()
    {
        QFETCH(int, button);
        QFETCH(std::function<void()>, prepare);
        QFETCH(bool, closes);
        QFETCH(bool, staysChanged);
        QFETCH(bool, isWritten);
        open(threeBits());
        QFile::remove(mHost->path("brox_drill_bits.xml"));
        press(Qt::Key_S);
        QVERIFY(!QFile::exists(mHost->path("brox_drill_bits.xml"))); // nothing had changed
        mTable->setCurrentCell(-1, -1);
        press(Qt::Key_X);
        QVERIFY(!isMarked());
        press(Qt::Key_N);
        prepare();
        if (button == 0) {
            press(Qt::Key_S);
        } else {
            Answers answers{QMessageBox::StandardButton(button)};
            press(Qt::Key_F4);
            QCOMPARE(answers.seen.size(), 1);
            QCOMPARE(answers.seen[0].title, QString("Drill Size Table Editor"));
            QCOMPARE(answers.seen[0].cursor, Qt::ArrowCursor);
            QCOMPARE(answers.seen[0].buttons,
                QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
        }
        QCOMPARE(mWindow->isVisible(), !closes);
        QCOMPARE(isMarked(), staysChanged);
        const QStringList saved = summary(mHost->read("brox_drill_bits.xml"));
        QCOMPARE(saved.contains(" 0 0 yes"), isWritten);
        QCOMPARE(mHost->log.filter("ERROR|").size(), !isWritten && !staysChanged ? 1 : 0);
        QCOMPARE(mTable->rowCount(), 4);
        int ok = 0;
        brox__proxy_can_close(mHost->step, &ok);
        QCOMPARE(ok, 1); // this window is not asked
    }

    void files_data()
    {
        QTest::addColumn<QByteArray>("bit");
        QTest::addColumn<QString>("saved");
        QTest::newRow("as it was") << bitXml("a", "0.35", "0.0138", "no") << "a 0.35 0.0138 no";
        QTest::newRow("no attributes") << QByteArray("<Drill/>") << " 0 0 no";
        QTest::newRow("no numbers") << bitXml("a", "abc", "1,5") << "a 0 0 yes";
        QTest::newRow("other yes") << bitXml("a", "0", "0", "Yes") << "a 0 0 no";
        QTest::newRow("six digits")
            << bitXml("a", "1.23456789", "0.0123456789") << "a 1.23457 0.0123457 yes";
        QTest::newRow("more than a size holds")
            << bitXml("a", "1e9", "1e9") << "a 5368.71 211.367 yes";
        QTest::newRow("negative") << bitXml("a", "-0.1", "-0.1") << "a -0.1 -0.1 yes";
        QTest::newRow("odd text") << bitXml("&quot;&lt;\u00b5&#10;\U0001F600&gt;' ", "1", "0")
                                  << "\"<\u00b5\n\U0001F600>'  1 0 yes";
    }

    void files()
    {
        QFETCH(QByteArray, bit);
        QFETCH(QString, saved);
        open("<DRILLSIZETABLE>" + bit + "</DRILLSIZETABLE>");
        for (int i = 0; i < 2; ++i) {
            toggle(0);
        }
        press(Qt::Key_S);
        QCOMPARE(summary(mHost->read("brox_drill_bits.xml")), QStringList(saved));
        QVERIFY(mHost->log.isEmpty());
    }

    void filesThatAreNone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("condition");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("index"); // afterwards
        QTest::newRow("missing") << QByteArray() << "fi.exists()"
                                 << "Unable to find BROX Bits XML file: %1"
                                 << "100=A 200=A 300=B";
        QTest::newRow("malformed")
            << QByteArray("<x") << "setContentStatus == true"
            << "Error reading BROX Bits XML file: %1\nparsing error message: "
            << "100=A 200=A 300=B";
        QTest::newRow("other root")
            << QByteArray("<DrillToolModels/>")
            << "mainElement.tagName().compare(\"DrillSizeTable\", Qt::CaseInsensitive) == 0"
            << "%1 is not a legal BROX Bits XML file."
            << "";
    }

    /** The rows survive, and so do the unsaved mark and, if it is no other file, the lookups. */
    void filesThatAreNone()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, condition);
        QFETCH(QString, message);
        QFETCH(QString, index);
        open(threeBits());
        press(Qt::Key_N);
        if (!content.isNull()) {
            mHost->write("other.xml", content);
        }
        Answers answers{QMessageBox::Discard};
        answers.addFile(mHost->path("other.xml"));
        child<QAction>(mWindow, "actionOpen")->trigger();
        QCOMPARE(answers.seen.last().title, QString("Load Drill Bits XML file..."));
        QCOMPARE(mHost->log.size(), 2);
        QCOMPARE(mHost->log[0], QString("INTERNAL|(%1) at brox_bits_table").arg(condition));
        QVERIFY(mHost->log[1].startsWith("ERROR|" + message.arg(mHost->path("other.xml"))));
        QCOMPARE(mTable->rowCount(), 4);
        QVERIFY(isMarked());
        QCOMPARE(this->index(400), index);
    }

private:
    /** Opens the editor on a file, or on none. */
    void open(const QByteArray& bits)
    {
        // The next larger bit is taken, so that a bit at size 0 shows as well.
        mHost->write("brox.xml", modelsXml({modelXml("M", "FHS - 1", "yes")}));
        if (!bits.isNull()) {
            mHost->write("brox_drill_bits.xml", bits);
        }
        click(mHost->viewer(), "openBitFileToolButton");
        mTable = child<QTableWidget>(mHost->viewer(), "drillBitsTableWidget");
        mWindow = qobject_cast<QMainWindow*>(mTable->window());
    }

    /** Presses a shortcut, which the active window gets. */
    void press(Qt::Key key)
    {
        mWindow->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), mWindow);
        QTest::keyClick(mWindow, key, Qt::ControlModifier);
    }

    static QWidget* focus() { return QApplication::focusWidget(); }

    bool isMarked() const { return mWindow->windowTitle() == "Drill Size Table Editor *"; }

    void toggle(int row)
    {
        QTableWidgetItem* cell = mTable->item(row, 3);
        cell->setCheckState(cell->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    }

    /** What lookups find at some sizes: "100=A 200=" and so on. */
    QString index(int sizesPerNumber)
    {
        QStringList found;
        for (const int number : {0, 100, 200, 300, 400, 500}) {
            const auto drill = mHost->drill("M", number * sizesPerNumber);
            if (drill.size == number * sizesPerNumber) {
                found.append(QString("%1=%2").arg(QString::number(number), drill.bit));
            }
        }
        return found.join(' ');
    }

    /** Edits a bit cell by cell, though each edit may move it. */
    void fillCurrentRow(int microns)
    {
        QTableWidgetItem* designation = mTable->item(mTable->currentRow(), 0);
        typeInto(mTable, designation->row(), 0, QString::number(1100 - microns));
        typeInto(mTable, designation->row(), 1, QString::number(microns));
        typeInto(mTable, designation->row(), 2, QString::number(2000 - microns));
        mTable->item(designation->row(), 3)
            ->setCheckState(microns % 2 ? Qt::Checked : Qt::Unchecked);
    }

    bool areWhole(int count, int column, Qt::SortOrder order) const
    {
        bool areWhole = mTable->rowCount() == count;
        for (int row = 0; row < mTable->rowCount(); ++row) {
            const int microns = cellText(mTable, row, 1).toInt();
            areWhole = areWhole && cellText(mTable, row, 0) == QString::number(1100 - microns)
                && cellText(mTable, row, 2) == QString::number(2000 - microns)
                && (mTable->item(row, 3)->checkState() == Qt::Checked) == (microns % 2 != 0);
            if (row > 0 && (column == 1 || column == 2)) {
                const bool rises = cellText(mTable, row - 1, column).toInt()
                    < cellText(mTable, row, column).toInt();
                areWhole = areWhole && rises == (order == Qt::AscendingOrder);
            }
            if (row > 0 && column == 0) {
                const bool rises = cellText(mTable, row - 1, 0) < cellText(mTable, row, 0);
                areWhole = areWhole && rises == (order == Qt::AscendingOrder);
            }
        }
        return areWhole;
    }

    std::optional<Host> mHost;
    QTableWidget* mTable = nullptr;
    QMainWindow* mWindow = nullptr;
};

QTEST_MAIN(TestBitsEditor)
#include "tst_bits_editor.moc"
