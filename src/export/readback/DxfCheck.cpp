#include "export/readback/DxfCheck.h"

#include "export/readback/ContentCheck.h"
#include "export/readback/DxfFrame.h"
#include "export/readback/DxfPlainText.h"
#include "util/Prefetch.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <unordered_map>

namespace terravo {
namespace {

// What is on a layer.
enum class Role : unsigned char {
    None,
    Contour,
    IndexContour,
    Label,
    Triangle,
    Point,
    Number,
    Code,
    Height,
    Hull,
    Boundary,
    Breakline
};

struct NamedRole {
    std::string_view name;
    Role role;
};

constexpr NamedRole kRoles[] = {
    {"CONTOUR_MINOR", Role::Contour},
    {"CONTOURS", Role::Contour},
    {"CONTOUR_INDEX", Role::IndexContour},
    {"CONTOUR_LABELS", Role::Label},
    {"TIN", Role::Triangle},
    {"POINTS", Role::Point},
    {"POINT_NUMBERS", Role::Number},
    {"POINT_CODES", Role::Code},
    {"POINT_HEIGHTS", Role::Height},
    {"TIN_BOUNDARY", Role::Hull},
    {"BOUNDARY", Role::Boundary},
    {"BREAKLINES", Role::Breakline},
};

constexpr std::string_view kLevelByText = "CONT_";
constexpr std::string_view kLevelByNumber = "LEVEL_";
constexpr std::int64_t kIndexColour = 32;

struct Layer {
    std::string name;
    Role role = Role::None;
    bool ofLevel = false;
    std::optional<double> level; // of its first contour, where each level has its own
};

Role RoleOf(const DxfSeenLayer& layer, bool perLevel) {
    const bool ofLevel =
        layer.name.starts_with(kLevelByText) || layer.name.starts_with(kLevelByNumber);
    if (perLevel && ofLevel) {
        return layer.colour == kIndexColour ? Role::IndexContour : Role::Contour;
    }
    const auto* const found =
        std::find_if(std::begin(kRoles), std::end(kRoles),
                     [&](const NamedRole& role) { return role.name == layer.name; });
    return found == std::end(kRoles) ? Role::None : found->role;
}

// Whether the height in a name, 102_5, is that of the level as far as its digits go.
bool IsHeightOf(std::string digits, double level) {
    std::replace(digits.begin(), digits.end(), '_', '.');
    double height = 0;
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, height, std::chars_format::fixed);
    const std::size_t point = digits.find('.');
    const auto decimals =
        point == std::string::npos ? 0.0 : static_cast<double>(digits.size() - point - 1);
    const double slack = 0.5001 * std::pow(10.0, -decimals) + 1e-12 * std::fabs(level);
    return read.ec == std::errc() && read.ptr == end && std::fabs(height - level) <= slack;
}

class EntityReader {
public:
    EntityReader(const std::string& path, const VectorContent& content,
                 const VectorOptions& options)
        : tags_(path), frame_(tags_, content, options), content_(content), options_(options),
          check_(content, WrittenParts(content)) {}

    std::optional<std::string> Read() {
        frame_.ReadHead();
        highest_ = frame_.HighestHandle();
        for (const DxfSeenLayer& layer : frame_.Layers()) {
            const Role role = RoleOf(layer, options_.layerPerLevel);
            const bool ofLevel =
                options_.layerPerLevel && (role == Role::Contour || role == Role::IndexContour);
            layers_.emplace(layer.name, Layer{layer.name, role, ofLevel, std::nullopt});
        }
        while (!check_.HasDifference() && ReadEntity()) {
        }
        if (!check_.HasDifference()) {
            frame_.ReadTail(extents_, highest_);
        }
        return check_.Finish();
    }

private:
    // Bands are polygons, which a drawing does not have.
    static VectorParts WrittenParts(const VectorContent& content) {
        VectorParts written;
        for (std::size_t i = 0; i < kVectorPartCount; ++i) {
            const auto part = static_cast<VectorPart>(i);
            if (content.parts.Has(part) && part != VectorPart::Bands) {
                written.Add(part);
            }
        }
        return written;
    }

