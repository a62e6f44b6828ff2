#include "survey/check/Finding.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace terravo {
namespace {

// "P1, P2, P3, P4, P5 ... (12)"
std::string PointList(const Finding& finding, const PointLabels& labels) {
    constexpr std::size_t kMostNamed = 5;
    std::string text;
    for (std::size_t i = 0; i < std::min(finding.points.size(), kMostNamed); ++i) {
        text += (i == 0 ? "" : ", ") + labels.NameOrNumber(finding.points[i]);
    }
    if (finding.points.size() > kMostNamed) {
        text += " ... (" + std::to_string(finding.count) + ")";
    }
    return text;
}

} // namespace

const char* NameOf(FindingKind kind) {
    static constexpr std::array<const char*, kFindingKinds> kNames{
        "void-height",      "repeat",   "repeat-other-height", "near-repeat",    "height-outlier",
        "lone-point",       "degrees",  "constant-column",     "running-number", "no-part",
        "breakline-height", "crossing", "line-left-out",       "line-hidden"};
    return kNames[static_cast<std::size_t>(kind)];
}

const char* NameOf(Severity severity) {
    static constexpr std::array<const char*, 3> kNames{"error", "warning", "note"};
    return kNames[static_cast<std::size_t>(severity)];
}

std::string SentenceOf(const Finding& finding, const PointLabels& labels,
                       const TextCatalogue& texts, char decimalSeparator) {
    std::vector<std::string> values = finding.statement.values;
    for (std::string& value : values) {
        std::replace(value.begin(), value.end(), '.', decimalSeparator);
    }
    values.insert(values.begin(), PointList(finding, labels));
    return WithValues(texts[finding.statement.sentence], values);
}

void FindingCollector::List(Finding& finding, std::span<const Index> points) const {
    for (const Index i : points) {
        if (finding.points.size() == Finding::kMostListed) {
            return;
        }
        finding.points.push_back(i);
        if (const std::int64_t line = points_.labels.Line(i); line > 0) {
            finding.lines.push_back(line);
        }
    }
}

Finding FindingCollector::Make(FindingKind kind, Severity severity,
                               std::span<const Index> points) const {
    Finding finding;
    finding.kind = kind;
    finding.severity = severity;
    finding.count = static_cast<std::int64_t>(points.size());
    if (!points.empty()) {
        const Index first = points.front();
        finding.hasPlace = true;
        finding.x = points_.x[first];
        finding.y = points_.y[first];
        finding.z = points_.z[first];
    }
    List(finding, points);
    return finding;
}

void FindingCollector::AddToRest(FindingKind kind, Severity severity,
                                 std::span<const Index> points) {
    Finding& rest = rest_[static_cast<std::size_t>(kind)];
    if (found_[static_cast<std::size_t>(kind)] == most_ + 1) { // the first of the rest
        rest = Make(kind, severity, points);
        return;
    }
    rest.severity = std::min(rest.severity, severity);
    rest.count += static_cast<std::int64_t>(points.size());
    List(rest, points);
}

void FindingCollector::AddPlace(FindingKind kind, Severity severity, const SpacePoint& place,
                                Statement statement) {
    if (found_[static_cast<std::size_t>(kind)]++ >= most_) {
        AddToRest(kind, severity, {});
        return;
    }
    Finding finding = Make(kind, severity, {});
    finding.hasPlace = true;
    finding.x = place.x;
    finding.y = place.y;
    finding.z = place.z;
    finding.statement = std::move(statement);
    findings_.push_back(std::move(finding));
}

void FindingCollector::AddWhole(FindingKind kind, Severity severity, Statement statement) {
    Finding finding = Make(kind, severity, {});
    finding.count = points_.count;
    finding.statement = std::move(statement);
    findings_.push_back(std::move(finding));
}

void FindingCollector::AddLines(FindingKind kind, Severity severity,
                                std::vector<std::int64_t> lines, std::int64_t count,
                                Statement statement) {
    Finding finding = Make(kind, severity, {});
    finding.lines = std::move(lines);
    finding.count = count;
    finding.statement = std::move(statement);
    findings_.push_back(std::move(finding));
}

std::vector<Finding> FindingCollector::Take() {
    const auto key = [](const Finding& finding) {
        return std::tuple(finding.severity, finding.points.empty() ? 0 : finding.points.front(),
                          finding.kind);
    };
    std::stable_sort(findings_.begin(), findings_.end(),
                     [&](const Finding& a, const Finding& b) { return key(a) < key(b); });
    for (std::size_t kind = 0; kind < kFindingKinds; ++kind) {
        if (Finding& rest = rest_[kind]; found_[kind] > most_) {
            rest.statement = {Text::SaysMore,
                              {std::to_string(found_[kind] - most_), std::to_string(rest.count)}};
            const auto behind =
                std::find_if(findings_.begin(), findings_.end(),
                             [&](const auto& f) { return f.severity > rest.severity; });
            findings_.insert(behind, std::move(rest));
        }
    }
    return std::move(findings_);
}

} // namespace terravo
