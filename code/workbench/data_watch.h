// SPDX-License-Identifier: MIT
#ifndef DATA_WATCH_H
#define DATA_WATCH_H

#include <QFileSystemWatcher>
#include <QTimer>

namespace brox {

/** Hears of changes to the files of a data folder, whoever made them. */
class DataWatch : public QObject
{
    Q_OBJECT

public:
    explicit DataWatch(const QString& dataDir);

signals:
    /** Some file may have changed; a series of changes is reported once. */
    void changed();

private:
    void watch();

    QString mFolder;
    QFileSystemWatcher mWatcher;
    QTimer mTimer;
};

} // namespace brox

#endif
