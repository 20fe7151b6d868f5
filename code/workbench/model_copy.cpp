// SPDX-License-Identifier: MIT
#include "model_copy.h"

#include "host_session.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>

namespace brox {

namespace {

constexpr qsizetype nameLength = 64; ///< most characters of a model's name

QString copyName(const QString& name, const QStringList& taken)
{
    QString end = HostSession::tr(" copy");
    for (int i = 2; taken.contains(name.left(nameLength - end.size()) + end); ++i) {
        end = HostSession::tr(" copy %1").arg(i);
    }
    return name.left(nameLength - end.size()) + end;
}

} // namespace

void duplicateModel(HostSession& session, size_t step)
{
    session.recalculate(step); // which enters what is being typed
    const DrillModel source = session.model(step);
    if (source.name.isEmpty()) {
        return;
    }
    const QString name = copyName(source.name, session.models(step));
    const QWidget* viewer = session.viewer(step);
    auto* amounts = viewer->findChild<QTableWidget*>("amountsTableWidget");
    std::vector<QVariant> numbers;
    for (int row = 0; row < amounts->rowCount(); ++row) {
        for (int column = 0; column < amounts->columnCount(); ++column) {
            const QTableWidgetItem* item = amounts->item(row, column);
            numbers.push_back(item ? item->data(Qt::DisplayRole) : QVariant());
        }
    }
    viewer->findChild<QToolButton*>("newToolButton")->click();
    auto* models = viewer->findChild<QTableWidget*>("broxModelTableWidget");
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
    auto* formula = viewer->findChild<QLineEdit*>("dhsLineEdit");
    formula->setText(source.formula);
    emit formula->textEdited(source.formula); // as if it were typed
    auto* bits = viewer->findChild<QCheckBox*>("useBitFileCheckBox");
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
