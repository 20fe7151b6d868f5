// SPDX-License-Identifier: MIT
#include "start_page.h"

#include "language.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>

namespace brox {

namespace {

constexpr qsizetype maxBoards = 8;
const char key[] = "recentBoards";

/** The boards that come with the program, all files of one together. */
QList<QStringList> samples()
{
    const QDir folder(sharePath("samples"));
    QList<QStringList> boards;
    for (const QString& name : folder.entryList({"*.xml"}, QDir::Files)) {
        boards << QStringList{folder.filePath(name)};
    }
    QStringList drills;
    for (const QString& name : folder.entryList({"*.drl"}, QDir::Files)) {
        drills << folder.filePath(name);
    }
    if (!drills.isEmpty()) {
        boards << drills;
    }
    return boards;
}

} // namespace

QList<QStringList> RecentBoards::all()
{
    QList<QStringList> boards;
    const QVariantList stored = QSettings().value(key).toList();
    for (const QVariant& board : stored) {
        if (!board.toStringList().isEmpty()) {
            boards << board.toStringList();
        }
    }
    return boards;
}

void RecentBoards::add(const QStringList& paths)
{
    QList<QStringList> boards = all();
    boards.removeAll(paths);
    boards.prepend(paths);
    QVariantList stored;
    for (const QStringList& board : boards.first(std::min(boards.size(), maxBoards))) {
        stored << board;
    }
    QSettings().setValue(key, stored);
}

bool RecentBoards::exists(const QStringList& paths)
{
    return !paths.isEmpty() && std::all_of(paths.begin(), paths.end(), [](const QString& path) {
        return QFileInfo::exists(path); // a board may be a folder
    });
}

QString RecentBoards::name(const QStringList& paths)
{
    const QString first = QFileInfo(paths.value(0)).fileName();
    const int others = int(paths.size()) - 1;
    return others < 1
        ? first
        : QCoreApplication::translate("RecentBoards", "%1 and %n more file(s)", nullptr, others)
              .arg(first);
}

BoardLinks::BoardLinks(QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void BoardLinks::showEvent(QShowEvent* event)
{
    delete mLists;
    mLists = new QWidget;
    auto* column = new QVBoxLayout(mLists);
    column->setContentsMargins(0, 12, 0, 0);
    layout()->addWidget(mLists);
    add(tr("Recent boards"), RecentBoards::all());
    add(tr("Samples"), samples());
    QWidget::showEvent(event);
}

void BoardLinks::add(const QString& heading, const QList<QStringList>& boards)
{
    if (boards.isEmpty()) {
        return;
    }
    auto* label = new QLabel(heading);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    mLists->layout()->addWidget(label);
    for (const QStringList& paths : boards) {
        auto* button = new QPushButton(RecentBoards::name(paths).replace('&', "&&"));
        button->setFlat(true);
        button->setCursor(Qt::PointingHandCursor);
        button->setStyleSheet("text-align: left; padding: 3px");
        button->setToolTip(paths.join('\n'));
        button->setEnabled(RecentBoards::exists(paths));
        // Later: the page goes, and with it the button that was clicked.
        connect(
            button, &QPushButton::clicked, this, [this, paths] { emit chosen(paths); },
            Qt::QueuedConnection);
        mLists->layout()->addWidget(button);
    }
}

} // namespace brox
