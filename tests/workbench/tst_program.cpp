// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const QString samples = QStringLiteral(SAMPLES_DIR "/");

}

/** The program as a user runs it from a shell without a display. */
class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void prints_data();
    void prints();
    void refuses_data();
    void refuses();
    void fillsTheDataFolderOnce();
    void takesAScreenshot();

private:
    int run(const QStringList& arguments);

    QTemporaryDir mData;
    QString mOut;
    QString mError;
};

int ProgramTest::run(const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(name);
    }
    environment.insert("XDG_RUNTIME_DIR", mData.path()); // Qt warns when there is none
    process.setProcessEnvironment(environment);
    process.start(WORKBENCH, QStringList{"--data", mData.path()} + arguments);
    process.waitForFinished();
    mOut = process.readAllStandardOutput();
    mError = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void ProgramTest::prints_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QStringList>("expected"); // lines among others, spaces simplified
    QTest::addColumn<QString>("error");

    const QString controller = samples + "controller.xml";
    const QString backplane = samples + "backplane.xml";
    const QString sensor = samples + "sensor.xml";
    QTest::newRow("metric, through, blind and unplated")
        << QStringList{controller, "--table"} << 33
        << QStringList{"Layer Type Count FHS [micron] -Tol [micron] +Tol [micron] DHS [micron] Bit",
               "DRILL_1-6 Via 120 250 50 50 300 0.30", "DRILL_1-6 Plated 40 1000 50 100 1100 1.10",
               "DRILL_1-2 Via 96 100 0 0 150 0.15", "DRILL_NPTH Non-plated 6 3200 50 50 3200 3.20",
               "slots left out: 6 (no one tool drills a slot)"}
        << "";
    QTest::newRow("inch, table of values")
        << QStringList{backplane, "--csv"} << 23
        << QStringList{"Layer,Type,Count,FHS [mil],-Tol [mil],+Tol [mil],DHS [mil],Bit",
               "drill_1-4,Via,140,10,0,0,13.5,#80", "npth,Non-plated,6,40,2,2,40,#60"}
        << "slots left out: 3 (no one tool drills a slot)\n";
    QTest::newRow("panel of twelve") << QStringList{sensor, "--csv"} << 10
                                     << QStringList{"Drill,Via,720,300,50,50,350,0.35",
                                            "Drill,Non-plated,4,3175,25,25,3150,3.15"}
                                     << "slots left out: 12 (no one tool drills a slot)\n";
    QTest::newRow("step, units, model") << QStringList{sensor, "--csv", "--step", "board",
        "--units", "inch", "--model", "Heavy copper"}
                                        << 9
                                        << QStringList{"Drill,Plated,6,25.591,1.969,3.937,35,#65",
                                               "Drill,Via,60,11.811,1.969,1.969,17.72,0.45"}
                                        << "slots left out: 1 (no one tool drills a slot)\n";
    QTest::newRow("the model's own formula, no bits")
        << QStringList{backplane, "--csv", "--model", "Unplated"} << 23
        << QStringList{"drill_1-4,Plated,40,39.4,3,3,39.4,"}
        << "slots left out: 3 (no one tool drills a slot)\n";
    QTest::newRow("drill files") << QStringList{samples + "breakout-NPTH.drl",
        samples + "breakout-PTH.drl", "--table"}
                                 << 13
                                 << QStringList{"breakout, step pcb, model ENIG",
                                        "breakout-NPTH Non-plated 28 500 0 0 500 0.50",
                                        "breakout-PTH Via 96 300 0 0 350 0.35",
                                        "breakout-PTH Press-fit 32 600 0 0 741.68 #69",
                                        "slots left out: 3 (no one tool drills a slot)"}
                                 << "";
    QTest::newRow("models") << QStringList{"--models"} << 5 << QStringList{"ENIG", "Unplated"}
                            << "";
    QTest::newRow("version") << QStringList{"--version"} << 1 << QStringList{"brox-workbench 1.0.0"}
                             << "";
}

void ProgramTest::prints()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, expected);
    QCOMPARE(run(arguments), 0);
    QTEST(mError, "error");
    QStringList lines;
    for (const QString& line : mOut.chopped(1).split('\n')) {
        lines << line.simplified();
    }
    QTEST(int(lines.size()), "lines");
    for (const QString& line : expected) {
        QVERIFY2(lines.contains(line), qPrintable(line + "\nis not in\n" + mOut));
    }
}

void ProgramTest::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");

    const QString sensor = samples + "sensor.xml";
    const QString script = samples + "make_boards.py";
    QTest::newRow("unknown step") << QStringList{sensor, "--table", "--step", "x"}
                                  << "no step \"x\"; there are: board, panel\n";
    QTest::newRow("unknown model") << QStringList{sensor, "--csv", "--model",
        "x"} << "no model \"x\"; there are: ENIG, HASL, Heavy copper, Immersion silver, Unplated\n";
    QTest::newRow("unknown units") << QStringList{sensor, "--csv", "--units", "foot"}
                                   << "no units \"foot\"; there are: inch, metric\n";
    QTest::newRow("no board") << QStringList{"--table"} << "a board file is needed\n";
    QTest::newRow("no such board in a table")
        << QStringList{"none", "--table"} << "none:1: No such file or directory\n";
    QTest::newRow("no board but a script in a window") << QStringList{script, "--screenshot",
        "none.png"} << script + ":1: no command of a drill file: \"#!/USR/BIN/ENV PYTHON3\"\n";
    QTest::newRow("two boards") << QStringList{samples + "breakout-PTH.drl", sensor, "--table"}
                                << sensor
            + ":1: no drill file; an IPC-2581 file is a board of its own, open it alone\n";
    QTest::newRow("no display") << QStringList{sensor}
                                << "no display to open a window on; --table and --csv need none\n";
}

void ProgramTest::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    QCOMPARE(run(arguments), 1);
    QCOMPARE(mOut, "");
    QVERIFY2(mError.endsWith(error), qPrintable(mError));
}

void ProgramTest::fillsTheDataFolderOnce()
{
    QVERIFY(run({"--models"}) == 0);
    QFile bits(mData.filePath("brox/brox_drill_bits.xml"));
    QVERIFY(bits.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&bits);
    QSet<double> millimeters, inches;
    int approved = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"Drill") {
            // A size holds one designation; a second bit would hide the first.
            const double metric = xml.attributes().value("millimeters").toDouble();
            const double inch = xml.attributes().value("inches").toDouble();
            QVERIFY(!millimeters.contains(metric) && !inches.contains(inch));
            QVERIFY(qAbs(metric - inch * 25.4) < 0.001);
            QVERIFY(xml.attributes().value("designation").size() <= 7);
            millimeters << metric;
            inches << inch;
            approved += xml.attributes().value("approved") == u"yes";
        }
    }
    QVERIFY(millimeters.size() == 206 && approved > 100 && approved < 206);

    QFile models(mData.filePath("brox/brox.xml"));
    QVERIFY(models.open(QIODevice::WriteOnly));
    models.write("<DrillToolModels><DrillToolModel name='Own'/></DrillToolModels>");
    models.close();
    QCOMPARE(run({"--models"}), 0);
    QCOMPARE(mOut, "Own\n");
    QVERIFY(models.remove());
}

void ProgramTest::takesAScreenshot()
{
    const QString path = mData.filePath("window.png");
    QCOMPARE(run({samples + "controller.xml", "--screenshot", path}), 0);
    const QImage image(path);
    QVERIFY(image.width() >= 675 && image.height() >= 785);
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