    bool ReadEntity() {
        const std::string_view type = tags_.Text(0);
        if (type == "3DFACE") {
            ReadFace();
        } else if (type == "LWPOLYLINE") {
            ReadContour();
        } else if (type == "POLYLINE") {
            ReadPolyline();
        } else if (type == "POINT") {
            ReadPoint();
        } else if (type == "TEXT") {
            ReadText();
        } else if (type == "ENDSEC") {
            return false;
        } else {
            tags_.Differ("there is an entity " + std::string(type));
        }
        return true;
    }

    // --- What all have ---

    void ReadHandleAndOwner(std::uint64_t owner) {
        const std::uint64_t handle = tags_.Handle(5);
        if (handle <= highest_) {
            tags_.Differ("the handle is not above those before");
        }
        highest_ = handle;
        if (tags_.Handle(330) != owner) {
            tags_.Differ("the entity belongs to another owner");
        }
        tags_.Expect(100, "AcDbEntity");
    }

    void ReadHead(std::uint64_t owner) {
        if (!frame_.IsR12()) {
            ReadHandleAndOwner(owner);
        }
        const std::string_view name = tags_.Text(8);
        if (layer_ == nullptr || layer_->name != name) {
            const auto found = layers_.find(std::string(name));
            if (found == layers_.end()) {
                tags_.Differ("the layer is not in the table");
            }
            layer_ = &found->second;
        }
    }

    void ReadHead(std::uint64_t owner, std::string_view className) {
        ReadHead(owner);
        ExpectClass(className);
    }

    void ExpectClass(std::string_view name) {
        if (!frame_.IsR12()) {
            tags_.Expect(100, name);
        }
    }

    void ExpectRole(bool holds) {
        if (!holds) {
            tags_.Differ("such an entity is not expected on layer " + layer_->name);
        }
    }

    SpacePoint ReadPlace(int code) {
        const double x = tags_.Real(code);
        const double y = tags_.Real(code + 10);
        return {x, y, tags_.Real(code + 20)};
    }

    SpacePoint ReadCountedPlace(int code) {
        const SpacePoint place = ReadPlace(code);
        extents_.Include(place);
        return place;
    }

    // --- Lines ---

    [[nodiscard]] bool IsContourLayer() const {
        return layer_->role == Role::Contour || layer_->role == Role::IndexContour;
    }

    void ReadContour() {
        ReadHead(frame_.ModelSpace(), "AcDbPolyline");
        ExpectRole(IsContourLayer() && !frame_.IsR12() && !options_.contoursIn3D);
        const std::int64_t count = tags_.Integer(90);
        const std::int64_t flags = tags_.Integer(70);
        if (tags_.Real(43) != 0) {
            tags_.Differ("the line has a width");
        }
        const double level = tags_.Real(38);
        vertices_.clear();
        while (tags_.Peek().code == 10) {
            const double x = tags_.Real(10);
            vertices_.push_back({x, tags_.Real(20), level});
            extents_.Include(vertices_.back());
        }
        if (count != static_cast<std::int64_t>(vertices_.size())) {
            tags_.Differ("the count of vertices is another than that of the line");
        }
        TellContour(flags, level);
    }

    void TellContour(std::int64_t flags, double level) {
        if (flags != 0 && flags != kClosed) {
            tags_.Differ("the line has other flags");
        }
        if (layer_->ofLevel) {
            CheckLevelOfLayer(level);
        }
        const bool areTold = content_.parts.Has(VectorPart::IndexContours);
        const auto isIndex =
            areTold ? std::optional(layer_->role == Role::IndexContour) : std::nullopt;
        check_.Contour(level, flags == kClosed, isIndex, vertices_);
    }

    void CheckLevelOfLayer(double level) {
        if (!layer_->level) {
            layer_->level = level;
        }
        if (*layer_->level != level || !IsNameOf(layer_->name, level)) {
            tags_.Differ("the layer " + layer_->name + " is that of another level");
        }
    }

