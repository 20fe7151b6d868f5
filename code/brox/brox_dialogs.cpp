// SPDX-License-Identifier: MIT
#include "brox_dialogs.h"

#include "brox_nls.h"
#include "zeb_gui.h"

#include <QFileInfo>
#include <QPointer>
#include <QToolButton>

#include <vector>

namespace {

/** Keeps the tool buttons around a box while it runs, should the host delete them: a click on one
 *  of them may have opened the box, and Qt looks at a button once more after its slots. */
class ButtonKeeper
{
public:
    explicit ButtonKeeper(QWidget* part)
    {
        for (; part; part = part->parentWidget()) {
            if (isOfModule(part)) {
                // Qt sends this signal before it deletes the children.
                QObject::connect(
                    part, &QObject::destroyed, &mContext, [this, part] { keep(part); });
            }
        }
    }

    ~ButtonKeeper()
    {
        for (const QPointer<QToolButton>& button : mButtons) {
            if (button) {
                button->deleteLater();
            }
        }
    }
    Q_DISABLE_COPY_MOVE(ButtonKeeper)

private:
    static bool isOfModule(const QWidget* part)
    {
        return QByteArrayView(part->metaObject()->className()).startsWith("Brox");
    }

    void keep(const QWidget* part)
    {
        for (QToolButton* button : part->findChildren<QToolButton*>()) {
            if (!qobject_cast<QDialog*>(button->window())) {
                button->setParent(nullptr);
                mButtons.emplace_back(button);
            }
        }
    }

    QObject mContext;
    std::vector<QPointer<QToolButton>> mButtons;
};

} // namespace

int execUnderArrow(QMessageBox* box)
{
    const QPointer<QMessageBox> alive(box);
    const ButtonKeeper buttons(box->parentWidget());
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
    const ButtonKeeper buttons(parent);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {}; // gone with its parent
    }
    const QString file = isAccepted ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath();
}
