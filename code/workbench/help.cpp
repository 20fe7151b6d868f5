// SPDX-License-Identifier: MIT
#include "help.h"

#include "language.h"
#include "main_window.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace brox {

namespace {

constexpr QSize guideSize(760, 800);

/** A page whose pictures are no wider than it is. */
class Page : public QTextBrowser
{
public:
    QVariant loadResource(int type, const QUrl& name) override
    {
        const QVariant resource = QTextBrowser::loadResource(type, name);
        const QImage picture = QImage::fromData(resource.toByteArray());
        if (type != QTextDocument::ImageResource || picture.isNull()) {
            return resource;
        }
        const int room = viewport()->width() - 2 * int(document()->documentMargin());
        return picture.width() <= room ? picture
                                       : picture.scaledToWidth(room, Qt::SmoothTransformation);
    }
};

/** Where a heading of the page stands that a link of the page leads to, by the rule for Markdown:
 *  small letters, and a hyphen for a blank. */
QTextCursor headingOf(const QTextDocument* page, const QString& anchor)
{
    for (QTextBlock block = page->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0
            && block.text().toLower().replace(' ', '-') == anchor) {
            return QTextCursor(block);
        }
    }
    return {};
}

class ShortcutsText
{
    Q_DECLARE_TR_FUNCTIONS(Shortcuts)
};

constexpr QSize shortcutsSize(460, 560);

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

void showUserGuide(QWidget* parent)
{
    auto* window = new QDialog(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName("userGuide");
    window->setWindowTitle(QCoreApplication::translate("UserGuide", "brox user guide"));
    auto* page = new Page;
    page->setFrameShape(QFrame::NoFrame);
    page->setOpenLinks(false);
    page->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // its room is not a picture's
    QObject::connect(page, &QTextBrowser::anchorClicked, page, [page](const QUrl& link) {
        const QTextCursor heading = headingOf(page->document(), link.fragment());
        if (!heading.isNull()) {
            page->setTextCursor(heading);
            page->ensureCursorVisible();
        }
    });

    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);
    window->resize(guideSize.boundedTo(window->screen()->availableSize()));
    window->show();
    // Not before: pictures are to fit the page.
    page->setSource(QUrl::fromLocalFile(sharePath("docs/user-guide.md")));
}

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
    dialog.resize(shortcutsSize);
    dialog.exec();
}

void showAbout(QWidget* window, const QString& dataDir)
{
    QMessageBox box(window);
    box.setWindowTitle(MainWindow::tr("About brox workbench"));
    box.setIconPixmap(window->windowIcon().pixmap(64));
    box.setTextFormat(Qt::RichText);
    box.setText(
        MainWindow::tr("<h3>brox workbench %1</h3>"
                       "<p>Sets up the drill tools of printed-circuit boards: finished hole sizes "
                       "become drill sizes, by models of the plating and a table of bits.</p>"
                       "<p>MIT licence. Models and bits are in<br>%2</p>")
            .arg(QCoreApplication::applicationVersion(), dataDir.toHtmlEscaped()));
    box.exec();
}

} // namespace brox
