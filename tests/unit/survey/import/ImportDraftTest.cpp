#include "survey/import/ImportDraft.h"

#include "support/TemporaryFolder.h"
#include "survey/import/PointImport.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

using enum ColumnRole;

struct ImportDraftTest : ::testing::Test {
    test::TemporaryFolder folder;

    ImportDraft Draft(const std::string& text,
                      const std::optional<ImportPlan>& remembered = std::nullopt) {
        const std::string path = folder.Write("p", text);
        return {path, InspectPointFile(path), remembered};
    }
};

// Columns, points, records without height and that do not fit: "pxyz 2 0 0".
std::string Told(const ImportDraft& draft) {
    const ImportPreview& preview = draft.Preview();
    return NameOfColumns(draft.Roles()) + " " + std::to_string(preview.points.count) + " " +
           std::to_string(preview.voidHeights) + " " + std::to_string(preview.badRecords);
}

const char* const kNumbered = "1,10,20,5\n2,11,21,6\n3,12,22,7\n";
const char* const kMessy =
    "Site A\nname,east,north,height,code\n# made by hand\n1,10,20,5,tree\n\n2,11,21,-,oak\n"
    "3,12,2O,7,ash\n4,13,23\n5,14,24,9,old, tall\n";

TEST_F(ImportDraftTest, ChangesColumnsOneWithAnother) {
    ImportDraft draft = Draft(kNumbered);
    EXPECT_EQ(Told(draft), "pxyz 3 0 0");
    EXPECT_EQ(draft.Candidate(), 0U);
    EXPECT_EQ(draft.Preview().points.extentX, (Extent{10, 12}));
    draft.SetRole(1, Northing);
    EXPECT_EQ(Told(draft), "pyxz 3 0 0");
    EXPECT_EQ(draft.Preview().points.extentX, (Extent{20, 22}));
    EXPECT_EQ(draft.Candidate(), 1U);
    draft.SetRole(3, Ignored);
    EXPECT_EQ(Told(draft), "p,n,e,- 0 0 0");
    EXPECT_EQ(draft.MissingCoordinates(), std::vector{Height});
    draft.SetRole(3, Code);
    draft.SetRole(0, Height);
    EXPECT_EQ(Told(draft), "z,n,e,c 3 0 0");
    EXPECT_TRUE(draft.Plan().codeTakesRest);
    EXPECT_EQ(draft.Candidate(), std::nullopt);
    draft.ChooseCandidate(0);
    EXPECT_EQ(Told(draft), "pxyz 3 0 0");
    EXPECT_EQ(draft.Plan().fieldCount, 4U);
}

TEST_F(ImportDraftTest, LooksAgainWithAnotherSeparatorOrDecimalSign) {
    ImportDraft draft = Draft("1,5;2,5;3,5\n4,5;5,5;6,5\n");
    EXPECT_EQ(Told(draft), "xyz 2 0 0");
    draft.SetRole(0, Northing);
    draft.SetDecimal('.');
    EXPECT_EQ(Told(draft), "yxz 0 0 2") << "as many columns as before";
    draft.SetDecimal(',');
    EXPECT_EQ(Told(draft), "yxz 2 0 0");
    draft.SetSeparator(FieldSeparator::Comma);
    EXPECT_EQ(draft.MissingCoordinates().size(), 3U);
    draft.SetSeparator(FieldSeparator::Semicolon);
    EXPECT_EQ(Told(draft), "xyz 2 0 0");
    draft.SetHeaderLines(1);
    EXPECT_EQ(Told(draft), "xyz 1 0 0");
    draft.SetEncoding(TextEncoding::Latin1);
    EXPECT_EQ(draft.Plan().headerLines, 1);
    draft.SetVoids("6,5  x");
    EXPECT_EQ(Told(draft), "xyz 0 1 0");
    EXPECT_EQ(draft.Plan().voids, (std::vector<std::string>{"6,5", "x"}));

    ImportDraft list = Draft("1 2\n3 4\n5 6\nx");
    list.SetFreeList(true);
    EXPECT_EQ(list.Preview().points.count, 2);
    EXPECT_EQ(list.Preview().failure->line, 4);
    EXPECT_EQ(list.MissingCoordinates().size(), 0U);
}