    [[nodiscard]] bool IsNameOf(const std::string& name, double level) const {
        if (name.starts_with(kLevelByText)) {
            return IsHeightOf(name.substr(kLevelByText.size()), level);
        }
        std::int64_t number = 0;
        return ReadDxfInteger(std::string_view(name).substr(kLevelByNumber.size()), number) &&
               number >= 1 && number <= static_cast<std::int64_t>(content_.levels.size()) &&
               content_.levels[static_cast<std::size_t>(number) - 1].value == level;
    }

    void ReadPolyline() {
        ReadHead(frame_.ModelSpace(), "AcDb3dPolyline");
        const Layer* const layer = layer_;
        const std::uint64_t owner = highest_;
        tags_.Expect(66, "1");
        const SpacePoint place = ReadPlace(10);
        const std::int64_t flags = tags_.Integer(70);
        const bool inSpace = (flags & kInSpace) != 0;
        ReadVertices(owner, inSpace);
        ReadHead(owner);
        if (layer_ != layer || place.x != 0 || place.y != 0 || (inSpace && place.z != 0)) {
            tags_.Differ("the parts of a line do not belong together");
        }
        if (IsContourLayer()) {
            ExpectRole(inSpace == options_.contoursIn3D && (inSpace || frame_.IsR12()));
            TellContour(flags & ~kInSpace, inSpace ? LevelOfVertices() : place.z);
        } else {
            TellLine(flags);
        }
    }

    [[nodiscard]] double LevelOfVertices() const {
        return vertices_.empty() ? 0 : vertices_.front().z;
    }

    // Up to SEQEND, whose type is taken.
    void ReadVertices(std::uint64_t owner, bool inSpace) {
        const Layer* const layer = layer_;
        vertices_.clear();
        while (!tags_.TakeIf(0, "SEQEND")) {
            tags_.Expect(0, "VERTEX");
            ReadHead(owner, "AcDbVertex");
            ExpectClass("AcDb3dPolylineVertex");
            vertices_.push_back(ReadCountedPlace(10));
            if (inSpace) {
                tags_.Expect(70, "32");
            }
            if (layer_ != layer) {
                tags_.Differ("a vertex is on another layer than its line");
            }
        }
    }

    void TellLine(std::int64_t flags) {
        ExpectRole(layer_->role == Role::Hull || layer_->role == Role::Boundary ||
                   layer_->role == Role::Breakline);
        if (flags != kInSpace && flags != (kInSpace | kClosed)) {
            tags_.Differ("the line has other flags");
        }
        check_.Line(layer_->role == Role::Hull       ? SpaceLineKind::Hull
                    : layer_->role == Role::Boundary ? SpaceLineKind::Boundary
                                                     : SpaceLineKind::Breakline,
                    (flags & kClosed) != 0, vertices_);
    }

    // --- Triangles and points ---

    void ReadFace() {
        ReadHead(frame_.ModelSpace(), "AcDbFace");
        ExpectRole(layer_->role == Role::Triangle);
        std::array<SpacePoint, 3> corners;
        for (int i = 0; i < 3; ++i) {
            corners[static_cast<std::size_t>(i)] = ReadCountedPlace(10 + i);
        }
        if (ReadPlace(13) != corners[2]) {
            tags_.Differ("the fourth corner is not the third");
        }
        LookAhead();
        check_.Corners(corners);
    }

    // The corners lie anywhere among the points: those of the next triangles are asked for.
    void LookAhead() {
        constexpr std::size_t kAhead = 8;
        if (++faces_ + kAhead < content_.triangles.size()) {
            for (const Index corner : content_.triangles[faces_ + kAhead].vertices) {
                PrefetchLine(&content_.PointAt(corner));
            }
        }
    }

    void ReadPoint() {
        ReadHead(frame_.ModelSpace(), "AcDbPoint");
        ExpectRole(layer_->role == Role::Point);
        check_.Point(ReadCountedPlace(10), std::nullopt, std::nullopt);
    }

    // --- Texts ---

