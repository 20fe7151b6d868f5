// SPDX-License-Identifier: MIT
#include "brox_dialogs.h"

#include "zeb_gui.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileInfo>
#include <QPointer>

int execUnderArrow(QMessageBox* box)
{
    const QPointer<QMessageBox> alive(box);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = box->exec();
    QApplication::restoreOverrideCursor();
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

void enterOpenCell(QWidget* part)
{
    const QWidget* editor = part->window()->focusWidget();
    const QWidget* viewport = editor ? editor->parentWidget() : nullptr;
    if (viewport && qobject_cast<QAbstractItemView*>(viewport->parentWidget())) {
        part->setFocus();
    }
}

int askUnsaved(QWidget* parent, const QString& title, const QString& text)
{
    return execUnderArrow(new QMessageBox(QMessageBox::Warning, title, text,
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent));
}

QString chooseFileToLoad(QWidget* parent, const BroxLoadDialogTexts& texts, const QString& fileName,
    const QString& lastFile)
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
