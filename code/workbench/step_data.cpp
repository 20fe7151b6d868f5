// SPDX-License-Identifier: MIT
#include "step_data.h"

#include "host_session.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace brox {

namespace {

constexpr qsizetype nameLength = 64; ///< most characters of a model's name
constexpr qsizetype designationSize = 7; ///< bytes of a bit's designation that a host gets

/** Columns of the table of bits. */
enum Column
{
    DesignationColumn,
    MetricColumn,
    InchColumn,
    ApprovedColumn
};

/** As much of a designation as the module hands out. */
QString handedOut(const QTableWidgetItem* designation)
{
    return QString::fromLocal8Bit(designation->text().toLocal8Bit().left(designationSize));
}

QString copyName(const QString& name, const QTableWidget* models)
{
    QString end = HostSession::tr(" copy");
    const auto isTaken = [&] {
        return !models->findItems(name.left(nameLength - end.size()) + end, Qt::MatchExactly)
                    .isEmpty();
    };
    for (int i = 2; isTaken(); ++i) {
        end = HostSession::tr(" copy %1").arg(i);
    }
    return name.left(nameLength - end.size()) + end;
}

} // namespace

template <typename Part>
Part* StepData::part(const char* name) const
{
    auto* part = mViewer->findChild<Part*>(name);
    if (!part) {
        throw HostError(HostSession::tr("the viewer has no %1").arg(QLatin1String(name)));
    }
    return part;
}

StepData::StepData(QWidget* viewer, const QString& step)
    : QObject(viewer)
    , mViewer(viewer)
    , mBits(part<QWidget>("BitsFileEditor"))
    , mStep(step)
{
    connect(viewer, SIGNAL(dataChanged(bool)), SLOT(modelsChanged(bool)));
    connect(part<QTableWidget>("broxModelTableWidget"), &QTableWidget::itemSelectionChanged, this,
        &StepData::touched);
    const QAbstractItemModel* bits = part<QTableWidget>("drillBitsTableWidget")->model();
    connect(bits, &QAbstractItemModel::dataChanged, this, &StepData::touched);
    connect(bits, &QAbstractItemModel::rowsInserted, this, &StepData::touched);
    connect(bits, &QAbstractItemModel::rowsRemoved, this, &StepData::touched);
    connect(mBits, &QWidget::windowTitleChanged, this, [this](const QString& title) {
        nameBits(title);
        follow(DataFile::Kind::Bits, title.endsWith('*'));
    });
    nameBits(mBits->windowTitle());
}

bool StepData::hasUnsaved() const
{
    return std::any_of(mFiles.begin(), mFiles.end(),
        [](const File& file) { return file.isEdited || file.isLost; });
}

bool StepData::isInFront(DataFile::Kind kind) const
{
    return kind == DataFile::Kind::Models ? mViewer->isVisible() : mBits->isActiveWindow();
}

/** Two steps have a window of bits each. */
void StepData::nameBits(const QString& title)
{
    const QString start = mStep + QStringLiteral(": ");
    if (!title.startsWith(start)) {
        mBits->setWindowTitle(start + title);
    }
}

void StepData::save(DataFile::Kind kind)
{
    if (kind == DataFile::Kind::Bits) {
        part<QAction>("actionSave")->trigger();
    } else {
        part<QToolButton>("saveToolButton")->click();
    }
}

bool StepData::markEdited(DataFile::Kind kind)
{
    if (kind == DataFile::Kind::Bits) {
        part<QAction>("actionAdd_Size")->trigger();
        part<QAction>("actionDelete_Size")->trigger();
    } else {
        part<QCheckBox>("useBitFileCheckBox")->click();
        part<QCheckBox>("useBitFileCheckBox")->click();
    }
    return file(kind).isEdited;
}

bool StepData::closeBits()
{
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

void StepData::recalculate()
{
    QMetaObject::invokeMethod(part<QWidget>("broxJobDataWidget"), "recalcRequired");
}

QString StepData::selectedModel() const
{
    const auto items = part<QTableWidget>("broxModelTableWidget")->selectedItems();
    return items.isEmpty() ? QString() : items.first()->text();
}

bool StepData::selectModel(const QString& name)
{
    auto* models = part<QTableWidget>("broxModelTableWidget");
    const auto found = models->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty()) {
        models->setCurrentItem(found.first());
    }
    return !found.isEmpty();
}

