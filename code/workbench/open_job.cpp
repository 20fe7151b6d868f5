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
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>

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

std::optional<TypeChoice> typeChoice(const QJsonObject& json, const Board& board)
{
    const std::vector<const Tool*> tools = toolsOf(board, json["layer"].toString());
    const int index = json["tool"].toInt(-1);
    for (const HoleType type :
        {HoleType::Plated, HoleType::NonPlated, HoleType::Via, HoleType::PressFit}) {
        if (index >= 0 && size_t(index) < tools.size() && json["type"] == typeKey(type)) {
            Tool tool = *tools[size_t(index)];
            tool.holes.clear();
            tool.slotPaths.clear();
            return TypeChoice{json["layer"].toString(), tool, type};
        }
    }
    return std::nullopt;
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

/** Choices as they were kept; none if there is no such file, or one that can't be read. */
BoardChoices loadChoices(const QString& path, const Board& board)
{
    QFile file(path);
    BoardChoices choices;
    if (path.isEmpty() || !file.open(QFile::ReadOnly)) {
        return choices;
    }
    const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
    for (const auto& type : json["types"].toArray()) {
        if (const auto choice = typeChoice(type.toObject(), board)) {
            choices.types << *choice;
        }
    }
    const QJsonObject sizes = json["sizes"].toObject();
    for (auto layer = sizes.begin(); layer != sizes.end(); ++layer) {
        if (!toolsOf(board, layer.key()).empty()) {
            choices.drillSizes[layer.key()] = layer->toString() == "drilled";
        }
    }
    const QJsonObject steps = json["steps"].toObject();
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        BoardChoices::OfStep of{step->toObject()["model"].toString(), {}};
        const QString units = step->toObject()["units"].toString();
        if (units == "inch" || units == "metric") {
            of.units = units == "inch" ? Units::Inch : Units::Metric;
        }
        choices.steps[step.key()] = of;
    }
    return choices;
}

/** Keeps choices; without any there is no file.
 *
 * @return what went wrong, or an empty text
 */
QString saveChoices(const QString& path, const Board& board, const BoardChoices& choices)
{
    if (choices.isEmpty()) {
        QFile file(path);
        return !file.exists() || file.remove() ? QString() : file.errorString();
    }
    QJsonObject steps;
    for (auto step = choices.steps.begin(); step != choices.steps.end(); ++step) {
        QJsonObject of;
        if (!step->model.isEmpty()) {
            of["model"] = step->model;
        }
        if (step->units) {
            of["units"] = *step->units == Units::Inch ? "inch" : "metric";
        }
        steps[step.key()] = of;
    }
    QJsonObject sizes;
    for (const auto& [layer, areDrillSizes] : choices.drillSizes) {
        sizes[layer] = areDrillSizes ? "drilled" : "finished";
    }
    return writeFile(path,
        QJsonDocument(QJsonObject{{"types", typesJson(board, choices.types)}, {"sizes", sizes},
                          {"steps", steps}})
            .toJson());
}

} // namespace

QString BoardChoices::text() const
{
    QStringList parts;
    if (!types.isEmpty()) {
        parts << ChoicesText::tr("types of %n tool(s)", "", int(types.size()));
    }
    for (const auto& [layer, areDrillSizes] : drillSizes) {
        parts << (areDrillSizes ? ChoicesText::tr("drill sizes in %1").arg(layer)
                                : ChoicesText::tr("finished sizes in %1").arg(layer));
    }
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        QStringList chosen;
        if (!step->model.isEmpty()) {
            chosen << ChoicesText::tr("model %1").arg(step->model);
        }
        if (step->units) {
            chosen << (*step->units == Units::Inch ? ChoicesText::tr("mils")
                                                   : ChoicesText::tr("microns"));
        }
        parts << ChoicesText::tr("step %1: %2").arg(step.key(), chosen.join(", "));
    }
    return parts.isEmpty()
        ? QString()
        : ChoicesText::tr("Chosen before for this board: %1").arg(parts.join("; "));
}

OpenJob::OpenJob(HostSession& session, StepTabs& tabs)
    : mSession(session)
    , mTabs(tabs)
{ }

QString OpenJob::open(Board board, bool isKept)
{
    Job job(std::move(board), mJob.rules);
    mPath = isKept ? choicesPath(mSession.dataDir(), *job.board) : QString();
    mChoices = loadChoices(mPath, *job.board);
    job.choices = mChoices.types;
    job.drillSizes = mChoices.drillSizes;
    set(std::move(job));
    applyChoices();
    return mChoices.text();
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

/** Units and models of the steps. */
void OpenJob::applyChoices()
{
    const std::vector<Step>& steps = mJob.board->steps;
    for (size_t i = 0; i < steps.size(); ++i) {
        const BoardChoices::OfStep of = mChoices.steps.value(steps[i].name);
        mSession.setFirstModel(i, of.model);
        mSession.setUnits(i, of.units.value_or(mJob.board->units));
    }
}

void OpenJob::change(const std::function<void(Job&)>& edit)
{
    Job job = mJob;
    edit(job);
    mTabs.remake([&] { set(std::move(job)); });
}

QString OpenJob::keepChoices()
{
    BoardChoices now = mChoices;
    now.types = mJob.choices;
    now.drillSizes = mJob.drillSizes;
    for (const size_t step : mTabs.openSteps()) {
        const DrillDraft& draft = mSession.draft(step);
        BoardChoices::OfStep of;
        const QString model = mSession.selectedModel(step);
        of.model = model == mSession.models(step).value(0) ? QString() : model;
        if (draft.units != draft.board->units) {
            of.units = draft.units;
        }
        now.steps[draft.boardStep().name] = of;
    }
    now.steps.removeIf([](QMap<QString, BoardChoices::OfStep>::iterator step) {
        return *step == BoardChoices::OfStep();
    });
    const bool isSame = now.steps == mChoices.steps && now.drillSizes == mChoices.drillSizes
        && std::equal(now.types.begin(), now.types.end(), mChoices.types.begin(),
            mChoices.types.end(), [](const TypeChoice& a, const TypeChoice& b) {
                return a.layer == b.layer && a.type == b.type && a.tool.isLike(b.tool);
            });
    mChoices = now;
    const QString error =
        isSame || mPath.isEmpty() ? QString() : saveChoices(mPath, *mJob.board, mChoices);
    return error.isEmpty()
        ? QString()
        : ChoicesText::tr("%1: the choices for the board could not be saved: %2").arg(mPath, error);
}

void OpenJob::forgetChoices()
{
    Job job = mJob;
    job.choices.clear();
    job.drillSizes.clear();
    mChoices = {};
    mTabs.remake([&] {
        set(std::move(job));
        applyChoices();
    });
    for (const size_t step : mTabs.openSteps()) {
        const QStringList models = mSession.models(step);
        if (!models.isEmpty()) {
            mSession.selectModel(step, models.first());
        }
    }
    if (!mPath.isEmpty()) {
        saveChoices(mPath, *mJob.board, {});
    }
}

} // namespace brox
