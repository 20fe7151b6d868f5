// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <algorithm>
#include <climits>

#include "brox_bits_table.h"

namespace {

constexpr char fileName[] = "brox_drill_bits.xml";

struct LookupCase
{
    const char* name;
    QList<int> sizes; ///< of bits A, B and so on
    int dhs, minTol, maxTol;
    const char* bit; ///< designation, size and flags
};

struct EditsCase
{
    const char* name;
    const char* selected; ///< microns of the bit; null: one is added
    std::vector<std::pair<int, const char*>> typed; ///< into a column
    int checks; ///< how often what is approved is toggled
    bool isDeleted;
    const char* metric; ///< what lookups find then, in microns or mils
    const char* inch;
};

/** Two bits of one designation and one of its own; microns and mils have the same numbers. */
QByteArray threeBits()
{
    return bitsXml(
        {bitXml("A", "0.1", "0.1"), bitXml("A", "0.2", "0.2", "no"), bitXml("B", "0.3", "0.3")});
}
constexpr char loaded[] = "100=A 200=A 300=B";

} // namespace

/** The drill bits: their lookup, their editor and their file. */
class TestBits : public HostTest
{
    Q_OBJECT

private slots:
    // Numbers have a point, whatever the user's locale has.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }
    void lookup_data()
    {
        addRows<LookupCase>({
            {"no bits, 0 in range", {}, 100, 100, 0, "- 0"},
            {"equally near", {110, 90}, 100, 20, 20, "B 90 found"},
            {"exact, the later of two", {99, 100, 100, 101}, 100, 20, 20, "C 100 found exact"},
            {"at lower end", {80}, 100, 20, 20, "A 80 found"},
            {"below lower end", {79}, 100, 20, 20, "- 0 out"},
            {"at upper end", {120, 121}, 100, 20, 20, "A 120 found"},
            {"smaller never", {50, 200}, 100, 20, 20, "B 200 found out"},
            {"above beats inside", {55, 111}, 100, 50, 10, "B 111 found out"},
            {"next but one never", {80, 111, 130, 131}, 131, 50, -20, "C 130 found out"},
            {"range upside down", {80, 130, 150}, 131, -10, -20, "- 0 out"},
            {"size 0 is no bit", {0}, 0, 0, 0, "- 0"},
            {"greatest range", {5}, INT_MAX, INT_MAX, INT_MAX, "A 5 found"},
            {"range from below all sizes", {5}, -2, INT_MAX, 20, "A 5 found"},
            {"farther than a size", {5}, INT_MIN, INT_MAX, 0, "- 0 out"},
            {"above all", {5}, INT_MAX, 0, INT_MAX, "- 0 out"},
        });
    }

    void lookup()
    {
        QFETCH(LookupCase, data);
        QByteArrayList bits;
        for (const int size : data.sizes) {
            const QByteArray designation(1, char('A' + bits.size()));
            bits.append(bitXml(designation, QByteArray::number(size / 400000.0, 'g', 15)));
        }
        mHost->write(fileName, bitsXml(bits));
        BroxBitsTable table(nullptr, {});
        table.setStepId(mHost->step);
        QString bit = "-";
        int size = 7;
        bool found = true, isOut = true, isExact = true;
        table.findDrillBit(
            data.dhs, data.minTol, data.maxTol, &bit, &size, &found, &isOut, &isExact);
        bit += QString(" %1").arg(size);
        bit += QString(found ? " found" : "") + (isOut ? " out" : "") + (isExact ? " exact" : "");
        QCOMPARE(bit, data.bit);
    }

