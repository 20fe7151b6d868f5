// SPDX-License-Identifier: MIT
#include "ratio.h"

#include "board_host.h"
#include "board_reader.h"
#include "drill_program.h"
#include "file_set.h"
#include "map_scene.h"
#include "plan_checks.h"

#include <cmath>

using namespace brox;

namespace {

/** The plan of a board of a million holes whose drills are a little larger. */
struct PlanHost : BoardHost
{
    explicit PlanHost(int holeCount)
        : BoardHost(holeCount)
    {
        const DrillDraft draft = draftStep(Job(read()), 0);
        std::vector<Drill> drills;
        for (const DraftRow& row : draft.rows) {
            drills.push_back({row.finishedSize + pitch, {}, {}});
        }
        plan = makePlan(draft, {}, drills);
    }

    Board read() const { return readBoard(QStringList(file)); }

    DrillPlan plan;
};

Side readingOf(const std::shared_ptr<PlanHost>& host)
{
    return [host] { return secondsOf([&] { host->read(); }); };
}

Sides writePrograms(const Scale& scale)
{
    const auto host = std::make_shared<PlanHost>(scale.size(1000000));
    return {[host] {
                return secondsOf([&] {
                    FileSet files;
                    addDrillPrograms(host->plan, host->path("programs"), files);
                    files.commit();
                });
            },
        readingOf(host)};
}

Sides checkHoles(const Scale& scale)
{
    const auto host = std::make_shared<PlanHost>(scale.size(1000000));
    return {[host] { return secondsOf([&] { checkPlan(host->plan); }); }, readingOf(host)};
}

/** A window's map of a scene, at places and scales that a user comes by. */
class Frames
{
public:
    double paint(const MapScene& scene)
    {
        constexpr double zooms[] = {1, 1.1, 1.5, 2, 4, 8, 4, 2, 1.5, 1};
        const QRectF extent = scene.extent();
        const int turn = mCount++;
        const double fit =
            std::min(mImage.width() / extent.width(), mImage.height() / extent.height());
        MapView view{fit * zooms[size_t(turn) % std::size(zooms)], {}};
        const QPointF focus = extent.center() + QPointF(std::sin(turn), std::cos(turn)) * 5;
        view.origin = QRectF(mImage.rect()).center() - view.scale * focus;
        const MapColours colours{Qt::white, Qt::gray, Qt::red, false};
        return secondsOf([&] { scene.paint(mImage, view, colours); });
    }

private:
    QImage mImage{1280, 960, QImage::Format_RGB32};
    int mCount = 0;
};

Sides paintFirst(const Scale& scale)
{
    const auto host = std::make_shared<PlanHost>(scale.size(1000000));
    return {[host] {
                return secondsOf([&] {
                    const MapScene scene(host->plan);
                    Frames().paint(scene);
                });
            },
        readingOf(host)};
}

Sides paintFrames(const Scale& scale)
{
    const auto host = std::make_shared<PlanHost>(scale.size(1000000));
    const auto scene = std::make_shared<MapScene>(host->plan);
    const auto frames = std::make_shared<Frames>();
    return {[scene, frames] { return frames->paint(*scene); }, {}};
}

} // namespace

std::span<const Ratio> outputRatios()
{
    static const Ratio ratios[] = {
        {"drill programs of 1,000,000 holes / reading the board", 1, 7, writePrograms},
        {"checking 1,000,000 holes / reading the board", 1, 7, checkHoles},
        {"first map of 1,000,000 holes / reading the board", 0.5, 7, paintFirst},
        {"a frame of that map while panning and zooming", 33000, 61, paintFrames},
    };
    return ratios;
}
