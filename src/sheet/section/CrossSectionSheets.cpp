// Cross-sections on sheets, beside and below each other.
//
// Data: the sections. Method: the longest and the highest of them decide how large a place of the
// grid is and, with it, the scales; each section then has its heights in the middle of its place.
#include "sheet/FitText.h"
#include "sheet/SheetLayout.h"
#include "sheet/section/SectionHead.h"
#include "sheet/section/SectionLegend.h"
#include "sheet/section/SectionSheet.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr double kUsualPlace = 110;  // of one section, millimetres
constexpr double kLeastHeight = 25;  // of a frame
constexpr double kUsualShape = 0.55; // height of a frame, of its width

// Of a section that is far wider than its ground, what lies about the ground, as far on either side
// of the axis.
double LengthToShow(const Profile& profile) {
    constexpr double kFarWider = 2;
    constexpr double kBeside = 1.1;
    const double axis = profile.length / 2;
    double reach = 0;
    for (const ProfileRun& run : profile.runs) {
        reach = std::max({reach, axis - run.front().station, run.back().station - axis});
    }
    return 0 < reach && reach * kFarWider < axis ? 2 * kBeside * reach : profile.length;
}

class CrossSections {
public:
    CrossSections(const SectionContext& context, std::span<const SectionSource> sources)
        : context_(context), sources_(sources), items_(SectionLegendItems(context, sources)) {
        for (const SectionSource& source : sources_) {
            const Extent heights = HeightsOf(source);
            range_ = std::max(range_, heights.max - heights.min);
            length_ = std::max(length_, LengthToShow(source.first));
        }
    }

    std::vector<SheetScene> Make() {
        const SheetScene blank = BlankSheet(context_, context_.plan.landscape.value_or(false));
        inside_ = SheetBox{0, 0, blank.width, blank.height}.Shrunk(MarginOf(context_.plan.paper));
        LayOut();
        const auto places = static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_);
        const std::size_t pages = (sources_.size() + places - 1) / places;
        std::vector<SheetScene> sheets;
        for (std::size_t page = 0; page < pages; ++page) {
            SheetScene scene = blank;
            scene.map = room_;
            scene.scale = scales_.scale;
            AddFurniture(page, pages, scene);
            for (std::size_t i = 0; i < places && page * places + i < sources_.size(); ++i) {
                AddSection(sources_[page * places + i], static_cast<int>(i), scene);
            }
            sheets.push_back(std::move(scene));
        }
        TellWhatIsOutside(sheets.front());
        return sheets;
    }