    void ReadText() {
        ReadHead(frame_.ModelSpace(), "AcDbText");
        const SpacePoint place = ReadCountedPlace(10);
        if (tags_.Real(40) != content_.textHeight) {
            tags_.Differ("the text has another height");
        }
        const std::string bytes(tags_.Text(1));
        const std::optional<std::string> text = ShownDxfText(bytes);
        if (!text || bytes.size() > kMostBytes) {
            tags_.Differ("the text is none that a drawing shows letter for letter");
        }
        if (layer_->role == Role::Label) {
            ReadRestOfLabel(place, *text);
        } else {
            ReadStyle();
            ExpectClass("AcDbText");
            TellPointText(place, *text, bytes.size());
        }
    }

    void ReadStyle() {
        const std::string_view name = tags_.Text(7);
        if (name != "Standard" && name != "STANDARD") {
            tags_.Differ("the style of the text is not in the table");
        }
    }

    void ReadRestOfLabel(const SpacePoint& place, const std::string& text) {
        const double angle = tags_.Real(50);
        ReadStyle();
        tags_.Expect(72, "1");
        if (ReadPlace(11) != place) {
            tags_.Differ("the two places of the text are not the same");
        }
        ExpectClass("AcDbText");
        tags_.Expect(73, "2");
        check_.Label(place.z, text, {place.x, place.y}, angle);
    }

    void TellPointText(const SpacePoint& place, const std::string& text, std::size_t bytes) {
        ExpectRole(layer_->role == Role::Number || layer_->role == Role::Code ||
                   layer_->role == Role::Height);
        const PointText kind = layer_->role == Role::Number ? PointText::Number
                               : layer_->role == Role::Code ? PointText::Code
                                                            : PointText::Height;
        const Index point = NextPointOf(kind);
        if (point != 0 && !IsBeside(place, content_.PointAt(point))) {
            tags_.Differ("the text does not stand beside its point");
        }
        const std::string whole = point == 0 || kind == PointText::Height ? text
                                  : kind == PointText::Number             ? content_.NameOf(point)
                                                              : std::string(content_.CodeOf(point));
        check_.PointLabel(kind, IsCut(text, whole, bytes) ? whole : text);
    }

    // Whether the text is what fits of a longer one: the next letter would have been too much.
    static bool IsCut(const std::string& text, const std::string& whole, std::size_t bytes) {
        if (text.size() >= whole.size() || !whole.starts_with(text)) {
            return false;
        }
        const bool isPair = static_cast<unsigned char>(whole[text.size()]) >= 0xf0;
        const std::size_t longest = std::string_view("\\U+FFFF").size() * (isPair ? 2 : 1);
        return bytes + longest > kMostBytes;
    }

    // The point whose text of the kind comes next; 0 when all have been told.
    Index NextPointOf(PointText kind) {
        std::size_t& told = told_[static_cast<std::size_t>(kind)];
        while (told < content_.PointCount()) {
            const auto point = static_cast<Index>(++told);
            if (kind != PointText::Code || !content_.CodeOf(point).empty()) {
                return point;
            }
        }
        return 0;
    }

    // Right of the point, at most three letters away.
    [[nodiscard]] bool IsBeside(const SpacePoint& place, const SpacePoint& point) const {
        const double most = 3 * content_.textHeight;
        const double slack = 1e-12 * (std::fabs(point.x) + std::fabs(point.y));
        return place.z == point.z && place.x >= point.x && place.x - point.x <= most + slack &&
               std::fabs(place.y - point.y) <= most + slack;
    }

    static constexpr std::int64_t kClosed = 1;
    static constexpr std::int64_t kInSpace = 8;
    static constexpr std::size_t kMostBytes = 255;

    DxfTags tags_;
    DxfFrame frame_;
    const VectorContent& content_;
    const VectorOptions& options_;
    ContentCheck check_;
    std::unordered_map<std::string, Layer> layers_;
    Layer* layer_ = nullptr; // of the entity that is being read
    std::uint64_t highest_ = 0;
    std::size_t faces_ = 0;
    DxfExtents extents_;
    std::vector<SpacePoint> vertices_;
    std::array<std::size_t, kPointTextCount> told_{};
};

} // namespace

std::optional<std::string> CheckDxf(const std::string& path, const VectorContent& content,
                                    const VectorOptions& options) {
    EntityReader reader(path, content, options);
    try {
        return reader.Read();
    } catch (const DxfDifference& difference) {
        return difference.sentence;
    }
}

} // namespace terravo
