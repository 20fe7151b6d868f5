// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

Host::Host(Units units)
{
    standin_reset();
    standin_set_log_sink(
        [](const char* level, const char* text, void* context) {
            static const QRegularExpression lineNumber(" \\d+\n?$");
            const QString entry = QString("%1|%2").arg(level, text);
            const bool isReport = entry.startsWith("INTERNAL") || entry.startsWith("STATUS");
            static_cast<QStringList*>(context)->append(
                isReport ? QString(entry).remove(lineNumber) : entry);
        },
        &log);
    standin_set_data_dir(mFolder.path().toUtf8());
    standin_set_resource_dir(RESOURCE_DIR);
    standin_set_job("job");
    step = standin_add_step("panel", units);
}

Host::~Host()
{
    for (const int stpid : std::list<int>(mSteps)) {
        endViewer(stpid);
    }
    standin_reset();
}

QWidget* Host::viewer(int stpid)
{
    BroxViewer* brox = nullptr;
    brox__proxy_open_brox(stpid);
    brox__proxy_get_brox(stpid, &brox);
    auto* widget = reinterpret_cast<QWidget*>(brox);
    if (std::find(mSteps.begin(), mSteps.end(), stpid) == mSteps.end()) {
        mSteps.push_back(stpid);
        brox__proxy_set_parent_viewer(brox, &mUnitsSource);
    }
    if (!widget->isVisible()) {
        widget->show();
        widget->activateWindow();
        (void)QTest::qWaitForWindowActive(widget);
    }
    return widget;
}

void Host::endViewer(int stpid)
{
    BroxViewer* brox = nullptr;
    brox__proxy_get_brox(stpid, &brox);
    brox__proxy_close_brox(stpid);
    delete reinterpret_cast<QWidget*>(brox);
    mSteps.remove(stpid);
}

void Host::changeUnits(Units units)
{
    standin_set_units(step, units);
    emit mUnitsSource.unitsChanged(units == Inch ? ZEB_UNITS_MILS : ZEB_UNITS_MICRONS);
}

Host::Drill Host::drill(
    const char* model, int fhs, int minTol, int maxTol, int toolType, int toolSubType)
{
    viewer();
    Drill drill = {};
    char bit[8] = "unread";
    drill.status = brox__proxy_calc_drill_size(
        step, model, toolType, toolSubType, minTol, maxTol, fhs, &drill.size, bit);
    drill.bit = bit;
    return drill;
}

QStringList Host::modelNames()
{
    viewer();
    char** names = nullptr;
    int count = 0;
    brox__proxy_get_model_list(step, &names, &count);
    QStringList list;
    for (int i = 0; i < count; ++i) {
        list.append(QString::fromLocal8Bit(names[i]));
        zeb__mem_free(names[i], 1, "fixture", __LINE__);
    }
    zeb__mem_free(names, 1, "fixture", __LINE__);
    return list;
}

void Host::write(const QString& name, const QByteArray& content)
{
    QDir(mFolder.path()).mkpath("brox");
    QFile file(path(name));
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s can't be written", qPrintable(name));
    }
}

