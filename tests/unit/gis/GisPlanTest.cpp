#include "gis/GisPlan.h"
#include "gis/GisMemory.h"
#include "support/FakeSettings.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

GisField Number(const std::string& name) {
    GisField field{name, true, {}};
    field.values.Include(1);
    return field;
}

GisLayer PointLayer(const std::string& name, bool hasHeights) {
    GisLayer layer;
    layer.name = name;
    layer.points = 3;
    layer.vertices = 3;
    layer.hasHeights = hasHeights;
    layer.system.name = "here";
    return layer;
}

GisLayer Band(std::int64_t columns, std::int64_t rows) {
    GisLayer band;
    band.name = "band 1";
    band.columns = columns;
    band.rows = rows;
    band.vertices = columns * rows;
    band.hasHeights = true;
    return band;
}

TEST(GisPlan, TakesTheOnlyLayerWithHeightsAndTheAttributeNamedSo) {
    GisLayer flat = PointLayer("flat", false);
    flat.fields = {Number("year")};
    GisLayer named = PointLayer("named", false);
    named.fields = {Number("id"), Number("year"), Number("Quota")};
    const GisSource source{"GeoPackage", false, false, {flat, named}};
    EXPECT_EQ(Judge(source, {}).fault, GisFault::None);
    const GisWish wish = WishOf(source, {});
    ASSERT_EQ(wish.layers.size(), 1U);
    EXPECT_EQ(wish.layers[0].name, "named");
    EXPECT_EQ(wish.layers[0].heightField, "Quota");
    EXPECT_EQ(wish.layers[0].nameField, "id");
    EXPECT_EQ(NameOf(source, {}), "GeoPackage: named (Quota)");

    GisPlan year;
    year.heightField = "year";
    EXPECT_EQ(Judge(source, year).fault, GisFault::ChooseLayer) << "both have it";
    year.layers = {"flat"};
    EXPECT_EQ(Judge(source, year).fault, GisFault::None);
    year.heightField = "Quota";
    EXPECT_EQ(Judge(source, year).fault, GisFault::UnknownField);
}

TEST(GisPlan, ProposesLayersOfOneSystemAndItsZone) {
    GisLayer degrees = PointLayer("degrees", true);
    degrees.system = {"globe", 4326, true};
    degrees.x.Include(-70.5);
    degrees.y.Include(-33.25);
    const GisSource source{"GeoPackage",
                           false,
                           false,
                           {PointLayer("flat", false), degrees, PointLayer("plane", true)}};
    const GisPlan plan = ProposedPlan(source);
    EXPECT_EQ(plan.layers, std::vector<std::string>{"degrees"});
    EXPECT_EQ(plan.toEpsg, 32719);
    GisPlan both;
    both.layers = {"degrees", "plane"};
    both.degreesAsTheyAre = true;
    EXPECT_EQ(Judge(source, both).fault, GisFault::ManySystems);
    both.toEpsg = 32719;
    EXPECT_EQ(Judge(source, both).fault, GisFault::None);
}

TEST(GisPlan, ThinsARasterToWhatCanBeRead) {
    const GisSource large{"GeoTIFF", true, false, {Band(40000, 40000)}};
    EXPECT_EQ(Judge(large, {}).fault, GisFault::TooManyPoints);
    const GisPlan plan = ProposedPlan(large);
    EXPECT_EQ(plan.rasterStep, 40);
    EXPECT_EQ(CountOf(large, plan), 1000000);
    EXPECT_EQ(Judge(large, plan).fault, GisFault::None);
}

TEST(GisPlan, IsKeptAsAWord) {
    GisPlan plan;
    plan.layers = {"a b;c", "\xC3\xA9%", ""};
    plan.heightField = "H;";
    plan.toEpsg = 25832;
    plan.degreesAsTheyAre = true;
    plan.rasterStep = 7;
    for (const GisPlan& one : {plan, GisPlan()}) {
        EXPECT_EQ(GisPlanFromText(TextOf(one)), one);
        EXPECT_EQ(TextOf(one).find(' '), std::string::npos);
    }
    for (const char* broken : {"", "a;-;0", "a;-;2;-", "%;-;0;-", "a;-;0;-;%4"}) {
        EXPECT_FALSE(GisPlanFromText(broken)) << broken;
    }
    FakeSettings settings;
    GisMemory memory(settings);
    for (int i = 0; i < 60; ++i) {
        memory.Remember("/a b/" + std::to_string(i), plan);
    }
    memory.Remember("/a b/59", GisPlan());
    EXPECT_EQ(memory.Recall("/a b/59"), GisPlan());
    EXPECT_EQ(memory.Recall("/a b/58"), plan);
    EXPECT_FALSE(memory.Recall("/a b/5")) << "the oldest have dropped out";
}

} // namespace
} // namespace terravo
