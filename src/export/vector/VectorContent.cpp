#include "export/vector/VectorContent.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr std::array<VectorPart, kVectorPartCount> kParts{
    VectorPart::Contours,  VectorPart::IndexContours, VectorPart::Labels,   VectorPart::Bands,
    VectorPart::Triangles, VectorPart::Points,        VectorPart::Numbers,  VectorPart::Codes,
    VectorPart::Heights,   VectorPart::Hull,          VectorPart::Boundary, VectorPart::Breaklines};

// By the number of the part.
constexpr std::array<const char*, kVectorPartCount> kNames{
    "contours", "index", "labels",  "bands", "triangles", "points",
    "numbers",  "codes", "heights", "hull",  "boundary",  "breaklines"};

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

std::span<const VectorPart> AllVectorParts() {
    return kParts;
}

const char* NameOf(VectorPart part) {
    return kNames[static_cast<std::size_t>(part)];
}

std::optional<VectorParts> ParseVectorParts(std::string_view list) {
    VectorParts parts;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t end = std::min(list.find(',', at), list.size());
        const auto* found =
            std::find(kNames.begin(), kNames.end(), Trimmed(list.substr(at, end - at)));
        if (found == kNames.end()) {
            return std::nullopt;
        }
        parts.Add(static_cast<VectorPart>(found - kNames.begin()));
        at = end + 1;
    }
    return parts;
}

double MillimetresIn(LengthUnit unit) {
    switch (unit) {
    case LengthUnit::Metre:
        break;
    case LengthUnit::Foot:
        return 304.8;
    case LengthUnit::UsSurveyFoot:
        return 1200000.0 / 3937.0;
    }
    return 1000;
}

} // namespace terravo
