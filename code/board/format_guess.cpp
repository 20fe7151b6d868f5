// SPDX-License-Identifier: MIT
#include "format_guess.h"

#include <algorithm>
#include <cmath>

namespace brox {

namespace {

// Natural logarithms of how likely something is; the figures are estimates, tried on real boards.
constexpr double impossible = -100;
constexpr double clear = 0.8; ///< by how much the first must be likelier than the second
constexpr double habit = 2.5;

/** How far a size is from the usual one, by its ratio. */
double unlikeliness(double size, double usual, double spread)
{
    const double distance = std::log(size / usual) / spread;
    return -distance * distance / 2;
}

/** No board is 4 mm or 1.6 m wide. */
double weightOfExtent(double extent, qint64 holes)
{
    constexpr double least = 4.5 * sizePerMillimetre;
    constexpr double usual = 80.0 * sizePerMillimetre;
    constexpr double most = 1500.0 * sizePerMillimetre;
    if (extent > most) {
        return impossible;
    }
    if (holes <= 2) { // which may lie close together on any board
        return extent > usual ? unlikeliness(extent, usual, 0.9) : 0;
    }
    return extent < least ? impossible / 2 : unlikeliness(extent, usual, 0.9);
}

/** Boards lie where they were drawn, which is not far from the origin. */
double weightOfReach(double reach)
{
    constexpr double usual = 600.0 * sizePerMillimetre;
    return reach > usual ? std::max(-8.0, unlikeliness(reach, usual, 0.3)) : 0;
}

/** Holes lie at least their diameter apart; few of them may lie far apart. */
double weightOfSpacing(double spacing, qint64 holes)
{
    constexpr double usual = 3.5;
    if (spacing <= 0 || (spacing > usual && holes < 30)) {
        return 0;
    }
    return std::max(-8.0, unlikeliness(spacing, usual, spacing < usual ? 0.8 : 1.2));
}

double weightOfDigits(const FormatChoice& choice, const FormatEvidence& evidence)
{
    const Digits& digits = *choice.format.digits;
    const bool inch = choice.format.units == Units::Inch;
    double weight = 0;
    if (choice.format.zeros == Zeros::Leading) {
        weight = digits.before == (inch ? 2 : 3) ? 0
            : digits.before == (inch ? 3 : 4)    ? -1.5
                                                 : -2.5;
    } else {
        const int usual = inch ? 4 : 3;
        const double weights[] = {0, -1, -2.5, -4};
        weight = weights[std::min(std::abs(digits.after - usual), 3)];
        weight += digits.after < usual ? -0.5 : 0;
        weight += !inch && digits.after == 5 ? 0.5 : 0;
    }
    return weight + (digits.after == evidence.usualDecimals ? habit : 0);
}

} // namespace

QString FormatChoice::text() const
{
    return QStringLiteral("%1:%2 (%3 x %4 mm)")
        .arg(format.digits->before)
        .arg(format.digits->after)
        .arg(width / sizePerMillimetre, 0, 'g', 4)
        .arg(height / sizePerMillimetre, 0, 'g', 4);
}

double usualSpacing(const Layer& layer)
{
    constexpr size_t fewest = 8;
    constexpr size_t most = 20000;
    constexpr size_t neighbours = 300; ///< to both sides
    struct Hole
    {
        Place at;
        Size size;
    };
    std::vector<Hole> holes;
    for (const Tool& tool : layer.tools) {
        for (const Place& at : tool.holes) {
            if (tool.finishedSize > 0 && holes.size() < most) {
                holes.push_back({at, tool.finishedSize});
            }
        }
    }
    if (holes.size() < fewest) {
        return 0;
    }
    std::sort(holes.begin(), holes.end(), [](const Hole& a, const Hole& b) {
        return std::pair(a.at.x, a.at.y) < std::pair(b.at.x, b.at.y);
    });
    std::vector<double> spacings;
    for (size_t i = 0; i < holes.size(); ++i) {
        double nearest = 0;
        const size_t end = std::min(holes.size(), i + neighbours);
        for (size_t other = i - std::min(i, neighbours); other < end; ++other) {
            const double distance = std::hypot(double(holes[i].at.x) - holes[other].at.x,
                double(holes[i].at.y) - holes[other].at.y);
            // A hole at the same place is the same one, drilled again.
            if (distance > 0 && (nearest == 0 || distance < nearest)) {
                nearest = distance;
            }
        }
        if (nearest > 0) {
            spacings.push_back(nearest / holes[i].size);
        }
    }
    if (spacings.size() < fewest) {
        return 0;
    }
    const auto middle = spacings.begin() + qsizetype(spacings.size() / 2);
    std::nth_element(spacings.begin(), middle, spacings.end());
    return *middle;
}

std::vector<FormatChoice> weighFormats(const NumberFormat& read, const FormatEvidence& evidence)
{
    const bool isLeading = read.zeros == Zeros::Leading;
    const bool inch = read.units == Units::Inch;
    const int before = inch ? 2 : 3; // if trailing zeros are written, it only shows
    std::vector<FormatChoice> choices;
    for (int digits = isLeading ? 1 : 2; digits <= (isLeading ? 5 : 6); ++digits) {
        FormatChoice choice{read, 0, 0, 0};
        const int longest = int(evidence.longest);
        choice.format.digits = isLeading ? Digits{digits, std::max(inch ? 4 : 3, longest - digits)}
                                         : Digits{std::max(before, longest - digits), digits};
        const double scale =
            std::pow(10, isLeading ? digits - read.digits->before : read.digits->after - digits);
        choice.width = evidence.width * scale;
        choice.height = evidence.height * scale;
        choice.weight = weightOfExtent(choice.extent(), evidence.holes)
            + weightOfReach(evidence.reach * scale)
            + weightOfSpacing(evidence.spacing * scale, evidence.holes)
            + weightOfDigits(choice, evidence);
        choices.push_back(choice);
    }
    return choices;
}

void sortFormats(std::vector<std::vector<FormatChoice>>& files, double told)
{
    if (files.empty()) {
        return;
    }
    std::vector<double> weights(files.front().size());
    for (const std::vector<FormatChoice>& choices : files) {
        for (size_t i = 0; i < weights.size(); ++i) {
            const double extent = choices[i].extent();
            weights[i] += choices[i].weight;
            if (told > 0 && extent > 0) {
                weights[i] += std::max(-6.0, unlikeliness(extent, told, 0.7));
            }
        }
    }
    for (std::vector<FormatChoice>& choices : files) {
        for (size_t i = 0; i < weights.size(); ++i) {
            choices[i].weight = weights[i];
        }
        std::stable_sort(choices.begin(), choices.end(),
            [](const FormatChoice& a, const FormatChoice& b) { return a.weight > b.weight; });
    }
}

bool isDoubtful(const std::vector<FormatChoice>& choices)
{
    return choices.size() > 1 && choices[0].weight - choices[1].weight < clear;
}

} // namespace brox
