// SPDX-License-Identifier: MIT
#include "brox_dialogs.h"

#include "brox_nls.h"
#include "zeb_gui.h"

#include <QFileInfo>
#include <QPointer>

int execUnderArrow(QMessageBox* box)
{
    const QPointer<QMessageBox> alive(box);
    const ArrowCursor arrow;
    const int answer = box->exec();
    if (!alive) {
        return QMessageBox::Cancel;
    }
    delete box;
    return answer;
}

void showFailure(const char* message)
{
    auto* box = new QMessageBox;
    box->setText(QString::fromLocal8Bit(message));
    box->setStandardButtons(QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::Ok);
    execUnderArrow(box);
    QApplication::restoreOverrideCursor();
}

bool confirmClose(QWidget* owner, const char* titleKey, const char* textKey, bool isUnsaved,
    const std::function<bool()>& save)
{
    if (!isUnsaved) {
        return true;
    }
    const int answer = execUnderArrow(new QMessageBox(QMessageBox::Warning, broxText(titleKey),
        broxText(textKey), QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, owner));
    return answer == QMessageBox::Save ? save() : answer != QMessageBox::Cancel;
}

QString chooseFileToLoad(
    QWidget* parent, const LoadDialogTexts& texts, const QString& fileName, const QString& lastFile)
{
    const QPointer<ZExtFileDialog> dialog = new ZExtFileDialog(parent, texts.name, false);
    dialog->setModal(true);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setNameFilters({QStringLiteral("%1 (%2)").arg(texts.fileKind, fileName),
        QStringLiteral("%1 (*)").arg(texts.allFiles)});
    QString folder;
    if (!lastFile.isEmpty()) {
        dialog->setDirectory(lastFile);
    } else if (dialog->getSystemFolder(folder)) {
        dialog->setDirectory(folder + "/brox");
    }
    const QString lastName = QFileInfo(lastFile).fileName();
    dialog->selectFile(lastName.isEmpty() ? fileName : lastName);
    dialog->setWindowTitle(texts.title);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {}; // gone with its parent
    }
    const QString file = isAccepted ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath();
}
