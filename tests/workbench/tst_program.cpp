// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

/** The program as a user runs it, in the folder of the samples, from a shell without a display. */
class ProgramTest : public QObject
{
    Q_OBJECT

private:
    int run(const QString& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(name);
        }
        environment.insert("XDG_RUNTIME_DIR", mData.path()); // Qt warns when there is none
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(SAMPLES_DIR);
        process.start(WORKBENCH, QProcess::splitCommand(arguments) << "--data" << mData.path());
        process.waitForFinished();
        mOut = process.readAllStandardOutput();
        mError = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QTemporaryDir mData;
    QString mOut;
    QString mError;

private slots:
    void prints_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<QStringList>("expected"); // lines among others, spaces simplified
        QTest::addColumn<QString>("error");
        const auto row = [](const char* arguments, int lines, const QStringList& expected,
                             const char* error) {
            QTest::newRow(arguments) << lines << expected << error;
        };
        row("controller.xml --table", 33,
            {"Layer Type Count FHS [micron] -Tol [micron] +Tol [micron] DHS [micron] Bit",
                "DRILL_1-6 Via 120 250 50 50 300 0.30", "DRILL_1-6 Plated 40 1000 50 100 1100 1.10",
                "DRILL_1-2 Via 96 100 0 0 150 0.15", "DRILL_NPTH Non-plated 6 3200 50 50 3200 3.20",
                "slots left out: 6 (no one tool drills a slot)"},
            "");
        row("backplane.xml --csv", 23,
            {"Layer,Type,Count,FHS [mil],-Tol [mil],+Tol [mil],DHS [mil],Bit",
                "drill_1-4,Via,140,10,0,0,13.5,#80", "npth,Non-plated,6,40,2,2,40,#60"},
            "slots left out: 3 (no one tool drills a slot)\n");
        row("sensor.xml --csv --step board --units inch --model \"Heavy copper\"", 9,
            {"Drill,Plated,6,25.591,1.969,3.937,35,#65",
                "Drill,Via,60,11.811,1.969,1.969,17.72,0.45"},
            "slots left out: 1 (no one tool drills a slot)\n");
        row("backplane.xml --csv --model Unplated", 23, {"drill_1-4,Plated,40,39.4,3,3,39.4,"},
            "slots left out: 3 (no one tool drills a slot)\n");
        row("--models", 5, {"ENIG", "Unplated"}, "");
        row("--version", 1, {"brox-workbench 1.0.0"}, "");
    }

    void prints()
    {
        QFETCH(QStringList, expected);
        QCOMPARE(run(QTest::currentDataTag()), 0);
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

    void refuses()
    {
        constexpr const char* cases[][2] = {
            {"sensor.xml --table --step x", "no step \"x\"; there are: board, panel\n"},
            {"sensor.xml --csv --model x",
                "no model \"x\"; there are: ENIG, HASL, Heavy copper, Immersion silver, "
                "Unplated\n"},
            {"sensor.xml --csv --units foot", "no units \"foot\"; there are: inch, metric\n"},
            {"--table", "a board file is needed\n"},
            {"none --table", "none:1: No such file or directory\n"},
            {"make_boards.py --screenshot none.png",
                "make_boards.py:1: no command of a drill file: \"#!/USR/BIN/ENV PYTHON3\"\n"},
            {"sensor.xml", "no display to open a window on; --table and --csv need none\n"}};
        for (const auto& [arguments, error] : cases) {
            QCOMPARE(run(arguments), 1);
            QCOMPARE(mOut, "");
            QVERIFY2(mError.endsWith(error), qPrintable(mError));
        }
    }

    void fillsTheDataFolderOnce()
    {
        QCOMPARE(run("--models"), 0);
        QFile bits(mData.filePath("brox/brox_drill_bits.xml"));
        QVERIFY(bits.open(QIODevice::ReadOnly));
        QSet<double> sizes;
        for (QXmlStreamReader xml(&bits); !xml.atEnd(); xml.readNext()) {
            if (xml.isStartElement() && xml.name() == u"Drill") {
                // A size holds one designation; a second bit would hide the first.
                const double size = xml.attributes().value("millimeters").toDouble();
                const double inches = xml.attributes().value("inches").toDouble();
                QVERIFY(!sizes.contains(size));
                QVERIFY(qAbs(size - inches * 25.4) < 0.001);
                sizes << size;
            }
        }
        QCOMPARE(sizes.size(), 206);

        QFile models(mData.filePath("brox/brox.xml"));
        QVERIFY(models.open(QIODevice::WriteOnly));
        models.write("<DrillToolModels><DrillToolModel name='Own'/></DrillToolModels>");
        models.close();
        QCOMPARE(run("--models"), 0);
        QCOMPARE(mOut, "Own\n");
        QVERIFY(models.remove());
    }

    void takesAScreenshot()
    {
        const QString path = mData.filePath("window.png");
        QCOMPARE(run("controller.xml --screenshot " + path), 0);
        const QImage image(path);
        QVERIFY(image.width() >= 675 && image.height() >= 785);
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