    void edits_data()
    {
        addRows<EditsCase>({
            {"a new bit is in no index", nullptr, {}, 0, false, loaded, loaded},
            {"sizes, then name", nullptr, {{1, "400"}, {2, "500"}, {0, "C"}}, 0, false,
                "100=A 200=A 300=B 400=C", "100=A 200=A 300=B 500=C"},
            {"shared name, lowest moves", "200", {{1, "500"}, {2, "400"}}, 0, false,
                "200=A 300=B 500=A", "200=A 300=B 400=A"},
            {"rename, approved or not", "200", {{0, "C"}}, 0, false, "100=A 200=C 300=B",
                "100=A 200=C 300=B"},
            {"emptied size is 0", "300", {{1, ""}}, 0, false, "0=B 100=A 200=A", loaded},
            {"uncheck", "300", {}, 1, false, "100=A 200=A", "100=A 200=A"},
            {"check of size 0", "300", {{1, "0"}}, 2, false, "0=B 100=A 200=A", loaded},
            {"delete of an unapproved bit", "200", {}, 0, true, loaded, loaded},
            {"delete without a name", "300", {{0, ""}}, 0, true,
                "100=A 200=A 300=", "100=A 200=A 300="},
            {"delete one of two of a size", "300", {{1, "100"}}, 0, true, "200=A", "100=A 200=A"},
        });
    }

    /** Lookups follow each edit at once, though nothing is saved. */
    void edits()
    {
        QFETCH(EditsCase, data);
        open(threeBits());
        QVERIFY(!isMarked());
        mTable->setCurrentCell(0, 3);
        QTest::keyClick(mTable, Qt::Key_F2); // what is approved is checked, not typed
        QVERIFY(!openEditor(mTable));
        if (data.selected) {
            mTable->setCurrentCell(findRow(mTable, 1, data.selected), 0);
        } else {
            press(Qt::Key_N);
        }
        for (const auto& [column, text] : data.typed) {
            typeInto(mTable, mTable->currentRow(), column, text);
        }
        QTableWidgetItem* approved = mTable->item(mTable->currentRow(), 3);
        for (int i = 0; i < data.checks; ++i) {
            approved->setCheckState(approved->checkState() ? Qt::Unchecked : Qt::Checked);
        }
        if (data.isDeleted) {
            press(Qt::Key_X);
        }
        QCOMPARE(index(400), data.metric);
        standin_set_units(mHost->step, Host::Inch);
        QCOMPARE(index(10160), data.inch);
        QVERIFY(isMarked());
        QCOMPARE(mHost->read(fileName), threeBits());
    }

    /** A shop's table from nothing, without a mouse. */
    void byKeyboard()
    {
        open({});
        QVERIFY(mHost->log.isEmpty());
        for (const char* keys : {"80\t350\t13.8\r", "#9\t1000,123456\t25432\r"}) {
            press(Qt::Key_N);
            mTable->setFocus();
            for (const char* key = keys; *key; ++key) { // the first one opens an editor
                QTest::keyClick(QApplication::focusWidget(), *key);
            }
            QCoreApplication::processEvents(); // the editor's closing is queued
        }
        press(Qt::Key_N);
        press(Qt::Key_X);
        QCOMPARE(shown(), QStringList({"80 350 13.8 yes", "#9 1000.123456 25432 yes"}));
        QVERIFY(isMarked());
        press(Qt::Key_S);
        QVERIFY(!isMarked());
        open({});
        QCOMPARE(shown(), QStringList({"80 350 13.8 yes", "#9 1000.12 25432 yes"}));
        QCOMPARE(mHost->drill("M", 140000).bit, QByteArray("80"));
    }

    /** However the table is sorted, numbers count as such and the cells of a bit stay together. */
    void sorting()
    {
        for (const auto& [column, order] :
            {std::pair(0, Qt::AscendingOrder), std::pair(1, Qt::AscendingOrder),
                std::pair(1, Qt::DescendingOrder), std::pair(2, Qt::AscendingOrder)}) {
            open("<DrillSizeTable/>");
            mTable->sortByColumn(column, order);
            load(bitsXml({bitXml("C", "0.02", "0.98", "no"), bitXml("A", "0.003", "0.997"),
                bitXml("E", "0.9", "0.1"), bitXml("D", "0.1", "0.9", "no")}));
            press(Qt::Key_N);
            QTableWidgetItem* cell = mTable->item(mTable->currentRow(), 0);
            typeInto(mTable, cell->row(), 0, "B");
            typeInto(mTable, cell->row(), 1, "7"); // each edit may move the row
            typeInto(mTable, cell->row(), 2, "993");
            QStringList bits = {
                "A 3 997 yes", "B 7 993 yes", "C 20 980 no", "D 100 900 no", "E 900 100 yes"};
            if ((order == Qt::AscendingOrder) == (column == 2)) { // mils fall where microns rise
                std::reverse(bits.begin(), bits.end());
            }
            QCOMPARE(shown(), bits);
        }
    }

