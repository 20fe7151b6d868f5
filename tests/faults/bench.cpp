// SPDX-License-Identifier: MIT
#include "bench.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>

#include <utility>

QStringList heard;

namespace {

void hear(int, const char* oldName, const char* newName)
{
    heard.append(QString("%1>%2").arg(oldName, newName ? newName : "-"));
}

} // namespace

Agreeable::Agreeable()
{
    connect(this, &QTimer::timeout, this, &Agreeable::answer);
    start(0);
}

void Agreeable::answer()
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        texts.append(box->text());
        for (const auto button : {QMessageBox::Save, QMessageBox::Ok}) {
            if (box->button(button)) {
                return box->button(button)->click();
            }
        }
    } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
        // Accepted in vain means that the file is not there.
        const bool again = std::exchange(mAsked, files) == files;
        connect(files, &QDialog::finished, this, [this] { mAsked = nullptr; });
        QMetaObject::invokeMethod(files, again ? "reject" : "accept");
    }
}

Bench::Bench()
    : mFiles({{"brox.xml",
                  modelsXml({modelXml("A", "FHS + AMOUNT", "yes",
                                 "<HoleType name=\"Pth\" amount=\"4000\" oversized=\"0\" "
                                 "os_amount=\"0\"/>"),
                      modelXml("B", "FHS")})},
        {"brox_drill_bits.xml", bitsXml({bitXml("T1", "0.5", "0.02"), bitXml("T2", "1")})}})
{
    // Between dialogs no window is open: that must not be the end of the next dialog.
    QApplication::setQuitOnLastWindowClosed(false);
    restore();
    QDir data(host.path({}));
    data.cdUp();
    standin_set_system_dir(data.path().toUtf8());
    for (const char* name : {"L1", "L2"}) {
        const int layer = standin_add_layer(host.step, name);
        const standin_tool tools[] = {{0, 0, 400, 800, 396000, 7}, {1, 3, 0, 0, -1, 2}};
        standin_add_tool(layer, &tools[0]);
        standin_add_tool(layer, &tools[1]);
    }
    brox__proxy_set_model_renamed_deleted_cb(hear);
    heard.clear();
}

Bench::~Bench()
{
    host.endViewer();
}

void Bench::restore()
{
    host.endViewer();
    for (const auto& [name, content] : mFiles) {
        host.write(name, content);
    }
}

QWidget* Bench::viewer()
{
    BroxViewer* brox = nullptr;
    brox__proxy_open_brox(host.step);
    brox__proxy_get_brox(host.step, &brox);
    return reinterpret_cast<QWidget*>(brox);
}

void Bench::click(const char* name)
{
    child<QAbstractButton>(viewer(), name)->click();
}

void Bench::trigger(const char* name)
{
    child<QAction>(viewer(), name)->trigger();
}

void Bench::set(const char* name, int row, int column, const QVariant& value)
{
    QAbstractItemModel* model = table(name)->model();
    model->setData(model->index(row, column), value);
}

QString Bench::state()
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
    shown.append(
        child<QAbstractButton>(viewer(), "recalcPushButton")->isEnabled() ? "unsaved" : "saved");
    shown.append(child<QWidget>(viewer(), "drillBitsTableWidget")->window()->windowTitle());
    for (const auto& [name, content] : mFiles) {
        shown.append(host.read(name));
    }
    return shown.join('\n');
}
