// SPDX-License-Identifier: MIT
#include "open_job.h"

#include "data_file.h"
#include "file_set.h"
#include "host_session.h"
#include "step_tabs.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace brox {

namespace {

class ChoicesText
{
    Q_DECLARE_TR_FUNCTIONS(BoardChoices)
};

constexpr qsizetype markLength = 16; ///< of a content, in a file's name

/** All tools of the layers of a name, in the order of the board. */
std::vector<const Tool*> toolsOf(const Board& board, const QString& layerName)
{
    std::vector<const Tool*> tools;
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            for (const Tool& tool : layer.tools) {
                if (layer.name == layerName) {
                    tools.push_back(&tool);
                }
            }
        }
    }
    return tools;
}

void add(QCryptographicHash& hash, const QString& text)
{
    hash.addData(text.toUtf8());
    hash.addData(QByteArrayView("\0", 1));
}

void add(QCryptographicHash& hash, const Tool& tool)
{
    const Tolerance tolerance = tool.tolerance.value_or(Tolerance{-1, -1});
    add(hash,
        QStringLiteral("%1 %2 %3 %4 %5 %6")
            .arg(tool.number)
            .arg(int(tool.type))
            .arg(tool.finishedSize)
            .arg(tolerance.minus)
            .arg(tolerance.plus)
            .arg(tool.slotPaths.size()));
    hash.addData(QByteArrayView(reinterpret_cast<const char*>(tool.holes.data()),
        qsizetype(tool.holes.size() * sizeof(Place))));
    for (const Path& path : tool.slotPaths) {
        add(hash,
            QStringLiteral("%1 %2 %3 %4")
                .arg(path.start.x)
                .arg(path.start.y)
                .arg(path.end().x)
                .arg(path.end().y));
    }
}

QByteArray markOf(const Board& board)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const Step& step : board.steps) {
        add(hash, step.name);
        for (const Layer& layer : step.layers) {
            add(hash, layer.name);
            for (const Tool& tool : layer.tools) {
                add(hash, tool);
            }
        }
    }
    return hash.result().toHex().left(markLength);
}

QJsonArray typesJson(const Board& board, const QList<TypeChoice>& choices)
{
    QJsonArray types;
    for (const TypeChoice& choice : choices) {
        const std::vector<const Tool*> tools = toolsOf(board, choice.layer);
        const auto found = std::find_if(tools.begin(), tools.end(),
            [&](const Tool* tool) { return tool->isLike(choice.tool); });
        if (found != tools.end()) {
            types << QJsonObject{{"layer", choice.layer}, {"tool", int(found - tools.begin())},
                {"type", typeKey(choice.type)}};
        }
    }
    return types;
}

QList<TypeChoice> typesOf(const QJsonArray& types, const Board& board)
{
    QList<TypeChoice> choices;
    for (const auto& type : types) {
        const QJsonObject json = type.toObject();
        const QString layer = json["layer"].toString();
        const std::vector<const Tool*> tools = toolsOf(board, layer);
        const auto index = size_t(json["tool"].toInt(-1));
        for (const HoleType holeType :
            {HoleType::Plated, HoleType::NonPlated, HoleType::Via, HoleType::PressFit}) {
            if (index < tools.size() && json["type"] == typeKey(holeType)) {
                choices << TypeChoice{layer, *tools[index], holeType};
                choices.last().tool.holes.clear();
                choices.last().tool.slotPaths.clear();
            }
        }
    }
    return choices;
}

std::map<QString, bool> sizesOf(const QJsonObject& sizes, const Board& board)
{
    std::map<QString, bool> drillSizes;
    for (auto layer = sizes.begin(); layer != sizes.end(); ++layer) {
        if (!toolsOf(board, layer.key()).empty()) {
            drillSizes[layer.key()] = layer->toString() == "drilled";
        }
    }
    return drillSizes;
}

/** The file of a data folder that keeps the choices for a board, by the board's name and content:
 *  a board that has changed is another one. */
QString choicesPath(const QString& dataDir, const Board& board)
{
    QString name = board.job;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9._-]")), "_");
    return QDir(dataDir).filePath(QStringLiteral("brox/boards/%1-%2.json")
                                      .arg(name.left(64), QString::fromLatin1(markOf(board))));
}

} // namespace

OpenJob::OpenJob(HostSession& session, StepTabs& tabs)
    : mSession(session)
    , mTabs(tabs)
{ }

QString OpenJob::open(Board board, bool isKept)
{
    Job job(std::move(board), mJob.rules);
    mPath = isKept ? choicesPath(mSession.dataDir(), *job.board) : QString();
    QFile file(mPath);
    const QJsonObject kept = isKept && file.open(QFile::ReadOnly)
        ? QJsonDocument::fromJson(file.readAll()).object()
        : QJsonObject();
    job.choices = typesOf(kept["types"].toArray(), *job.board);
    job.drillSizes = sizesOf(kept["sizes"].toObject(), *job.board);
    set(std::move(job));
    mSteps = kept["steps"].toObject();
    applySteps();
    mKept = choices();
    return choicesText();
}

