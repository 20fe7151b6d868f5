// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QTemporaryDir>
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
    void prints()
    {
        QCOMPARE(run("controller.xml --table"), 0);
        QCOMPARE(mError, "");
        QCOMPARE(mOut.count('\n'), 33);
        mOut.replace(QRegularExpression(" +"), " ");
        for (const char* line :
            {"DRILL_1-6 Via 120 250 50 50 300 0.30", "DRILL_1-2 Via 96 100 0 0 150 0.15",
                "DRILL_NPTH Non-plated 6 3200 50 50 3200 3.20"}) {
            QVERIFY2(mOut.contains(line), line);
        }
        QCOMPARE(run("backplane.xml --csv"), 0);
        QCOMPARE(mError, "");
        QVERIFY(mOut.startsWith(
            "Layer,Type,Count,FHS [mil],-Tol [mil],+Tol [mil],DHS [mil],Bit,Tool,Flags\n"));
        QVERIFY(mOut.contains("drill_1-4,Via,140,10,0,0,13.78,0.35,1,out-of-tolerance\n"));
        QVERIFY(mOut.contains("ROUT,Plated slot,3,30,1.5,1.5,33.465,0.85,1,\n"));
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
            {"sensor.xml --csv --tolerance plated=5",
                "--tolerance: \"5\" is no tolerance such as -0.05/+0.10 or +-2mil\n"},
            {"none --table", "none:1: No such file or directory\n"},
            {"make_boards.py --screenshot none.png",
                "make_boards.py:1: no drill file: it is a text without drill commands\n"},
            {"sensor.xml", "no display to open a window on; --table and --csv need none\n"}};
        for (const auto& [arguments, error] : cases) {
            QCOMPARE(run(arguments), 1);
            QCOMPARE(mOut, "");
            QVERIFY2(mError.endsWith(error), qPrintable(mError));
        }
    }

    void keepsTheModelsThatAreThere()
    {
        QCOMPARE(run("--models"), 0);
        QVERIFY(mOut.startsWith("ENIG\n"));
        const QByteArray own = "<DrillToolModels><DrillToolModel name='Own'/></DrillToolModels>";
        for (const QByteArray& content : {own, own.chopped(1)}) {
            QFile models(mData.filePath("brox/brox.xml"));
            QVERIFY(models.open(QIODevice::ReadWrite | QIODevice::Truncate));
            models.write(content);
            models.flush();
            const bool isWhole = content == own;
            QCOMPARE(run("--models"), isWhole ? 0 : 1);
            QCOMPARE(mOut, isWhole ? "Own\n" : "");
            QCOMPARE(mError.contains("brox/brox.xml: line 1"), !isWhole);
            models.seek(0);
            QCOMPARE(models.readAll(), content);
            QVERIFY(models.remove()); // the next run fills it again
        }
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