TEST_F(ImportDraftTest, BeginsWithWhatWasChosenBeforeWhereItGivesPoints) {
    ImportDraft first = Draft(kNumbered);
    first.ChooseCandidate(1);
    EXPECT_EQ(Draft(kNumbered, first.Plan()).Plan(), first.Plan());
    EXPECT_EQ(Told(Draft("1;2;3\n4;5;6\n", first.Plan())), "xyz 2 0 0");
    EXPECT_EQ(Told(Draft("P1 1 2 3\n4 5 6 7\n")), "pxyz 2 0 0") << "a number may be a name";
}

// Lines of each kind, as "3#": line 3 is a comment.
TEST_F(ImportDraftTest, TellsEveryLine) {
    const ImportDraft draft = Draft(kMessy);
    std::string kinds;
    for (const PreviewLine& line : draft.Preview().lines) {
        kinds += std::to_string(line.line) + "PH#_VX"[static_cast<std::size_t>(line.kind)];
    }
    EXPECT_EQ(kinds, "1H2H3#4P5_6V7X8X9P");
    ASSERT_EQ(draft.Preview().bad.size(), 2U);
    EXPECT_EQ(draft.Preview().bad[0].misfitField, 3U);
    EXPECT_EQ(draft.Preview().bad[1].misfit, Misfit::FieldCount);
    EXPECT_EQ(draft.Preview().voidLines, std::vector<std::int64_t>{6});
    EXPECT_EQ(draft.Preview().lines.back().fields.back(), "tall");
}

// The preview shows what the reading will do: same points, same counts.
TEST_F(ImportDraftTest, FindsWhatTheReadingFinds) {
    for (const std::string text :
         {kNumbered, kMessy, "1,5;2,5;3\n4;5\n6;;-\n7;8;nan\n",
          "a 1 2 3 x y\n\n; c\nb 4 5 6\r\nc 7 8 9 z\r", "1 2 3 # a\n4 5 b"}) {
        for (const FieldSeparator separator :
             {FieldSeparator::Comma, FieldSeparator::Semicolon, FieldSeparator::Blank}) {
            ImportDraft draft = Draft(text);
            draft.SetSeparator(separator);
            for (int swap = 0; swap < 3 && draft.MissingCoordinates().empty(); ++swap) {
                draft.SetRole(0, swap == 0 ? Northing : swap == 1 ? Height : Easting);
                PointSet points;
                const ImportReport report =
                    ImportByPlan(folder.File("p"), draft.Plan(), BadRecords::Skip, points).report;
                const ImportPreview& preview = draft.Preview();
                EXPECT_EQ(points.extentX, preview.points.extentX) << text;
                EXPECT_EQ(points.extentZ, preview.points.extentZ) << text;
                EXPECT_EQ((std::vector<std::int64_t>{
                              points.count, report.records, report.headerLines, report.commentLines,
                              report.blankLines, report.voidHeights, report.badRecords}),
                          (std::vector<std::int64_t>{preview.points.count, preview.records,
                                                     preview.headerLines, preview.commentLines,
                                                     preview.blankLines, preview.voidHeights,
                                                     preview.badRecords}))
                    << text;
            }
        }
    }
}

TEST_F(ImportDraftTest, LooksAtTheHeadOfALongFileOnly) {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += std::to_string(i) + "," + std::to_string(i % 97) + ",5,7\r\n";
    }
    const ImportDraft draft = Draft(text);
    EXPECT_EQ(draft.Preview().lines.size(), 200U);
    EXPECT_FALSE(draft.Preview().isAll);
    EXPECT_GT(draft.Preview().points.count, 5000);
    EXPECT_EQ(draft.Preview().badRecords, 0) << "the last line of the head is whole";
}

} // namespace
} // namespace terravo
