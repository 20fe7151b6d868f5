// SPDX-License-Identifier: MIT
#ifndef MODULE_FIXTURE_H
#define MODULE_FIXTURE_H

#include <QDialog>
#include <QMessageBox>
#include <QStringList>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <list>

#include "brox_proxy.h"
#include "standin.h"
#include "zeb_lowlevel.h"

/** What the host's own windows tell a viewer. */
class UnitsSource : public QObject
{
    Q_OBJECT

signals:
    void unitsChanged(zeb_units_enum units);
};

/** A host with one step, a data folder of its own and a log; its viewers end with it. */
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
    QWidget* viewer() { return viewer(step); }
    QWidget* viewer(int stpid);

    /** Forgets and deletes the step's viewer; its data are lost. */
    void endViewer() { endViewer(step); }
    void endViewer(int stpid);

    /** Changes the step's units as the host does, and tells the viewer. */
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

    QStringList modelNames();

    /** Files below the module's folder. */
    QString path(const QString& name) const { return mFolder.filePath("brox/" + name); }
    void write(const QString& name, const QByteArray& content);
    QByteArray read(const QString& name) const;

    /** Entries "LEVEL|text"; reports of a source have no line number. */
    QStringList log;
    int step;

private:
    QTemporaryDir mFolder;
    UnitsSource mUnitsSource;
    std::list<int> mSteps;
};

// Contents of the two files.
QByteArray modelXml(const QByteArray& name, const QByteArray& formula = "FHS + AMOUNT",
    const QByteArray& useBitFile = "no", const QByteArray& holeTypes = {});
QByteArray modelsXml(const QByteArrayList& models);
QByteArray bitXml(const QByteArray& designation, const QByteArray& millimeters,
    const QByteArray& inches = "0", const QByteArray& approved = "yes");
QByteArray bitsXml(const QByteArrayList& bits);

/** Whether the viewer has unsaved changes: in a step without tools Recalculate tells. */
bool hasChanges(const QWidget* viewer);

/** A widget by its object name; there must be one. */
template <typename Widget>
Widget* child(const QObject* parent, const char* name)
{
    auto* widget = parent->findChild<Widget*>(name);
    if (!widget) {
        qFatal("There is no %s", name);
    }
    return widget;
}

/** Whether a widget writes in red, as it does when something is wrong. */
bool isRed(const QWidget* widget);

/** Presses a button of a widget by its object name; a hidden one too, where no mouse gets. */
void click(const QWidget* parent, const char* button);

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

/** Names a file in a file dialog. */
void chooseFile(QDialog* dialog, const QString& path);

/** Answers the modal dialogs that come up in its life, each in turn; others are rejected. */
class Answers
{
public:
    using Answer = std::function<void(QDialog*)>;

    Answers(std::initializer_list<QMessageBox::StandardButton> buttons = {});
    ~Answers();
    Q_DISABLE_COPY_MOVE(Answers)

    void add(Answer answer) { mAnswers.push_back(std::move(answer)); }

    /** Chooses a file in the file dialog that comes. */
    void addFile(const QString& path);

    /** What came: a box's title, text and buttons, and the shape of the cursor over it. */
    struct Seen
    {
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
        Qt::CursorShape cursor;
    };
    QList<Seen> seen;

private:
    void look();

    std::list<Answer> mAnswers;
    QTimer mTimer;
};

#endif
