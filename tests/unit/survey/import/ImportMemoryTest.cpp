#include "survey/import/ImportMemory.h"

#include "support/FakeSettings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

using enum ColumnRole;

TEST(ImportMemory, APlanComesBackFromItsText) {
    ImportPlan plan;
    EXPECT_EQ(PlanFromText(TextOf(plan)), std::nullopt) << "without columns";
    plan.freeList = true;
    EXPECT_EQ(PlanFromText(TextOf(plan)), plan);
    for (const auto& columns : {std::vector{Easting, Northing, Height},
                                std::vector{Ignored, Code, Height, Northing, Ignored, Easting}}) {
        plan = {false, TextEncoding::Utf16Big,    FieldSeparator::Blank, ',', 12, columns, true, 0,
                true,  {"x;y", "", "\xC3\xA9 %,"}};
        EXPECT_EQ(PlanFromText(TextOf(plan)), plan) << TextOf(plan);
    }
    const std::string good = TextOf(plan);
    EXPECT_EQ(good.find(' '), std::string::npos);
    for (const char* text :
         {"", "xyz", "xyz;utf-8;comma;.;0;3;0;0", "xyz;utf-8;comma;.;-1;3;0;0;",
          "xyz;utf-8;comma;x;0;3;0;0;", "xyx;utf-8;comma;.;0;3;0;0;", "xyz;utf-8;comma;.;0;3;0;2;",
          "xyz;utf-8;comma;.;0;3;0;0;,%4", "xyz;utf-8;comma;.;0;3;0;0;,%GG"}) {
        EXPECT_EQ(PlanFromText(text), std::nullopt) << text;
    }
}

struct ImportMemoryTest : ::testing::Test {
    test::TemporaryFolder folder;
    FakeSettings settings;
    ImportMemory memory{settings};

    std::optional<ImportPlan> Recall(const char* name, const std::string& text) {
        const std::string path = folder.Write(name, text);
        return memory.Recall(path, InspectPointFile(path));
    }
    void Remember(const std::string& name, const std::string& text,
                  const std::vector<ColumnRole>& columns) {
        const std::string path = folder.Write(name, text);
        const Inspection inspection = InspectPointFile(path);
        ImportPlan plan = inspection.plan;
        plan.columns = columns;
        memory.Remember(path, inspection, plan);
    }
};

TEST_F(ImportMemoryTest, KnowsAFileByItsPathAndOthersByTheirShape) {
    const std::vector<ColumnRole> nez{Name, Northing, Easting, Height};
    const std::vector<ColumnRole> enz{Name, Easting, Northing, Height};
    Remember("a b", "1,2,3,4\n5,6,7,8\n", nez);
    Remember("c\xC3\xA9", "1,2,3,4\n", enz);
    EXPECT_EQ(Recall("a b", "1,2,3,4\n5,6,7,9\n")->columns, nez);
    EXPECT_EQ(Recall("c\xC3\xA9", "1,2,3,4\n")->columns, enz);
    EXPECT_EQ(Recall("new", "9,8,7,6\n\n")->columns, enz) << "the last one chosen";
    EXPECT_EQ(Recall("new", "9,8,7,6\n5,4,3,2\n1,2,3,4,5\n")->columns, enz) << "a long record";
    EXPECT_EQ(Recall("new", "# \xE9\n9,8,7,6\n")->encoding, TextEncoding::Latin1);
    for (const char* text : {"1;2;3;4\n", "1,2,3,x\n", "1,2,3,4,5\n", "q,q,q,q\n1,2,3,4\n"}) {
        EXPECT_EQ(Recall("a b", text), std::nullopt) << text;
    }
    Remember("h", "id,u,v,w\n1,2,3,4\n", nez);
    EXPECT_EQ(Recall("new", "id,u,v,w\n7,2,3,4\n")->columns, nez);
    EXPECT_EQ(Recall("new", "id,v,u,w\n7,2,3,4\n"), std::nullopt);
}

TEST_F(ImportMemoryTest, ForgetsTheOldestAndMindsNoOtherEntries) {
    for (std::size_t i = 0; i <= ImportMemory::kMost; ++i) {
        Remember(std::to_string(i), std::string("1,2,3,4") + (i == 0 ? ",x\n" : "\n"),
                 {Easting, Northing, Height, Ignored});
    }
    EXPECT_EQ(settings.values.size(), ImportMemory::kMost);
    EXPECT_EQ(Recall("0", "1,2,3,4,x\n"), std::nullopt);
    settings.Set(ImportMemory::kSection, "1", "nonsense");
    settings.Set(ImportMemory::kSection, "2", "a b c");
    EXPECT_TRUE(Recall("1", "1,2,3,4\n").has_value());
}

} // namespace
} // namespace terravo
