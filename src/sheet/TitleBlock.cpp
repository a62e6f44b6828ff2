// The title block of a sheet.
//
// Data: the texts of the plan, and what the program knows itself: scale, interval, number and file
// of the points. Method: the lines are collected first, those without content left out; then the
// text height follows from the room, and each text is brought to its column.
#include "sheet/FitText.h"
#include "sheet/MakeSheet.h"
#include "util/PathText.h"

#include <algorithm>

namespace terravo {
namespace {

class TitleBlock {
public:
    TitleBlock(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), box_(context.layout.titleBlock),
          height_(std::min({1.2 * context.layout.textHeight,
                            box_.Height() / TitleBlockHeight(context.plan), box_.Width() / 18})) {}

    void Add() {
        scene_.AddBox(SheetLayer::TitleBlock, {context_.theme.text, context_.theme.frameWidth, {}},
                      box_);
        CollectLines();
        const double rule = AddHead();
        const SheetPoint ends[] = {{box_.left, rule}, {box_.right, rule}};
        scene_.AddLine(SheetLayer::TitleBlock,
                       {context_.theme.text, context_.theme.frameWidth / 2, {}}, ends);
        AddLines(rule);
    }

private:
    struct Line {
        std::string name;
        std::string content;
    };

    [[nodiscard]] const std::string& Word(Text text) const { return context_.source.texts[text]; }

    void AddLineOf(Text name, const std::string& content) {
        if (!content.empty()) {
            lines_.push_back({Word(name), content});
        }
    }

    void CollectLines() {
        const SheetTexts& texts = context_.plan.texts;
        const SheetSource& source = context_.source;
        AddLineOf(Text::SheetScale, "1:" + context_.ShortNumber(context_.layout.scale));
        if (source.rule.kind == LevelRuleKind::ByInterval) {
            AddLineOf(Text::SheetInterval, context_.ShortNumber(source.rule.interval) + " m");
        } else {
            AddLineOf(Text::SheetLevels, std::to_string(source.levels.UpperBound()));
        }
        AddLineOf(Text::SheetDatum, texts.datum);
        AddLineOf(Text::SheetDate, texts.date);
        AddLineOf(Text::SheetAuthor, texts.author);
        if (source.difference == nullptr) {
            AddLineOf(Text::SheetPoints, std::to_string(source.surveyed));
        }
        AddLineOf(Text::SheetFile, source.points.sourceName);
    }

    [[nodiscard]] double Room() const { return box_.Width() - 2 * kPadding * height_; }

    // Title and project. @return the y below them.
    double AddHead() {
        const SheetTexts& texts = context_.plan.texts;
        AddTitle(texts.title.empty() ? NameWithoutExtension(context_.source.points.sourceName)
                                     : texts.title);
        double rule = box_.top + kTitleZone * height_;
        if (!texts.project.empty()) {
            rule += 2 * height_;
            Write(Fitted(texts.project, 1.15, false, Room()), rule - height_);
        }
        return rule;
    }

    // Large on one line, else smaller on two of one height.
    void AddTitle(const std::string& title) {
        constexpr double kLarge = 2;
        constexpr double kSmall = 1.3;
        const FittedText one = FitText(context_.source.measure, title, kLarge * height_, true,
                                       Room(), kSmall / kLarge);
        const double middle = box_.top + kTitleZone / 2 * height_;
        const std::size_t blank = MiddleBlank(title);
        if (one.text == title || blank == std::string::npos) {
            Write(one, middle + one.height / 2);
            return;
        }
        const FittedText first = Fitted(title.substr(0, blank), kSmall, true, Room());
        const FittedText second = Fitted(title.substr(blank + 1), kSmall, true, Room());
        const double size = std::min(first.height, second.height) / height_;
        Write(Fitted(title.substr(0, blank), size, true, Room()), middle - 0.45 * height_);
        Write(Fitted(title.substr(blank + 1), size, true, Room()), middle + 1.6 * height_);
    }

    // The blank nearest to the middle.
    static std::size_t MiddleBlank(const std::string& title) {
        const std::size_t before = title.rfind(' ', title.size() / 2);
        const std::size_t behind = title.find(' ', title.size() / 2);
        if (before == std::string::npos || behind == std::string::npos) {
            return std::min(before, behind);
        }
        return title.size() / 2 - before < behind - title.size() / 2 ? before : behind;
    }

    void AddLines(double top) {
        const double inside = (box_.bottom - top) / height_ - 2 * kAround - 1;
        const double pitch = std::min(
            2.2, inside / static_cast<double>(std::max<std::size_t>(lines_.size(), 2) - 1));
        const auto widest = [this](auto part) {
            double width = 0;
            for (const Line& line : lines_) {
                width = std::max(width, context_.source.measure.Width(part(line), height_, false));
            }
            return width;
        };
        const double gap = height_;
        const double names = widest([](const Line& line) { return line.name; });
        const double all = names + gap + widest([](const Line& line) { return line.content; });
        const double size = std::clamp(Room() / all, kSmallestLine, 1.0);
        const double indent = std::min(names * size, Room() / 2) + gap;
        double y = top + (kAround + 1) * height_;
        for (const Line& line : lines_) {
            Write(Fitted(line.name, size, false, indent - gap + kSlack), y, 0,
                  context_.theme.quietText);
            Write(FitText(context_.source.measure, line.content, size * height_, false,
                          Room() - indent + kSlack, 1),
                  y, indent);
            y += pitch * height_;
        }
    }

    [[nodiscard]] FittedText Fitted(const std::string& text, double size, bool bold,
                                    double room) const {
        return FitText(context_.source.measure, text, size * height_, bold, room);
    }
    void Write(const FittedText& text, double y, double indent, Colour colour) {
        AddText(scene_, SheetLayer::TitleBlock, text, {box_.left + kPadding * height_ + indent, y},
                TextAnchor::Left, colour);
    }
    void Write(const FittedText& text, double y, double indent = 0) {
        Write(text, y, indent, context_.theme.text);
    }

    static constexpr double kSlack = 1e-6; // what rounding adds
    static constexpr double kSmallestLine = 0.7;
    static constexpr double kPadding = 1.4;   // in text heights
    static constexpr double kAround = 1.3;    // above and below the lines
    static constexpr double kTitleZone = 5.2; // height of the title's room, in text heights

    const SheetContext& context_;
    SheetScene& scene_;
    const SheetBox& box_;
    double height_;
    std::vector<Line> lines_;
};

bool HasRoom(const SheetBox& box) {
    return box.Width() > 0 && box.Height() > 0;
}

} // namespace

void AddTitleBlock(const SheetContext& context, SheetScene& scene) {
    if (HasRoom(context.layout.titleBlock)) {
        TitleBlock(context, scene).Add();
    }
}

} // namespace terravo