    /** A comment in the file leaves a row without cells, of which is saved what is typed there. */
    void blankRow()
    {
        open("<DrillSizeTable><!-- c --></DrillSizeTable>");
        typeInto(mTable, 0, 1, "7");
        press(Qt::Key_S);
        open({});
        QCOMPARE(shown(), QStringList(" 7 0 no"));
    }

    /** A file is read, written and read again, and its bits are the same. */
    void files()
    {
        const std::pair<QByteArray, QString> bits[] = {
            {bitXml("a", "0.35", "0.0138", "no"), "a 350 13.8 no"},
            {bitXml("a", "nan", "1,5", "Yes"), "a 0 0 no"},
            {bitXml("a", "1e9", "inf"), "a 5.36871e+06 211367 yes"}, // the greatest size there is
            {bitXml("a", "-1e300", "-212"), "a -5.36871e+06 -211367 yes"},
            {bitXml("a", "0.000004", "-0.00000015"), "a 0.005 -0.00019685 yes"}, // the nearest
            {"<!-- c --><drill/>text" + bitXml("a", "1"), "a 1000 0 yes"},
            {bitXml("&quot;&lt;\u00b5&#10;\U0001F600&gt;' ", "1"),
                "\"<\u00b5\n\U0001F600>'  1000 0 yes"},
        };
        for (const auto& [xml, text] : bits) {
            open("<DRILLSIZETABLE>" + xml + "</DRILLSIZETABLE>");
            QCOMPARE(shown().filter(" "), QStringList(text));
            press(Qt::Key_N);
            press(Qt::Key_X);
            press(Qt::Key_S);
            QVERIFY(mHost->read(fileName).startsWith("<DrillSizeTable>\n    <Drill "));
            open({});
            QCOMPARE(shown(), QStringList(text));
            QVERIFY(mHost->log.isEmpty());
        }
    }

private:
    /** Opens the editor of a new viewer on a file, or on the one that is there. */
    void open(const QByteArray& bits)
    {
        mHost->endViewer();
        // The next larger bit is taken, so that a bit at size 0 shows as well.
        mHost->write("brox.xml", modelsXml({modelXml("M", "FHS - 1", "yes")}));
        if (!bits.isNull()) {
            mHost->write(fileName, bits);
        }
        click(mHost->viewer(), "openBitFileToolButton");
        mTable = child<QTableWidget>(mHost->viewer(), "drillBitsTableWidget");
    }

    /** Lets the editor load another file. */
    void load(const QByteArray& bits)
    {
        mHost->write("other.xml", bits);
        Answers answers;
        answers.addFile(mHost->path("other.xml"));
        click(mTable->window(), "actionOpen");
    }

    /** Presses a shortcut, which the active window gets. */
    void press(Qt::Key key)
    {
        mTable->window()->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), mTable->window());
        QTest::keyClick(mTable->window(), key, Qt::ControlModifier);
    }

    bool isMarked() const { return mTable->window()->windowTitle().endsWith('*'); }

    /** The table's rows as "designation microns mils approved"; "-" for one without cells. */
    QStringList shown() const
    {
        QStringList bits;
        for (int row = 0; row < mTable->rowCount(); ++row) {
            QStringList texts = rowTexts(mTable, row);
            const QTableWidgetItem* approved = mTable->item(row, 3);
            texts[3] = approved && approved->checkState() == Qt::Checked ? "yes" : "no";
            bits.append(approved ? texts.join(' ') : "-");
        }
        return bits;
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
    QTableWidget* mTable = nullptr;
};

QTEST_MAIN(TestBits)
#include "tst_bits.moc"
