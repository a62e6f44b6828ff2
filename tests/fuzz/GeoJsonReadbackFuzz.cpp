// The reader that checks GeoJSON files, on files of any bytes.
#include "export/readback/GeoJsonReadback.h"
#include "fuzz/ReadbackFuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const std::vector<fuzz::ContentChange> changes = [] {
        std::vector<fuzz::ContentChange> list = fuzz::ChangesOfContent();
        list.emplace_back([](VectorContent& c) { c.levels[0].index = false; });
        list.emplace_back([](VectorContent& c) { c.bands[1].vertices[5].x += 1e-9; });
        list.emplace_back([](VectorContent& c) { c.bands[1].polygons[0].holes.clear(); });
        list.emplace_back([](VectorContent& c) { c.bands[0].low = 1.25; });
        return list;
    }();
    fuzz::CheckReadback(CheckGeoJson, changes, data, size);
    return 0;
}
