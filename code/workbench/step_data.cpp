// SPDX-License-Identifier: MIT
#include "step_data.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QTableWidget>
#include <QToolButton>
#include <algorithm>

namespace brox {

StepData::StepData(QWidget* viewer, const QString& step)
    : QObject(viewer)
    , mViewer(viewer)
    , mBits(viewer->findChild<QWidget*>("BitsFileEditor"))
    , mStep(step)
{
    connect(viewer, SIGNAL(dataChanged(bool)), SLOT(modelsChanged(bool)));
    if (auto* models = viewer->findChild<QTableWidget*>("broxModelTableWidget")) {
        connect(models, &QTableWidget::itemSelectionChanged, this, &StepData::touched);
    }
    if (mBits) {
        if (const auto* bits = mBits->findChild<QTableWidget*>("drillBitsTableWidget")) {
            const QAbstractItemModel* model = bits->model();
            connect(model, &QAbstractItemModel::dataChanged, this, &StepData::touched);
            connect(model, &QAbstractItemModel::rowsInserted, this, &StepData::touched);
            connect(model, &QAbstractItemModel::rowsRemoved, this, &StepData::touched);
        }
        connect(mBits, &QWidget::windowTitleChanged, this, [this](const QString& title) {
            nameBits(title);
            follow(DataFile::Kind::Bits, title.endsWith('*'));
        });
        nameBits(mBits->windowTitle());
    }
}

bool StepData::hasUnsaved() const
{
    return std::any_of(mFiles.begin(), mFiles.end(),
        [](const File& file) { return file.isEdited || file.isLost; });
}

bool StepData::isInFront(DataFile::Kind kind) const
{
    return kind == DataFile::Kind::Models ? mViewer->isVisible() : mBits && mBits->isActiveWindow();
}

/** Two steps have a window of bits each. */
void StepData::nameBits(const QString& title)
{
    const QString start = mStep + QStringLiteral(": ");
    if (!title.startsWith(start)) {
        mBits->setWindowTitle(start + title);
    }
}

void StepData::triggerBits(const char* action)
{
    if (auto* command = mBits ? mBits->findChild<QAction*>(action) : nullptr) {
        command->trigger();
    }
}

void StepData::save(DataFile::Kind kind)
{
    if (kind == DataFile::Kind::Bits) {
        triggerBits("actionSave");
    } else if (auto* button = mViewer->findChild<QToolButton*>("saveToolButton")) {
        button->click();
    }
}

bool StepData::markEdited(DataFile::Kind kind)
{
    if (kind == DataFile::Kind::Bits) {
        triggerBits("actionAdd_Size");
        triggerBits("actionDelete_Size");
    } else if (auto* box = mViewer->findChild<QCheckBox*>("useBitFileCheckBox")) {
        box->click();
        box->click();
    }
    return file(kind).isEdited;
}

bool StepData::closeBits()
{
    if (!mBits) {
        return true;
    }
    // Not by close(): a window that was closed before would not be asked again.
    QCloseEvent event;
    QCoreApplication::sendEvent(mBits, &event);
    if (event.isAccepted()) {
        mBits->hide();
    }
    return event.isAccepted();
}

void StepData::modelsChanged(bool isEdited)
{
    follow(DataFile::Kind::Models, isEdited);
    emit touched();
}

void StepData::follow(DataFile::Kind kind, bool isEdited)
{
    if (file(kind).isEdited != isEdited) {
        file(kind).isEdited = isEdited;
        emit edited(kind, isEdited);
    }
}

} // namespace brox
