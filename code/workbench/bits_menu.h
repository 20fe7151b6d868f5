// SPDX-License-Identifier: MIT
#ifndef BITS_MENU_H
#define BITS_MENU_H

#include "bits_list.h"

#include <QMenu>
#include <functional>

namespace brox {

/** File > Drill Bits: lists of bits in and out of the data folder, and ready sets. */
class BitsMenu : public QMenu
{
    Q_OBJECT

public:
    /** @param dataDir  folder of the bits
     *  @param remake   makes the open viewers anew around a change; false: the user wants none
     */
    BitsMenu(const QString& dataDir,
        std::function<bool(const std::function<void()>& change)> remake, QWidget* parent);

signals:
    void done(const QString& message);
    void failed(const QString& message);

private:
    void importBits();
    void exportBits();
    void replace(const QString& name);
    void guard(const std::function<void()>& work);

    QString mDataDir;
    std::function<bool(const std::function<void()>&)> mRemake;
};

} // namespace brox

#endif
