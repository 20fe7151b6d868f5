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

namespace brox {

namespace {

constexpr QSize likedSize(760, 800);

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
    window->resize(likedSize.boundedTo(window->screen()->availableSize()));
    window->show();
    // Not before: pictures are to fit the page.
    page->setSource(QUrl::fromLocalFile(sharePath("docs/user-guide.md")));
}

} // namespace brox
