// SPDX-License-Identifier: MIT
#include "data_watch.h"

#include "live_plan.h"

#include <QApplication>
#include <QDir>

namespace brox {

namespace {

constexpr int settlingTime = 200; ///< milliseconds in which a save of several files is done

} // namespace

DataWatch::DataWatch(const QString& dataDir)
    : mFolder(QDir(dataDir).filePath("brox"))
{
    mTimer.setSingleShot(true);
    mTimer.setInterval(settlingTime);
    connect(&mWatcher, &QFileSystemWatcher::directoryChanged, &mTimer, qOverload<>(&QTimer::start));
    connect(&mWatcher, &QFileSystemWatcher::fileChanged, &mTimer, qOverload<>(&QTimer::start));
    connect(&mTimer, &QTimer::timeout, this, [this] {
        // A viewer that asks something, or is being typed into, can't be made anew now.
        if (QApplication::activeModalWidget() || QApplication::activePopupWidget()
            || isTypingIntoCell()) {
            mTimer.start();
            return;
        }
        watch(); // a file that was replaced is another one
        emit changed();
    });
    watch();
}

void DataWatch::watch()
{
    QStringList paths{mFolder};
    for (const QString& name : QDir(mFolder).entryList({"*.xml", "*.json"}, QDir::Files)) {
        paths << QDir(mFolder).filePath(name);
    }
    for (const QString& path : paths) {
        if (QFileInfo::exists(path)) {
            mWatcher.addPath(path); // one that is watched already is not added
        }
    }
}

} // namespace brox
