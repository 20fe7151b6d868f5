// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

namespace {

Host* current = nullptr; // the callback has no context

void hear(int number, const char* oldName, const char* newName)
{
    if (current) {
        current->heard.append(
            QString("%1: %2 > %3").arg(QString::number(number), oldName, newName ? newName : "-"));
        current->onHeard();
    }
}

const std::map<QString, QByteArray> jobFiles = {
    {"brox.xml",
        modelsXml({modelXml("A", "FHS + AMOUNT", "yes",
                       R"(<HoleType name="Pth" amount="4000" oversized="0" os_amount="0"/>)"),
            modelXml("B", "FHS")})},
    {"brox_drill_bits.xml", bitsXml({bitXml("T1", "0.5", "0.02"), bitXml("T2", "1")})}};

/** Saves, confirms, and takes the file that is offered if it is there. */
void agreeTo(QDialog* dialog)
{
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        const bool canSave = box->standardButtons().testFlag(QMessageBox::Save);
        box->button(canSave ? QMessageBox::Save : QMessageBox::Ok)->click();
        return;
    }
    // Accepted in vain means that the file is not there.
    const bool again = dialog->property("accepted").toBool();
    dialog->setProperty("accepted", true);
    QMetaObject::invokeMethod(dialog, again ? "reject" : "accept");
}

} // namespace

Host::Host(Units units)
{
    current = this;
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
    brox__proxy_set_model_renamed_deleted_cb(hear);
}

Host::~Host()
{
    endViewer();
    standin_reset();
    current = nullptr;
}

QWidget* Host::viewer()
{
    BroxViewer* brox = nullptr;
    brox__proxy_open_brox(step);
    brox__proxy_get_brox(step, &brox);
    auto* widget = reinterpret_cast<QWidget*>(brox);
    if (mViewer != widget) {
        mViewer = widget;
        brox__proxy_set_parent_viewer(brox, &mUnitsSource);
    }
    if (mIsShown && !widget->isVisible()) {
        widget->show();
        widget->activateWindow();
        (void)QTest::qWaitForWindowActive(widget);
    }
    return widget;
}

void Host::endViewer()
{
    BroxViewer* brox = nullptr;
    brox__proxy_get_brox(step, &brox);
    brox__proxy_close_brox(step);
    delete reinterpret_cast<QWidget*>(brox);
}

QTableWidget* Host::table(const char* name)
{
    return child<QTableWidget>(viewer(), name);
}

void Host::changeUnits(Units units)
{
    standin_set_units(step, units);
    emit mUnitsSource.unitsChanged(units == Inch ? ZEB_UNITS_MILS : ZEB_UNITS_MICRONS);
}

Host::Drill Host::drill(
    const char* model, int fhs, int minTol, int maxTol, int toolType, int toolSubType)
{
    Drill drill = {-1, -1, {}};
    char bit[8] = "unread";
    drill.status = brox__proxy_calc_drill_size(
        step, model, toolType, toolSubType, minTol, maxTol, fhs, &drill.size, bit);
    drill.bit = bit;
    return drill;
}

QStringList Host::modelNames(int* status)
{
    char** names = nullptr;
    int count = 0;
    const int got = brox__proxy_get_model_list(step, &names, &count);
    if (status) {
        *status = got;
    }
    QStringList list;
    for (int i = 0; names && i < count; ++i) {
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

JobHost::JobHost()
{
    mIsShown = false;
    dialogs.agree();
    // Between dialogs no window is open: that must not be the end of the next dialog.
    QApplication::setQuitOnLastWindowClosed(false);
    restore();
    standin_set_system_dir(mFolder.path().toUtf8());
    for (const char* name : {"L1", "L2"}) {
        const int layer = standin_add_layer(step, name);
        for (const standin_tool& tool :
            {standin_tool{0, 0, 400, 800, 396000, 7}, standin_tool{1, 3, 0, 0, -1, 2}}) {
            standin_add_tool(layer, &tool);
        }
    }
}

void JobHost::restore()
{
    endViewer();
    standin_set_units(step, Metric);
    for (const auto& [name, content] : jobFiles) {
        write(name, content);
    }
}

void JobHost::set(const char* name, int row, int column, const QVariant& value)
{
    QAbstractItemModel* model = table(name)->model();
    model->setData(model->index(row, column), value);
}

QString JobHost::state()
{
    QStringList shown = heard;
    for (const auto* label : viewer()->findChildren<QLabel*>()) {
        shown.append(label->text());
    }
    for (const auto* line : viewer()->findChildren<QLineEdit*>()) {
        shown.append(line->text());
    }
    for (const auto* cells : viewer()->findChildren<QTableWidget*>()) {
        for (int row = 0; row < cells->rowCount(); ++row) {
            shown.append(rowTexts(cells, row).join('|'));
        }
    }
    shown.append(hasChanges(viewer()) ? "unsaved" : "saved");
    shown.append(table("drillBitsTableWidget")->window()->windowTitle());
    for (const auto& [name, content] : jobFiles) {
        shown.append(read(name));
    }
    return shown.join('\n');
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

void click(const QWidget* parent, const char* name)
{
    if (auto* action = parent->findChild<QAction*>(name)) {
        return action->trigger();
    }
    auto* button = child<QAbstractButton>(parent, name);
    if (button->isVisible()) {
        QTest::mouseClick(button, Qt::LeftButton);
    } else {
        button->click();
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

Answers::Answers(std::initializer_list<QMessageBox::StandardButton> buttons)
{
    for (const auto button : buttons) {
        add(button);
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

void Answers::add(QMessageBox::StandardButton button)
{
    add([button](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        if (box && box->button(button)) {
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        } else {
            dialog->reject();
        }
    });
}

void Answers::addFile(const QString& path)
{
    add([path](QDialog* dialog) {
        qobject_cast<QFileDialog*>(dialog)->selectFile(path); // takes the preselected one away
        auto* name = child<QLineEdit>(dialog, "fileNameEdit");
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });
}

void Answers::look()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) {
        return;
    }
    Seen dialogSeen = {dialog->windowTitle(), {}, Qt::BlankCursor};
    if (const QCursor* cursor = QApplication::overrideCursor()) {
        dialogSeen.cursor = cursor->shape();
    }
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        dialogSeen.text = box->text();
    }
    seen.append(dialogSeen);
    if (mAnswers.empty() && mAgrees) {
        return agreeTo(dialog);
    }
    if (mAnswers.empty()) {
        QTest::qFail(qPrintable("Nobody expected: " + dialogSeen.text), __FILE__, __LINE__);
        dialog->reject();
        return;
    }
    const Answer answer = std::move(mAnswers.front());
    mAnswers.pop_front();
    answer(dialog);
}
