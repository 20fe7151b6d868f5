// SPDX-License-Identifier: MIT
#ifndef MESSAGES_H
#define MESSAGES_H

#include <QDockWidget>
#include <QFrame>
#include <QString>
#include <QStringList>
#include <QTimer>

class QLabel;
class QPlainTextEdit;

namespace brox {

/** Puts a question over the window in front.
 *
 * @param text     what the matter is, one sentence
 * @param details  what follows from each answer
 * @param answers  texts of the buttons; the last is the default and what Escape gives
 * @return index of the answer
 */
qsizetype ask(const QString& text, const QString& details, const QStringList& answers);

/** A line above the tabs that reports an error; it goes away by itself or by a click. */
class ErrorBar : public QFrame
{
    Q_OBJECT

public:
    explicit ErrorBar(QWidget* parent = nullptr);

    /** Shows an error in place of the one before. */
    void showError(const QString& text);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    QLabel* mLabel;
    QTimer mTimer;
};

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
