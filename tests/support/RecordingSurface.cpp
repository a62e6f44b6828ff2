#include "support/RecordingSurface.h"

#include <algorithm>

namespace terravo {
namespace {

template <class Call>
auto Of(std::vector<Call> calls, typename Call::Kind kind) {
    std::erase_if(calls, [kind](const Call& call) { return call.kind != kind; });
    return calls;
}

} // namespace

UserCall& RecordingSurface::Record(UserCall::Kind kind, double x, double y, Colour colour) {
    UserCall call;
    call.kind = kind;
    call.x1 = x;
    call.y1 = y;
    call.colour = colour;
    call.drawWidth = DrawWidth();
    call.drawStyle = DrawStyle();
    call.drawMode = DrawMode();
    call.fontName = FontName();
    call.fontSize = FontSize();
    call.fontBold = FontBold();
    call.fontTransparent = FontTransparent();
    return userCalls.emplace_back(std::move(call));
}

PixelCall& RecordingSurface::Record(PixelCall::Kind kind, PixelPosition a, Colour colour,
                                    int drawMode) {
    PixelCall call;
    call.kind = kind;
    call.a = a;
    call.pen.colour = colour;
    call.pen.mode = drawMode;
    return pixelCalls.emplace_back(std::move(call));
}

std::vector<UserCall> RecordingSurface::UserCallsOf(UserCall::Kind kind) const {
    return Of(userCalls, kind);
}

std::vector<PixelCall> RecordingSurface::PixelCallsOf(PixelCall::Kind kind) const {
    return Of(pixelCalls, kind);
}

std::vector<std::string> RecordingSurface::Texts() const {
    std::vector<std::string> texts;
    for (const UserCall& call : UserCallsOf(UserCall::Kind::Text)) {
        texts.push_back(call.text);
    }
    return texts;
}

std::optional<UserCall> RecordingSurface::FindText(std::string_view text) const {
    for (const UserCall& call : UserCallsOf(UserCall::Kind::Text)) {
        if (call.text == text) {
            return call;
        }
    }
    return std::nullopt;
}

void RecordingSurface::Forget() {
    userCalls.clear();
    pixelCalls.clear();
}

void RecordingSurface::Line(double x1, double y1, double x2, double y2, Colour colour, Box box) {
    UserCall& call = Record(UserCall::Kind::Line, x1, y1, colour);
    call.x2 = x2;
    call.y2 = y2;
    call.box = box;
    DrawSurface::Line(x1, y1, x2, y2, colour, box);
}

void RecordingSurface::PSet(double x, double y, Colour colour) {
    Record(UserCall::Kind::Point, x, y, colour);
    DrawSurface::PSet(x, y, colour);
}

void RecordingSurface::Print(std::string_view utf8, NewLine newLine) {
    UserCall& call = Record(UserCall::Kind::Text, Cursor().x, Cursor().y, ForeColor());
    call.text = utf8;
    call.newLine = newLine;
    DrawSurface::Print(utf8, newLine);
}

void RecordingSurface::FillPolyPolygon(std::span<const PixelPosition> corners,
                                       std::span<const std::int32_t> counts,
                                       const PaintTools& tools) {
    UserCall& call = Record(UserCall::Kind::Polygons, 0, 0, tools.penColour);
    call.corners.assign(corners.begin(), corners.end());
    call.counts.assign(counts.begin(), counts.end());
    call.tools = tools;
    DrawSurface::FillPolyPolygon(corners, counts, tools);
}

void RecordingSurface::FillDisc(PixelPosition centre, int radius, const PaintTools& tools) {
    UserCall& call = Record(UserCall::Kind::Disc, centre.x, centre.y, tools.penColour);
    call.radius = radius;
    call.tools = tools;
    DrawSurface::FillDisc(centre, radius, tools);
}

void RecordingSurface::StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) {
    PixelCall& call = Record(PixelCall::Kind::Stroke, a, pen.colour, pen.mode);
    call.b = b;
    call.pen = pen;
}

void RecordingSurface::SetPixels(PixelPosition centre, const Pen& pen) {
    Record(PixelCall::Kind::Point, centre, pen.colour, pen.mode).pen = pen;
}

void RecordingSurface::FillPixelRect(PixelPosition a, PixelPosition b, Colour colour,
                                     int drawMode) {
    Record(PixelCall::Kind::Rect, a, colour, drawMode).b = b;
}

void RecordingSurface::PaintPixelPolygons(std::span<const PixelPosition> corners,
                                          std::span<const std::int32_t> counts,
                                          std::optional<Colour> inside, const Pen& pen) {
    PixelCall& call = Record(PixelCall::Kind::Polygons, {}, pen.colour, pen.mode);
    call.pen = pen;
    call.background = inside;
    call.corners.assign(corners.begin(), corners.end());
    call.counts.assign(counts.begin(), counts.end());
}

void RecordingSurface::FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside,
                                     Colour rim, int drawMode) {
    PixelCall& call = Record(PixelCall::Kind::Disc, centre, rim, drawMode);
    call.b = {static_cast<double>(radius), static_cast<double>(radius)};
    call.background = inside;
}

void RecordingSurface::FloodPixels(PixelPoint seed, Colour /*border*/, Colour colour,
                                   int drawMode) {
    const PixelPosition place{static_cast<double>(seed.x), static_cast<double>(seed.y)};
    Record(PixelCall::Kind::Flood, place, colour, drawMode);
}

void RecordingSurface::DrawTextPixels(PixelPosition topLeft, std::string_view utf8,
                                      const Font& /*font*/, Colour colour,
                                      std::optional<Colour> background) {
    PixelCall& call = Record(PixelCall::Kind::Text, topLeft, colour, DrawModes::kCopy);
    call.text = utf8;
    call.background = background;
}

TextSize RecordingSurface::MeasurePixels(std::string_view utf8, const Font& /*font*/) const {
    const auto characters = std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    });
    return {static_cast<int>(characters) * kRecordedCharWidth, kRecordedCharHeight};
}

void RecordingSurface::RefreshPixels() {
    Record(PixelCall::Kind::Refresh, {}, kBlack, DrawModes::kCopy);
}

} // namespace terravo