DrillModel StepData::model() const
{
    DrillModel model;
    model.name = selectedModel();
    model.formula = part<QLineEdit>("dhsLineEdit")->text();
    model.usesBits = part<QCheckBox>("useBitFileCheckBox")->isChecked();
    const auto* table = part<QTableWidget>("amountsTableWidget");
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto size = [&](int column) {
            const QTableWidgetItem* item = table->item(row, column);
            return item ? Size(item->data(Qt::UserRole).toInt()) : 0;
        };
        if (table->item(row, 0)) {
            model.amounts << ModelAmount{
                table->verticalHeaderItem(row)->text(), size(0), size(1), size(2)};
        }
    }
    return model;
}

QSet<QString> StepData::unapprovedBits() const
{
    QSet<QString> unapproved;
    QSet<QString> approved;
    const auto* table = part<QTableWidget>("drillBitsTableWidget");
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* check = table->item(row, ApprovedColumn);
        const QTableWidgetItem* name = table->item(row, DesignationColumn);
        if (check && name) {
            (check->checkState() == Qt::Checked ? approved : unapproved) << handedOut(name);
        }
    }
    return unapproved - approved;
}

std::vector<TableBit> StepData::approvedBits(Units units) const
{
    const auto* table = part<QTableWidget>("drillBitsTableWidget");
    std::map<Size, QString> bits;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* designation = table->item(row, DesignationColumn);
        const QTableWidgetItem* number =
            table->item(row, units == Units::Inch ? InchColumn : MetricColumn);
        const QTableWidgetItem* approved = table->item(row, ApprovedColumn);
        if (designation && number && approved && approved->checkState() == Qt::Checked) {
            const double unit = units == Units::Inch ? sizePerMil : sizePerMicron;
            const double size = std::round(number->text().toDouble() * unit);
            if (size > 0 && size <= std::numeric_limits<Size>::max()) {
                bits[Size(size)] = handedOut(designation);
            }
        }
    }
    std::vector<TableBit> list;
    for (const auto& [size, designation] : bits) {
        list.push_back({size, designation});
    }
    return list;
}

void StepData::duplicateModel()
{
    recalculate(); // which enters what is being typed
    const DrillModel source = model();
    if (source.name.isEmpty()) {
        return;
    }
    auto* models = part<QTableWidget>("broxModelTableWidget");
    const QString name = copyName(source.name, models);
    auto* amounts = part<QTableWidget>("amountsTableWidget");
    std::vector<QVariant> numbers;
    for (int row = 0; row < amounts->rowCount(); ++row) {
        for (int column = 0; column < amounts->columnCount(); ++column) {
            const QTableWidgetItem* item = amounts->item(row, column);
            numbers.push_back(item ? item->data(Qt::DisplayRole) : QVariant());
        }
    }
    part<QToolButton>("newToolButton")->click();
    if (models->findItems(source.name, Qt::MatchExactly).contains(models->currentItem())) {
        throw HostError(HostSession::tr("no model could be added"));
    }
    for (int i = 0; i < int(numbers.size()); ++i) {
        const int row = i / amounts->columnCount();
        const int column = i % amounts->columnCount();
        if (!numbers[size_t(i)].isValid()) {
            continue;
        }
        if (!amounts->item(row, column)) {
            amounts->setItem(row, column, new QTableWidgetItem);
        }
        amounts->item(row, column)->setData(Qt::DisplayRole, numbers[size_t(i)]);
    }
    auto* formula = part<QLineEdit>("dhsLineEdit");
    formula->setText(source.formula);
    emit formula->textEdited(source.formula); // as if it were typed
    auto* bits = part<QCheckBox>("useBitFileCheckBox");
    if (bits->isChecked() != source.usesBits) {
        bits->click();
    }
    // The editor of the name is open, and would enter its own text later.
    if (auto* editor = models->viewport()->findChild<QLineEdit*>()) {
        editor->setText(name);
        editor->selectAll();
    } else {
        models->currentItem()->setText(name);
    }
}

} // namespace brox
