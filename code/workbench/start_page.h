// SPDX-License-Identifier: MIT
#ifndef START_PAGE_H
#define START_PAGE_H

#include <QList>
#include <QStringList>
#include <QWidget>

namespace brox {

/** The boards that were opened last, the latest first; a board is the paths of its files. They
 *  are kept in the user's settings. */
class RecentBoards
{
public:
    static QList<QStringList> all();

    /** The latest; empty if there is none. */
    static QStringList latest() { return all().value(0); }

    /** @param paths  absolute */
    static void add(const QStringList& paths);

    static bool exists(const QStringList& paths);

    /** What the user calls a board: the name of its first file, and how many more there are. */
    static QString name(const QStringList& paths);
};

/** Buttons that open recent boards and samples. */
class BoardLinks : public QWidget
{
    Q_OBJECT

public:
    explicit BoardLinks(QWidget* parent);

signals:
    void chosen(const QStringList& paths);

protected:
    /** Reads the recent boards anew. */
    void showEvent(QShowEvent* event) override;

private:
    void add(const QString& heading, const QList<QStringList>& boards);

    QWidget* mLists = nullptr;
};

} // namespace brox

#endif
