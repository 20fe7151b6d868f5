// SPDX-License-Identifier: MIT
#include "messages.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>

namespace brox {

namespace {

constexpr int shownFor = 20'000; ///< milliseconds

constexpr int maxLines = 5000;
constexpr int firstHeight = 110;

} // namespace

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

QString plainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

void showFailure(const QString& text)
{
    QMessageBox box(QMessageBox::Critical, QApplication::translate("Question", "brox workbench"),
        QString(), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.exec();
}

void attempt(const std::function<void()>& work)
{
    try {
        work();
    } catch (const std::exception& error) {
        showFailure(QString::fromUtf8(error.what()));
    }
}

NoticeBar::NoticeBar(const QString& name, QStyle::StandardPixmap icon)
    : mLabel(new QLabel)
{
    setObjectName(name);
    setFrameShape(QFrame::StyledPanel);
    mLabel->setObjectName(QString(name).replace("Bar", "Label"));
    mLabel->setTextFormat(Qt::PlainText);
    mLabel->setWordWrap(true);
    auto* picture = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    picture->setPixmap(style()->standardIcon(icon).pixmap(size));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(picture);
    layout->addWidget(mLabel, 1);
    hide();
}

QPushButton* NoticeBar::addButton(const QString& text)
{
    auto* button = new QPushButton(text);
    layout()->addWidget(button);
    return button;
}

ErrorBar::ErrorBar()
    : NoticeBar("errorBar", QStyle::SP_MessageBoxCritical)
{
    setToolTip(tr("Click to dismiss; the log keeps it."));
    mTimer.setSingleShot(true);
    mTimer.setInterval(shownFor);
    connect(&mTimer, &QTimer::timeout, this, &QWidget::hide);
}

void ErrorBar::showError(const QString& text)
{
    setText(text);
    show();
    mTimer.start();
}

void ErrorBar::mousePressEvent(QMouseEvent*)
{
    hide();
}

LogDock::LogDock(QWidget* parent)
    : QDockWidget(tr("Log"), parent)
    , mText(new QPlainTextEdit)
{
    setObjectName("logDock");
    mText->setReadOnly(true);
    mText->setAccessibleName(tr("Log"));
    mText->setTabChangesFocus(true);
    mText->setMaximumBlockCount(maxLines);
    setWidget(mText);
    hide();
}

void LogDock::add(const QString& level, const QString& text)
{
    mText->appendPlainText(level + ": " + text);
    if (level == "ERROR" && !mHasErrors) {
        mHasErrors = true; // who closes it afterwards does not want to see the next
        show();
        if (auto* window = qobject_cast<QMainWindow*>(parentWidget())) {
            window->resizeDocks({this}, {firstHeight}, Qt::Vertical);
        }
    }
}

} // namespace brox
