#include "export/vector/MeshFormats.h"

#include "export/vector/DecimalRounding.h"
#include "export/vector/MeshFrame.h"
#include "export/vector/VectorNumber.h"
#include "util/AppError.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace terravo {
namespace {

constexpr int kObjDecimals = 9;
constexpr std::size_t kStlHeader = 80;

using Corner = std::array<float, 3>;

// A record of a binary file, put together byte by byte, the lowest first.
template <std::size_t kSize>
class LittleEndianRecord {
public:
    template <class Unsigned>
    void Add(Unsigned value) {
        static_assert(std::is_unsigned_v<Unsigned>);
        for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
            bytes_[size_++] = static_cast<char>(std::uint64_t{value} >> 8 * i & 0xffU);
        }
    }
    void Add(float value) { Add(std::bit_cast<std::uint32_t>(value)); }
    void Add(double value) { Add(std::bit_cast<std::uint64_t>(value)); }
    void Add(const Corner& corner) {
        for (const float value : corner) {
            Add(value);
        }
    }
    [[nodiscard]] std::string_view Bytes() const { return {bytes_.data(), size_}; }

private:
    std::array<char, kSize> bytes_; // NOLINT(cppcoreguidelines-pro-type-member-init)
    std::size_t size_ = 0;
};

void TellOrigin(const MeshFrame& frame, std::vector<std::string>& remarks) {
    remarks.push_back("Coordinates are relative to " + frame.Origin() + "; 1 is one " + frame.unit +
                      ".");
}

void AppendFace(std::string& out, const std::array<Index, 3>& triangle) {
    std::array<char, 48> line{'f'};
    char* end = &line[1];
    for (const Index corner : triangle) {
        *end++ = ' ';
        end = std::to_chars(end, line.data() + line.size(), corner).ptr;
    }
    *end++ = '\n';
    out.append(line.data(), end);
}

Corner SingleOf(const SpacePoint& p) {
    return {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
}

// Of length 1, or 0 where the corners lie on a line; of the corners as they are written.
Corner NormalOf(const Corner& a, const Corner& b, const Corner& c) {
    const auto side = [&a](const Corner& to, std::size_t k) {
        return static_cast<double>(to[k]) - static_cast<double>(a[k]);
    };
    const double x = side(b, 1) * side(c, 2) - side(b, 2) * side(c, 1);
    const double y = side(b, 2) * side(c, 0) - side(b, 0) * side(c, 2);
    const double z = side(b, 0) * side(c, 1) - side(b, 1) * side(c, 0);
    const double length = std::sqrt(x * x + y * y + z * z);
    return length > 0 ? SingleOf({x / length, y / length, z / length}) : Corner{};
}

void AppendPlyVertex(std::string& out, const SpacePoint& p, bool isSingle) {
    LittleEndianRecord<3 * sizeof(double)> record;
    for (const double value : {p.x, p.y, p.z}) {
        if (isSingle) {
            record.Add(static_cast<float>(value));
        } else {
            record.Add(value);
        }
    }
    out += record.Bytes();
}

// Corners count from 0.
void AppendPlyFace(std::string& out, const std::array<Index, 3>& triangle) {
    LittleEndianRecord<13> record;
    record.Add(std::uint8_t{3});
    for (const Index corner : triangle) {
        record.Add(static_cast<std::uint32_t>(corner - 1));
    }
    out += record.Bytes();
}

void AppendStlTriangle(std::string& out, const std::array<Corner, 3>& corners) {
    LittleEndianRecord<50> record;
    record.Add(NormalOf(corners[0], corners[1], corners[2]));
    for (const Corner& corner : corners) {
        record.Add(corner);
    }
    record.Add(std::uint16_t{0});
    out += record.Bytes();
}

} // namespace

VectorParts MeshParts() {
    return {VectorPart::Triangles};
}

void WriteObj(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
              std::vector<std::string>& remarks) {
    const MeshFrame frame = MakeMeshFrame(content, out.Path());
    std::string& text = out.Buffer();
    text += "# Terravo: the triangles of a survey\n# origin: " + frame.Origin() +
            "\n# x east, y north, z up; 1 is one " + frame.unit + "\n";
    const DecimalRounding round(kObjDecimals);
    for (const SpacePoint& corner : frame.corners) {
        text += 'v';
        for (const double value : {corner.x, corner.y, corner.z}) {
            text += ' ';
            VectorNumber::AppendShort(text, round(value));
        }
        text += '\n';
        out.FlushWhenFull();
    }
    for (const std::array<Index, 3>& triangle : frame.triangles) {
        AppendFace(text, triangle);
        out.FlushWhenFull();
    }
    TellOrigin(frame, remarks);
}

void WritePly(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
              std::vector<std::string>& remarks) {
    const MeshFrame frame = MakeMeshFrame(content, out.Path());
    const std::string property =
        frame.floatsKeepMillimetres ? "property float " : "property double ";
    std::string& bytes = out.Buffer();
    bytes += "ply\nformat binary_little_endian 1.0\ncomment Terravo: the triangles of a survey\n"
             "comment origin: " +
             frame.Origin() + "\ncomment x east, y north, z up; 1 is one " + frame.unit +
             "\nelement vertex " + std::to_string(frame.corners.size()) + "\n" + property + "x\n" +
             property + "y\n" + property + "z\nelement face " +
             std::to_string(frame.triangles.size()) +
             "\nproperty list uchar int vertex_indices\nend_header\n";
    for (const SpacePoint& corner : frame.corners) {
        AppendPlyVertex(bytes, corner, frame.floatsKeepMillimetres);
        out.FlushWhenFull();
    }
    for (const std::array<Index, 3>& triangle : frame.triangles) {
        AppendPlyFace(bytes, triangle);
        out.FlushWhenFull();
    }
    TellOrigin(frame, remarks);
}

void WriteStl(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
              std::vector<std::string>& remarks) {
    if (content.triangles.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw AppError(ErrorNumber::kOverflow, out.Path(),
                       out.Path() + ": STL holds 4294967295 triangles at most.");
    }
    const MeshFrame frame = MakeMeshFrame(content, out.Path());
    // A head that begins with "solid" would be that of a text.
    std::string head = "Terravo; origin: " + frame.Origin();
    head.resize(kStlHeader, ' ');
    std::string& bytes = out.Buffer();
    bytes += head;
    LittleEndianRecord<4> count;
    count.Add(static_cast<std::uint32_t>(frame.triangles.size()));
    bytes += count.Bytes();
    for (const std::array<Index, 3>& triangle : frame.triangles) {
        std::array<Corner, 3> corners;
        for (std::size_t j = 0; j < corners.size(); ++j) {
            corners[j] = SingleOf(frame.corners[static_cast<std::size_t>(triangle[j]) - 1]);
        }
        AppendStlTriangle(bytes, corners);
        out.FlushWhenFull();
    }
    TellOrigin(frame, remarks);
    if (!frame.floatsKeepMillimetres) {
        remarks.emplace_back("The survey is so large that the single precision of STL does not "
                             "keep its millimetres.");
    }
}

} // namespace terravo
