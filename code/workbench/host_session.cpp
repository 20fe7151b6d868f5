// SPDX-License-Identifier: MIT
#include "host_session.h"

#include "brox_proxy.h"
#include "language.h"
#include "standin.h"
#include "vex_data.h"

#include <QDir>
#include <algorithm>
#include <cmath>
#include <limits>

namespace brox {

HostSession* HostSession::sSession = nullptr;

namespace {

void check(int status, const char* what)
{
    if (status != 0) {
        throw HostError(HostSession::tr("the library can't %1: status %2").arg(what).arg(status));
    }
}

/** The host's tool type and sub type. */
std::pair<int, int> hostType(HoleType type)
{
    switch (type) {
    case HoleType::Plated:
        break;
    case HoleType::NonPlated:
        return {1, 0};
    case HoleType::Via:
        return {2, 0};
    case HoleType::PressFit:
        return {0, 3};
    }
    return {0, 0};
}

/** What a host takes for a name, in bytes. */
constexpr qsizetype nameLength = 64;

QString shortened(QString name, const QString& end)
{
    while ((name + end).toUtf8().size() > nameLength) {
        name.chop(1);
    }
    return name + end;
}

/** The host's layer of a row: all slots of a layer are on another one. */
QString hostLayerName(const DrillDraft& draft, const DraftRow& row)
{
    const QString& name = draft.layers[row.layer].name;
    if (!row.isSlot) {
        return name;
    }
    QString own = shortened(name, QStringLiteral(" slots"));
    const auto isTaken = [&](const StepLayer& layer) { return layer.name == own; };
    for (int i = 2; std::any_of(draft.layers.begin(), draft.layers.end(), isTaken); ++i) {
        own = shortened(name, QStringLiteral(" slots %1").arg(i));
    }
    return own;
}

} // namespace

HostSession::HostSession(const QString& dataDir, const QString& catalogue)
    : mDataDir(QDir(dataDir).absolutePath().toUtf8())
    , mCatalogue(catalogue.toUtf8())
    , mGuard(QString::fromUtf8(mDataDir))
{
    setUpHost();
    sSession = this;
    brox__proxy_set_model_renamed_deleted_cb(modelRenamedOrDeleted);
}

HostSession::~HostSession()
{
    for (size_t i = 0; i < mSteps.size(); ++i) {
        closeViewer(i);
    }
    sSession = nullptr;
    standin_reset();
}

/** An empty job in the host's libraries, with folders, log and language. */
void HostSession::setUpHost()
{
    standin_reset();
    standin_set_log_sink(log, this);
    mGuard.answerHost();
    standin_set_system_dir(mDataDir.constData());
    standin_set_resource_dir(sharePath({}).toUtf8().constData());
    standin_set_catalogue(mCatalogue.isEmpty() ? nullptr : mCatalogue.constData());
}

void HostSession::setSteps(std::vector<DrillDraft> drafts)
{
    std::vector<OpenStep> steps;
    for (DrillDraft& draft : drafts) {
        const size_t i = steps.size();
        OpenStep& step =
            steps.emplace_back(OpenStep{0, std::move(draft), std::make_unique<ParentViewer>(), {}});
        if (i < mSteps.size() && mSteps[i].draft.board == step.draft.board) {
            step.edits = std::move(mSteps[i].edits);
            step.firstModel = mSteps[i].firstModel;
        }
    }
    mSteps = std::move(steps);
    fillHost();
}

/** Puts the steps into a host that starts anew. */
void HostSession::fillHost()
{
    setUpHost();
    for (OpenStep& step : mSteps) {
        const DrillDraft& draft = step.draft;
        standin_set_job(draft.board->job.toUtf8().constData());
        step.stpid =
            standin_add_step(draft.boardStep().name.toUtf8().constData(), int(draft.units));
        const DraftRow* last = nullptr;
        int layer = 0;
        for (const DraftRow& row : draft.rows) {
            if (row.isAsDrilled()) {
                break;
            }
            if (!last || last->layer != row.layer || last->isSlot != row.isSlot) {
                layer =
                    standin_add_layer(step.stpid, hostLayerName(draft, row).toUtf8().constData());
            }
            last = &row;
            const auto [type, subType] = hostType(row.type);
            const standin_tool tool{type, subType, row.tolerance.minus, row.tolerance.plus,
                row.finishedSize, int(row.count)};
            standin_add_tool(layer, &tool);
        }
    }
}

void HostSession::setUnits(size_t step, Units units)
{
    OpenStep& open = mSteps.at(step);
    if (open.draft.units == units) {
        return;
    }
    if (open.data) {
        open.data->viewer()->setFocus(); // a number in an open cell was typed in the units before
    }
    open.draft.units = units;
    standin_set_units(open.stpid, int(units));
    emit open.parent->unitsChanged(units == Units::Inch ? ZEB_UNITS_MILS : ZEB_UNITS_MICRONS);
    emit edited(step);
}

StepData& HostSession::data(size_t step)
{
    OpenStep& open = mSteps.at(step);
    if (!open.data) {
        BroxViewer* viewer = nullptr;
        open.data = mGuard.open(
            open.draft.boardStep().name,
            [&] {
                check(brox__proxy_open_brox(open.stpid), "open a viewer");
                check(brox__proxy_get_brox(open.stpid, &viewer), "give a viewer");
                return reinterpret_cast<QWidget*>(viewer);
            },
            open.edits);
        open.edits = {};
        connect(open.data, &StepData::touched, this, [this, step] { emit edited(step); });
        check(brox__proxy_set_parent_viewer(viewer, open.parent.get()), "follow the units");
        if (!open.firstModel.isEmpty() && models(step).contains(open.firstModel)) {
            selectModel(step, open.firstModel);
        }
    }
    return *open.data;
}

void HostSession::recalculate(size_t step)
{
    if (StepData* data = mSteps.at(step).data) {
        data->recalculate();
    }
}

void HostSession::closeForAnother(size_t step)
{
    OpenStep& open = mSteps.at(step);
    if (open.data) {
        std::optional<DataGuard::Edits> edits = mGuard.takeEdits(*open.data);
        if (!edits) {
            throw HostError(tr("step %1: what is unsaved can't be kept; save or discard it first")
                                .arg(open.data->step()));
        }
        open.edits = std::move(*edits);
        closeViewer(step);
    }
}

bool HostSession::isOlder(size_t step) const
{
    const StepData* data = mSteps.at(step).data;
    return data && mGuard.isOlder(*data);
}

bool HostSession::hasUnsaved(size_t step) const
{
    const StepData* data = mSteps.at(step).data;
    return data && data->hasUnsaved();
}

bool HostSession::canClose(size_t step)
{
    const OpenStep& open = mSteps.at(step);
    return !open.data || mGuard.canClose(*open.data, [&] {
        int ok = 0;
        check(brox__proxy_can_close(open.stpid, &ok), "ask whether a viewer may close");
        return ok != 0;
    });
}

void HostSession::closeViewer(size_t step)
{
    OpenStep& open = mSteps.at(step);
    if (open.data) {
        brox__proxy_close_brox(open.stpid);
        delete open.data->viewer();
    }
}

QStringList HostSession::models(size_t step)
{
    viewer(step);
    char** names = nullptr;
    int count = 0;
    check(brox__proxy_get_model_list(mSteps.at(step).stpid, &names, &count), "list the models");
    QStringList models;
    for (int i = 0; names && i < count; ++i) {
        models << QString::fromLocal8Bit(names[i]);
        zeb__mem_free(names[i], 1, __FILE__, __LINE__);
    }
    zeb__mem_free(names, 1, __FILE__, __LINE__);
    return models;
}

void HostSession::selectModel(size_t step, const QString& model)
{
    if (!data(step).selectModel(model)) {
        const QStringList known = models(step);
        throw HostError(known.isEmpty()
                ? tr("no model \"%1\"; there are no models").arg(model)
                : tr("no model \"%1\"; %2").arg(model, hintFor(model, known)));
    }
}

DrillModel HostSession::model(size_t step)
{
    DrillModel model = data(step).model();
    model.unsaved = hasUnsaved(step);
    model.isOlder = isOlder(step);
    return model;
}

DrillPlan HostSession::plan(
    const DrillDraft& draft, size_t step, Sharing sharing, std::vector<size_t>* apart)
{
    DrillModel current = model(step);
    std::vector<Drill> drills = this->drills(draft, current, step);
    if (sharing != Sharing::None) {
        std::vector<size_t> rows = mergeDrills(draft,
            data(step).approvedBits(mSteps[step].draft.units), sharing == Sharing::All, drills);
        if (apart) {
            *apart = std::move(rows);
        }
    }
    return makePlan(draft, std::move(current), drills);
}

std::vector<Drill> HostSession::drills(
    const DrillDraft& draft, const DrillModel& model, size_t step)
{
    const QSet<QString> unapproved = data(step).unapprovedBits();
    std::vector<Drill> drills;
    for (const DraftRow& row : draft.rows) {
        if (row.isAsDrilled()) {
            const Tool& tool = *draft.tool(row).tool;
            drills.push_back(tool.finishedSize > 0 ? Drill{tool.finishedSize, tool.bit, {}, {}, {}}
                                                   : Drill{{}, {}, {PlanFlag::NoSize}, {}, {}});
            continue;
        }
        Drill& added = drills.emplace_back(drill(row, model, step));
        if (!added.bit.isEmpty() && unapproved.contains(added.bit)) {
            added.flags << PlanFlag::UnapprovedBit;
        }
    }
    return drills;
}

Drill HostSession::drill(const DraftRow& row, const DrillModel& model, size_t step)
{
    int size = 0;
    char bit[8] = "";
    const auto [type, subType] = hostType(row.type);
    // A slot whose width no file specifies gets no drill; an amount alone is none.
    if (!model.name.isEmpty() && row.finishedSize > 0) {
        check(brox__proxy_calc_drill_size(mSteps.at(step).stpid,
                  model.name.toLocal8Bit().constData(), type, subType, row.tolerance.minus,
                  row.tolerance.plus, row.finishedSize, &size, bit),
            "calculate a drill size");
    }
    if (size <= 0) {
        return {{}, {}, {PlanFlag::NoSize}, {}, {}};
    }
    Drill drill{size, QString::fromLocal8Bit(bit), {}, {}, {}};
    if (!model.usesBits) {
        return drill;
    }
    // The size is the bit's by now. What the formula gave, about which the tolerances lie, only
    // the host's calculator still knows.
    double value = 0;
    standin_last_value(&value);
    value = std::trunc(std::clamp<double>(
        value, std::numeric_limits<Size>::min(), std::numeric_limits<Size>::max()));
    drill.formulaSize = Size(value);
    if (drill.bit.isEmpty() && size == value) {
        drill.flags << PlanFlag::NoBit;
    } else if (size < value - row.tolerance.minus || size > value + row.tolerance.plus) {
        drill.flags << PlanFlag::OutOfTolerance;
    }
    return drill;
}

void HostSession::log(const char* level, const char* text, void* session)
{
    emit static_cast<HostSession*>(session)->logged(
        QString::fromUtf8(level), QString::fromUtf8(text).trimmed());
}

void HostSession::modelRenamedOrDeleted(int stepNumber, const char* oldName, const char* newName)
{
    if (!sSession) {
        return;
    }
    const QString from = QString::fromLocal8Bit(oldName);
    for (size_t i = 0; i < sSession->mSteps.size(); ++i) {
        int number = -1;
        if (vex__data_stpid2vex_num(sSession->mSteps[i].stpid, &number) != 0
            || number != stepNumber) {
            continue;
        }
        const QString& step = sSession->mSteps[i].draft.boardStep().name;
        if (newName) {
            emit sSession->modelRenamed(step, from, QString::fromLocal8Bit(newName));
        } else {
            emit sSession->modelDeleted(step, from);
        }
    }
}

} // namespace brox
