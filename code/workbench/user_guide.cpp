// SPDX-License-Identifier: MIT
#include "user_guide.h"

#include "share.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QScreen>
#include <QTextBrowser>
#include <QTextFragment>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr QSize likedSize(760, 800);

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

} // namespace

void showUserGuide(QWidget* parent)
{
    auto* window = new QDialog(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName("userGuide");
    window->setWindowTitle(QCoreApplication::translate("UserGuide", "brox user guide"));
    auto* page = new QTextBrowser;
    page->setFrameShape(QFrame::NoFrame);
    page->setOpenLinks(false);
    QObject::connect(page, &QTextBrowser::anchorClicked, page, [page](const QUrl& link) {
        const QTextCursor heading = headingOf(page->document(), link.fragment());
        if (!heading.isNull()) {
            page->setTextCursor(heading);
            page->ensureCursorVisible();
        }
    });
    page->setSource(QUrl::fromLocalFile(sharePath("docs/user-guide.md")));

    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);
    window->resize(likedSize.boundedTo(window->screen()->availableSize()));
    window->show();
}
