#include "sheet/SheetScene.h"

#include "sheet/SheetCurve.h"

#include <algorithm>

namespace terravo {

const char* NameOf(SheetLayer layer) {
    static constexpr std::array<const char*, kSheetLayers> kNames{
        "paper",    "bands",       "grid",   "triangles", "contours",     "index-contours", "hull",
        "profiles", "breaklines",  "points", "labels",    "spot-heights", "numbers",        "codes",
        "frame",    "title-block", "legend", "scale-bar", "north-arrow"};
    return kNames[static_cast<std::size_t>(layer)];
}

std::uint32_t SheetScene::InkNumber(const SheetInk& ink) {
    const auto found = std::find(inks.begin(), inks.end(), ink);
    if (found == inks.end()) {
        inks.push_back(ink);
        return static_cast<std::uint32_t>(inks.size() - 1);
    }
    return static_cast<std::uint32_t>(found - inks.begin());
}

void SheetScene::AddPiece(std::span<const SheetPoint> points, bool closed) {
    pieces.push_back({vertices.size(), points.size(), closed});
    vertices.insert(vertices.end(), points.begin(), points.end());
}

void SheetScene::CurveLastPiece(std::span<const SheetPoint> curve, double from, double to) {
    SheetPiece& piece = pieces.back();
    piece.firstControl = controls.size();
    AppendStretch(curve, from, to, controls);
    piece.cubics = CubicsOf(std::span(controls).subspan(piece.firstControl));
}

void SheetScene::AddLine(SheetLayer layer, const SheetInk& ink, std::span<const SheetPoint> points,
                         bool closed) {
    SheetLine line;
    line.layer = layer;
    line.ink = InkNumber(ink);
    line.firstPiece = pieces.size();
    line.pieces = 1;
    AddPiece(points, closed);
    lines.push_back(line);
}

void SheetScene::AddArea(SheetLayer layer, Colour fill, std::span<const SheetPoint> ring) {
    areas.push_back({layer, fill, pieces.size(), 1});
    AddPiece(ring, true);
}

void SheetScene::AddBox(SheetLayer layer, const SheetInk& ink, const SheetBox& box) {
    const SheetPoint corners[] = {
        {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
    AddLine(layer, ink, corners, true);
}

} // namespace terravo
