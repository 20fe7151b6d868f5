// SPDX-License-Identifier: MIT
#ifndef START_PAGE_H
#define START_PAGE_H

#include <QStringList>
#include <QWidget>

class QVBoxLayout;

namespace brox {

/** What the window shows while no board is open: ways to open one. */
class StartPage : public QWidget
{
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);

    /** Reads the recent boards anew. */
    void refresh();

signals:
    void openBoardWanted();
    void openFolderWanted();
    void chosen(const QStringList& paths);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addBoards(const QString& heading, const QList<QStringList>& boards);

    QWidget* mLists = nullptr;
};

} // namespace brox

#endif
