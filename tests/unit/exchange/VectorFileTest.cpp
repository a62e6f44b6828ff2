#include "exchange/VectorFile.h"

#include "app/session/SurveyContours.h"
#include "exchange/VectorFormats.h"
#include "export/vector/MakeVectorContent.h"
#include "support/Surveys.h"
#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace terravo {
namespace {

void WriteName(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
               std::vector<std::string>& remarks) {
    out.Append(content.name);
    remarks.emplace_back("written");
}

std::optional<std::string> FindAFault(const std::string& path, const VectorContent& /*content*/,
                                      const VectorOptions& /*options*/) {
    std::string text;
    std::ifstream(path) >> text;
    return text == "good" ? std::nullopt : std::optional<std::string>("it is bad");
}

TEST(VectorFileTest, AFileThatDiffersDoesNotGetItsName) {
    const test::TemporaryFolder folder;
    VectorFormat format;
    format.write = WriteName;
    format.check = FindAFault;
    VectorContent content;
    content.name = "good";
    content.parts = {VectorPart::Points, VectorPart::Codes};
    content.remarks = {{{VectorPart::Numbers, VectorPart::Codes}, "made"},
                       {{VectorPart::Labels}, "of what is not in this file"}};
    const std::string path = folder.File("file.txt");
    const VectorOutcome outcome = WriteVectorFile(path, format, content, {});
    EXPECT_TRUE(outcome.verified);
    EXPECT_EQ(outcome.remarks, (std::vector<std::string>{"made", "written"}));
    content.name = "worse";
    try {
        WriteVectorFile(path, format, content, {});
        FAIL() << "the difference is not told";
    } catch (const AppError& error) {
        EXPECT_NE(std::string(error.what()).find("it is bad"), std::string::npos);
    }
    EXPECT_EQ(folder.Read("file.txt"), "good") << "the old file stays";
    EXPECT_EQ(folder.Names().size(), 1U) << "nothing stays beside it";
    EXPECT_FALSE(WriteVectorFile(path, format, content, {}, false).verified);
    EXPECT_EQ(folder.Read("file.txt"), "worse");
}

// Of every kind of survey: plain, with plateaus on levels, with names of every sort, without
// levels.
TEST(VectorFileTest, EveryFormatWritesWhatItReadsBack) {
    const test::TemporaryFolder folder;
    PointSet named = test::HillySurvey(test::RandomPoints(300, 4), false);
    for (Index i = 1; i <= named.count; ++i) {
        named.labels.Append(i % 7 == 0 ? "" : "P " + std::to_string(i % 11) + ",\"<&>",
                            i % 3 == 0 ? "=Höhe €;" : "");
    }
    const PointSet surveys[] = {test::HillySurvey(test::RandomPoints(500, 2), false),
                                test::HillySurvey(test::RandomPoints(500, 6), true), named,
                                test::MakeSurvey({{0, 0, 5}, {1e7, 0, 5}, {0, 1e-3, 5}})};
    std::set<std::string_view> verified;
    for (const PointSet& points : surveys) {
        const Survey survey(points);
        SurveyContours contours(survey);
        const LevelRule rule =
            points.extentZ.max > points.extentZ.min ? RuleByInterval(5) : RuleByCount(2);
        ASSERT_TRUE(contours.Prepare(rule));
        for (const VectorFormat& format : VectorFormats()) {
            if (format.check == nullptr) {
                continue;
            }
            for (const std::optional<int> decimals :
                 {std::optional<int>(), std::optional<int>(2)}) {
                VectorWish wish;
                wish.parts = format.known;
                wish.decimals = decimals;
                wish.epsg = 25832;
                const VectorContent content = MakeVectorContent(
                    SourceOf(survey.Surface(), rule, contours.Levels(), contours.Contours()), wish);
                if (format.option == "landxml" && content.triangles.empty()) {
                    continue; // it has no surface to write
                }
                for (const DxfVersion version : {DxfVersion::R2000, DxfVersion::R12}) {
                    const VectorOptions options{version, version == DxfVersion::R12,
                                                decimals.has_value()};
                    const std::string path = folder.File("file");
                    EXPECT_TRUE(WriteVectorFile(path, format, content, options).verified);
                    const std::string bytes = folder.Read("file");
                    WriteVectorFile(path, format, content, options);
                    EXPECT_EQ(folder.Read("file") == bytes, true) << format.option;
                    verified.insert(format.option);
                }
            }
        }
    }
    EXPECT_EQ(verified.size(), 6U);
}

TEST(VectorFileTest, NoBrokenFileIsVerified) {
    const test::TemporaryFolder folder;
    const Survey survey(test::HillySurvey(test::RandomPoints(40, 8), false));
    SurveyContours contours(survey);
    const LevelRule rule = RuleByInterval(10);
    ASSERT_TRUE(contours.Prepare(rule));
    // Texts of points need only stand beside their points.
    const VectorParts withoutPointTexts{
        VectorPart::Contours,  VectorPart::IndexContours, VectorPart::Labels, VectorPart::Bands,
        VectorPart::Triangles, VectorPart::Points,        VectorPart::Hull};
    for (const VectorFormat& format : VectorFormats()) {
        if (format.check == nullptr) {
            continue;
        }
        VectorWish wish;
        wish.parts = format.known.And(withoutPointTexts);
        const VectorContent content = MakeVectorContent(
            SourceOf(survey.Surface(), rule, contours.Levels(), contours.Contours()), wish);
        const std::string path = folder.File("file");
        WriteVectorFile(path, format, content, {});
        const std::string good = folder.Read("file");
        // A digit behind a decimal point is a coordinate or a height, nearly everywhere.
        int changed = 0;
        for (std::size_t at = good.find('.', good.size() / 3); at != std::string::npos;
             at = good.find('.', at + good.size() / 40)) {
            std::string bad = good;
            if (at + 1 < bad.size() && bad[at + 1] >= '0' && bad[at + 1] <= '8') {
                ++bad[at + 1];
                ++changed;
                static_cast<void>(folder.Write("bad", bad));
                EXPECT_NE(format.check(folder.File("bad"), content, {}), std::nullopt)
                    << format.option << " at byte " << at;
            }
        }
        EXPECT_TRUE(changed > 5 || format.option == "triangles-csv") << format.option;
        static_cast<void>(folder.Write("bad", good.substr(0, good.size() * 2 / 3)));
        EXPECT_NE(format.check(folder.File("bad"), content, {}), std::nullopt) << format.option;
    }
}

} // namespace
} // namespace terravo
