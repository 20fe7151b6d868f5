// SPDX-License-Identifier: MIT
#include "question.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace brox {

qsizetype ask(const QString& text, const QString& details, const QStringList& answers)
{
    QMessageBox box(QApplication::activeWindow());
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(QApplication::translate("Question", "brox workbench"));
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setInformativeText(details);
    QList<QAbstractButton*> buttons;
    for (const QString& answer : answers) {
        const bool isLast = buttons.size() + 1 == answers.size();
        QPushButton* button =
            box.addButton(answer, isLast ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        if (isLast) {
            box.setDefaultButton(button);
            box.setEscapeButton(button);
        }
        buttons << button;
    }
    box.exec();
    const qsizetype answer = buttons.indexOf(box.clickedButton());
    return answer < 0 ? answers.size() - 1 : answer;
}

} // namespace brox
