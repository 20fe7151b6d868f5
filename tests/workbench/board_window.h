// SPDX-License-Identifier: MIT
#ifndef TESTS_BOARD_WINDOW_H
#define TESTS_BOARD_WINDOW_H

#include "data_start.h"
#include "host_session.h"
#include "main_window.h"
#include "open_job.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

/** A window with the board "a.drl", in a folder of its own that has the data, too. */
class BoardWindow : public QObject
{
protected:
    /** Two tools; the second drills one hole, in the middle of the map. */
    static constexpr char program[] = "M48\nMETRIC\nT1C0.3\nT2C0.8\n%\n"
                                      "T1\nX0.0Y0.0\nX20.0Y40.0\nT2\nX10.0Y20.0\nM30\n";

    void openWindow()
    {
        closeWindow(); // which does not follow upon a failure in here
        mFolder = std::make_unique<QTemporaryDir>();
        QCoreApplication::setOrganizationName("brox");
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, mFolder->path());
        brox::DataStart::fill(mFolder->path());
        mSession = std::make_unique<brox::HostSession>(mFolder->path());
        mWindow = std::make_unique<brox::MainWindow>(*mSession);
        const QString dataDir = mFolder->path();
        mWindow->loadRules([dataDir] { return brox::loadRules(dataDir); });
        mWindow->remember();
        mWindow->show();
        open("a.drl");
    }
    void closeWindow()
    {
        mWindow.reset();
        mSession.reset();
    }

    QString path(const QString& name) const { return mFolder->filePath(name); }
    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(content);
    }
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    void open(const QString& name)
    {
        write(name, program);
        QVERIFY(mWindow->openBoard({path(name)}));
    }

    template <typename Widget>
    Widget* child(const char* name) const
    {
        return mWindow->findChild<Widget*>(name);
    }
    QTableWidget* tools() const
    {
        return mSession->viewer(0)->findChild<QTableWidget*>("jobDrillDataTableWidget");
    }
    QAction* action(const QString& text) const
    {
        for (QAction* action : mWindow->findChildren<QAction*>()) {
            if (action->text().remove('&') == text) {
                return action;
            }
        }
        qFatal("There is no %s", qPrintable(text));
    }
    void choose(const QString& text) { action(text)->trigger(); }

    /** Does something in the dialog that comes up next. */
    template <typename Dialog>
    void inDialog(const std::function<void(Dialog*)>& work)
    {
        QTimer::singleShot(0, this, [=] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            work(dialog);
        });
    }

    /** Exports under a name that is typed, as one of the forms that the dialog offers; gives the
     *  name that it comes with. */
    QString exportAs(const QString& action, const QString& name, int form = 0)
    {
        QString offered;
        inDialog<QFileDialog>([&](QFileDialog* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
            offered = dialog->directory().filePath(edit->text());
            for (int i = 0; i < form; ++i) {
                QTest::keyClick(dialog->findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Down);
            }
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        choose(action);
        return offered;
    }

    std::unique_ptr<QTemporaryDir> mFolder;
    std::unique_ptr<brox::HostSession> mSession;
    std::unique_ptr<brox::MainWindow> mWindow;
};

#endif
