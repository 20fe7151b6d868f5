// SPDX-License-Identifier: MIT
#ifndef ERROR_BAR_H
#define ERROR_BAR_H

#include <QFrame>
#include <QTimer>

class QLabel;

namespace brox {

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

} // namespace brox

#endif
