#include "app/project/ProjectText.h"
#include "app/project/ProjectSources.h"
#include "app/project/ProjectStore.h"

#include "support/RichProject.h"
#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <bit>
#include <filesystem>
#include <fstream>

namespace terravo {
namespace {

using test::RichProject;

// Compared as text, which tells -0 from 0 and knows that a height that is missing equals another.
void ExpectSame(const Project& read, const Project& written) {
    EXPECT_EQ(TextOfProject(read), TextOfProject(written));
    EXPECT_EQ(read.source, written.source);
    EXPECT_EQ(read.levels, written.levels);
    EXPECT_EQ(read.sheets, written.sheets);
    EXPECT_EQ(read.surface.held, written.surface.held);
    EXPECT_EQ(read.surface.heights, written.surface.heights);
    EXPECT_EQ(read.surface.excluded, written.surface.excluded);
    EXPECT_EQ(read.surface.longestSide, written.surface.longestSide);
    EXPECT_EQ(read.surface.crossings, written.surface.crossings);
    EXPECT_EQ(read.triangulation, written.triangulation);
}

Project Read(const std::string& text) {
    ProjectReading reading = ProjectFromText(text, "p");
    EXPECT_EQ(reading.fault, "");
    EXPECT_EQ(reading.remarks, std::vector<std::string>{});
    return reading.project.value_or(Project());
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    return place == std::string::npos ? text : text.replace(place, what.size(), with);
}

TEST(ProjectText, BringsEverythingBackBitForBit) {
    const Project written = RichProject();
    const Project read = Read(TextOfProject(written));
    ExpectSame(read, written);
    const auto& vertices = read.surface.breaklines.at(0)->line.vertices;
    const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
    for (std::size_t i = 0; i < test::HardDoubles().size(); ++i) {
        const double value = test::HardDoubles()[i];
        EXPECT_EQ(bits(vertices.at(2 * i).x), bits(value)) << value;
        EXPECT_EQ(bits(vertices.at(2 * i).y), bits(-value)) << value;
        EXPECT_EQ(bits(vertices.at(2 * i).z), bits(value / 2)) << value;
        EXPECT_FALSE(HasHeight(vertices.at(2 * i + 1)));
    }
    EXPECT_EQ(read.surface.breaklines[0]->line.name, written.surface.breaklines[0]->line.name);
    EXPECT_TRUE(read.surface.boundary.at(0)->line.closed);
}

TEST(ProjectText, KnowsEveryReaderAndEveryRule) {
    Project project = RichProject();
    for (const SourceReader reader :
         {SourceReader::FreeList, SourceReader::Grid, SourceReader::Gis}) {
        HowRead how;
        how.reader = reader;
        how.plan.freeList = reader == SourceReader::FreeList;
        if (reader == SourceReader::Grid) {
            how.plan.decimal = ',';
            how.plan.voids = {"-99"};
        }
        if (reader == SourceReader::Gis) {
            how.gis = {{"points", "\xC3\xA8"}, "ELEV", 25832, true, 7};
        }
        project.source.howRead = how;
        EXPECT_EQ(Read(TextOfProject(project)).source.howRead, how);
    }
    for (const std::optional<LevelRule>& rule :
         {std::optional<LevelRule>(), std::optional(RuleByCount(7)),
          std::optional(RuleByList({3, 0.1, 2}))}) {
        project.levels = rule;
        EXPECT_EQ(Read(TextOfProject(project)).levels, rule);
    }
    Project nothing;
    nothing.source.howRead.plan.columns = *ParseColumns("xyz");
    ExpectSame(Read(TextOfProject(nothing)), nothing);
}

TEST(ProjectText, CanBeReadByAPerson) {
    const std::string text = TextOfProject(RichProject());
    for (const char* line :
         {"\n  \"terravo_project\": 1,\n", "\n    \"path\": \"/survey/points \\\"A\\\".txt\",\n",
          "\n      \"columns\": \"p,n,e,z,-,c\",\n", "\n          [9, 0],\n",
          "\n    \"earlier_line_wins\": true\n", "\n    \"interval\": 0.30000000000000004,\n",
          "\n      \"theme\": \"dark\",\n"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
    }
    EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 175);
}

TEST(ProjectText, IsAsItsDescriptionShowsIt) {
    std::ifstream file(TERRAVO_DOCS "/formats.md");
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    const std::string fence = "```json\n";
    const std::size_t begin = page.find(fence + "{\n  \"terravo_project\"") + fence.size();
    const std::string example = page.substr(begin, page.find("```", begin) - begin);
    EXPECT_EQ(TextOfProject(Read(example)), example);
}

TEST(ProjectText, SaysWhatCannotBeAndWhere) {
    const std::string good = TextOfProject(RichProject());
    const struct {
        const char* what;
        const char* with;
        const char* sentence;
    } faults[] = {
        {"\"terravo_project\": 1", "\"terravo_project\": 9",
         "p: terravo_project: this is version 9 of the format, of a newer program; this program "
         "reads version 1."},
        {"\"terravo_project\": 1,", "", "p: this is no Terravo project."},
        {"\"terravo_project\": 1,", "\"terravo_project\": 1", "p: line 3, column 3: this is no "},
        {"\"points\": 400", "\"points\": 399",
         "p: surface.heights[2]: a whole number from 1 to 399 is needed, not 400."},
        {"\"points\": 400", "\"points\": 4e99", "p: source.points: a whole number from 0 to "},
        {"\"points\": 400", "\"points\": 1.5", "p: source.points: a whole number from 0 to "},
        {"\"points\": 400", "\"points\": \"x\"", "p: source.points: a number is needed."},
        {"\"points\": 400,", "", "p: source: \"points\" is missing."},
        {"aaaa", "zzzz", "p: source.sha256: 64 digits of 0 to 9 and a to f are needed."},
        {"      1, 4, 7", "      4, 1, 7",
         "p: surface.excluded[2]: point 1 comes after point 4, but the numbers have to ascend."},
        {"[1, 2, 3]", "[1, 1e999, 3]", "p: line "},
        {"[1, 2, 3]", "[1]", "p: surface.breaklines[2].vertices[1]: 2 or 3 numbers are needed."},
        {"[1, 2, 3]", "[1, 2, null]",
         "p: surface.breaklines[2].vertices[1][3]: a number is needed."},
        {"\"utf-16be\"", "\"utf-9\"",
         "p: source.read_as.encoding: one of \"utf-8\", \"latin-1\", \"utf-16le\", \"utf-16be\" is "
         "needed, not \"utf-9\"."},
        {"\"p,n,e,z,-,c\"", "\"p,q\"", "p: source.read_as.columns: these are no columns: \"p,q\"."},
        {"\"interval\": 0.", "\"interval\": -0.", "p: levels: "},
        {"\"count\": 33", "\"count\": 1", "p: levels.count: a whole number from 2 to "},
        {"\"longest_side\": 0", "\"longest_side\": -1",
         "p: surface.longest_side: a number of 0 or more is needed."},
        {"\"holes\": [", "\"holes\": 5, \"x\": [", "p: surface.holes: a list is needed."},
    };
    for (const auto& fault : faults) {
        const ProjectReading reading = ProjectFromText(Replaced(good, fault.what, fault.with), "p");
        EXPECT_FALSE(reading.project) << fault.with;
        EXPECT_EQ(reading.fault.substr(0, std::string(fault.sentence).size()), fault.sentence);
    }
    for (const char* text : {"", "[]", "7", "{}", "{\"a\":", "\xFF\xFE"}) {
        EXPECT_NE(ProjectFromText(text, "p").fault, "") << text;
    }
    for (std::size_t length = 0; length < good.size() - 2; length += 7) {
        EXPECT_NE(ProjectFromText(good.substr(0, length), "p").fault, "") << length;
    }
}

TEST(ProjectText, RemarksOnWhatItDoesNotKnow) {
    std::string text = TextOfProject(RichProject());
    text = Replaced(text, "\"excluded\"", "\"smoothing\": [1, {}], \"excluded\"");
    text = Replaced(text, "\"theme\": \"dark\"", "\"theme\": \"pink\"");
    const ProjectReading reading = ProjectFromText(text, "p");
    ASSERT_TRUE(reading.project) << reading.fault;
    EXPECT_EQ(reading.remarks, (std::vector<std::string>{
                                   "surface.smoothing is not known and is left out.",
                                   "sheets[1].theme: \"pink\" is not known and is left out."}));
    EXPECT_EQ(reading.project->sheets[0].theme, SheetPlan().theme);
    EXPECT_EQ(reading.project->surface.excluded, RichProject().surface.excluded);
}

TEST(ProjectStore, WritesWholeFilesAndKnowsChecksums) {
    const test::TemporaryFolder folder;
    ProjectStore store;
    const std::string path = folder.File("p.terravo");
    store.Write(path, RichProject());
    ProjectReading reading = store.Read(path);
    ASSERT_TRUE(reading.project) << reading.fault;
    ExpectSame(*reading.project, RichProject());
    EXPECT_THROW(store.Write(folder.File("no/p.terravo"), RichProject()), AppError);
    for (const std::string& bad : {folder.File("missing.terravo"), folder.Path()}) {
        reading = store.Read(bad);
        EXPECT_FALSE(reading.project);
        EXPECT_EQ(reading.fault.substr(0, bad.size() + 1), bad + ":");
    }
    EXPECT_EQ(store.ChecksumOf(folder.Write("abc", "abc"), StopToken()),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(store.ChecksumOf(folder.Write("none", ""), StopToken()),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(store.ChecksumOf(folder.Path(), StopToken()), "");
    EXPECT_EQ(store.ChecksumOf(folder.File("gone"), StopToken()), "");
    StopToken stop;
    stop.RequestStop();
    EXPECT_EQ(store.ChecksumOf(path, stop), "");
}

TEST(ProjectSources, AreFoundFromTheProjectFirst) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directories(folder.File("new/project"));
    const std::string once = folder.Write("points.txt", "1 2 3");
    const std::string project = folder.File("new/project/p.terravo");
    ProjectSource source;
    source.path = once;
    source.relativePath = WayFrom("/job/project/p.terravo", "/job/points.txt");
    EXPECT_EQ(source.relativePath, "../points.txt");
    EXPECT_EQ(FindSource(source, project), once) << "nothing was moved with the project";
    const std::string moved = folder.Write("new/points.txt", "1 2 3");
    EXPECT_EQ(FindSource(source, project), moved);
    std::filesystem::remove(once);
    EXPECT_EQ(FindSource(source, project), moved);
    std::filesystem::remove(moved);
    EXPECT_EQ(FindSource(source, project), std::nullopt);
    EXPECT_TRUE(IsProjectFile("/a/b.TerraVo"));
    EXPECT_FALSE(IsProjectFile(".terravo"));
    EXPECT_FALSE(IsProjectFile("a.terravo.txt"));
}

TEST(ProjectSources, ReadAFileAsItWasRead) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("p.csv", "n;e;h\n1,5;2;3\n4;5;n/a\n7;8;9\nbad;1;2\n");
    HowRead how;
    how.plan.separator = FieldSeparator::Semicolon;
    how.plan.decimal = ',';
    how.plan.headerLines = 1;
    how.plan.columns = *ParseColumns("yxz");
    how.plan.fieldCount = 3;
    how.plan.voids = {"n/a"};
    how.bad = BadRecords::Skip;
    PointSet points;
    const ImportOutcome outcome = ReadAsBefore(path, how, points);
    ASSERT_FALSE(outcome.failure) << outcome.failure->Sentence();
    ASSERT_EQ(points.count, 2);
    EXPECT_EQ(points.x[1], 2);
    EXPECT_EQ(points.y[1], 1.5);
    EXPECT_EQ(HowItWasRead(outcome, BadRecords::Skip), how);
    const std::string grid = folder.Write(
        "g.asc", "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 1\n1,5 2\n3 4\n");
    ImportWish wish;
    wish.decimal = ',';
    const ImportOutcome first = ImportPoints(grid, wish, BadRecords::Refuse, points);
    ASSERT_FALSE(first.failure) << first.failure->Sentence();
    const HowRead asGrid = HowItWasRead(first, BadRecords::Refuse);
    EXPECT_EQ(asGrid.reader, SourceReader::Grid);
    PointSet again;
    EXPECT_FALSE(ReadAsBefore(grid, asGrid, again).failure);
    EXPECT_EQ(again.z, points.z);
}

TEST(ProjectSources, LoseWhatGoesByNumbersThatAreGone) {
    SurfacePlan plan = RichProject().surface;
    const LostEdits lost = DropBeyond(plan, 399);
    EXPECT_EQ(lost.excluded, 0U);
    EXPECT_EQ(lost.heights, 1U);
    EXPECT_TRUE(lost.Any());
    EXPECT_EQ(plan.heights.size(), 1U);
    EXPECT_FALSE(DropBeyond(plan, 399).Any());
    EXPECT_EQ(DropBeyond(plan, 0).excluded, RichProject().surface.excluded.size());
    EXPECT_EQ(plan.breaklines.size(), 2U) << "places stay";
}

} // namespace
} // namespace terravo
