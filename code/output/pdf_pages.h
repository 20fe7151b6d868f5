// SPDX-License-Identifier: MIT
#ifndef PDF_PAGES_H
#define PDF_PAGES_H

#include <QPainter>
#include <QPdfWriter>
#include <vector>

class QTextDocument;

namespace brox {

/** A PDF of A4 pages without margins in which a dot is a tenth of a millimetre. It is written while
 *  it is painted, page by page. */
class PdfPages
{
public:
    /** @param file  outlives the pages; what goes wrong with it is the file's to know */
    PdfPages(QIODevice& file, const QString& title);
    ~PdfPages();
    Q_DISABLE_COPY_MOVE(PdfPages)

    /** What a text has to be laid out for. */
    QPaintDevice& device() { return mWriter; }

    /** @param count  of all pages, by which each is numbered at its lower right */
    QPainter& newPage(QPageLayout::Orientation orientation, int count);

private:
    QIODevice& mFile;
    QPdfWriter mWriter;
    QPainter mPainter;
    int mPage = 0;
};

/** Cuts a text into pages between its lines and between the rows of its tables, whose heads come
 *  again on each page; no heading stands last on one. */
class TextPages
{
public:
    /** @param text  laid out in the pages' width without pages of its own; outlives them */
    TextPages(const QTextDocument& text, double height);

    int count() const { return int(mPages.size()); }

    /** Paints a page with its corner at the painter's origin. */
    void paint(QPainter& painter, int page) const;

private:
    /** From one height of the text to another. */
    struct Stretch
    {
        double top = 0;
        double bottom = 0;

        double height() const { return bottom - top; }
    };
    struct Part : Stretch
    {
        Stretch head; ///< of its table; empty: it is the head, or in no table
        bool isHeading = false;
    };
    struct Page : Stretch
    {
        Stretch head; ///< comes before it
    };

    std::vector<Part> parts() const;
    void paint(QPainter& painter, const Stretch& stretch) const;

    const QTextDocument& mText;
    std::vector<Page> mPages;
};

} // namespace brox

#endif
