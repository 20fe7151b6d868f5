// SPDX-License-Identifier: MIT
#include "shortcuts_dialog.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenuBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <functional>

namespace brox {

namespace {

class ShortcutsText
{
    Q_DECLARE_TR_FUNCTIONS(Shortcuts)
};

constexpr QSize likedSize(460, 560);

QString plain(QString text)
{
    return text.remove('&').remove("...").remove(QChar(0x2026));
}

QTreeWidgetItem* addGroup(QTreeWidget* tree, const QString& name)
{
    auto* group = new QTreeWidgetItem(tree, {name});
    group->setFirstColumnSpanned(true);
    group->setExpanded(true);
    return group;
}

void addActions(QTreeWidgetItem* group, const QList<QAction*>& actions)
{
    for (const QAction* action : actions) {
        QStringList keys;
        for (const QKeySequence& key : action->shortcuts()) {
            keys << key.toString(QKeySequence::NativeText);
        }
        if (!keys.isEmpty()) {
            new QTreeWidgetItem(group, {plain(action->text()), keys.join(", ")});
        }
        if (action->menu()) {
            addActions(group, action->menu()->actions());
        }
    }
}

void addMenus(QTreeWidget* tree, const QMenuBar* bar)
{
    for (const QAction* action : bar->actions()) {
        QTreeWidgetItem* group = addGroup(tree, plain(action->text()));
        if (action->menu()) {
            addActions(group, action->menu()->actions());
        }
        if (group->childCount() == 0) {
            delete group;
        }
    }
}

void addKeys(
    QTreeWidget* tree, const QString& name, std::initializer_list<std::pair<QString, QString>> keys)
{
    QTreeWidgetItem* group = addGroup(tree, name);
    for (const auto& [does, key] : keys) {
        new QTreeWidgetItem(group, {does, key});
    }
}

} // namespace

void showShortcuts(QWidget* window)
{
    QDialog dialog(window);
    dialog.setObjectName("shortcutsDialog");
    dialog.setWindowTitle(ShortcutsText::tr("Keyboard Shortcuts"));
    auto* tree = new QTreeWidget;
    tree->setAccessibleName(dialog.windowTitle());
    tree->setHeaderLabels({ShortcutsText::tr("Command"), ShortcutsText::tr("Keys")});
    tree->setRootIsDecorated(false);
    addMenus(tree, window->findChild<QMenuBar*>());
    const auto key = [](auto sequence) {
        return QKeySequence(sequence).toString(QKeySequence::NativeText);
    };
    addKeys(tree, ShortcutsText::tr("Tables"),
        {{ShortcutsText::tr("Copy the selected cells"), key(QKeySequence::Copy)},
            {ShortcutsText::tr("Select all cells"), key(QKeySequence::SelectAll)},
            {ShortcutsText::tr("Filter rows"), key(QKeySequence::Find)},
            {ShortcutsText::tr("Edit a cell, rename a model"), key(Qt::Key_F2)},
            {ShortcutsText::tr("Another type for a tool"), key(Qt::Key_Menu)}});
    addKeys(tree, ShortcutsText::tr("Drill Map"),
        {{ShortcutsText::tr("Zoom"), "+ -"},
            {ShortcutsText::tr("Pan"), QStringLiteral("\u2190 \u2192 \u2191 \u2193")},
            {ShortcutsText::tr("Show all of the board"), key(Qt::Key_Home)}});
    addKeys(tree, ShortcutsText::tr("Drill Size Table Editor"),
        {{ShortcutsText::tr("Add a bit"), key(Qt::CTRL | Qt::Key_N)},
            {ShortcutsText::tr("Delete the bit"), key(Qt::CTRL | Qt::Key_X)},
            {ShortcutsText::tr("Save the bits"), key(Qt::CTRL | Qt::Key_S)},
            {ShortcutsText::tr("Close"), key(Qt::CTRL | Qt::Key_F4)}});
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(tree);
    layout->addWidget(buttons);
    dialog.resize(likedSize);
    dialog.exec();
}

} // namespace brox