QByteArray Host::read(const QString& name) const
{
    QFile file(path(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray modelXml(const QByteArray& name, const QByteArray& formula, const QByteArray& useBitFile,
    const QByteArray& holeTypes)
{
    return "<DrillToolModel name=\"" + name + "\">" + holeTypes + "<DhsFormula text=\"" + formula
        + "\" use_bit_file=\"" + useBitFile + "\"/></DrillToolModel>";
}

QByteArray modelsXml(const QByteArrayList& models)
{
    return "<DrillToolModels>" + models.join() + "</DrillToolModels>";
}

QByteArray bitXml(const QByteArray& designation, const QByteArray& millimeters,
    const QByteArray& inches, const QByteArray& approved)
{
    return "<Drill designation=\"" + designation + "\" millimeters=\"" + millimeters
        + "\" inches=\"" + inches + "\" approved=\"" + approved + "\"/>";
}

QByteArray bitsXml(const QByteArrayList& bits)
{
    return "<DrillSizeTable>" + bits.join() + "</DrillSizeTable>";
}

bool hasChanges(const QWidget* viewer)
{
    return child<QPushButton>(viewer, "recalcPushButton")->isEnabled();
}

bool isRed(const QWidget* widget)
{
    const QColor color = widget->palette().color(QPalette::Text);
    if (color != Qt::red && color != QApplication::palette(widget).color(QPalette::Text)) {
        qFatal("A text is neither red nor normal");
    }
    return color == Qt::red;
}

void click(const QWidget* parent, const char* button)
{
    auto* widget = child<QAbstractButton>(parent, button);
    if (widget->isVisible()) {
        QTest::mouseClick(widget, Qt::LeftButton);
    } else {
        widget->click();
    }
}

void typeInto(QTableWidget* table, int row, int column, const QString& text)
{
    table->setCurrentCell(row, column);
    QTest::keyClick(table, Qt::Key_F2);
    QLineEdit* editor = openEditor(table);
    if (!editor) {
        qFatal("No editor opens in row %d, column %d of %s", row, column,
            qPrintable(table->objectName()));
    }
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents(); // the editor's closing is queued
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QLineEdit* openEditor(const QTableWidget* table)
{
    const auto editors = table->viewport()->findChildren<QLineEdit*>();
    const auto editor = std::find_if(
        editors.begin(), editors.end(), [](const QLineEdit* each) { return each->isVisible(); });
    return editor == editors.end() ? nullptr : *editor;
}

QString cellText(const QTableWidget* table, int row, int column)
{
    const QTableWidgetItem* cell = table->item(row, column);
    return cell ? cell->text() : QStringLiteral("-");
}

QStringList rowTexts(const QTableWidget* table, int row)
{
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column) {
        texts.append(cellText(table, row, column));
    }
    return texts;
}

QStringList columnTexts(const QTableWidget* table, int column)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row) {
        texts.append(cellText(table, row, column));
    }
    return texts;
}

int findRow(const QTableWidget* table, int column, const QString& text)
{
    return int(columnTexts(table, column).indexOf(text));
}

void chooseFile(QDialog* dialog, const QString& path)
{
    qobject_cast<QFileDialog*>(dialog)->selectFile(path); // takes the preselected one away
    child<QLineEdit>(dialog, "fileNameEdit")->setText(path);
}

Answers::Answers(std::initializer_list<QMessageBox::StandardButton> buttons)
{
    for (const auto button : buttons) {
        add([button](QDialog* dialog) {
            auto* box = qobject_cast<QMessageBox*>(dialog);
            if (box && box->button(button)) {
                QTest::mouseClick(box->button(button), Qt::LeftButton);
            } else {
                dialog->reject();
            }
        });
    }
    QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] { look(); });
    mTimer.start(1);
}

Answers::~Answers()
{
    if (!mAnswers.empty()) {
        QTest::qFail("A dialog did not come", __FILE__, __LINE__);
    }
}

void Answers::addFile(const QString& path)
{
    add([path](QDialog* dialog) {
        chooseFile(dialog, path);
        QTest::keyClick(child<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
    });
}

void Answers::look()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) {
        return;
    }
    Seen dialogSeen = {dialog->windowTitle(), {}, {}, Qt::BlankCursor};
    if (const QCursor* cursor = QApplication::overrideCursor()) {
        dialogSeen.cursor = cursor->shape();
    }
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        dialogSeen.text = box->text();
        dialogSeen.buttons = box->standardButtons();
    }
    seen.append(dialogSeen);
    if (mAnswers.empty()) {
        QTest::qFail(qPrintable("Nobody expected: " + dialogSeen.text), __FILE__, __LINE__);
        dialog->reject();
        return;
    }
    const Answer answer = std::move(mAnswers.front());
    mAnswers.pop_front();
    answer(dialog);
}
