// SPDX-License-Identifier: MIT
#include "step_data.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <algorithm>

namespace brox {

StepData::StepData(QWidget* viewer, const QString& step)
    : QObject(viewer)
    , mViewer(viewer)
    , mBits(viewer->findChild<QWidget*>("BitsFileEditor"))
    , mStep(step)
{
    connect(viewer, SIGNAL(dataChanged(bool)), SLOT(modelsChanged(bool)));
    if (mBits) {
        connect(mBits, &QWidget::windowTitleChanged, this,
            [this](const QString& title) { follow(DataFile::Kind::Bits, title.endsWith('*')); });
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
}

void StepData::follow(DataFile::Kind kind, bool isEdited)
{
    if (file(kind).isEdited != isEdited) {
        file(kind).isEdited = isEdited;
        emit edited(kind, isEdited);
    }
}

} // namespace brox
