// SPDX-License-Identifier: MIT
#include "brox_dialogs.h"

#include "brox_nls.h"
#include "zeb_gui.h"

#include <QFileInfo>

int execUnderArrow(QMessageBox& box)
{
    const ArrowCursor arrow;
    return box.exec();
}

void showFailure(const char* message)
{
    QMessageBox box;
    box.setText(QString::fromLocal8Bit(message));
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
    execUnderArrow(box);
    QApplication::restoreOverrideCursor();
}

bool confirmClose(QWidget* parent, const char* titleKey, const char* textKey,
    const bool& dataChanged, const std::function<void()>& save)
{
    if (!dataChanged) {
        return true;
    }
    QMessageBox box(QMessageBox::Warning, broxText(titleKey), broxText(textKey),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    const int answer = execUnderArrow(box);
    if (answer == QMessageBox::Save) {
        save();
        if (dataChanged) {
            return false;
        }
    }
    return answer != QMessageBox::Cancel;
}

QString chooseFileToLoad(
    QWidget* parent, const LoadDialogTexts& texts, const QString& fileName, const QString& lastFile)
{
    ZExtFileDialog dialog(parent, texts.name, false);
    dialog.setModal(true);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setNameFilters({QStringLiteral("%1 (%2)").arg(texts.fileKind, fileName),
        QStringLiteral("%1 (*)").arg(texts.allFiles)});
    QString folder;
    if (!lastFile.isEmpty()) {
        dialog.setDirectory(lastFile);
    } else if (dialog.getSystemFolder(folder)) {
        dialog.setDirectory(folder + "/brox");
    }
    const QString lastName = QFileInfo(lastFile).fileName();
    dialog.selectFile(lastName.isEmpty() ? fileName : lastName);
    dialog.setWindowTitle(texts.title);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    return QFileInfo(dialog.selectedFiles().constFirst()).absoluteFilePath();
}
