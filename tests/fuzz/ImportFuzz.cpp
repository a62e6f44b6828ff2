// Files of any bytes, inspected and read as points.
//
// Data: the input is the file. Method: what is read must add up, say why it is not read, and come
// out the same when every line is taken apart instead of being read straight from the text, and as
// the preview shows it.
#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"
#include "survey/import/ImportPreview.h"
#include "survey/import/PointImport.h"

#include <cmath>

namespace terravo {
namespace {

using fuzz::Require;

void CheckReading(const ImportOutcome& outcome, const PointSet& points) {
    const ImportReport& report = outcome.report;
    for (Index i = 1; i <= points.count; ++i) {
        Require(std::isfinite(points.x[i]) && std::isfinite(points.y[i]) &&
                    std::isfinite(points.z[i]),
                "every coordinate is finite");
    }
    Require(points.z.UpperBound() == points.count, "the count is that of z");
    Require(outcome.inspection.plan.freeList ||
                report.records == points.count + report.voidHeights + report.badRecords,
            "every record is a point, without height, or bad");
}

// A void text that occurs nowhere makes every line be taken apart.
void CompareWithSlowRoad(const std::string& path, const ImportPlan& plan, const PointSet& points,
                         const ImportReport& report) {
    ImportPlan slow = plan;
    slow.voids.emplace_back("\x01 nowhere \x01");
    PointSet again;
    const ImportOutcome outcome = ImportByPlan(path, slow, BadRecords::Skip, again);
    Require(!outcome.failure, "the slow road reads it, too");
    Require(again.x == points.x && again.y == points.y && again.z == points.z,
            "both roads give the same points");
    Require(outcome.report.records == report.records &&
                outcome.report.badRecords == report.badRecords,
            "and the same counts");
    for (Index i = 1; i <= points.count; ++i) {
        Require(again.labels.Name(i) == points.labels.Name(i) &&
                    again.labels.Code(i) == points.labels.Code(i) &&
                    again.labels.Line(i) == points.labels.Line(i),
                "and the same labels");
    }
}

void CompareWithPreview(const std::string& path, const ImportPlan& plan, const PointSet& points,
                        const ImportReport& report) {
    const ImportPreview preview = PreviewOf(ReadHeadText(path, plan.encoding), plan);
    Require(preview.isAll && preview.points.x == points.x && preview.points.y == points.y &&
                preview.points.z == points.z,
            "the preview shows the same points");
    Require(preview.records == report.records && preview.badRecords == report.badRecords &&
                preview.voidHeights == report.voidHeights &&
                preview.headerLines == report.headerLines &&
                preview.commentLines == report.commentLines &&
                preview.blankLines == report.blankLines,
            "and the same counts");
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string path = folder.Write("points.dat", fuzz::TextOf(data, size));

    PointSet points;
    const ImportOutcome outcome = ImportPoints(path, {}, BadRecords::Refuse, points);
    Require(!outcome.failure || !outcome.failure->Sentence().empty(),
            "a failure says what happened");
    Require(!outcome.failure || points.count == 0, "a failure leaves the points");
    if (!outcome.failure) {
        CheckReading(outcome, points);
    }
    // By the likeliest plan, certain or not.
    const ImportPlan& plan = outcome.inspection.plan;
    if (!outcome.inspection.failure && outcome.inspection.grid == GridFormat::None &&
        !plan.columns.empty()) {
        PointSet all;
        const ImportOutcome read = ImportByPlan(path, plan, BadRecords::Skip, all);
        if (!read.failure) {
            CheckReading(read, all);
            CompareWithSlowRoad(path, plan, all, read.report);
            CompareWithPreview(path, plan, all, read.report);
        }
    }
    return 0;
}
