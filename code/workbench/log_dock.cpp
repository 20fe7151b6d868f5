// SPDX-License-Identifier: MIT
#include "log_dock.h"

#include <QMainWindow>
#include <QPlainTextEdit>

namespace brox {

namespace {

constexpr int maxLines = 5000;
constexpr int firstHeight = 110;

} // namespace

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