private:
    [[nodiscard]] double Gap() const { return 2.5 * context_.textHeight; }
    [[nodiscard]] double Above() const { return 2.6 * context_.textHeight; } // of a frame
    [[nodiscard]] double Below() const { return context_.tick + 2.4 * context_.textHeight; }

    void LayOut() {
        const double legend = SectionLegendHeight(context_, items_, inside_.Width());
        room_ = inside_;
        room_.top += SectionHeadHeight(context_);
        room_.bottom -= legend + 3 * context_.textHeight;
        double left = 6 * context_.textHeight;
        for (int i = 0; i < 2; ++i) { // as wide as the values of the first guess are
            LayOutBeside(left);
            left = WidestValues();
        }
    }

    void LayOutBeside(double left) {
        const double right = context_.textHeight; // for half a value
        const auto count = static_cast<double>(sources_.size());
        const auto frameWidth = [&](double columns) {
            return std::max((room_.Width() + Gap()) / columns - Gap() - left - right, 10.0);
        };
        const double usual =
            std::clamp(std::floor(room_.Width() / kUsualPlace + 0.35), 1.0, std::min(count, 6.0));
        const double most = room_.Height() - Above() - Below();
        const double height = std::clamp(kUsualShape * frameWidth(usual), kLeastHeight, most);
        // Steep sections have a higher place rather than a smaller scale.
        const bool isSteep = range_ * frameWidth(usual) > kUsualShape * height * length_;
        scales_ =
            ChooseScales(context_.plan, length_, range_, frameWidth(usual),
                         isSteep ? std::clamp(frameWidth(usual), kLeastHeight, most) : height);
        left_ = left;
        width_ = std::min(std::max(length_ * scales_.PerStation(), kLeastHeight), frameWidth(1));
        columns_ = std::clamp(
            static_cast<int>((room_.Width() + Gap()) / (left + width_ + right + Gap()) + 1e-9), 1,
            static_cast<int>(count));
        constexpr double kHeightPart = 0.85;
        height_ = std::clamp(range_ * scales_.PerHeight() / kHeightPart, kLeastHeight,
                             std::max(most, kLeastHeight));
        const double around = Above() + Below() + Gap();
        const double upright = room_.Height() + Gap();
        rows_ = std::max(1, static_cast<int>(upright / (height_ + around) + 1e-9));
        constexpr double kMostGrowth = 1.5; // into what would stay empty
        height_ = std::max(height_, std::min(kMostGrowth * height_, upright / rows_ - around));
    }

    [[nodiscard]] double WidestValues() const {
        double widest = 0;
        for (const SectionSource& source : sources_) {
            widest = std::max(widest,
                              HeightValueRoom(context_, ViewOf(source, {0, 0, width_, height_})));
        }
        return widest;
    }

    [[nodiscard]] SectionView ViewOf(const SectionSource& source, const SheetBox& box) const {
        SectionView view;
        view.box = box;
        view.perStation = scales_.PerStation();
        view.perHeight = scales_.PerHeight();
        view.zero = source.station ? source.first.length / 2 : 0;
        view.station = source.first.length / 2 - box.Width() / 2 / view.perStation;
        const Extent heights = HeightsOf(source);
        const double middle = heights.min <= heights.max ? (heights.min + heights.max) / 2 : 0;
        view.height = middle - box.Height() / 2 / view.perHeight;
        return view;
    }

    // Places share what is left of the room.
    [[nodiscard]] SheetBox FrameOf(int place) const {
        const double across = room_.Width() / columns_;
        const double down = (room_.Height() + Gap()) / rows_;
        const int row = place / columns_;
        SheetBox box;
        box.left = room_.left + (place % columns_) * across + left_ +
                   (across - left_ - width_ - context_.textHeight) / 2;
        box.top = room_.top + row * down + Above();
        box.right = box.left + width_;
        box.bottom = box.top + height_;
        return box;
    }

    void AddSection(const SectionSource& source, int place, SheetScene& scene) const {
        const SheetBox box = FrameOf(place);
        AddSectionPlot(context_, source, ViewOf(source, box), scene);
        const double h = context_.textHeight;
        const double base = box.top - 0.9 * h;
        const double left = box.left - left_;
        const FittedText title =
            FitText(context_.words.measure, TitleOf(source), 1.15 * h, true, box.right - left);
        const FittedText areas = FitText(context_.words.measure, AreasText(source), h, false,
                                         box.right - left - title.width - h, 0.6);
        AddText(scene, SheetLayer::TitleBlock, title, {left, base}, TextAnchor::Left,
                context_.style.theme.text);
        AddText(scene, SheetLayer::TitleBlock, areas, {box.right, base}, TextAnchor::Right,
                context_.style.theme.quietText);
    }

    [[nodiscard]] std::string TitleOf(const SectionSource& source) const {
        return source.station ? StationText(context_, *source.station)
                              : context_.words.texts[Text::SectionTitle];
    }

    [[nodiscard]] std::string AreasText(const SectionSource& source) const {
        const bool isNothing = source.first.runs.empty();
        if (!source.areas || isNothing) {
            return {};
        }
        const auto part = [this](Text word, double area) {
            return context_.words.texts[word] + " " +
                   AreaText(area, context_.words.decimalSeparator);
        };
        return part(Text::SectionCut, source.areas->cut) + ", " +
               part(Text::SectionFill, source.areas->fill);
    }

    void AddFurniture(std::size_t page, std::size_t pages, SheetScene& scene) const {
        const std::string number = std::to_string(page + 1) + " / " + std::to_string(pages);
        const std::string title = context_.plan.title.empty() ? Title() : context_.plan.title;
        AddSectionHead(context_, inside_, title, scales_, pages > 1 ? number : "", scene);
        const double height = SectionLegendHeight(context_, items_, inside_.Width());
        AddSectionLegend(context_, items_,
                         {inside_.left, inside_.bottom - height, inside_.right, inside_.bottom},
                         scene);
    }

    [[nodiscard]] std::string Title() const {
        const SectionSource& first = sources_.front();
        std::string title = context_.words.texts[Text::CrossSectionsTitle];
        if (!first.firstName.empty()) {
            title += ": " + first.firstName;
        }
        return first.second != nullptr && !first.secondName.empty()
                   ? title + ", " + first.secondName
                   : title;
    }

    void TellWhatIsOutside(SheetScene& scene) const {
        const double slack = 1e-6;
        const double width = length_ * scales_.PerStation();
        const double height = range_ * scales_.PerHeight();
        if (width > width_ + slack || height > height_ + slack) {
            scene.remarks.push_back(SectionDoesNotFit(width, height, width_, height_));
        }
    }

    const SectionContext& context_;
    std::span<const SectionSource> sources_;
    std::vector<SectionLegendItem> items_;
    double range_ = 0;
    double length_ = 0;
    SheetBox inside_;
    SheetBox room_; // for all places
    SectionScales scales_;
    double left_ = 0;  // of a frame, for its values
    double width_ = 0; // of a frame
    double height_ = 0;
    int columns_ = 1;
    int rows_ = 1;
};

} // namespace

std::vector<SheetScene> MakeCrossSectionSheets(const SectionPlan& plan,
                                               std::span<const SectionSource> sources,
                                               const SheetWords& words) {
    if (sources.empty()) {
        return {};
    }
    const SectionStyle style = SectionStyleOf(plan.theme);
    const SectionContext context = SectionContextOf(plan, words, style);
    return CrossSections(context, sources).Make();
}

} // namespace terravo
