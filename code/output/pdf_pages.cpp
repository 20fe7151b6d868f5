// SPDX-License-Identifier: MIT
#include "pdf_pages.h"

#include "file_set.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <algorithm>
#include <limits>

namespace brox {

namespace {

constexpr int dotsPerInch = 254;
constexpr int margin = 100;

/** Qt writes the moment of the writing, which has no place in files that are to be the same. */
void setDate(QIODevice& pdf, QDate date)
{
    constexpr qint64 mostOfHead = 1 << 16;
    const QByteArray key("/CreationDate (D:");
    pdf.seek(0);
    const qsizetype at = pdf.peek(mostOfHead).indexOf(key);
    if (at >= 0) {
        pdf.seek(at + key.size());
        pdf.write(date.toString(QStringLiteral("yyyyMMdd")).toLatin1() + "000000");
    }
    pdf.seek(pdf.size());
}

} // namespace

PdfPages::PdfPages(QIODevice& file, const QString& title)
    : mFile(file)
    , mWriter(&file)
{
    if (hasGivenDate()) {
        QHashSeed::setDeterministicGlobalSeed(); // Qt numbers glyphs by a hash
    }
    mWriter.setTitle(title);
    mWriter.setCreator(QStringLiteral("brox " OUTPUT_VERSION));
    mWriter.setResolution(dotsPerInch);
    mWriter.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {}));
}

PdfPages::~PdfPages()
{
    mPainter.end();
    if (hasGivenDate()) {
        setDate(mFile, outputDate());
    }
}

QPainter& PdfPages::newPage(QPageLayout::Orientation orientation, int count)
{
    mWriter.setPageOrientation(orientation);
    if (mPainter.isActive()) {
        mWriter.newPage();
    } else {
        mPainter.begin(&mWriter);
    }
    mPainter.save();
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(28);
    mPainter.setFont(font);
    mPainter.drawText(QRect(0, 0, mWriter.width() - margin, mWriter.height() - margin / 2),
        Qt::AlignRight | Qt::AlignBottom, QStringLiteral("%1 / %2").arg(++mPage).arg(count));
    mPainter.restore();
    return mPainter;
}

TextPages::TextPages(const QTextDocument& text, double height)
    : mText(text)
{
    const std::vector<Part> all = parts();
    for (size_t i = 0; i < all.size(); ++i) {
        // A heading goes with what it is above.
        size_t last = i;
        while (last + 1 < all.size() && all[last].isHeading) {
            ++last;
        }
        const bool fits = !mPages.empty()
            && all[last].bottom - mPages.back().top + mPages.back().head.height() <= height;
        if (!fits) {
            mPages.push_back({{all[i].top, all[i].top}, all[i].head});
        }
        // What is higher than a page goes on on others, wherever it is cut.
        while (all[last].bottom - mPages.back().top + mPages.back().head.height() > height) {
            Page& full = mPages.back();
            full.bottom = full.top + std::max(1.0, height - full.head.height());
            mPages.push_back({{full.bottom, full.bottom}, {}});
        }
        mPages.back().bottom = all[last].bottom;
        i = last;
    }
}

/** Each ends where the next one begins. */
std::vector<TextPages::Part> TextPages::parts() const
{
    std::vector<Part> all;
    const auto add = [&](Part part) {
        if (!all.empty()) {
            part.top = all.back().bottom = (all.back().bottom + part.top) / 2;
        }
        all.push_back(part);
    };
    const auto rectOf = [this](const QTextBlock& block) {
        return mText.documentLayout()->blockBoundingRect(block);
    };
    const QTextFrame* root = mText.rootFrame();
    for (auto at = root->begin(); !at.atEnd(); ++at) {
        const auto* table = qobject_cast<const QTextTable*>(at.currentFrame());
        if (!table) {
            const QRectF rect = rectOf(at.currentBlock());
            add({{rect.top(), rect.bottom()}, {},
                at.currentBlock().blockFormat().headingLevel() > 0});
            continue;
        }
        const size_t first = all.size();
        for (int row = 0; row < table->rows(); ++row) {
            Part part{{std::numeric_limits<double>::max(), 0}, {}};
            for (int column = 0; column < table->columns(); ++column) {
                const QTextTableCell cell = table->cellAt(row, column);
                part.top = std::min(part.top, rectOf(cell.firstCursorPosition().block()).top());
                part.bottom =
                    std::max(part.bottom, rectOf(cell.lastCursorPosition().block()).bottom());
            }
            add(part);
        }
        if (table->format().headerRowCount() > 0) {
            all[first].isHeading = true;
            for (size_t i = first + 1; i < all.size(); ++i) {
                all[i].head = all[first];
            }
        }
    }
    return all;
}

void TextPages::paint(QPainter& painter, int index) const
{
    const Page& page = mPages[size_t(index)];
    painter.save();
    painter.translate(0, -page.head.top);
    paint(painter, page.head);
    painter.translate(0, page.head.bottom - page.top);
    paint(painter, page);
    painter.restore();
}

void TextPages::paint(QPainter& painter, const Stretch& stretch) const
{
    if (stretch.height() <= 0) {
        return;
    }
    painter.save();
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(0, stretch.top, mText.size().width(), stretch.height());
    painter.setClipRect(context.clip);
    mText.documentLayout()->draw(&painter, context);
    painter.restore();
}

} // namespace brox
