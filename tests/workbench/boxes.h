// SPDX-License-Identifier: MIT
#ifndef TESTS_BOXES_H
#define TESTS_BOXES_H

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

/** Presses the named buttons of the message boxes that come up in its life, one after the other;
 *  boxes beyond them are closed. "Enter" and "Escape" are keys. */
class Boxes
{
public:
    explicit Boxes(const QStringList& answers = {})
        : mAnswers(answers)
    {
        QObject::connect(&mTimer, &QTimer::timeout, [this] { look(); });
        mTimer.start(0);
    }

    void add(const QStringList& answers) { mAnswers += answers; }

    /** Whether as many boxes came as there are answers, and had their buttons. */
    bool areAnswered() const { return mAnswers.isEmpty() && !mIsAmiss; }

    QStringList seen; ///< texts of all boxes

private:
    void look()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) {
            return;
        }
        seen << box->text();
        const QString answer = mAnswers.isEmpty() ? QString() : mAnswers.takeFirst();
        if (answer == "Enter" || answer == "Escape") {
            return QTest::keyClick(box, answer == "Enter" ? Qt::Key_Enter : Qt::Key_Escape);
        }
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().remove('&') == answer) {
                return button->click();
            }
        }
        mIsAmiss = true;
        box->reject();
    }

    QTimer mTimer;
    QStringList mAnswers;
    bool mIsAmiss = false;
};

#endif
