// SPDX-License-Identifier: MIT
// Makes the pictures of the pages: make_images SAMPLES-FOLDER IMAGE-FOLDER
#include "board_reader.h"
#include "data_start.h"
#include "host_session.h"
#include "language.h"
#include "main_window.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolButton>

using namespace brox;

namespace {

QDir images;

template <typename Widget>
Widget* child(const QWidget* parent, const char* name)
{
    auto* widget = parent->findChild<Widget*>(name);
    if (!widget) {
        throw HostError(QStringLiteral("there is no %1").arg(name));
    }
    return widget;
}

void save(const QPixmap& picture, const QString& name)
{
    constexpr int smallest = 0;
    if (!picture.save(images.filePath(name), "PNG", smallest)) {
        throw HostError(QStringLiteral("%1: can't be written").arg(images.filePath(name)));
    }
}

/** A part of a window, from the top left of one widget to the bottom right of another. */
void savePart(QWidget* window, const QWidget* first, const QWidget* last, const QString& name)
{
    QApplication::processEvents();
    const QRect part(first->mapTo(window, QPoint(0, 0)),
        last->mapTo(window, QPoint(last->width() - 1, last->height() - 1)));
    save(window->grab(part), name);
}

void test(const QWidget* viewer, int row, std::initializer_list<double> numbers)
{
    QAbstractItemModel* model = child<QTableWidget>(viewer, "testerTableWidget")->model();
    int column = 0;
    for (double number : numbers) {
        model->setData(model->index(row, column++), number);
    }
}

void typeFormula(const QWidget* viewer, const QString& text)
{
    auto* edit = child<QLineEdit>(viewer, "dhsLineEdit");
    edit->setText(text);
    emit edit->textEdited(text);
}

void saveBitsEditor(const QWidget* viewer)
{
    child<QToolButton>(viewer, "openBitFileToolButton")->click();
    auto* editor = child<QMainWindow>(viewer, "BitsFileEditor");
    auto* table = child<QTableWidget>(editor, "drillBitsTableWidget");
    editor->resize(400, 520);
    table->sortItems(1);
    table->setCurrentCell(0, 0);
    QApplication::processEvents();
    save(editor->grab(), "bits.png");
    editor->hide();
}

void saveBoard(HostSession& session, const QString& samples)
{
    MainWindow window(session);
    window.resize(1000, 800);
    window.openBoard({samples + "/controller.xml"});
    window.show();
    QWidget* viewer = session.viewer(0);
    auto* amounts = child<QWidget>(viewer, "broxAmountsWidget");
    auto* tester = child<QWidget>(viewer, "broxTesterWidget");
    auto* strip = child<QWidget>(viewer, "broxDhsWidget");

    test(viewer, 0, {1000, 50, 100});
    test(viewer, 1, {300, 50, 50});
    test(viewer, 4, {1000, 50, 50});
    QApplication::processEvents();
    save(window.grab(), "viewer.png");
    savePart(&window, amounts, amounts, "amounts.png");

    test(viewer, 0, {720, 0, 0});
    test(viewer, 1, {300, 100, 50});
    test(viewer, 4, {1000, 20, 20});
    savePart(&window, tester, tester, "tester.png");

    typeFormula(viewer, "FHS + AMOUNTS");
    savePart(&window, strip, strip, "refused.png");
    emit child<QLineEdit>(viewer, "dhsLineEdit")->editingFinished();

    session.setUnits(0, Units::Inch);
    savePart(&window, amounts, tester, "mils.png");

    saveBitsEditor(viewer);
}

void saveMap(HostSession& session, const QString& samples)
{
    MainWindow window(session);
    window.resize(1400, 800);
    window.openBoard({samples + "/controller.xml"});
    auto* dock = child<QDockWidget>(&window, "mapDock");
    dock->show();
    window.resizeDocks({dock}, {560}, Qt::Horizontal);
    window.show();
    child<QTableWidget>(session.viewer(0), "jobDrillDataTableWidget")->selectRow(4);
    QApplication::processEvents();
    save(window.grab(), "map.png");
}

void saveNoModels(HostSession& session, const QString& samples)
{
    const Job job(readBoard({samples + "/sensor.xml"}));
    session.setSteps(job.drafts());
    QWidget* viewer = session.viewer(job.board->mainStep);
    viewer->resize(900, 620);
    viewer->show();
    QApplication::processEvents();
    save(viewer->grab(), "no-models.png");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    speak("en"); // English, too, has plural forms
    const QStringList arguments = app.arguments();
    if (arguments.size() != 3) {
        qCritical("make_images SAMPLES-FOLDER IMAGE-FOLDER");
        return 1;
    }
    images = QDir(arguments[2]);
    try {
        const QTemporaryDir filled;
        const QTemporaryDir empty;
        DataStart::fill(filled.path());
        {
            HostSession session(filled.path());
            saveBoard(session, arguments[1]);
        }
        {
            HostSession session(filled.path());
            saveMap(session, arguments[1]);
        }
        HostSession session(empty.path());
        saveNoModels(session, arguments[1]);
    } catch (const std::exception& error) {
        qCritical("%s", error.what());
        return 1;
    }
    return 0;
}
