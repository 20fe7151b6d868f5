// SPDX-License-Identifier: MIT
#ifndef MODULE_FIXTURE_H
#define MODULE_FIXTURE_H

#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QStringList>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <list>
#include <map>
#include <optional>

#include "brox_proxy.h"
#include "standin.h"
#include "zeb_lowlevel.h"

/** Adds a row of test data for each case, a struct that begins with its name; QFETCH it as data. */
template <typename Case>
void addRows(const std::vector<Case>& cases)
{
    QTest::addColumn<Case>("data");
    for (const Case& each : cases) {
        QTest::newRow(each.name) << each;
    }
}

/** Answers the modal dialogs that come up in its life, each in turn. */
class Answers
{
public:
    using Answer = std::function<void(QDialog*)>;

    Answers(std::initializer_list<QMessageBox::StandardButton> buttons = {});
    ~Answers();
    Q_DISABLE_COPY_MOVE(Answers)

    void add(Answer answer) { mAnswers.push_back(std::move(answer)); }

    /** Presses a button; a dialog that lacks it is rejected. */
    void add(QMessageBox::StandardButton button);

    /** Chooses a file in the file dialog that comes. */
    void addFile(const QString& path);

    /** Answers all others as a user would who wants it done; without, they are unexpected. */
    void agree() { mAgrees = true; }

    /** What came: a box's title and text, and the shape of the cursor over it. */
    struct Seen
    {
        QString title;
        QString text;
        Qt::CursorShape cursor;
    };
    QList<Seen> seen;

private:
    void look();

    std::list<Answer> mAnswers;
    bool mAgrees = false;
    QTimer mTimer;
};

/** What the host's own windows report to a viewer. */
class UnitsSource : public QObject
{
    Q_OBJECT

signals:
    void unitsChanged(zeb_units_enum units);
};

/** A host with one step, a data folder of its own and a log; its viewers end with it.
 *
 * There is one at a time.
 */
class Host
{
public:
    enum Units
    {
        Inch,
        Metric
    };

    explicit Host(Units units = Metric);
    ~Host();
    Q_DISABLE_COPY_MOVE(Host)

    /** The step's viewer, opened at need and shown. */
    QWidget* viewer();

    /** Forgets and deletes the step's viewer; its data are lost. */
    void endViewer();

    /** A table of the viewer by its object name. */
    QTableWidget* table(const char* name);

    /** Changes the step's units as the host does, and informs the viewer. */
    void changeUnits(Units units);

    struct Drill
    {
        int status;
        int size;
        QByteArray bit;
    };

    /** Asks for the drill size of a hole, a plated one if nothing else is said. */
    Drill drill(const char* model, int fhs, int minTol = 0, int maxTol = 0, int toolType = 0,
        int toolSubType = 0);

    QStringList modelNames(int* status = nullptr);

    /** Files below the module's folder. */
    QString path(const QString& name) const { return mFolder.filePath("brox/" + name); }
    void write(const QString& name, const QByteArray& content);
    QByteArray read(const QString& name) const;

    /** Entries "LEVEL|text"; reports of a source have no line number. */
    QStringList log;

    /** What the callback was given: "number: old > new", and "-" for a deletion. */
    QStringList heard;

    /** Called then. */
    std::function<void()> onHeard = [] {};

    int step;

protected:
    bool mIsShown = true;
    QTemporaryDir mFolder;

private:
    UnitsSource mUnitsSource;
    QPointer<QWidget> mViewer; ///< that hears of units
};

/** Tests of which each has a host of its own. */
class HostTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

protected:
    std::optional<Host> mHost;
};

/** A host with two layers of tools, two models and two bits, whose viewers stay hidden. */
class JobHost : public Host
{
public:
    JobHost();

    /** Ends the viewer; units and both files are as at the start. */
    void restore();

    void set(const char* table, int row, int column, const QVariant& value);

    /** What the host was told, all that the viewer shows, and the two files. */
    QString state();

    Answers dialogs;
};

// Contents of the two files.
QByteArray modelXml(const QByteArray& name, const QByteArray& formula = "FHS + AMOUNT",
    const QByteArray& useBitFile = "no", const QByteArray& holeTypes = {});
QByteArray modelsXml(const QByteArrayList& models);
QByteArray bitXml(const QByteArray& designation, const QByteArray& millimeters,
    const QByteArray& inches = "0", const QByteArray& approved = "yes");
QByteArray bitsXml(const QByteArrayList& bits);

/** Whether the viewer has unsaved changes: in a step without tools Recalculate shows it. */
bool hasChanges(const QWidget* viewer);

/** A child by its object name; there must be one. */
template <typename Child>
Child* child(const QObject* parent, const char* name)
{
    auto* found = parent->findChild<Child*>(name);
    if (!found) {
        qFatal("There is no %s", name);
    }
    return found;
}

/** Whether a widget writes in red, as it does when something is wrong. */
bool isRed(const QWidget* widget);

/** Presses a button by its object name, a hidden one too, where no mouse gets; or an action. */
void click(const QWidget* parent, const char* name);

/** Types into a cell by its in-place editor and confirms; an empty text empties it. */
void typeInto(QTableWidget* table, int row, int column, const QString& text);

/** The in-place editor that is open in a table, or null. */
QLineEdit* openEditor(const QTableWidget* table);

/** A cell's text; "-" if there is no cell. */
QString cellText(const QTableWidget* table, int row, int column);
QStringList rowTexts(const QTableWidget* table, int row);
QStringList columnTexts(const QTableWidget* table, int column);

/** The row whose cell of a column has a text, or -1. */
int findRow(const QTableWidget* table, int column, const QString& text);

#endif
