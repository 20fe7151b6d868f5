// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QSplitter>
#include <QTextDocument>

#include <cstring>
#include <optional>

namespace {

QStringList asked; ///< keys that the module has asked for, as "module number text"

} // namespace

/** Takes the place of the host's function: each text is in upper case, and its key is noted. */
extern "C" __attribute__((visibility("default"))) const char* zeb__nls_nlst(const char* key)
{
    static QHash<QString, QByteArray> texts;
    const QStringList fields = QString(key).split("@$@#");
    asked.append(fields.size() == 5 && fields[0].isEmpty() && fields[2] == "GENERAL"
            ? QStringList({fields[1], fields[3], fields[4]}).join(' ')
            : "no key: " + QString(key));
    QByteArray& text = texts[key];
    text = fields.last().contains("<html>") ? fields.last().toUtf8()
                                            : fields.last().toUpper().toUtf8();
    return text.constData();
}

/** What stands in the forms: texts by their keys, and what they look like. */
class TestForms : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        asked.clear();
        mHost.emplace();
        mHost->write("brox.xml", modelsXml({modelXml("a"), modelXml("b")}));
        mViewer = mHost->viewer();
    }

    void cleanup() { mHost.reset(); }

    void keys()
    {
        const QHash<QString, QStringList> keys = {
            {"brox_viewer",
                {"272 Form", "274 Load KRV Models", "276 ...", "278 Save KRV Models", "280 ...",
                    "281 Model:", "282 <None>", "284 Create new KRV Model", "286 ...",
                    "288 Rename current KRV Model", "290 ...", "292 Delete current KRV Model",
                    "294 ...", "295 Units: ", "296 <UNITS>"}},
            {"brox_model_manager",
                {"138 Form", "139 New Model", "141 Create new model", "143 Rename Model",
                    "145 Rename current model", "147 Delete Model", "149 Delete current model",
                    "152 Drill Tool Models",
                    "155 No Drill Tool Models found.\n\nTo get started,\nplease create a new "
                    "model."}},
            {"brox_amounts",
                {"81 Form", "82 The amount of overall hole size reduction occurring during plating",
                    "84 Amount",
                    "86 Amount to enlarge the hole sizes in the consideration of plating for holes "
                    "smaller than 'Over Sized'.",
                    "89 Over Sized",
                    "91 Hole sizes equal to and above this size will be enlarged by the 'OS "
                    "Amount' "
                    "amount.",
                    "94 OS Amount",
                    "96 Amount to enlarge the hole size in the consideration of plating based on "
                    "the 'Over Sized' requirement."}},
            {"brox_tester",
                {"81 Form", "82 Test the Amount table and Drill formula", "84 FHS", "86 MIN TOL",
                    "88 MAX TOL", "90 DHS", "92 Drill Des."}},
            {"brox_job_data",
                {"147 Form", "148 Drill data in Job: ", "149 <None>",
                    "151 Recalcuate DHS values by the selected KRV Model", "153 Recalculate",
                    "155 Layer", "157 Type", "159 Count", "161 FHS", "163 MIN TOL", "165 MAX TOL",
                    "167 DHS", "169 Drill Des.", "170 ;  Step: ", "171 <None>"}},
            {"brox_dhs",
                {"90 Form", "91 Drill formula:", "110 Use Bit File", "112 Edit Drill Table",
                    "114 ..."}},
            {"brox_bits_table",
                {"132 Drill Size Table Editor", "146 Drill Size Table Editor", "146 Microns",
                    "147 Mils", "148 Save", "149 Ctrl+S", "150 Open...", "151 Close", "152 Ctrl+F4",
                    "153 Add Drill Size", "154 Ctrl+N", "155 Delete Drill Size", "156 Ctrl+X",
                    "159 Drill Des.", "161 Millimeters", "163 Inches", "165 Approved", "166 File",
                    "167 Edit", "168 toolBar"}},
        };
        QStringList wanted;
        for (auto module = keys.begin(); module != keys.end(); ++module) {
            for (const QString& key : *module) {
                wanted.append(module.key() + ' ' + key);
            }
        }
        const QStringList help = asked.filter("brox_dhs 107 ");
        QCOMPARE(help.size(), 1);
        asked.removeOne(help[0]);
        QCOMPARE(newKeys(), sorted(wanted));

        QTextDocument document;
        document.setHtml(child<QLineEdit>(mViewer, "dhsLineEdit")->toolTip());
        QCOMPARE(document.toPlainText().replace(QChar::Nbsp, ' '),
            QString("Drill Formula\n\nType a formula for calculating the Drill Hole Size.\n"
                    "Only the following variables are recognized:\n"
                    "    FHS, AMOUNT, MIN_TOL, MAX_TOL, TOL_MEDIAN.\n\n"
                    "Letter case is ignored (and converted to upper case).\n\n"
                    "Example: FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2\n"));
    }

    /** Keys that the module asks for when the user acts. */
    void laterKeys()
    {
        const auto reject = [](QDialog* dialog) { dialog->reject(); };
        Answers answers;
        for (int i = 0; i < 6; ++i) {
            answers.add(reject);
        }
        auto* models = child<QTableWidget>(mViewer, "broxModelTableWidget");
        auto* bits = child<QMainWindow>(mViewer, "BitsFileEditor");
        const QStringList none;
        asked.clear();

        click(mViewer, "loadToolButton");
        QCOMPARE(notAsked({"brox_viewer 312 BROX XML File", "brox_viewer 313 All Files",
                     "brox_viewer 340 Load Drill Tool Model Manager XML file..."}),
            none);
        click(mViewer, "deleteToolButton");
        QCOMPARE(notAsked({"brox_model_manager 159 KRV Model deletion",
                     "brox_model_manager 160 Delete Drill Tool Manager Model"}),
            none);
        models->item(0, 0)->setText("b");
        QCOMPARE(
            notAsked({"brox_viewer 730 Drill Tool Manager Setup",
                "brox_viewer 731 Rename not allowed.\nPossible causes: name exists, or name is too "
                "long (over 64 characters)."}),
            none);
        models->item(0, 0)->setText("c");
        int ok = 0;
        brox__proxy_can_close(mHost->step, &ok);
        QCOMPARE(notAsked({"brox_viewer 144 Drill Tool Manager Setup",
                     "brox_viewer 145 Unsaved data will be lost.\nClick 'Save' to save data before "
                     "closing."}),
            none);
        child<QAction>(bits, "actionOpen")->trigger();
        QCOMPARE(
            notAsked({"brox_bits_table 493 BROX Bits XML File", "brox_bits_table 494 All Files",
                "brox_bits_table 520 Load Drill Bits XML file..."}),
            none);
        child<QAction>(bits, "actionAdd_Size")->trigger();
        QCOMPARE(notAsked({"brox_bits_table 131 Drill Size Table Editor *"}), none);
        bits->close();
        QCOMPARE(
            notAsked({"brox_bits_table 103 Drill Size Table Editor",
                "brox_bits_table 104 Unsaved data will be lost.\nClick 'Save' to save data before "
                "closing."}),
            none);
    }

    void properties_data()
    {
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char* name, const QVariant& value) {
            QTest::newRow(name) << value;
        };
        row("saveToolButton toolTip", "SAVE KRV MODELS");
        row("newToolButton toolTip", "CREATE NEW KRV MODEL");
        row("renameToolButton toolTip", "RENAME CURRENT KRV MODEL");
        row("deleteToolButton toolTip", "DELETE CURRENT KRV MODEL");
        row("recalcPushButton toolTip", "RECALCUATE DHS VALUES BY THE SELECTED KRV MODEL");
        row("openBitFileToolButton toolTip", "EDIT DRILL TABLE");
        row("useBitFileCheckBox text", "USE BIT FILE");
        row("actionDelete_Size text", "DELETE DRILL SIZE");
        row("broxModelNameLabel minimumWidth", 130);
        row("broxModelNameLabel maximumWidth", 130);
        row("broxModelManagerWidget minimumWidth", 30);
        row("broxModelManagerWidget maximumWidth", 150);
        row("splitter handleWidth", 5);
        row("splitter_2 childrenCollapsible", false);
        row("broxModelTableWidget selectionMode", QAbstractItemView::SingleSelection);
        row("broxModelTableWidget showGrid", false);
        row("broxModelTableWidget contextMenuPolicy", int(Qt::ActionsContextMenu));
        row("amountsTableWidget selectionMode", QAbstractItemView::NoSelection);
        row("testerTableWidget selectionMode", QAbstractItemView::NoSelection);
        row("drillBitsTableWidget selectionBehavior", QAbstractItemView::SelectRows);
        row("drillBitsTableWidget sortingEnabled", true);
        row("BitsFileEditor size", QSize(385, 837));
    }

    void properties()
    {
        QFETCH(QVariant, value);
        const QByteArrayList names = QByteArray(QTest::currentDataTag()).split(' ');
        const QVariant property = child<QObject>(mViewer, names[0])->property(names[1]);
        QVERIFY(property.isValid());
        if (value.userType() == QMetaType::QString || value.userType() == QMetaType::QSize) {
            QCOMPARE(property, value);
        } else {
            QCOMPARE(property.toInt(), value.toInt());
        }
    }

    void columns_data()
    {
        QTest::addColumn<QStringList>("headers");
        QTest::addColumn<QList<int>>("widths"); // 0: any
        using Widths = QList<int>;
        QTest::newRow("amountsTableWidget")
            << QStringList{"AMOUNT", "OVER SIZED", "OS AMOUNT"} << Widths(3, 70);
        QTest::newRow("testerTableWidget")
            << QStringList{"FHS", "MIN TOL", "MAX TOL", "DHS", "DRILL DES."} << Widths(5, 60);
        QTest::newRow("jobDrillDataTableWidget") << QStringList{"LAYER", "TYPE", "COUNT", "FHS",
            "MIN TOL", "MAX TOL", "DHS", "DRILL DES."}
                                                 << Widths(8, 70);
        QTest::newRow("drillBitsTableWidget")
            << QStringList{"DRILL DES.", "MICRONS", "MILS", "APPROVED"} << Widths{0, 70, 70, 70};
        QTest::newRow("broxModelTableWidget") << QStringList{"DRILL TOOL MODELS"} << Widths{0};
    }

    void columns()
    {
        QFETCH(QStringList, headers);
        QFETCH(QList<int>, widths);
        const auto* table = child<QTableWidget>(mViewer, QTest::currentDataTag());
        QCOMPARE(table->columnCount(), headers.size());
        for (int i = 0; i < headers.size(); ++i) {
            QCOMPARE(table->horizontalHeaderItem(i)->text(), headers[i]);
            QVERIFY(widths[i] == 0 || table->columnWidth(i) == widths[i]);
        }
    }

    /** Without a mouse, the Tab key leads through all that can be edited or pressed. */
    void keyboard()
    {
        QSet<QString> reached;
        child<QWidget>(mViewer, "saveToolButton")->setFocus();
        for (int i = 0; i < 100; ++i) {
            reached.insert(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (const char* name :
            {"saveToolButton", "newToolButton", "renameToolButton", "deleteToolButton",
                "broxModelTableWidget", "amountsTableWidget", "testerTableWidget", "dhsLineEdit",
                "useBitFileCheckBox", "openBitFileToolButton", "jobDrillDataTableWidget"}) {
            QVERIFY2(reached.contains(name), name);
        }
    }

private:
    static QStringList sorted(QStringList list)
    {
        list.sort();
        return list;
    }

    /** Those of some keys that were not asked for since the last time. */
    static QStringList notAsked(QStringList keys)
    {
        const QStringList all = newKeys();
        keys.removeIf([&all](const QString& key) { return all.contains(key); });
        return keys;
    }

    /** Keys asked for since the last time, each once. */
    static QStringList newKeys()
    {
        QStringList keys = sorted(asked);
        keys.removeDuplicates();
        asked.clear();
        return keys;
    }

    std::optional<Host> mHost;
    QWidget* mViewer = nullptr;
};

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
