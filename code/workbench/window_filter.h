// SPDX-License-Identifier: MIT
#ifndef WINDOW_FILTER_H
#define WINDOW_FILTER_H

#include <QObject>
#include <QString>
#include <QStringList>

class QDropEvent;
class QWidget;

namespace brox {

/** What all windows of the program have in common, whoever made them.
 *
 * Labels and tool tips show names of boards, files and models: what no form declares as markup is
 * plain text.
 *
 * The wheel scrolls, and turns no field or list that has not the focus. Ctrl+C copies the selected
 * cells of any table for a spreadsheet, and Ctrl+A selects all of them. Files that are dropped
 * anywhere in the main window are opened, and never become the text of a field.
 */
class WindowFilter : public QObject
{
    Q_OBJECT

public:
    /** @param window  the main window; becomes the parent */
    explicit WindowFilter(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void dropped(const QStringList& paths);

private:
    bool takeDrop(QObject* watched, QDropEvent* event);

    QWidget* mWindow;
};

} // namespace brox

#endif
