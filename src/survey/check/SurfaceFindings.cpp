#include "survey/check/SurfaceFindings.h"

#include "util/NumberText.h"

#include <array>
#include <span>

namespace terravo {
namespace {

struct Wording {
    FindingKind kind;
    Severity severity;
    Text sentence;
};

// In the order of SurfaceRemarkKind.
constexpr std::array kWordings{
    Wording{FindingKind::BreaklineHeight, Severity::Warning, Text::SaysLineOtherHeight},
    Wording{FindingKind::BreaklineHeight, Severity::Note, Text::SaysLineOffPoint},
    Wording{FindingKind::Crossing, Severity::Note, Text::SaysHeightsMet},
    Wording{FindingKind::Crossing, Severity::Warning, Text::SaysHeightTaken},
    Wording{FindingKind::Crossing, Severity::Error, Text::SaysCrossingRefused},
    Wording{FindingKind::LineLeftOut, Severity::Error, Text::SaysLineNotFinished},
    Wording{FindingKind::LineLeftOut, Severity::Warning, Text::SaysLineTooShort},
    Wording{FindingKind::LineLeftOut, Severity::Error, Text::SaysRingCrossesItself},
    Wording{FindingKind::LineHidden, Severity::Note, Text::SaysLineClipped},
    Wording{FindingKind::LineHidden, Severity::Warning, Text::SaysLineOutside},
    Wording{FindingKind::LineLeftOut, Severity::Warning, Text::SaysSideLost}};
static_assert(kWordings.size() == static_cast<std::size_t>(SurfaceRemarkKind::LostSide) + 1);

std::string Number(double value) {
    return HasHeight({0, 0, value}) ? NumberText::FormatScreen(value, "#0.0##", '.') : "-";
}

Statement StatementOf(const SurfaceRemark& remark, const SurfacePlan& plan) {
    return {kWordings[static_cast<std::size_t>(remark.kind)].sentence,
            {LabelOf(plan, remark.role, remark.line), Number(remark.place.z),
             Number(remark.otherHeight),
             remark.otherRole ? LabelOf(plan, *remark.otherRole, remark.otherLine) : "-",
             Number(remark.place.x), Number(remark.place.y)}};
}

} // namespace

std::string LabelOf(const SurfacePlan& plan, LineRole role, std::size_t line) {
    std::string number = std::to_string(line + 1);
    const std::span<const SharedLine> lines = LinesOf(plan, role);
    if (line >= lines.size()) {
        return number;
    }
    const SurfaceLine& found = *lines[line];
    std::string label = found.line.name.empty() ? number : found.line.name;
    if (found.source.empty()) {
        return label;
    }
    label += " (" + found.source.substr(found.source.find_last_of('/') + 1);
    label += found.fileLine > 0 ? ", " + std::to_string(found.fileLine) + ")" : ")";
    return label;
}

std::vector<Finding> FindingsOf(const ShapedSurface& surface, const SurfacePlan& plan,
                                const PointSet& points, std::size_t mostOfAKind) {
    FindingCollector findings(points, mostOfAKind);
    for (const SurfaceRemark& remark : surface.all.remarks) {
        const Wording& wording = kWordings[static_cast<std::size_t>(remark.kind)];
        if (remark.point > 0) {
            findings.Add(wording.kind, wording.severity, std::span(&remark.point, 1),
                         [&] { return StatementOf(remark, plan); });
        } else {
            findings.AddPlace(wording.kind, wording.severity, remark.place,
                              StatementOf(remark, plan));
        }
    }
    return findings.Take();
}

std::vector<Finding> LostLines(const ShapedSurface& surface, const SurfacePlan& plan,
                               const PointSet& points) {
    std::vector<Finding> findings = FindingsOf(surface, plan, points);
    std::erase_if(findings, [](const Finding& finding) {
        const bool isOutside =
            finding.kind == FindingKind::LineHidden && finding.severity == Severity::Warning;
        return finding.severity != Severity::Error && finding.kind != FindingKind::LineLeftOut &&
               !isOutside;
    });
    return findings;
}

} // namespace terravo
