// SPDX-License-Identifier: MIT
#include "bits_menu.h"

#include "bits_exchange.h"
#include "data_file.h"
#include "file_set.h"
#include "question.h"

#include <QCoreApplication>
#include <QFileDialog>

namespace brox {

BitsMenu::BitsMenu(const QString& dataDir, std::function<bool(const std::function<void()>&)> remake,
    QWidget* parent)
    : QMenu(tr("Drill &Bits"), parent)
    , mDataDir(dataDir)
    , mRemake(std::move(remake))
{
    addAction(tr("&Import..."), this, &BitsMenu::importBits);
    addAction(tr("&Export..."), this, &BitsMenu::exportBits);
    QMenu* ready = addMenu(tr("&Ready Sets"));
    for (const ReadySet& set : readySets()) {
        ready->addAction(QCoreApplication::translate("ReadySet", set.name), this,
            [this, key = QLatin1String(set.key)] {
                guard([&] { replace(QStringLiteral("ready:") + key); });
            });
    }
}

void BitsMenu::guard(const std::function<void()>& work)
{
    try {
        work();
    } catch (const std::exception& error) {
        emit failed(QString::fromUtf8(error.what()));
    }
}

void BitsMenu::importBits()
{
    const QString path = QFileDialog::getOpenFileName(parentWidget(), tr("Import Drill Bits"),
        QString(), tr("Comma-separated values (*.csv);;All files (*)"));
    if (!path.isEmpty()) {
        guard([&] { replace(path); });
    }
}

void BitsMenu::replace(const QString& name)
{
    const DrillBits bits = readBits(name);
    const qsizetype former = savedBits(mDataDir).size();
    const QString lines =
        (doubtsAbout(bits) + QStringList(tr("The former bits go to the backups."))).join('\n');
    if (ask(tr("%n bit(s) take the place of those in the table of bits.", "", int(bits.size())),
            tr("The table has %n bit(s) now.", "", int(former)) + '\n' + lines,
            {tr("Replace"), tr("Cancel")})
            == 0
        && mRemake([&] { replaceBits(mDataDir, bits); })) {
        emit done(tr("%n bit(s) imported", "", int(bits.size())));
    }
}

void BitsMenu::exportBits()
{
    QFileDialog dialog(
        parentWidget(), tr("Export Drill Bits"), QString(), tr("Comma-separated values (*.csv)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("csv");
    dialog.selectFile("drill-bits.csv");
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    guard([&] {
        const QString path = dialog.selectedFiles().value(0);
        const QString error = writeFile(path, bitsToCsv(savedBits(mDataDir)));
        if (!error.isEmpty()) {
            throw BitsError(QStringLiteral("%1: %2").arg(path, error));
        }
        emit done(tr("Drill bits exported, as they were saved last: %1").arg(path));
    });
}

} // namespace brox
