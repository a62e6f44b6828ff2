#include "export/readback/GeoJsonReadback.h"
#include "export/readback/LandXmlReadback.h"
#include "export/readback/LineBlocks.h"
#include "export/vector/GeoJsonWriter.h"
#include "export/vector/LandXmlWriter.h"
#include "support/VectorFiles.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <cctype>
#include <limits>

namespace terravo {
namespace {

using test::CheckText;
using test::FileOf;

struct Format {
    const char* name;
    VectorWriter write;
    VectorCheck check;
    const char* bodyBegin; // what stands above is not compared letter for letter
};

class ReadbackTest : public testing::TestWithParam<Format> {};

INSTANTIATE_TEST_SUITE_P(Formats, ReadbackTest,
                         testing::Values(Format{"LandXml", WriteLandXml, CheckLandXml, "<Units"},
                                         Format{"GeoJson", WriteGeoJson, CheckGeoJson, ",\"crs\""}),
                         [](const testing::TestParamInfo<Format>& format) {
                             return format.param.name;
                         });

TEST_P(ReadbackTest, VerifiesWhatWasWritten) {
    const auto [name, write, check, bodyBegin] = GetParam();
    const VectorContent all = test::RichContent();
    for (unsigned part = 0; part <= kVectorPartCount; ++part) {
        VectorContent content = all;
        if (part < kVectorPartCount) {
            // Alone, with the points, so that there is something to write.
            content.parts = {VectorPart::Points, static_cast<VectorPart>(part)};
        }
        const std::string file = FileOf(write, content);
        EXPECT_EQ(CheckText(check, file, content).value_or(""), "") << part << "\n" << file;
        EXPECT_EQ(file, FileOf(write, content));
    }
    for (const LengthUnit unit : {LengthUnit::Foot, LengthUnit::UsSurveyFoot}) {
        VectorContent content = all;
        content.unit = unit;
        content.epsg.reset();
        EXPECT_FALSE(CheckText(check, FileOf(write, content), content));
    }
}

TEST_P(ReadbackTest, NoticesEveryDigitThatDiffers) {
    const auto [name, write, check, bodyBegin] = GetParam();
    const VectorContent content = test::RichContent();
    const std::string file = FileOf(write, content);
    for (std::size_t i = file.find(bodyBegin); i < file.size(); ++i) {
        // The name made up for the second breakline is nobody's; the area has a tolerance.
        const std::size_t value = file.rfind('"', i);
        const bool isFree = file.compare(i - 10, 10, "Breakline ") == 0 ||
                            file.compare(value - 11, 11, "area3DSurf=") == 0;
        if (std::isdigit(static_cast<unsigned char>(file[i])) != 0 && !isFree) {
            std::string other = file;
            other[i] = file[i] == '7' ? '8' : '7';
            EXPECT_TRUE(CheckText(check, other, content))
                << file.substr(0, i) << " >>> " << other[i];
        }
    }
}

TEST_P(ReadbackTest, NoticesWhatIsMissingTwiceOrExchanged) {
    const auto [name, write, check, bodyBegin] = GetParam();
    const VectorContent content = test::RichContent();
    const std::vector<std::string> lines = test::LinesOf(FileOf(write, content));
    const auto joined = [](const std::vector<std::string>& some) {
        std::string text;
        for (const std::string& line : some) {
            text += line;
        }
        return text;
    };
    ASSERT_FALSE(CheckText(check, joined(lines), content));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto place = static_cast<std::ptrdiff_t>(i);
        if (lines[i].starts_with("<?xml") || lines[i].starts_with("<Proj") ||
            lines[i].starts_with("<Appl")) {
            continue; // of no weight
        }
        std::vector<std::string> changed = lines;
        changed.erase(changed.begin() + place);
        EXPECT_TRUE(CheckText(check, joined(changed), content)) << "without " << lines[i];
        changed = lines;
        changed.insert(changed.begin() + place, lines[i]);
        EXPECT_TRUE(CheckText(check, joined(changed), content)) << "twice " << lines[i];
        if (i > 0 && lines[i].starts_with("<F ") && lines[i - 1].starts_with("<F ")) {
            changed = lines;
            std::swap(changed[i], changed[i - 1]);
            EXPECT_TRUE(CheckText(check, joined(changed), content)) << "exchanged " << lines[i];
        }
    }
}

TEST_P(ReadbackTest, NoticesAFileThatEndsEarly) {
    const auto [name, write, check, bodyBegin] = GetParam();
    const VectorContent content = test::RichContent();
    const std::string file = FileOf(write, content);
    for (std::size_t length = 0; length + 1 < file.size(); length += 13) {
        EXPECT_TRUE(CheckText(check, file.substr(0, length), content)) << length;
    }
    EXPECT_TRUE(CheckText(check, file.substr(0, file.size() - 2), content));
    EXPECT_TRUE(CheckText(check, file + file, content));
    EXPECT_THROW(static_cast<void>(check("/nowhere/file", content, VectorOptions())), AppError);
}

// Files of many blocks, with a line longer than a block.
TEST_P(ReadbackTest, VerifiesALargeFile) {
    const auto [name, write, check, bodyBegin] = GetParam();
    VectorContent content = test::RichContent();
    for (int i = 0; i < 30000; ++i) {
        content.triangles.push_back({{1, 2, 3}, {1, i, 2}});
        content.breaklines.front().vertices.push_back({i + 0.5, 3.0 * i, 1.0 / (i + 1)});
    }
    const std::string file = FileOf(write, content);
    ASSERT_GT(file.size(), 4 * LineBlocks::kUsualSize);
    EXPECT_EQ(CheckText(check, file, content).value_or(""), "");
    content.breaklines.front().vertices.back().z += 1e-15;
    EXPECT_TRUE(CheckText(check, file, content));
}

TEST_P(ReadbackTest, RefusesWhatCannotBeWritten) {
    const auto [name, write, check, bodyBegin] = GetParam();
    VectorContent content = test::RichContent();
    content.points[2].y = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(FileOf(write, content), AppError);
    content = test::RichContent();
    content.breaklines.back().vertices.resize(1);
    EXPECT_THROW(FileOf(write, content), AppError);
}

TEST(LineBlocksTest, EndsEveryBlockWithALine) {
    const test::TemporaryFolder folder;
    for (const std::string text :
         {"", "\n", "a", "a\n", "ab\n\ncd\nlong line\nx", "\n\n\nlonger\n"}) {
        const std::string path = folder.Write("lines", text);
        for (std::size_t size = 1; size < 12; ++size) {
            LineBlocks blocks(path, size);
            std::string all;
            for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
                all += block;
                EXPECT_TRUE(block.ends_with('\n') || all == text) << block;
            }
            EXPECT_EQ(all, text) << size;
            EXPECT_TRUE(blocks.Next().empty());
        }
    }
}

} // namespace
} // namespace terravo
