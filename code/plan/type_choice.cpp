// SPDX-License-Identifier: MIT
#include "type_choice.h"

#include <QRegularExpression>
#include <cmath>

namespace brox {

namespace {

HoleType typeOf(const QString& name)
{
    const QString word = name.toLower().remove('-');
    for (const HoleType type :
        {HoleType::Plated, HoleType::NonPlated, HoleType::Via, HoleType::PressFit}) {
        if (word == typeKey(type).remove('-')) {
            return type;
        }
    }
    throw RulesError(
        PlanText::tr("no type \"%1\"; there are: plated, nonplated, via, press-fit").arg(name));
}

/** What is meant by "T3", "3", "0.8mm" or "31.5mil". */
struct Meant
{
    int number = 0; ///< 0: the size counts
    Size size = 0;

    explicit Meant(const QString& text)
    {
        static const QRegularExpression form(
            QStringLiteral("^(?:[Tt]?(\\d{1,9})|(\\d{1,3}(?:\\.\\d+)?) ?(mm|mil))$"));
        const QRegularExpressionMatch match = form.match(text);
        if (!match.hasMatch()) {
            throw RulesError(
                PlanText::tr("\"%1\" is neither a tool such as T3 nor a size such as 0.8mm")
                    .arg(text));
        }
        number = match.captured(1).toInt();
        size = Size(std::lround(match.captured(2).toDouble()
            * (match.captured(3) == "mil" ? sizePerMil : sizePerMillimetre)));
    }

    bool isLike(const Tool& tool) const
    {
        return number > 0 ? tool.number == number : tool.finishedSize == size;
    }
};

QString nameOf(const Tool& tool)
{
    return tool.number > 0
        ? QStringLiteral("T%1").arg(tool.number)
        : QStringLiteral("%1mm").arg(double(tool.finishedSize) / sizePerMillimetre);
}

} // namespace

void chooseType(Job& job, const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(.+):([^:=]+)=([^:=]+)$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) {
        throw RulesError(PlanText::tr("\"%1\" is not such as LAYER:T3=press-fit").arg(text));
    }
    const HoleType type = typeOf(match.captured(3).trimmed());
    const Meant meant(match.captured(2).trimmed());
    QStringList layers;
    QStringList tools;
    bool isFound = false;
    for (const Step& step : job.board->steps) {
        for (const Layer& layer : step.layers) {
            layers << layer.name;
            if (layer.name != match.captured(1)) {
                continue;
            }
            for (const Tool& tool : layer.tools) {
                tools << nameOf(tool);
                if (meant.isLike(tool)) {
                    Tool alike = tool;
                    alike.holes.clear();
                    alike.slotPaths.clear();
                    job.chooseType(layer.name, alike, type);
                    isFound = true;
                }
            }
        }
    }
    layers.removeDuplicates();
    tools.removeDuplicates();
    if (tools.isEmpty()) {
        throw RulesError(PlanText::tr("no layer \"%1\"; there are: %2")
                             .arg(match.captured(1), layers.join(", ")));
    }
    if (!isFound) {
        throw RulesError(PlanText::tr("no tool %1 in layer %2; there are: %3")
                             .arg(match.captured(2), match.captured(1), tools.join(", ")));
    }
}

} // namespace brox
