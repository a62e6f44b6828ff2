#include "export/vector/MeshFormats.h"

#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"
#include "util/AppError.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace terravo {
namespace {

struct Written {
    std::string bytes;
    std::vector<std::string> remarks;
};

Written WriteMesh(VectorWriter write, const VectorContent& content) {
    const test::TemporaryFolder folder;
    Written written;
    OutputFile out(folder.File("mesh"));
    write(out, content, {}, written.remarks);
    out.Commit();
    written.bytes = folder.Read("mesh");
    return written;
}

// The square of the examples in a national grid, a point that no triangle has before it.
VectorContent GridContent(double side = 10) {
    VectorContent content = test::SmallContent();
    for (SpacePoint& p : content.points) {
        p = {4520000.625 + p.x / 10 * side, -667000.125 + p.y / 10 * side, p.z + 0.001};
    }
    content.points.insert(content.points.begin(), {0, 0, -5});
    for (Triangle& triangle : content.triangles) {
        for (Index& corner : triangle.vertices) {
            ++corner;
        }
    }
    return content;
}

// Takes values of the machine's own order of bytes, which is little-endian wherever this is tested.
class Bytes {
public:
    Bytes(const std::string& bytes, std::size_t at) : bytes_(bytes), at_(at) {}

    template <class T>
    T Take() {
        T value{};
        EXPECT_LE(at_ + sizeof value, bytes_.size());
        if (at_ + sizeof value <= bytes_.size()) {
            std::memcpy(&value, bytes_.data() + at_, sizeof value);
        }
        at_ += sizeof value;
        return value;
    }
    template <class T>
    SpacePoint TakePlace() {
        const T x = Take<T>();
        const T y = Take<T>();
        return {x, y, Take<T>()};
    }
    [[nodiscard]] bool AreAllTaken() const { return at_ == bytes_.size(); }

private:
    const std::string& bytes_;
    std::size_t at_;
};

void ExpectNear(SpacePoint place, SpacePoint expected) {
    constexpr double kHalfMillimetre = 0.0005;
    EXPECT_NEAR(place.x + 4520000, expected.x, kHalfMillimetre);
    EXPECT_NEAR(place.y - 667001, expected.y, kHalfMillimetre);
    EXPECT_NEAR(place.z, expected.z, kHalfMillimetre);
}

TEST(MeshFormatsTest, WritesObjWithFewDigits) {
    const Written written = WriteMesh(WriteObj, GridContent());
    EXPECT_EQ(written.bytes, "# Terravo: the triangles of a survey\n"
                             "# origin: easting 4520000, northing -667001, height 0\n"
                             "# x east, y north, z up; 1 is one metre\n"
                             "v 0.625 0.875 1.001\nv 10.625 0.875 1.001\nv 10.625 10.875 1.001\n"
                             "v 0.625 10.875 1.001\nv 5.625 5.875 3.251\n"
                             "f 1 2 5\nf 2 3 5\nf 3 4 5\nf 4 1 5\n");
    EXPECT_EQ(written.remarks,
              std::vector<std::string>{"Coordinates are relative to easting 4520000, northing "
                                       "-667001, height 0; 1 is one metre."});
}

template <class T>
void ExpectPly(const VectorContent& content, const std::string& property) {
    const std::string bytes = WriteMesh(WritePly, content).bytes;
    const std::string head =
        "ply\nformat binary_little_endian 1.0\ncomment Terravo: the triangles of a survey\n"
        "comment origin: easting 4520000, northing -667001, height 0\n"
        "comment x east, y north, z up; 1 is one metre\nelement vertex 5\n" +
        property + "x\n" + property + "y\n" + property +
        "z\nelement face 4\nproperty list uchar int vertex_indices\nend_header\n";
    ASSERT_EQ(bytes.substr(0, head.size()), head);
    Bytes rest(bytes, head.size());
    for (Index i = 2; i <= 6; ++i) {
        ExpectNear(rest.TakePlace<T>(), content.PointAt(i));
    }
    for (const Triangle& triangle : content.triangles) {
        EXPECT_EQ(rest.Take<std::uint8_t>(), 3);
        for (const Index corner : triangle.vertices) {
            EXPECT_EQ(rest.Take<std::int32_t>(), corner - 2);
        }
    }
    EXPECT_TRUE(rest.AreAllTaken());
}

TEST(MeshFormatsTest, WritesPlyThatKeepsMillimetresAtAnySize) {
    ExpectPly<float>(GridContent(), "property float ");
    ExpectPly<float>(GridContent(16000), "property float ");
    ExpectPly<double>(GridContent(17000), "property double ");
}

void ExpectStl(double side) {
    const VectorContent content = GridContent(side);
    const Written written = WriteMesh(WriteStl, content);
    EXPECT_TRUE(written.bytes.starts_with(
        "Terravo; origin: easting 4520000, northing -667001, height 0  "));
    Bytes rest(written.bytes, 80);
    ASSERT_EQ(rest.Take<std::uint32_t>(), content.triangles.size());
    for (const Triangle& triangle : content.triangles) {
        const auto normal = rest.TakePlace<float>();
        EXPECT_NEAR(std::hypot(normal.x, normal.y, normal.z), 1, 1e-6);
        EXPECT_NEAR(normal.z, side / 2 / std::hypot(side / 2, 2.25), 1e-6);
        for (const Index corner : triangle.vertices) {
            ExpectNear(rest.TakePlace<float>(), content.PointAt(corner));
        }
        EXPECT_EQ(rest.Take<std::uint16_t>(), 0);
    }
    EXPECT_TRUE(rest.AreAllTaken());
    EXPECT_EQ(written.remarks.size(), 1U);
}

TEST(MeshFormatsTest, WritesStlAndSaysWhenMillimetresAreLost) {
    ExpectStl(10);
    ExpectStl(0.1);
    EXPECT_EQ(WriteMesh(WriteStl, GridContent(17000)).remarks.size(), 2U);
}

TEST(MeshFormatsTest, RefuseWhatIsNoBody) {
    VectorContent none = GridContent();
    none.triangles.clear();
    VectorContent infinite = GridContent();
    infinite.points[3].z = std::numeric_limits<double>::infinity();
    for (const VectorWriter write : {WriteObj, WritePly, WriteStl}) {
        EXPECT_THROW(WriteMesh(write, none), AppError);
        EXPECT_THROW(WriteMesh(write, infinite), AppError);
    }
}

} // namespace
} // namespace terravo
