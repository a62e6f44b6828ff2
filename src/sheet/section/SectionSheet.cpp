#include "sheet/section/SectionSheet.h"

#include "sheet/FitText.h"
#include "sheet/SheetLayout.h"
#include "sheet/section/SectionHead.h"
#include "sheet/section/SectionLegend.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr double kLeastFrame = 20;    // millimetres
constexpr double kProfilePart = 0.75; // of the height of a frame, where it has the room
constexpr double kShape = 0.5;        // least height of a frame, of its width
constexpr double kBelow = 5.5;        // a frame, for values and the name of the axis; text heights

class OneSection {
public:
    OneSection(const SectionContext& context, const SectionSource& source)
        : context_(context), source_(source), heights_(HeightsOf(source)),
          items_(SectionLegendItems(context, std::span(&source, 1))) {}

    SectionSheet Make() {
        made_.scene = BlankSheet(context_, context_.plan.landscape.value_or(true));
        SheetScene& scene = made_.scene;
        inside_ = SheetBox{0, 0, scene.width, scene.height}.Shrunk(MarginOf(context_.plan.paper));
        LayOutFrame();
        scene.map = made_.view.box;
        scene.scale = made_.scales.scale;
        AddSectionPlot(context_, source_, made_.view, scene);
        AddSectionHead(context_, inside_, SectionTitle(context_, source_), made_.scales, "", scene);
        AddAxisNames();
        const double below = made_.view.box.bottom + context_.tick + kBelow * context_.textHeight;
        AddSectionLegend(context_, items_,
                         {inside_.left, below, inside_.right, below + LegendHeight()}, scene);
        TellWhatIsOutside();
        return std::move(made_);
    }

private:
    [[nodiscard]] double Range() const { return std::max(heights_.max - heights_.min, 0.0); }
    [[nodiscard]] double LegendHeight() const {
        return SectionLegendHeight(context_, items_, inside_.Width());
    }

    // How wide the values at its left are follows from the scales, which follow from the width of
    // the frame: a first guess of that is mended once.
    void LayOutFrame() {
        double left = 8 * context_.textHeight;
        for (int i = 0; i < 2; ++i) {
            LayOutFrameBeside(left);
            left = HeightValueRoom(context_, made_.view);
        }
    }

    void LayOutFrameBeside(double left) {
        const double h = context_.textHeight;
        SheetBox room = inside_;
        room.left += left;
        room.right -= 2 * h; // for half a value
        room.top += SectionHeadHeight(context_) + 2 * h;
        room.bottom -= LegendHeight() + context_.tick + kBelow * h;
        room.right = std::max(room.right, room.left + kLeastFrame);
        room.bottom = std::max(room.bottom, room.top + kLeastFrame);
        const double length = source_.first.length;
        made_.scales = ChooseScales(context_.plan, length, Range(), room.Width(), room.Height());
        SectionView& view = made_.view;
        view.perStation = made_.scales.PerStation();
        view.perHeight = made_.scales.PerHeight();
        const double wanted = length > 0 ? length * view.perStation : room.Width();
        const double width = std::clamp(wanted, kLeastFrame, room.Width());
        view.box = room;
        view.box.left += (room.Width() - width) / 2;
        view.box.right = view.box.left + width;
        const double height = std::max(Range() * view.perHeight / kProfilePart, kShape * width);
        view.box.bottom = std::min(room.bottom, room.top + std::max(height, kLeastFrame));
        view.zero = source_.station ? length / 2 : 0;
        const double middle = heights_.min <= heights_.max ? (heights_.min + heights_.max) / 2 : 0;
        view.height = middle - view.box.Height() / 2 / view.perHeight;
    }

    void AddAxisNames() {
        const double h = context_.textHeight;
        const SheetBox& box = made_.view.box;
        const Colour colour = context_.style.theme.quietText;
        const auto add = [&](Text name, SheetPoint place, TextAnchor anchor, double room) {
            AddText(made_.scene, SheetLayer::Frame,
                    FitText(context_.words.measure, context_.words.texts[name], h, false, room),
                    place, anchor, colour);
        };
        add(source_.station ? Text::SectionDistances : Text::SectionStations,
            {box.Middle().x, box.bottom + context_.tick + 3.6 * h}, TextAnchor::Middle,
            inside_.Width());
        if (heights_.min <= heights_.max) {
            add(Text::SectionHeights,
                {box.left - HeightValueRoom(context_, made_.view), box.top - h}, TextAnchor::Left,
                inside_.right - box.left);
        }
    }

    void TellWhatIsOutside() {
        const double slack = 1e-6;
        const SheetBox& box = made_.view.box;
        const double width = source_.first.length * made_.view.perStation;
        const double height = Range() * made_.view.perHeight;
        if (width > box.Width() + slack || height > box.Height() + slack) {
            made_.scene.remarks.push_back(
                SectionDoesNotFit(width, height, box.Width(), box.Height()));
        }
    }

    const SectionContext& context_;
    const SectionSource& source_;
    Extent heights_;
    std::vector<SectionLegendItem> items_;
    SheetBox inside_;
    SectionSheet made_;
};

} // namespace

SectionSheet MakeSectionSheet(const SectionPlan& plan, const SectionSource& source,
                              const SheetWords& words) {
    const SectionStyle style = SectionStyleOf(plan.theme);
    const SectionContext context = SectionContextOf(plan, words, style);
    return OneSection(context, source).Make();
}

} // namespace terravo
