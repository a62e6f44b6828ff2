#include "app/session/MeasureReport.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(MeasureReport, ShowsNumbersWithThreeDecimalsAndMoreWhereNothingWouldBeLeft) {
    EXPECT_EQ(ShownNumber(5000000.12345, '.'), "5000000.123");
    EXPECT_EQ(ShownNumber(-0.5, ','), "-0,500");
    EXPECT_EQ(ShownNumber(0.00012345, '.'), "0.0001235");
    EXPECT_EQ(ShownNumber(0, '.'), "0.000");
}

TEST(MeasureReport, TextIsAlignedAndCsvHasEveryDigit) {
    MeasureReport report;
    report.title = "Title";
    report.about = {{"Survey", "a, b.csv"}};
    report.columns = {"What", "Value", "Unit"};
    report.rows = {{{"Area \"in plan\"", {}}, {"1.333", 4.0 / 3}, {"m²", {}}},
                   {{"Net", {}}, {"-10.000", -10}, {"m³", {}}}};
    report.remark = "A remark.";
    EXPECT_EQ(TextOf(report), "Title\nSurvey: a, b.csv\n"
                              "What              Value  Unit\n"
                              "Area \"in plan\"    1.333  m²\n"
                              "Net             -10.000  m³\nA remark.\n");
    EXPECT_EQ(CsvOf(report), "What,Value,Unit\nSurvey,\"a, b.csv\",\n"
                             "\"Area \"\"in plan\"\"\",1.3333333333333333,m²\nNet,-10,m³\n");
}

} // namespace
} // namespace terravo
