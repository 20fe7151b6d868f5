// SPDX-License-Identifier: MIT
#ifndef LOG_DOCK_H
#define LOG_DOCK_H

#include <QDockWidget>

class QPlainTextEdit;

namespace brox {

/** The host's log; it comes up with the first error. */
class LogDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit LogDock(QWidget* parent);

    void add(const QString& level, const QString& text);

private:
    QPlainTextEdit* mText;
    bool mHasErrors = false;
};

} // namespace brox

#endif