/** Gives the job's steps to the host, whose viewers are closed. Of the same board they keep the
 *  units that the user has chosen. */
void OpenJob::set(Job job)
{
    std::vector<DrillDraft> drafts = job.drafts();
    for (size_t i = 0; job.board == mJob.board && i < drafts.size(); ++i) {
        drafts[i].units = mSession.draft(i).units;
    }
    mSession.setSteps(std::move(drafts));
    mJob = std::move(job);
}

void OpenJob::applySteps()
{
    const Board& board = *mJob.board;
    for (size_t i = 0; i < board.steps.size(); ++i) {
        const QJsonObject chosen = mSteps.value(board.steps[i].name).toObject();
        mSession.setFirstModel(i, chosen["model"].toString());
        mSession.setUnits(i,
            chosen["units"] == "inch"         ? Units::Inch
                : chosen["units"] == "metric" ? Units::Metric
                                              : board.units);
    }
}

/** All that is chosen, as it is kept; empty: nothing. */
QJsonObject OpenJob::choices() const
{
    if (mJob.choices.isEmpty() && mJob.drillSizes.empty() && mSteps.isEmpty()) {
        return {};
    }
    QJsonObject sizes;
    for (const auto& [layer, areDrillSizes] : mJob.drillSizes) {
        sizes[layer] = areDrillSizes ? "drilled" : "finished";
    }
    return {{"types", typesJson(*mJob.board, mJob.choices)}, {"sizes", sizes}, {"steps", mSteps}};
}

QString OpenJob::choicesText() const
{
    QStringList parts;
    if (!mJob.choices.isEmpty()) {
        parts << ChoicesText::tr("types of %n tool(s)", "", int(mJob.choices.size()));
    }
    for (const auto& [layer, areDrillSizes] : mJob.drillSizes) {
        parts << (areDrillSizes ? ChoicesText::tr("drill sizes in %1").arg(layer)
                                : ChoicesText::tr("finished sizes in %1").arg(layer));
    }
    for (auto step = mSteps.begin(); step != mSteps.end(); ++step) {
        const QJsonObject of = step->toObject();
        QStringList chosen;
        if (of.contains("model")) {
            chosen << ChoicesText::tr("model %1").arg(of["model"].toString());
        }
        if (of.contains("units")) {
            chosen << (of["units"] == "inch" ? ChoicesText::tr("mils")
                                             : ChoicesText::tr("microns"));
        }
        parts << ChoicesText::tr("step %1: %2").arg(step.key(), chosen.join(", "));
    }
    return parts.isEmpty()
        ? QString()
        : ChoicesText::tr("Chosen before for this board: %1").arg(parts.join("; "));
}

void OpenJob::change(const std::function<void(Job&)>& edit)
{
    Job job = mJob;
    edit(job);
    mTabs.remake([&] { set(std::move(job)); });
}

QString OpenJob::keepChoices()
{
    for (const size_t step : mTabs.openSteps()) {
        const DrillDraft& draft = mSession.draft(step);
        const QString model = mSession.selectedModel(step);
        QJsonObject chosen;
        if (model != mSession.models(step).value(0)) {
            chosen["model"] = model;
        }
        if (draft.units != draft.board->units) {
            chosen["units"] = draft.units == Units::Inch ? "inch" : "metric";
        }
        mSteps.remove(draft.boardStep().name);
        if (!chosen.isEmpty()) {
            mSteps[draft.boardStep().name] = chosen;
        }
    }
    const QJsonObject before = std::exchange(mKept, choices());
    return mPath.isEmpty() || before == mKept ? QString() : save();
}

/** Keeps the choices; without any there is no file. */
QString OpenJob::save() const
{
    QFile file(mPath);
    const QString error = !mKept.isEmpty() ? writeFile(mPath, QJsonDocument(mKept).toJson())
        : !file.exists() || file.remove()  ? QString()
                                           : file.errorString();
    return error.isEmpty()
        ? QString()
        : ChoicesText::tr("%1: the choices for the board could not be saved: %2").arg(mPath, error);
}

void OpenJob::forgetChoices()
{
    Job job = mJob;
    job.choices.clear();
    job.drillSizes.clear();
    mSteps = {};
    mTabs.remake([&] {
        set(std::move(job));
        applySteps();
    });
    for (const size_t step : mTabs.openSteps()) {
        const QStringList models = mSession.models(step);
        if (!models.isEmpty()) {
            mSession.selectModel(step, models.first());
        }
    }
    keepChoices();
}

} // namespace brox
