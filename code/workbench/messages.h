// SPDX-License-Identifier: MIT
#ifndef MESSAGES_H
#define MESSAGES_H

#include <QDockWidget>
#include <QFrame>
#include <QLabel>
#include <QString>
#include <QStringList>
#include <QStyle>
#include <QTimer>
#include <functional>

class QPlainTextEdit;
class QPushButton;

namespace brox {

/** Puts a question over the window in front.
 *
 * @param text     what the matter is, one sentence
 * @param details  what follows from each answer
 * @param answers  texts of the buttons; the last is the default and what Escape gives
 * @return index of the answer
 */
qsizetype ask(const QString& text, const QString& details, const QStringList& answers);

/** Text for a tool tip in which nothing is markup. */
QString plainTip(const QString& text);

/** Says over the window in front what can't be done. */
void showFailure(const QString& text);

/** Runs a user's command; shows why it can't be done if it throws. */
void attempt(const std::function<void()>& work);

/** A line above the tabs; hidden at first. */
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    NoticeBar(const QString& name, QStyle::StandardPixmap icon);

    void setText(const QString& text) { mLabel->setText(text); }

    /** @return owned by the bar */
    QPushButton* addButton(const QString& text);

private:
    QLabel* mLabel;
};

/** Reports an error; it goes away by itself or by a click. */
class ErrorBar : public NoticeBar
{
    Q_OBJECT

public:
    ErrorBar();

    /** Shows an error in place of the one before. */
    void showError(const QString& text);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
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
